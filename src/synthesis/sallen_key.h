#pragma once
// Components of a non-inverting Sallen-Key section, for the denominator
// s² + bOne·s + bZero in rad/s, with gain g = 1 + R4/R3:
//   1/bZero = R1·R2·C1·C2,   bOne/bZero = (R1 + R2)·C1 + R1·C2·(1 − g).
#include "synthesis/section_synthesis.h"

namespace qm {

/// Sets the gain pair R3, R4 (none at a gain of 1), chooses or checks C1 and
/// C2, then solves R1 and R2, all rounded to the series in force. A gain below
/// 1 is raised to 1 in `g`. A real pole (bOne 0) gets R1 and C1; a bZero of 0
/// there becomes 1e-5.
///
/// Where the two capacitors leave no real R1 (C1 above C2·(bOne²/(4·bZero) +
/// g − 1), which an entered pair can reach), R1 is the one that comes nearest
/// the wanted Q, R1 = 1/sqrt(bZero·C2·(C1 + C2 − g·C2)), and R2 still holds
/// Fn: the section is built with the highest Q these capacitors allow.
void Sallen(float& bZero, float bOne, float& g, SectionParts& p, SynthesisContext& ctx);

} // namespace qm
