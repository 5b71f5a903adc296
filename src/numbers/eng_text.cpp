#include "numbers/eng_text.h"

#include "numbers/float_store.h"
#include "numbers/number_text.h"

namespace qm {

// Placeholders until engineering text lands.
std::string EngEntry(std::string& entry, char /*decSep*/)
{
    std::string r = entry;
    entry.clear();
    return r;
}

std::string Engsuffix(float innum, int /*d*/, std::string_view units, char decSep)
{
    return generalText(innum, decSep) + std::string(units);
}

std::string CorrectD(std::string& Temp, char /*decSep*/) { return Temp; }

std::string RemoveASC(std::string& Temp) { return Temp; }

float engValue(std::string_view text, char decSep)
{
    std::string entry(text);
    return f32(strictNumber(EngEntry(entry, decSep), decSep));
}

} // namespace qm
