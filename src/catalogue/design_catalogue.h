#pragma once
// What the design screen keeps of the catalogue: the amplifier chosen for
// the design, and the parts of each section as its schematic shows them.
#include "screen/control.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace qm {

/// The amplifier chosen for the design; an empty name is none.
struct AmplifierChoice
{
    std::string deviceName;
    std::string supplier;
    std::string description;
    /// The catalogue's bandwidth figure, when it has a readable one.
    std::optional<double> bandwidthHz;
    /// Its voltage noise density in V/√Hz and input bias current in
    /// amperes, when the catalogue gives readable ones.
    std::optional<double> noiseDensity;
    std::optional<double> biasCurrentA;
    /// Its slew rate in V/µs and largest supply in volts, when readable.
    std::optional<double> slewRateVPerUs;
    std::optional<double> supplyMaxV;
};

/// One part on the schematic of a section.
struct SchematicPart
{
    std::string label;      ///< the value label's control name, "R1(0)"
    std::string designator; ///< "R1A", "C2B", "R1Real"
    std::string value;      ///< the value as shown, "10.0 k", "4.70 nF"
    bool capacitor = false;
    std::optional<double> amount; ///< ohms or farads, when the text reads as one
};

/// What the screen showed before a mark changed it.
struct MarkDefaults
{
    Color backColor = 0;
    Color foreColor = 0;
    std::string toolTip;
};

struct CatalogueDesignState
{
    AmplifierChoice amplifier;
    /// Parts by section number j, 1 to sectionRows; the cycle refills them.
    std::array<std::vector<SchematicPart>, 7> sectionParts;
    /// The name of every section by number j ("A", "Real").
    std::array<std::string, 7> sectionLetters;
    /// Looks of the marked controls before any mark, by control name.
    std::vector<std::pair<std::string, MarkDefaults>> defaults;
};

} // namespace qm
