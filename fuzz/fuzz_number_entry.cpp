// The road from typed text to a number and back: CorrectD, EngEntry, the
// strict and leading conversions, and Engsuffix. No text may crash or hang
// it, Engsuffix never writes NaN or infinity for a number, and what it
// writes reads back as the same value to its digits.
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

[[noreturn]] void fault(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

/// The strict conversion of EngEntry's result, as the validators do it.
bool readEntry(const std::string& text, char decSep, float& value)
{
    std::string entry = text;
    const std::string number = qm::EngEntry(entry, decSep);
    try {
        value = qm::f32(qm::strictNumber(number, decSep));
        return true;
    } catch (const qm::CalcFailure&) {
        return false;
    }
}

void checkDisplay(float value, int digits, char decSep)
{
    const std::string shown = qm::Engsuffix(value, digits, "", decSep);
    for (const char* bad : {"NaN", "Inf", "nan", "inf"})
        if (shown.find(bad) != std::string::npos) fault("Engsuffix wrote " + shown);
    float back = 0;
    if (!readEntry(shown, decSep, back)) fault("Engsuffix wrote " + shown + ", unreadable");
    const double tolerance = std::pow(10.0, 1 - digits) * std::fabs(static_cast<double>(value));
    if (std::fabs(static_cast<double>(back) - static_cast<double>(value)) > tolerance)
        fault("Engsuffix wrote " + shown + " for " + std::to_string(value));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) return 0;
    const char decSep = (data[0] & 1) != 0 ? ',' : '.';
    const int digits = 1 + data[1] % 7;
    const std::string typed(reinterpret_cast<const char*>(data + 2), size - 2);

    std::string work = typed;
    qm::CorrectD(work, decSep);
    std::string cut = work;
    qm::RemoveASC(cut);
    (void)qm::leadingNumber(work, decSep);
    (void)qm::leadingNumber(cut, decSep);
    try {
        (void)qm::engValue(work, decSep);
    } catch (const qm::CalcFailure&) {
    }
    float value = 0;
    if (readEntry(work, decSep, value)) checkDisplay(value, digits, decSep);
    return 0;
}
