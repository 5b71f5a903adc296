#pragma once
// What each section of the finished design is, as numbers: the Fn and Q it
// was asked for and the ones its parts realise, its gain, the amplifier it
// needs and its parts by the names of its schematic. The screen shows the
// same as rounded text; scripts read these.
#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;

/// A part of a section by its schematic name ("R1", "C2") and its value in
/// ohms or farads as the circuit uses it: mapped in a high-pass design,
/// halved where a fully differential stage shares one capacitor.
struct NamedValue
{
    std::string name;
    double value = 0;
};

/// Percent change of the section's Fn and Q when one part rises by 1%. A
/// real stage has no Q: hasQ is false there.
struct PartSensitivity
{
    std::string name;
    double fnPercent = 0;
    double qPercent = 0;
    bool hasQ = true;
};

struct SectionResult
{
    bool inUse = false;
    bool realStage = false;
    std::string name; ///< "Real", "A" ... "E", as the results table names the rows
    /// Hz in the passband of the design; a real stage's Fn is its pole and its Q is 0.
    double targetFn = 0, targetQ = 0;
    double realisedFn = 0, realisedQ = 0;
    double gain = 1;        ///< V/V
    double requiredGBP = 0; ///< Hz
    double responseGainDB = 0, responsePhaseDeg = 0;
    std::vector<NamedValue> parts;
    std::vector<PartSensitivity> sensitivities;
};

/// Cycle step 17, last: keeps section j's results at its result row. The
/// first section of a run (the highest j) clears the rows of the run before.
void keepSectionResult(QuellmarkForm& f, int j);

} // namespace qm
