#pragma once
// The filter's part list: one line per distinct part, counted over every
// section of the design, and the amplifier line.
#include "catalogue/design_catalogue.h"

#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;

struct BomLine
{
    int quantity = 0;
    std::string designators; ///< "R1A, R2A, R1B"
    std::string value;       ///< as the schematic shows it
    std::string partNumber;  ///< the amplifier's device name
    std::string source;      ///< the amplifier's supplier
    std::string description; ///< kind, series and tolerance
    std::string warning;     ///< why the value is hard to build with, or empty
};

/// Tolerance of a preferred-number series, "5%" for "E24"; empty for Exact.
std::string seriesTolerance(const std::string& series);

/// Why a part is outside the values a designer can build with, or empty:
/// resistors from 100 ohms to 10 Mohms and capacitors from 10 pF are.
std::string practicalValueWarning(const SchematicPart& part);

/// Resistors, then capacitors, each by value in the order the signal meets
/// them, then the amplifier line. A fully differential circuit has each
/// passive part twice.
std::vector<BomLine> billOfMaterials(const QuellmarkForm& f);

/// The part list's column heads, the last one without a caption.
const std::vector<std::string>& partListColumns();

} // namespace qm
