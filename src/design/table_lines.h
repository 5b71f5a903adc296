#pragma once
// The value table under the results: its column header, the box that holds
// each section's line, the section names, and the line of component values
// that stands there while the schematic shows sensitivities.
#include <string>

namespace qm {

class QuellmarkForm;
struct Control;

/// Column header of the table for the design's circuit and passband.
std::string columnHeader(bool sallenKey, bool highPass);

/// Table box of section j: Text45 for j = 1 up to Text41 for j = 5, so the
/// lines fill the table from the bottom and read in the order of the chain.
Control& tableBox(QuellmarkForm& f, int j);

/// Name of section j as its table line opens: "Real" for the real stage,
/// else "A    " to "E    " by gain slot.
std::string sectionNameOf(const QuellmarkForm& f, int j);

/// C2 of section j as the designer sees it: a fully differential section
/// keeps twice the shown capacitance.
double shownC2(const QuellmarkForm& f, int j);

/// Table line of component values of section j (sensitivities on the
/// schematic). Reads sectionName, the resistors and C1(j), C2(j).
std::string valueLine(const QuellmarkForm& f, int j);

} // namespace qm
