#include "catalogue/amplifier_fields.h"

#include <algorithm>
#include <cctype>

namespace qm {

const std::array<FieldShape, kAmplifierFields>& amplifierFields()
{
    using A = FieldAlignment;
    using K = FieldKind;
    static const std::array<FieldShape, kAmplifierFields> kFields{{
        {"Device Name", 1000, A::Left, "", K::Name},
        {"Supplier", 700, A::Left, "", K::Text},
        {"Description", 2000, A::Left, "", K::Text},
        {"Function", 1000, A::Centre, "", K::Text},
        {"RR Input\rT/F", 900, A::Centre, "", K::TrueFalse},
        {"RR Output\rT/F", 900, A::Centre, "", K::TrueFalse},
        {"Min Vcc\r(V)", 900, A::General, "", K::Number},
        {"Max Vcc.", 900, A::General, "", K::Number},
        {"Min Gain", 800, A::General, "", K::Number},
        {"BW", 1500, A::General, "", K::Number},
        {"Slew Rate", 1000, A::General, "", K::Number},
        {"Ts at 0.1%", 1000, A::General, "", K::Number},
        {"Ts at 0.01%", 1500, A::General, "", K::Number},
        {"Diff. Gain", 1500, A::General, "0.000", K::Number},
        {"Diff. Phase", 1500, A::General, "", K::Number},
        {"Vn", 1500, A::General, "", K::Number},
        {"THD at 1 MHz", 1500, A::General, "", K::Number},
        {"THD at 10 MHz", 1500, A::General, "", K::Number},
        {"THD at 100 MHz", 1500, A::General, "", K::Number},
        {"Vos", 1500, A::General, "", K::Number},
        {"Ib", 1500, A::General, "0.00", K::Number},
        {"IsPerAmp", 1500, A::General, "", K::Number},
        {"Iout", 1500, A::General, "", K::Number},
        {"IntroYear", 1500, A::General, "", K::Number},
        {"Rout", 1500, A::General, "", K::Number},
        {"Voh", 1500, A::General, "", K::Number},
        {"Vol", 1500, A::General, "", K::Number},
        {"RL", 1500, A::General, "", K::Number},
        {"Iio", 1500, A::General, "", K::Number},
        {"CMRR", 1500, A::General, "", K::Number},
        {"PSRR", 1500, A::General, "", K::Number},
        {"NumberOfChannels", 1500, A::General, "", K::Number},
        {"Approx1KUPrice", 1500, A::General, "", K::Number},
        {"Area", 1500, A::General, "", K::Area},
        {"Height", 1500, A::General, "", K::Number},
    }};
    return kFields;
}

std::string flatCaption(std::size_t field)
{
    std::string s = amplifierFields()[field].caption;
    std::replace(s.begin(), s.end(), '\r', ' ');
    return s;
}

std::string trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(" \t");
    return std::string(text.substr(first, last - first + 1));
}

std::string lowerCase(std::string_view text)
{
    std::string s(text);
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

std::size_t fieldOfCaption(std::string_view caption)
{
    const std::string wanted = lowerCase(trimmed(caption));
    for (std::size_t k = 0; k < kAmplifierFields; ++k)
        if (lowerCase(flatCaption(k)) == wanted) return k;
    return kAmplifierFields;
}

} // namespace qm
