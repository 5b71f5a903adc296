#include "catalogue/record_sort.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace qm {

namespace {

struct KeyEntry
{
    const char* text;
    std::size_t field;
    int type;
};

// The sort-by names. "DeviceName" is compared as it stands against a text
// already lower-cased, so it never matches; the fallback gives the same field.
constexpr KeyEntry kKeys[] = {
    {"part number", 0, sortType::Text},  {"DeviceName", 0, sortType::Text},
    {"mfr", 1, sortType::Text},          {"type", 2, sortType::Text},
    {"ctype", 2, sortType::Text},        {"value", 3, sortType::Number},
    {"voltage", 4, sortType::Number},    {"volts", 4, sortType::Number},
    {"min_esr", 5, sortType::Number},    {"minesr", 5, sortType::Number},
    {"max_esr", 6, sortType::Number},    {"maxesr", 6, sortType::Number},
    {"iripple", 7, sortType::Number},    {"esl", 8, sortType::Number},
    {"thermalres", 9, sortType::Number}, {"cost1k", 10, sortType::Number},
    {"cost1m", 11, sortType::Number},    {"tolerance", 12, sortType::Number},
    {"tol", 12, sortType::Number},       {"height", 13, sortType::Number},
    {"sp1", 14, sortType::Number},       {"sp2", 15, sortType::Number},
    {"sp3", 16, sortType::Number},       {"area", 17, sortType::Area},
    {"mount", 18, sortType::Text},       {"size", 19, sortType::Text},
    {"region", 20, sortType::Text},
};

constexpr std::size_t kTieField = 3;
constexpr std::size_t kTieFieldOfTieField = 4;

double scaleOf(char letter)
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
    case 'k':
    case 'K':
        return 1e3;
    case 'M':
        return 1e6;
    case 'G':
        return 1e9;
    case 'T':
        return 1e12;
    default:
        return 0;
    }
}

/// Letters, '/', '%' and the bytes of UTF-8 signs such as the ohm sign.
bool isUnitChar(char c)
{
    const auto u = static_cast<unsigned char>(c);
    constexpr unsigned char kFirstNonAscii = 0x80;
    return std::isalpha(u) != 0 || c == '/' || c == '%' || u >= kFirstNonAscii;
}

constexpr std::string_view kMicroSign = "\xC2\xB5";

/// Where the texts of a number field compare: value first, then those that
/// aren't numbers by their text.
int compareNumbers(const std::optional<double>& a, const std::optional<double>& b,
                   const std::string& ta, const std::string& tb)
{
    if (a && b) return *a < *b ? -1 : (*b < *a ? 1 : 0);
    if (a) return -1;
    if (b) return 1;
    return ta.compare(tb);
}

int compareBy(const AmplifierRecord& a, const AmplifierRecord& b, const SortKey& key)
{
    const std::string& ta = a[key.field];
    const std::string& tb = b[key.field];
    switch (key.type) {
    case sortType::Number:
        return compareNumbers(engineeringValue(ta), engineeringValue(tb), ta, tb);
    case sortType::Area:
        return compareNumbers(areaValue(ta), areaValue(tb), ta, tb);
    case sortType::Text:
        return lowerCase(ta).compare(lowerCase(tb));
    default:
        return ta.compare(tb);
    }
}

} // namespace

SortKey sortKeyFor(std::string_view keyText)
{
    const std::string key = lowerCase(keyText);
    for (const KeyEntry& e : kKeys)
        if (key == e.text) return {e.field, e.type};
    return {0, sortType::AsStored};
}

SortKey headSortKey(std::size_t field)
{
    switch (amplifierFields()[field].kind) {
    case FieldKind::Number:
        return {field, sortType::Number};
    case FieldKind::Area:
        return {field, sortType::Area};
    default:
        return {field, sortType::Text};
    }
}

SortKey tieKey(const SortKey& first)
{
    return {first.field == kTieField ? kTieFieldOfTieField : kTieField, sortType::Number};
}

void sortRecords(std::vector<AmplifierRecord>& rows, const SortKey& first, const SortKey& second)
{
    std::stable_sort(rows.begin(), rows.end(),
                     [&](const AmplifierRecord& a, const AmplifierRecord& b) {
                         const int c = compareBy(a, b, first);
                         return c != 0 ? c < 0 : compareBy(a, b, second) < 0;
                     });
}

std::optional<double> engineeringValue(std::string_view text)
{
    const std::string t = trimmed(text);
    double v = 0;
    const char* begin = t.data();
    const char* end = t.data() + t.size();
    if (!t.empty() && *begin == '+') ++begin;
    auto [p, ec] = std::from_chars(begin, end, v);
    if (ec != std::errc() || p == begin || !std::isfinite(v)) return std::nullopt;
    while (p != end && *p == ' ')
        ++p;
    if (p == end) return v;
    // A scale letter, when a unit or nothing follows it; otherwise the
    // letters are the unit itself ("10 V", "3 mm").
    if (std::string_view(p, static_cast<std::size_t>(end - p)).starts_with(kMicroSign)) {
        v *= 1e-6;
        p += kMicroSign.size();
    } else if (const double scale = scaleOf(*p); scale != 0) {
        const bool alone = p + 1 == end;
        const bool unitFollows = !alone && std::all_of(p + 1, end, isUnitChar);
        const bool isMetre = *p == 'm' && (alone || p[1] == 'm');
        if ((alone || unitFollows) && !(isMetre && !alone)) {
            v *= scale;
            ++p;
        }
    }
    if (!std::all_of(p, end, isUnitChar)) return std::nullopt;
    return v;
}

std::optional<double> areaValue(std::string_view text)
{
    const std::string t = lowerCase(text);
    const auto x = t.find_first_of("x*");
    if (x == std::string::npos) return engineeringValue(t);
    const auto w = engineeringValue(t.substr(0, x));
    const auto l = engineeringValue(t.substr(x + 1));
    if (!w || !l) return std::nullopt;
    return *w * *l;
}

} // namespace qm
