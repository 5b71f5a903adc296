#pragma once
// The pole families that have no closed formula here and are kept as
// constants: Bessel, the two linear-phase families with equiripple phase
// error, and the transitional Gaussian to 12 dB.
#include <cstdint>
#include <span>

namespace qm {

/// One section of a normalised low-pass prototype: s² + b1·s + b0, or the
/// real pole s + b0 when b1 is 0.
struct PoleRow
{
    float b1;
    float b0;
};

/// The family numbers of the tabulated families, as filterType holds them.
constexpr std::int16_t kBesselFamily = 1;
constexpr std::int16_t kLinearPhase005Family = 3;
constexpr std::int16_t kLinearPhase05Family = 4;
constexpr std::int16_t kGaussian12dBFamily = 5;

/// The rows of a tabulated family for n poles, in the table's own order of k
/// (k = 1 first; not sorted by Q). Empty when the family has no table or the
/// table has no row for this n.
std::span<const PoleRow> tabulatedPoles(std::int16_t filterType, int n);

} // namespace qm
