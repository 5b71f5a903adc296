#include "numbers/number_text.h"

#include "numbers/float_store.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace qm {

// Placeholders until the conversions land.
double strictNumber(std::string_view text, char /*decSep*/)
{
    std::string s(text);
    char* end = nullptr;
    double v = std::strtod(s.c_str(), &end);
    if (s.empty() || *end != '\0')
        throw CalcFailure("not a number");
    return v;
}

double leadingNumber(std::string_view text, char /*decSep*/)
{
    std::string s(text);
    return std::strtod(s.c_str(), nullptr);
}

std::string generalText(float x, char decSep) { return generalText(static_cast<double>(x), decSep); }

std::string generalText(double x, char /*decSep*/)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.7G", x);
    return buf;
}

std::string formatPattern(double x, std::string_view /*pattern*/, char decSep)
{
    return generalText(x, decSep);
}

char localeDecimalSeparator() { return '.'; }

} // namespace qm
