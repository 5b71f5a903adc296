#include "numbers/float_store.h"
#include "synthesis/section_synthesis.h"

#include <cmath>

namespace qm {

void synthesiseRealStage(double b0, SectionParts& p, RoundingContext& rounding)
{
    p.cOne = std::fabs(p.cOne);
    if (p.cOne == 0) {
        p.cOne = f32(checkedDiv(1, b0 * d64(p.ROne))); // pole = 1/(R1·C1)
        StdCaps(p.cOne, 0, 1, rounding);
    }
    p.ROne = f32(checkedDiv(1, b0 * d64(p.cOne)));
    StdRes(p.ROne, rounding);
    p.RTwo = 0;
    p.cTwo = 0;
}

} // namespace qm
