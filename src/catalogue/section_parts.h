#pragma once
// The parts of a section, taken from its schematic value labels as the cycle
// writes them, in whichever view the screen shows.
namespace qm {

class QuellmarkForm;

/// Notes the parts of section j: the cycle calls it once the section's
/// components are known and its name is set.
void noteSectionParts(QuellmarkForm& f, int j);

} // namespace qm
