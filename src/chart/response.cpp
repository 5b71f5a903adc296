#include "chart/response.h"

#include "chart/section_response.h"

namespace qm {

void Response(float& bZero, float& bOne, float& f, float& mag, float& phase)
{
    const SectionModel m = prepareSection(bZero, bOne);
    finishResponse(m.kind, ratioAt(m, f), mag, phase);
}

} // namespace qm
