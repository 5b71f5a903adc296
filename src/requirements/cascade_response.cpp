#include "requirements/cascade_response.h"

#include <algorithm>
#include <cmath>

namespace qm {

namespace {

/// The band is scanned on a log grid this fine, from this far below its edge;
/// below that the sections are flat to far less than any mask can tell.
constexpr double kPointsPerDecade = 400;
constexpr double kDecadesBelowEdge = 4;
/// The stopband is scanned this far above its edge; all-pole sections only
/// fall further beyond.
constexpr double kDecadesAboveEdge = 3;
constexpr double kSearchTop = 1e3;
constexpr int kBisections = 80;

/// |H|² of one section at w.
double sectionPower(const CascadeSection& s, double w)
{
    if (s.b1 == 0) return s.b0 * s.b0 / (s.b0 * s.b0 + w * w);
    const double re = s.b0 - w * w;
    const double im = s.b1 * w;
    return s.b0 * s.b0 / (re * re + im * im);
}

/// -d(phase)/dw of one section at w.
double sectionDelay(const CascadeSection& s, double w)
{
    if (s.b1 == 0) return s.b0 / (s.b0 * s.b0 + w * w);
    const double re = s.b0 - w * w;
    const double im = s.b1 * w;
    return s.b1 * (s.b0 + w * w) / (re * re + im * im);
}

double gridStep()
{
    return std::pow(10.0, 1 / kPointsPerDecade);
}

} // namespace

double cascadeGainDb(const Cascade& c, double w)
{
    double db = 0;
    for (const CascadeSection& s : c)
        db += 10 * std::log10(sectionPower(s, w));
    return db;
}

double cascadeDelay(const Cascade& c, double w)
{
    double t = 0;
    for (const CascadeSection& s : c)
        t += sectionDelay(s, w);
    return t;
}

double BandExtremes::delaySpreadPercent() const
{
    if (!(dcDelay > 0)) return 0;
    return 100 * (maxDelay - minDelay) / dcDelay;
}

BandExtremes passbandExtremes(const Cascade& c, double w)
{
    BandExtremes e;
    e.maxGainDb = e.minGainDb = cascadeGainDb(c, 0);
    e.dcDelay = e.maxDelay = e.minDelay = cascadeDelay(c, 0);
    const auto take = [&](double at) {
        const double g = cascadeGainDb(c, at);
        const double t = cascadeDelay(c, at);
        e.maxGainDb = std::max(e.maxGainDb, g);
        e.minGainDb = std::min(e.minGainDb, g);
        e.maxDelay = std::max(e.maxDelay, t);
        e.minDelay = std::min(e.minDelay, t);
    };
    const double step = gridStep();
    for (double at = w * std::pow(10.0, -kDecadesBelowEdge); at < w; at *= step)
        take(at);
    take(w);
    return e;
}

double leastAttenuationAbove(const Cascade& c, double w, double referenceDb)
{
    double least = referenceDb - cascadeGainDb(c, w);
    const double step = gridStep();
    const double top = w * std::pow(10.0, kDecadesAboveEdge);
    for (double at = w * step; at <= top; at *= step)
        least = std::min(least, referenceDb - cascadeGainDb(c, at));
    return least;
}

double edgeOfSpread(const Cascade& c, double lossDb)
{
    double most = cascadeGainDb(c, 0), least = most;
    const double step = gridStep();
    double below = 0;
    for (double at = std::pow(10.0, -kDecadesBelowEdge); at <= kSearchTop; at *= step) {
        const double g = cascadeGainDb(c, at);
        if (std::max(most, g) - std::min(least, g) < lossDb) {
            most = std::max(most, g);
            least = std::min(least, g);
            below = at;
            continue;
        }
        // The edge lies between the last point within the loss and this one:
        // the spread grows with the band, so halving the step finds it.
        double lo = below, hi = at;
        for (int k = 0; k < kBisections; ++k) {
            const double mid = 0.5 * (lo + hi);
            const double gm = cascadeGainDb(c, mid);
            (std::max(most, gm) - std::min(least, gm) < lossDb ? lo : hi) = mid;
        }
        return 0.5 * (lo + hi);
    }
    return 0;
}

} // namespace qm
