#include "chart/response.h"

#include "chart/chart_numbers.h"
#include "numbers/float_store.h"

#include <cmath>

namespace qm {

namespace {

/// Far above a section's natural frequency the normalised frequency is held
/// here, so that w² and w⁴ stay finite; the gain there is about -360 dB.
constexpr double kWLimit = 1e9;
/// A real pole at 0 rad/s would divide by zero; it is taken a little above.
constexpr float kRealPoleFloor = 1e-6f;

/// Gain as a ratio and phase in radians of s² + bOne·s + bZero at f Hz.
void secondOrder(float bZero, float bOne, float f, float& mag, float& phase)
{
    if (!(bZero > 0)) {
        // No design realises such a pair; the section counts as a wire
        // rather than failing the recalculation.
        mag = 1.0f;
        phase = 0.0f;
        return;
    }
    const double r = std::sqrt(d64(bZero)); // natural angular frequency
    // Normalised to the natural frequency, held within ±1e9 before it is
    // stored (the same float as storing first and limiting after).
    double wide = (d64(f) + d64(f)) * Pi / r;
    if (wide > kWLimit) wide = kWLimit;
    if (wide < -kWLimit) wide = -kWLimit;
    const double w = d64(static_cast<float>(wide));
    const double oneMinusW2 = 1 - w * w;
    mag = keptF32(
        1 / std::sqrt(oneMinusW2 * oneMinusW2 + (d64(bOne) * d64(bOne) / d64(bZero)) * w * w));
    if (w == 1.0) {
        phase = keptF32(-Pi / 2);
        return;
    }
    phase = keptF32(-std::atan((w * d64(bOne) / r) / oneMinusW2));
    // Past the natural frequency the arctangent folds back; continue the
    // phase from -90° towards -180° instead.
    if (w > 1) phase = keptF32(d64(phase) - Pi);
}

/// Gain as a ratio and phase in radians of the real pole s + bZero at f Hz.
void firstOrder(float& bZero, float f, float& mag, float& phase)
{
    if (bZero == 0) bZero = kRealPoleFloor;
    const double w = d64(keptF32((d64(f) + d64(f)) * Pi / d64(bZero)));
    mag = keptF32(1 / std::sqrt(w * w + 1));
    phase = keptF32(-std::atan(w));
}

} // namespace

void Response(float& bZero, float& bOne, float& f, float& mag, float& phase)
{
    if (bOne == 0)
        firstOrder(bZero, f, mag, phase);
    else
        secondOrder(bZero, bOne, f, mag, phase);
    // A gain that underflowed to 0 has no logarithm: it stays as it is.
    if (!(mag > 0)) return;
    mag = keptF32(20 * std::log(d64(mag)) / std::log(10.0));
    phase = keptF32(d64(phase) * 180 / Pi);
}

} // namespace qm
