#pragma once
// Gain and phase of one section at one frequency.

namespace qm {

/// Gain in dB and phase in degrees of the section s² + bOne·s + bZero (a real
/// pole s + bZero when bOne is 0) at f Hz. A real pole with bZero 0 is taken
/// as 1e-6, and that value goes back through bZero. A pair with bZero ≤ 0,
/// which no design realises, counts as a wire: 0 dB and 0°. Nothing here
/// fails, and every result is finite.
void Response(float& bZero, float& bOne, float& f, float& mag, float& phase);

} // namespace qm
