#pragma once
// The parts of a section, taken from its schematic value labels as the cycle
// works them out, in whichever view the screen shows.
namespace qm {

class QuellmarkForm;
struct ValueLabelTexts;

/// Notes the parts of section j from the texts of its value labels: the
/// cycle calls it once the section's components are known and its name is
/// set. Values that can't all be worked out leave no parts.
void noteSectionParts(QuellmarkForm& f, int j, const ValueLabelTexts& values);

} // namespace qm
