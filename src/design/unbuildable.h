#pragma once
// A section whose formulas give parts that can't be made: a resistor or a
// capacitor that comes out negative, zero, beyond any scale letter, or not at
// all because the calculation failed. Such a part is never shown as a value;
// its place says kNoValue, and the prompt tells the designer which entry to
// change and why.
#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;
struct Control;

/// What stands in the place of a part that can't be made.
constexpr const char* kNoValue = "no value";

/// A resistance in ohms or a capacitance in farads that can be made: positive,
/// finite, and written with a scale letter (1 f up to below 1000 G).
bool buildablePart(double x);

/// One part of a section as the screen shows it.
struct ShownPart
{
    const char* name; ///< the part's name in the table header of the circuit shown
    double value;     ///< as shown: mapped in high-pass, one capacitor of a pair
    Control* label;   ///< its label on the schematic
};

/// The parts of section j, its labels and its shown values. A value whose
/// mapping fails comes back as 0, which no part can be.
std::vector<ShownPart> shownParts(QuellmarkForm& f, int j);

/// Why a section can't be built, for its notice.
struct SectionFault
{
    int j = 0;
    std::string failure; ///< the calculation's own reason; empty when it finished
};

/// Finds the parts of section j that can't be made. A section whose
/// calculation failed has no resistors; of its capacitors, those that were
/// set stay. Returns their names, empty when the whole section can be built.
std::vector<std::string> unbuildableNames(QuellmarkForm& f, const SectionFault& fault);

/// After a section that can't be built: the response rows and the chart show
/// the section as designed (its coefficients, its requested gain), so that
/// the rest of the design stays readable.
void showSectionAsDesigned(QuellmarkForm& f, int j);

/// Before any section could be worked out the design failed: every value
/// label says kNoValue and the table is empty. Returns the prompt's notice.
std::string markDesignUnbuildable(QuellmarkForm& f, const std::string& failure);

/// Puts kNoValue on the labels of the named parts of section j and rewrites
/// its table line to say which parts are missing.
void markUnbuildable(QuellmarkForm& f, int j, const std::vector<std::string>& names);

/// The notice of the prompt panel for a section that can't be built: which
/// parts, why, and which entry the designer can change.
std::string unbuildableNotice(QuellmarkForm& f, const SectionFault& fault,
                              const std::vector<std::string>& names);

} // namespace qm
