#include "chart/response.h"

namespace qm {

// Placeholder until the section response lands.
void Response(float& /*bZero*/, float& /*bOne*/, float& /*f*/, float& mag, float& phase)
{
    mag = 0;
    phase = 0;
}

} // namespace qm
