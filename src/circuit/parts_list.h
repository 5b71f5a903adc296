#pragma once
// The bill of materials of the filter as a CSV file (RFC 4180, UTF-8, a
// header row): one line per distinct part, then the amplifiers.
#include "circuit/circuit_model.h"

#include <string>
#include <vector>

namespace qm {

struct MaterialLine
{
    std::vector<std::string> designators;
    std::string value;     ///< as the schematic shows it, or the amplifier
    std::string kind;      ///< "resistor", "capacitor", "amplifier"
    std::string series;    ///< "E24", "Exact", "Entered"; empty for amplifiers
    std::string tolerance; ///< "5%"; empty where the series has none
};

/// Resistors, capacitors, then the amplifiers U1, U2 ... in signal order.
std::vector<MaterialLine> billOfMaterialsLines(const FilterCircuit& circuit);

/// The lines as CSV text, CRLF line ends.
std::string billOfMaterialsCsv(const FilterCircuit& circuit);

} // namespace qm
