#include "numbers/pole_pairs.h"

namespace qm {

// Placeholder until the pole families land.
void polepairs(std::int16_t /*n*/, float /*ripple*/, SectionFloats& b0, SectionFloats& b1,
               PolePairSettings& /*settings*/, float& /*QBaseProduct*/)
{
    b0.fill(0);
    b1.fill(0);
}

void ScaleFreq(float /*f*/, SectionFloats& /*b0*/, SectionFloats& /*b1*/) {}

} // namespace qm
