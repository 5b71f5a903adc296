#pragma once
// How far a section's Fn and Q move when one of its components rises by 1%,
// measured by analysing the section again with that one part changed, and
// the table line that carries those measurements.
#include <array>
#include <string>

namespace qm {

class QuellmarkForm;

/// Components of a section, as the perturbation names them.
enum class Part { R1, R2, R3, R4, C1, C2 };

/// Analyses section j with `part` raised by 1% (the stored value stays) into
/// b0Real, b1Real, and returns SensText's "Fn; Q" text.
std::string perturb(QuellmarkForm& f, int j, Part part);

/// perturb without the text: b0Real, b1Real, and sensFnValue, sensQValue
/// as SensNumbers leaves them; fails where perturb fails.
void perturbNumbers(QuellmarkForm& f, int j, Part part);

/// What one section's sensitivity line is made of.
struct SensitivityLineParts
{
    std::string name;
    bool sallenKey = false;
    bool highPass = false;
    bool realStage = false;
    /// A Sallen-Key section with gain resistors (gain above 1).
    bool gainResistors = false;
    /// Measured texts by Part; those the section skips are not read.
    std::array<std::string, 6> text;
};

/// The sensitivity line from its parts, with the spacers and dash pieces
/// that keep the columns under the header.
std::string sensitivityLine(const SensitivityLineParts& p);

/// Sensitivities of section j for the table: each component measured in the
/// column order of the circuit shown, stored in sensR1..sensC2; returns the
/// table line.
std::string measureForTable(QuellmarkForm& f, int j);

/// Sensitivities of section j for the schematic labels, into sensR1..sensC2.
void measureForSchematic(QuellmarkForm& f, int j);

} // namespace qm
