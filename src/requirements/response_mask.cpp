#include "requirements/response_mask.h"

#include <cmath>

namespace qm {

namespace {

bool positiveNumber(double x)
{
    return std::isfinite(x) && x > 0;
}

} // namespace

std::string maskProblem(const ResponseMask& m, bool highPass)
{
    if (!positiveNumber(m.passEdgeHz)) return "The passband edge fp must be a frequency above 0.";
    if (!positiveNumber(m.stopEdgeHz)) return "The stopband edge fs must be a frequency above 0.";
    if (!highPass && m.stopEdgeHz <= m.passEdgeHz)
        return "For a low-pass design the stopband edge fs must lie above fp.";
    if (highPass && m.stopEdgeHz >= m.passEdgeHz)
        return "For a high-pass design the stopband edge fs must lie below fp.";
    if (!std::isfinite(m.passLossDb) || m.passLossDb < kLeastPassLossDb ||
        m.passLossDb > kMostPassLossDb)
        return "Ap must lie between 0.001 dB and 10 dB.";
    if (!std::isfinite(m.stopLossDb) || m.stopLossDb <= m.passLossDb)
        return "As must be larger than Ap.";
    if (!std::isfinite(m.delaySpreadPercent) || m.delaySpreadPercent < 0)
        return "The group-delay variation must be a percentage of 0 or more (0: no bound).";
    return {};
}

LowPassEdges lowPassEdges(const ResponseMask& m, bool highPass)
{
    if (!highPass) return {m.passEdgeHz, m.stopEdgeHz};
    return {1 / m.passEdgeHz, 1 / m.stopEdgeHz};
}

} // namespace qm
