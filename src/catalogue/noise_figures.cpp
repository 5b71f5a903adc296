#include "catalogue/noise_figures.h"

#include "catalogue/amplifier_fields.h"
#include "catalogue/record_sort.h"

#include <charconv>
#include <cmath>

namespace qm {

namespace {

constexpr double kNanoVoltsPerRootHertz = 1e-9;
constexpr double kMicroAmps = 1e-6;

/// A number alone is in `plainUnit`; one with letters reads as they say.
std::optional<double> figureOf(std::string_view text, double plainUnit)
{
    std::string t = trimmed(text);
    if (!t.empty() && t.front() == '+') t.erase(0, 1);
    double v = 0;
    const char* end = t.data() + t.size();
    const auto [p, ec] = std::from_chars(t.data(), end, v);
    if (ec == std::errc() && p == end && p != t.data())
        return std::isfinite(v) ? std::optional(v * plainUnit) : std::nullopt;
    return engineeringValue(t);
}

} // namespace

std::optional<double> voltageNoiseOf(std::string_view text)
{
    const auto v = figureOf(text, kNanoVoltsPerRootHertz);
    if (!v || !(*v > 0)) return std::nullopt;
    return v;
}

std::optional<double> biasCurrentOf(std::string_view text)
{
    const auto v = figureOf(text, kMicroAmps);
    if (!v || *v == 0) return std::nullopt;
    return std::fabs(*v);
}

} // namespace qm
