#pragma once
// Components of an inverting multiple-feedback section, for the denominator
// s² + bOne·s + bZero in rad/s:
//   1/bZero = C1·C2·R2·R3,   bOne/bZero = C1·(R2 + R3 + g·R3),   g = R2/R1.
#include "synthesis/section_synthesis.h"

namespace qm {

/// Chooses or checks C1 and C2, then solves R2, R3 and R1, all rounded to the
/// series in force. A real pole (bOne 0) gets R1 and C1 only. `g` is the
/// wanted gain in V/V, positive. From the resistor step on, a failing
/// statement is skipped and the others still run, so the section always ends
/// with values, if not the right ones.
void MFB(float bZero, float bOne, float g, SectionParts& p, SynthesisContext& ctx);

} // namespace qm
