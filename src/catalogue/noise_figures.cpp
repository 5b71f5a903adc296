#include "catalogue/noise_figures.h"

#include "catalogue/amplifier_fields.h"

#include <charconv>
#include <cmath>
#include <string>

namespace qm {

namespace {

constexpr double kNanoVoltsPerRootHertz = 1e-9;
constexpr double kMicroAmps = 1e-6;
constexpr std::string_view kMicroSign = "\xC2\xB5";

/// The scales small figures come in; 0 for any other letter.
double smallScale(char letter)
{
    switch (letter) {
    case 'f':
        return 1e-15;
    case 'p':
        return 1e-12;
    case 'n':
        return 1e-9;
    case 'u':
        return 1e-6;
    case 'm':
        return 1e-3;
    default:
        return 0;
    }
}

/// A number alone, in `plainUnit`; or a number with a scale, the unit
/// letter of the field or both, and whatever follows the unit letter
/// ("4.5 nV/rtHz", "250n", "2 uA", "0.3 A"). Other letters say the text is
/// something else ("typ", "4.5 nA" for a voltage), and read as nothing.
std::optional<double> figureOf(std::string_view text, double plainUnit, char unit)
{
    const std::string t = trimmed(text);
    const char* begin = t.data();
    const char* end = begin + t.size();
    if (begin != end && *begin == '+') ++begin;
    double v = 0;
    const auto [stop, ec] = std::from_chars(begin, end, v);
    if (ec != std::errc() || stop == begin || !std::isfinite(v)) return std::nullopt;
    std::string_view rest = std::string_view(stop, static_cast<std::size_t>(end - stop));
    while (!rest.empty() && rest.front() == ' ')
        rest.remove_prefix(1);
    if (rest.empty()) return v * plainUnit;
    double scale = 1;
    if (rest.starts_with(kMicroSign)) {
        scale = kMicroAmps;
        rest.remove_prefix(kMicroSign.size());
    } else if (const double s = smallScale(rest.front()); s != 0) {
        scale = s;
        rest.remove_prefix(1);
    }
    if (!rest.empty() && rest.front() != unit) return std::nullopt;
    return v * scale;
}

} // namespace

std::optional<double> voltageNoiseOf(std::string_view text)
{
    const auto v = figureOf(text, kNanoVoltsPerRootHertz, 'V');
    if (!v || !(*v > 0)) return std::nullopt;
    return v;
}

std::optional<double> biasCurrentOf(std::string_view text)
{
    const auto v = figureOf(text, kMicroAmps, 'A');
    if (!v || *v == 0) return std::nullopt;
    return std::fabs(*v);
}

} // namespace qm
