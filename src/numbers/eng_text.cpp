#include "numbers/eng_text.h"

#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "numbers/power_of_ten.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace qm {

namespace {

// The micro sign in UTF-8, the encoding of all text in the program.
constexpr std::string_view microSign = "\xC2\xB5";

struct SuffixLetter
{
    std::string_view letter;
    double multiplier;
};

// Scale letters a designer may type. Case matters only where it has to:
// "m" is milli and "M" mega; "F" is femto, never farad.
constexpr std::array<SuffixLetter, 17> suffixLetters{{
    {"f", 1e-15},
    {"F", 1e-15},
    {"p", 1e-12},
    {"P", 1e-12},
    {"n", 1e-9},
    {"N", 1e-9},
    {"u", 1e-6},
    {"U", 1e-6},
    {microSign, 1e-6},
    {"m", 0.001},
    {"k", 1000.0},
    {"K", 1000.0},
    {"M", 1e6},
    {"G", 1e9},
    {"g", 1e9},
    {"T", 1e12},
    {"t", 1e12},
}};

// The suffix letter that starts at `pos`, if one does.
const SuffixLetter* suffixAt(std::string_view text, std::size_t pos)
{
    for (const SuffixLetter& s : suffixLetters)
        if (text.substr(pos, s.letter.size()) == s.letter) return &s;
    return nullptr;
}

// Cuts the entry behind its first suffix letter, so that "4.7 kOhm" reads as
// "4.7 k" and "1.00 kHz" as "1.00 k". Returns the letter, if any.
const SuffixLetter* cutBehindSuffix(std::string& entry)
{
    for (std::size_t i = 0; i < entry.size(); ++i)
        if (const SuffixLetter* s = suffixAt(entry, i)) {
            entry.resize(i + s->letter.size());
            return s;
        }
    return nullptr;
}

// Length in bytes of the last character of a UTF-8 text.
std::size_t lastCharLength(std::string_view text)
{
    std::size_t n = 1;
    while (n < text.size() && (static_cast<unsigned char>(text[text.size() - n]) & 0xC0) == 0x80)
        ++n;
    return n;
}

// Steps 4 to 7 of reading an entry; throws CalcFailure where a conversion
// fails. The entry is never empty here.
std::string readEntry(std::string& entry, char decSep)
{
    const SuffixLetter* suffix = cutBehindSuffix(entry);
    const std::size_t lastLen = lastCharLength(entry);
    const std::string_view body = std::string_view(entry).substr(0, entry.size() - lastLen);
    float work = f32(strictNumber(body, decSep));
    // The cut entry ends in the suffix letter exactly when one was found.
    if (suffix != nullptr)
        work = f32(d64(work) * suffix->multiplier);
    else
        work = f32(strictNumber(entry, decSep));
    return generalText(work, decSep);
}

// Scale texts of the display, by the power of ten reached in normalising.
std::optional<std::string_view> scaleText(int e)
{
    constexpr int lowest = -15;
    constexpr std::array<std::string_view, 9> texts{" f", " p", " n", " \xC2\xB5", " m",
                                                    " ",  " k", " M", " G"};
    if (e < lowest || e > 9 || e % 3 != 0) return std::nullopt;
    return texts[static_cast<std::size_t>((e - lowest) / 3)];
}

// Brings x into [1, 1000) by steps of a thousand; e counts the power of ten.
float normalise(float x, int& e)
{
    constexpr double step = 1000.0;
    e = 0;
    for (;;) {
        const double mag = std::fabs(d64(x));
        if (mag >= 1 && mag < step) return x;
        if (mag >= step) {
            x = f32(d64(x) / step);
            e += 3;
        } else {
            x = f32(d64(x) * step);
            e -= 3;
        }
    }
}

// Rounds x to d significant digits. The branch sees the sign, so every
// negative value is taken as below ten: -123.456 keeps five digits.
float roundSignificant(float x, int d)
{
    const int m = x < 10 ? d - 1 : (x < 100 ? d - 2 : d - 3);
    x = f32(d64(x) * powerOfTen(m));
    x = f32(std::floor(d64(x) + 0.5));
    return f32(d64(x) * powerOfTen(-m));
}

} // namespace

std::string EngEntry(std::string& entry, char decSep)
{
    std::string raw = entry;
    // An empty or blank field is no entry at all.
    if (entry.empty() || entry == " ") {
        entry.clear();
        return raw;
    }
    try {
        std::string number = readEntry(entry, decSep);
        entry.clear();
        return number;
    } catch (const CalcFailure&) {
        // Unreadable here is no fault: the caller's strict conversion of the
        // raw text decides, so "5" and "1E3" pass and "k" fails there.
        entry.clear();
        return raw;
    }
}

std::string Engsuffix(float innum, int d, std::string_view units, char decSep)
{
    if (innum == 0) return "0";
    if (!std::isfinite(innum)) return generalText(innum, decSep) + std::string(units);
    int e = 0;
    const float x = roundSignificant(normalise(innum, e), d);
    const auto scale = scaleText(e);
    if (!scale) return generalText(innum, decSep) + std::string(units);
    std::string s = generalText(x, decSep);
    if (s.find(decSep) == std::string::npos) s += decSep;
    // The sign counts in the length: -1.5 with three digits stays "-1.5".
    while (s.size() < static_cast<std::size_t>(d) + 1)
        s += '0';
    if (s.back() == decSep) s.pop_back();
    s += *scale;
    s += units;
    return s;
}

std::string CorrectD(std::string& Temp, char decSep)
{
    // The scan runs over the length on entry; after a deletion it goes on at
    // the next position, so the character that moved in is not looked at.
    const std::size_t length = Temp.size();
    bool found = false;
    for (std::size_t i = 0; i < length; ++i) {
        if (i >= Temp.size() || (Temp[i] != '.' && Temp[i] != ',')) continue;
        if (found)
            Temp.erase(i, 1);
        else
            Temp[i] = decSep;
        found = true;
    }
    return Temp;
}

std::string RemoveASC(std::string& Temp)
{
    const std::size_t keep = Temp.find_first_not_of(".,0123456789");
    if (keep != std::string::npos) Temp.resize(keep);
    return Temp;
}

float engValue(std::string_view text, char decSep)
{
    std::string entry(text);
    return f32(strictNumber(EngEntry(entry, decSep), decSep));
}

double engNumber(std::string_view text, char decSep)
{
    std::string entry(text);
    return strictNumber(EngEntry(entry, decSep), decSep);
}

} // namespace qm
