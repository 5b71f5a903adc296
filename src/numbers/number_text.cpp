#include "numbers/number_text.h"

#include "numbers/float_store.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <system_error>

// Nothing here reads or sets the process locale: the separator is always the
// one passed in, and conversions go through <charconv>, which is locale-free.

namespace qm {

namespace {

constexpr int generalDigitsFloat = 7;
constexpr int generalDigitsDouble = 15;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

std::size_t skipBlanks(std::string_view text, std::size_t pos)
{
    while (pos < text.size() && isBlank(text[pos]))
        ++pos;
    return pos;
}

// The longest leading number of `text` from `pos`: sign, digits with at most
// one decSep, and an exponent only when it has digits. `plain` receives it
// with '.' as separator and without a '+', the form that <charconv> reads.
struct NumberScan
{
    std::size_t end = 0; // one past the last character taken; 0 when none
    std::string plain;
    std::size_t mantissaLen = 0; // length of `plain` before its exponent
    long exponent = 0;
};

std::size_t scanDigits(std::string_view text, std::size_t pos, std::string& out)
{
    const std::size_t start = pos;
    while (pos < text.size() && isDigit(text[pos]))
        ++pos;
    out.append(text.substr(start, pos - start));
    return pos;
}

std::size_t scanExponent(std::string_view text, std::size_t pos, NumberScan& scan)
{
    constexpr long exponentCap = 100000; // far beyond any double, yet no overflow
    if (pos >= text.size() || (text[pos] != 'E' && text[pos] != 'e')) return pos;
    std::size_t p = pos + 1;
    bool negative = false;
    if (p < text.size() && (text[p] == '+' || text[p] == '-')) negative = text[p++] == '-';
    std::string digits;
    p = scanDigits(text, p, digits);
    if (digits.empty()) return pos; // "1E" is the number 1 followed by a letter
    for (const char c : digits)
        scan.exponent = std::min(scan.exponent * 10 + (c - '0'), exponentCap);
    if (negative) scan.exponent = -scan.exponent;
    scan.plain += (negative ? "e-" : "e") + digits;
    return p;
}

NumberScan scanNumber(std::string_view text, std::size_t pos, char decSep)
{
    NumberScan scan;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
        if (text[pos] == '-') scan.plain += '-';
        ++pos;
    }
    const std::size_t intStart = pos;
    pos = scanDigits(text, pos, scan.plain);
    bool digits = pos > intStart;
    if (pos < text.size() && text[pos] == decSep) {
        scan.plain += '.';
        const std::size_t fracStart = pos + 1;
        pos = scanDigits(text, fracStart, scan.plain);
        digits = digits || pos > fracStart;
    }
    if (!digits) return NumberScan{};
    scan.mantissaLen = scan.plain.size();
    scan.end = scanExponent(text, pos, scan);
    return scan;
}

double fromChars(std::string_view plain, std::errc& ec)
{
    double value = 0;
    const auto res = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    ec = res.ec;
    if (ec == std::errc() && res.ptr != plain.data() + plain.size())
        ec = std::errc::invalid_argument;
    return value;
}

// Power of ten of the first significant digit of a plain mantissa: 3 for
// "1234.5", -2 for "0.012". Zero digits only give a very low power.
long leadingPower(std::string_view mantissa)
{
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) return std::numeric_limits<long>::min() / 2;
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const auto distance = static_cast<long>(point) - static_cast<long>(first);
    return first < point ? distance - 1 : distance;
}

// Converts a scanned number. A value beyond the 64-bit range is an overflow;
// one below its smallest step is zero.
double convertScan(const NumberScan& scan)
{
    std::errc ec{};
    const double value = fromChars(scan.plain, ec);
    if (ec == std::errc()) return value;
    if (ec != std::errc::result_out_of_range) throw CalcFailure("not a number");
    const std::string_view mantissa = std::string_view(scan.plain).substr(0, scan.mantissaLen);
    if (leadingPower(mantissa) + scan.exponent > 0) throw CalcFailure("overflow");
    return 0.0;
}

// Digits and exponent of |x| to `precision` significant digits, rounded to
// nearest by <charconv>: "1.234e+03" gives digits "1234", exponent 3.
struct Decimal
{
    std::string digits;
    int exponent = 0;
};

Decimal decimalOf(double x, int precision)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(x),
                                   std::chars_format::scientific, precision - 1);
    const std::string text(buf, res.ptr);
    const std::size_t ePos = text.find('e');
    Decimal d;
    for (std::size_t i = 0; i < ePos; ++i)
        if (isDigit(text[i])) d.digits += text[i];
    d.exponent = std::stoi(text.substr(ePos + 1));
    return d;
}

std::string withSeparator(std::string text, char decSep)
{
    for (char& c : text)
        if (c == '.') c = decSep;
    return text;
}

// The powers of ten that doubles hold exactly.
constexpr std::array<double, 23> exactTens{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                           1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                           1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Where a value scaled by a power of ten lies between two integers. The
// product is rounded once, so it lies within half a step of a double of the
// exact product; `certain` says that this can't move it across the midpoint
// of the two integers, nor can a further shift of the value by `shift`
// relative to it.
struct ScaledSplit
{
    std::int64_t below = 0; // the integer at or below the scaled value
    bool upper = false;     // the scaled value is nearer the integer above
    bool certain = false;
};

ScaledSplit splitScaled(double a, int tens, double shift)
{
    constexpr double kDoubleStep = 0x1p-52; // a double's step relative to it
    const double t = a * exactTens[static_cast<std::size_t>(tens)];
    ScaledSplit s;
    s.below = static_cast<std::int64_t>(t);
    const double fraction = t - static_cast<double>(s.below); // exact below 2^52
    const double margin = t * (kDoubleStep + shift);
    s.upper = fraction > 0.5;
    s.certain = std::fabs(fraction - 0.5) > margin;
    return s;
}

// n·10^-places in fixed notation, without trailing zeros after the point
// (nor the point when none remain), with decSep as the point. Built in place:
// n has at most 19 digits, and places stay below 24.
std::string fixedText(std::uint64_t n, int places, bool negative, char decSep)
{
    char reversed[20]; // the digits of n, the last first
    std::size_t count = 0;
    do {
        reversed[count++] = static_cast<char>('0' + n % 10);
        n /= 10;
    } while (n > 0);
    const auto fraction = static_cast<std::size_t>(places);
    const std::size_t width = std::max(count, fraction + 1); // with leading zeros
    char text[48];
    std::size_t length = 0;
    if (negative) text[length++] = '-';
    std::size_t point = 0;
    for (std::size_t k = width; k-- > 0;) {
        if (k + 1 == fraction) {
            point = length;
            text[length++] = decSep;
        }
        text[length++] = k < count ? reversed[k] : '0';
    }
    if (fraction > 0) {
        while (text[length - 1] == '0')
            --length;
        if (length == point + 1) --length;
    }
    return {text, length};
}

// The general form of x as <charconv> gives it, worked out the quick way
// where that is certain to give the same: in fixed notation (the first
// digit's power of ten from -4 to precision - 1) and with the rounding to
// `precision` digits no near tie. Nothing elsewhere.
std::string quickGeneralText(double x, int precision, char decSep)
{
    constexpr int kLowestPower = -4; // below it the general form takes an exponent
    const double a = std::fabs(x);
    if (!(a >= 1e-4 && a < exactTens[static_cast<std::size_t>(precision)])) return {};
    // The power of ten of the first digit, by exact powers: 10^power ≤ a, or
    // 1 ≤ a·10^-power below 1.
    int power = precision - 1;
    while (power > 0 && a < exactTens[static_cast<std::size_t>(power)])
        --power;
    if (power == 0)
        while (power > kLowestPower && a * exactTens[static_cast<std::size_t>(-power)] < 1)
            --power;
    int places = precision - 1 - power;
    const ScaledSplit split = splitScaled(a, places, 0);
    if (!split.certain) return {};
    std::int64_t n = split.below + (split.upper ? 1 : 0);
    const auto lowest =
        static_cast<std::int64_t>(exactTens[static_cast<std::size_t>(precision - 1)]);
    if (n == 10 * lowest && places > 0) {
        // Rounded up to the next power of ten, which keeps one place fewer.
        n = lowest;
        --places;
    }
    // A power guessed one off by a rounded comparison shows in the count of
    // digits; so does a rise into the exponent form.
    if (n < lowest || n >= 10 * lowest) return {};
    return fixedText(static_cast<std::uint64_t>(n), places, x < 0, decSep);
}

std::string generalTextDigits(double x, int precision, char decSep)
{
    if (std::isnan(x)) return "NaN";
    if (std::isinf(x)) return x > 0 ? "Inf" : "-Inf";
    if (x == 0) return "0"; // also for -0: a zero is shown without a sign
    if (std::string quick = quickGeneralText(x, precision, decSep); !quick.empty()) return quick;
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::general, precision);
    std::string text(buf, res.ptr);
    for (char& c : text)
        if (c == 'e') c = 'E';
    return withSeparator(text, decSep);
}

} // namespace

double strictNumber(std::string_view text, char decSep)
{
    const std::size_t start = skipBlanks(text, 0);
    const NumberScan scan = scanNumber(text, start, decSep);
    if (scan.end == 0 || skipBlanks(text, scan.end) != text.size())
        throw CalcFailure("not a number");
    return convertScan(scan);
}

double leadingNumber(std::string_view text, char decSep)
{
    const NumberScan scan = scanNumber(text, skipBlanks(text, 0), decSep);
    if (scan.end == 0) return 0.0;
    try {
        return convertScan(scan);
    } catch (const CalcFailure&) {
        // Never fails: a number beyond range reads as the largest there is.
        const double huge = std::numeric_limits<double>::infinity();
        return scan.plain[0] == '-' ? -huge : huge;
    }
}

std::string generalText(float x, char decSep)
{
    return generalTextDigits(d64(x), generalDigitsFloat, decSep);
}

std::string generalText(double x, char decSep)
{
    return generalTextDigits(x, generalDigitsDouble, decSep);
}

namespace {

// A digit pattern split at its separator: forced and optional digits on each
// side. "#0.0##" has one forced integer digit, one forced and two optional
// decimals.
struct Pattern
{
    int intForced = 0;
    int fracForced = 0;
    int fracTotal = 0;
};

Pattern parsePattern(std::string_view pattern)
{
    Pattern p;
    const std::size_t point = pattern.find('.');
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool fraction = point != std::string_view::npos && i > point;
        if (fraction && (pattern[i] == '0' || pattern[i] == '#')) ++p.fracTotal;
        if (pattern[i] == '0') ++(fraction ? p.fracForced : p.intForced);
    }
    return p;
}

// Rounds a decimal half away from zero to `places` decimals and returns the
// digits of the result with the separator position counted from the left:
// the value is digits[0 .. intLen) "." digits[intLen ..).
std::string roundDecimal(const Decimal& d, int places, int& intLen)
{
    // Fixed-point digits: prepend zeros so that at least one integer digit
    // exists, append zeros so that `places` decimals exist.
    std::string digits = d.digits;
    intLen = d.exponent + 1;
    if (intLen < 1) {
        digits.insert(0, static_cast<std::size_t>(1 - intLen), '0');
        intLen = 1;
    }
    const std::size_t wanted = static_cast<std::size_t>(intLen) + static_cast<std::size_t>(places);
    if (digits.size() < wanted) digits.append(wanted - digits.size(), '0');
    const bool roundUp = digits.size() > wanted && digits[wanted] >= '5';
    digits.resize(wanted);
    if (roundUp) {
        std::size_t i = wanted;
        while (i > 0 && digits[i - 1] == '9')
            digits[--i] = '0';
        if (i == 0) {
            digits.insert(0, 1, '1');
            ++intLen;
        } else {
            ++digits[i - 1];
        }
    }
    return digits;
}

// The digits of roundDecimal(decimalOf(x, 15), places, intLen) worked out
// the quick way where that is certain to give the same: |x| below 10^12 and
// the scaled value no near tie, also after the fifteen-digit rounding, which
// moves x by less than kFifteenDigitShift of it. Empty elsewhere. The digits
// may have other leading zeros than roundDecimal's.
std::string quickRoundedDigits(double x, int places, int& intLen)
{
    constexpr double kFifteenDigitShift = 1e-14;
    constexpr double kLargest = 1e12;
    constexpr int kMostPlaces = 6;
    const double a = std::fabs(x);
    if (!(a < kLargest) || places > kMostPlaces) return {};
    const ScaledSplit split = splitScaled(a, places, kFifteenDigitShift);
    if (!split.certain) return {};
    const auto n = static_cast<std::uint64_t>(split.below + (split.upper ? 1 : 0));
    char buf[24];
    const auto end = std::to_chars(buf, buf + sizeof buf, n).ptr;
    const auto count = static_cast<std::size_t>(end - buf);
    const auto fraction = static_cast<std::size_t>(places);
    // At least one digit before the point.
    std::string digits(count > fraction ? 0 : fraction + 1 - count, '0');
    digits.append(buf, count);
    intLen = static_cast<int>(digits.size() - fraction);
    return digits;
}

} // namespace

std::string formatPattern(double x, std::string_view pattern, char decSep)
{
    if (!std::isfinite(x)) return generalText(x, decSep);
    const Pattern p = parsePattern(pattern);
    // Rounding works on the value's fifteen-digit decimal form, so that 1.005
    // rounds as the 1.005 it was written as, not as its binary neighbour.
    int intLen = 0;
    std::string digits = quickRoundedDigits(x, p.fracTotal, intLen);
    if (digits.empty())
        digits = roundDecimal(decimalOf(x, generalDigitsDouble), p.fracTotal, intLen);
    const std::string_view all(digits);
    std::string_view intPart = all.substr(0, static_cast<std::size_t>(intLen));
    std::string_view fracPart = all.substr(static_cast<std::size_t>(intLen));
    intPart.remove_prefix(std::min(intPart.find_first_not_of('0'), intPart.size()));
    const auto forced = static_cast<std::size_t>(p.intForced);
    const std::size_t padding = forced > intPart.size() ? forced - intPart.size() : 0;
    while (fracPart.size() > static_cast<std::size_t>(p.fracForced) && fracPart.back() == '0')
        fracPart.remove_suffix(1);
    const bool zero = all.find_first_not_of('0') == std::string_view::npos;
    std::string text;
    text.reserve(padding + intPart.size() + fracPart.size() + 2);
    if (x < 0 && !zero) text += '-';
    text.append(padding, '0');
    text += intPart;
    if (!fracPart.empty()) {
        text += decSep;
        text += fracPart;
    }
    if (text.empty()) text = "0";
    return text;
}

char usableDecimalSeparator(const std::locale& locale)
{
    // A separator that is part of a number itself, or that a designer can't
    // type, would make entries unreadable.
    const char sep = std::use_facet<std::numpunct<char>>(locale).decimal_point();
    return sep == ',' ? ',' : '.';
}

char localeDecimalSeparator()
{
    try {
        return usableDecimalSeparator(std::locale(""));
    } catch (const std::exception&) {
        return '.'; // a locale the runtime can't build
    }
}

} // namespace qm
