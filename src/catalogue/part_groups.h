#pragma once
// Parts gathered into the lines of a part list: one line per distinct part
// (kind, shown value and series), resistors before capacitors, each kind
// in the order the signal first meets its values.
#include <string>
#include <vector>

namespace qm {

struct ListedPart
{
    std::string designator;
    std::string value; ///< as the schematic shows it
    bool capacitor = false;
    std::string series; ///< parts of one value but other series stay apart
};

struct PartGroup
{
    std::string value;
    bool capacitor = false;
    std::string series;
    std::vector<std::string> designators; ///< in the order given
};

std::vector<PartGroup> groupParts(const std::vector<ListedPart>& parts);

} // namespace qm
