#include "circuit/circuit_model.h"

#include <algorithm>

namespace qm {

const CircuitPart* StageCircuit::part(const std::string& designator) const
{
    auto it = std::find_if(parts.begin(), parts.end(),
                           [&](const CircuitPart& p) { return p.designator == designator; });
    return it == parts.end() ? nullptr : &*it;
}

namespace {

/// The named (upper) side's part called `role`, for either constness.
template <class Parts> auto findRole(Parts& parts, const std::string& role)
{
    auto it = std::find_if(parts.begin(), parts.end(),
                           [&](const CircuitPart& p) { return p.role == role && !p.lowerHalf; });
    return it == parts.end() ? nullptr : &*it;
}

} // namespace

const CircuitPart* StageCircuit::byRole(const std::string& role) const
{
    return findRole(parts, role);
}

CircuitPart* StageCircuit::byRole(const std::string& role)
{
    return findRole(parts, role);
}

double FilterCircuit::largestRequiredGBP() const
{
    double largest = 0;
    for (const StageCircuit& s : stages)
        largest = std::max(largest, s.requiredGBP);
    return largest;
}

} // namespace qm
