#include "catalogue/part_groups.h"

#include <map>
#include <tuple>

namespace qm {

std::vector<PartGroup> groupParts(const std::vector<ListedPart>& parts)
{
    std::vector<PartGroup> groups;
    for (bool capacitors : {false, true}) {
        std::map<std::pair<std::string, std::string>, std::size_t> byValue;
        for (const ListedPart& p : parts) {
            if (p.capacitor != capacitors) continue;
            auto [it, fresh] = byValue.emplace(std::make_pair(p.value, p.series), groups.size());
            if (fresh) groups.push_back({p.value, p.capacitor, p.series, {}});
            groups[it->second].designators.push_back(p.designator);
        }
    }
    return groups;
}

} // namespace qm
