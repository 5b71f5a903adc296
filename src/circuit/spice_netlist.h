#pragma once
// The design as a SPICE netlist: one subcircuit per stage named after it,
// its elements by their designators, the cascade driven by an AC source of
// 1 V and swept over the chart's three decades. Plain SPICE3: R, C, E and
// V elements, .subckt, .param, .ac and .end, names of letters, digits and
// underscores, so that any SPICE reads it.
#include "circuit/circuit_model.h"

#include <string>

namespace qm {

struct NetlistHeading
{
    std::string version; ///< the program's version
    std::string date;    ///< "2026-11-25"
    /// The amplifiers' gain-bandwidth in Hz; 0 takes the default: the
    /// catalogue amplifier's bandwidth, else 100 times the largest
    /// required GBP of the stages.
    double gbwHz = 0;
    /// The amplifiers' open-loop gain at DC, A0.
    double openLoopGain = 1e5;
};

/// The default gain-bandwidth of the netlist's amplifiers, in Hz.
double defaultNetlistGBW(const FilterCircuit& circuit);

/// The netlist's text, lines ending in '\n'.
std::string spiceNetlist(const FilterCircuit& circuit, const NetlistHeading& heading);

/// Names of the netlist's top-level input and output nodes.
constexpr const char* kNetlistOutput = "out";
constexpr const char* kNetlistOutputMinus = "outn";

} // namespace qm
