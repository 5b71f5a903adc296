#pragma once
// The arithmetic of Response in two stages, so that the sweep can prepare a
// section once and run each stage over all its points: first the plain
// arithmetic (w, the gain ratio, the arctangent's argument), then the
// logarithm and the arctangent. Response runs the same two stages for one
// point, so the sweep and the table give the same numbers.
#include "chart/chart_numbers.h"
#include "numbers/float_atan.h"
#include "numbers/float_store.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

namespace qm {

/// What a section's response needs from its coefficients alone.
struct SectionModel
{
    enum class Kind { Pair, RealPole, Flat };
    Kind kind = Kind::Flat;
    double bZero = 0;   ///< as stored, widened
    double bOne = 0;    ///< as stored, widened
    double r = 0;       ///< natural angular frequency of a pair, sqrt(bZero)
    double damping = 0; ///< bOne²/bZero of a pair
    double toW = 0;     ///< from hertz to w: 2·Pi/r for a pair, 2·Pi/bZero for a real pole
    double bOneOverR = 0;
};

// The divisions by per-section and fixed constants are taken as products
// with their reciprocals: a sweep evaluates thousands of points, and the
// products differ from the quotients only in the last bit of a double,
// below what survives the rounding to 32 bits.
constexpr double kDbPerNeper = 20 / 2.302585092994045684; ///< 20/ln(10)
constexpr double kDegPerRad = 180 / Pi;

/// A section at one frequency after the first stage.
struct RatioPoint
{
    float w = 0;   ///< frequency normalised to the section, as stored
    float mag = 1; ///< gain as a ratio, as stored
    /// The arctangent's argument as the fraction atanNum/atanDen, divided
    /// only where the library is asked (unused where w is 1).
    double atanNum = 0;
    double atanDen = 1;
};

/// Far above a section's natural frequency the normalised frequency is held
/// here, so that w² and w⁴ stay finite; the gain there is about -360 dB.
constexpr double kWLimit = 1e9;
/// A real pole at 0 rad/s would divide by zero; it is taken a little above.
constexpr float kRealPoleFloor = 1e-6f;

/// Prepares s² + bOne·s + bZero, or s + bZero when bOne is 0. A real pole
/// at 0 is moved to kRealPoleFloor, and bZero says so to the caller.
inline SectionModel prepareSection(float& bZero, float bOne)
{
    SectionModel m;
    m.bOne = d64(bOne);
    if (bOne == 0) {
        if (bZero == 0) bZero = kRealPoleFloor;
        m.kind = SectionModel::Kind::RealPole;
        m.bZero = d64(bZero);
        m.toW = 2 * Pi / m.bZero;
        return m;
    }
    m.bZero = d64(bZero);
    // No design realises a pair with bZero ≤ 0; it counts as a wire rather
    // than failing the recalculation.
    if (!(bZero > 0)) return m;
    m.kind = SectionModel::Kind::Pair;
    m.r = std::sqrt(m.bZero);
    m.damping = m.bOne * m.bOne / m.bZero;
    m.toW = 2 * Pi / m.r;
    m.bOneOverR = m.bOne / m.r;
    return m;
}

/// Rounds a value known not to be NaN to 32 bits, held within the range;
/// branch-free, so that the first stage's loops can run side by side.
inline float heldF32(double x)
{
    constexpr double kTop = static_cast<double>(FLT_MAX);
    return static_cast<float>(std::min(std::max(x, -kTop), kTop));
}

/// a/b as IEEE arithmetic gives it, infinite (or not a number) for b = 0,
/// without dividing by zero.
inline double quotient(double a, double b)
{
    if (b != 0) return a / b;
    if (a == 0 || std::isnan(a)) return std::numeric_limits<double>::quiet_NaN();
    // 1 - w² is +0 when it vanishes, so the sign is that of a.
    return std::copysign(std::numeric_limits<double>::infinity(), a);
}

inline double reciprocal(double x)
{
    return quotient(1, x);
}

/// First stage of a pair at f Hz. w is held within ±1e9 before it is stored,
/// which gives the same float as storing first and limiting after.
inline RatioPoint pairRatio(const SectionModel& m, float f)
{
    RatioPoint p;
    const double wide = d64(f) * m.toW;
    p.w = static_cast<float>(std::min(std::max(wide, -kWLimit), kWLimit));
    const double w = d64(p.w);
    const double oneMinusW2 = 1 - w * w;
    p.mag = heldF32(reciprocal(std::sqrt(oneMinusW2 * oneMinusW2 + m.damping * w * w)));
    // At the natural frequency the argument is infinite and the phase -90°.
    p.atanNum = w * m.bOneOverR;
    p.atanDen = oneMinusW2;
    return p;
}

/// First stage of a real pole at f Hz.
inline RatioPoint realPoleRatio(const SectionModel& m, float f)
{
    RatioPoint p;
    p.w = heldF32(d64(f) * m.toW);
    const double w = d64(p.w);
    p.mag = heldF32(1 / std::sqrt(w * w + 1));
    p.atanNum = w;
    return p;
}

inline RatioPoint ratioAt(const SectionModel& m, float f)
{
    switch (m.kind) {
    case SectionModel::Kind::Pair:
        return pairRatio(m, f);
    case SectionModel::Kind::RealPole:
        return realPoleRatio(m, f);
    case SectionModel::Kind::Flat:
        break;
    }
    return {};
}

/// The phase lag of a first stage in radians, keptF32(-atan(atanNum/atanDen)),
/// given near = -series::atan(atanNum, atanDen): the float it is certain of,
/// or else the library's.
inline float lagRadians(const RatioPoint& p, double near)
{
    if (const auto f = certainF32(near)) return *f;
    return keptF32(-std::atan(quotient(p.atanNum, p.atanDen)));
}

/// Second stage: gain in dB and phase in degrees, from the phase lag in
/// radians. A gain that underflowed to 0 has no logarithm: it stays 0, and
/// its phase stays in radians.
inline void finishResponse(SectionModel::Kind kind, const RatioPoint& p, float lag, float& mag,
                           float& phase)
{
    mag = p.mag;
    if (kind == SectionModel::Kind::Pair && p.w == 1.0f) {
        phase = keptF32(-Pi / 2);
    } else {
        phase = lag;
        // Past a pair's natural frequency the arctangent folds back; the
        // phase goes on from -90° towards -180° instead.
        if (kind == SectionModel::Kind::Pair && p.w > 1.0f) phase = keptF32(d64(phase) - Pi);
    }
    if (!(mag > 0)) return;
    mag = keptF32(std::log(d64(mag)) * kDbPerNeper);
    phase = keptF32(d64(phase) * kDegPerRad);
}

inline void finishResponse(SectionModel::Kind kind, const RatioPoint& p, float& mag, float& phase)
{
    finishResponse(kind, p, lagRadians(p, -series::atan(p.atanNum, p.atanDen)), mag, phase);
}

} // namespace qm
