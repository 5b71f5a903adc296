#include "design/table_lines.h"

#include "design/value_labels.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <array>

namespace qm {

namespace {

// Dash pieces of the value line for the columns a stage doesn't have.
constexpr const char* kSkLowRealDashes =
    "         --; --             --; --            --; --          ";
constexpr const char* kMfbRealDashes = "          --; --             --; --        ";
constexpr const char* kSkHighRealDashes =
    "         --; --             --; --            --; --        ";
constexpr const char* kNoR3Dashes = "  --; --    ";
constexpr const char* kNoR4Dashes = "   --; --  ";
constexpr const char* kHighNoR3Dashes = "         --; --            --; --     ";

/// A value as the table shows it: engineering text with the design's digits.
std::string eng(const QuellmarkForm& f, double x, std::string_view units)
{
    return Engsuffix(f32(x), f.digits, units, f.decSep);
}

std::string lowPassValueLine(const QuellmarkForm& f, int j)
{
    const bool sk = f.circuitType == 1;
    std::string line = f.sectionName + "      " + eng(f, f.ROne, " ");
    if (f.sectionName == "Real")
        return line + (sk ? kSkLowRealDashes : kMfbRealDashes) + eng(f, f.C1[j], "F");
    line += "         " + eng(f, f.RTwo, " ");
    line += "         ";
    line += f.RThree != 0 ? eng(f, f.RThree, " ") : kNoR3Dashes;
    if (sk) {
        const std::string r4 = eng(f, f.RFour, " ");
        line += r4 == "0" ? std::string("    ") + kNoR4Dashes : "     " + std::string("    ") + r4;
    }
    line += "        " + eng(f, f.C1[j], "F");
    line += "        " + eng(f, shownC2(f, j), "F");
    return line;
}

std::string highPassValueLine(const QuellmarkForm& f, int j)
{
    const bool sk = f.circuitType == 1;
    if (f.sectionName == "Real")
        return f.sectionName + "     " + eng(f, Rmap(f, j, f.C1[j]), " ") +
               (sk ? kSkHighRealDashes : kMfbRealDashes) + "     " +
               eng(f, Cmap(f, j, f.ROne), "F");
    std::string line = f.sectionName + "       " + eng(f, Rmap(f, j, f.C1[j]), " ");
    line += "        " + eng(f, Rmap(f, j, shownC2(f, j)), " ");
    if (!sk) {
        line += "        " + eng(f, Cmap(f, j, f.ROne), "F");
        line += "         " + eng(f, Cmap(f, j, f.RTwo), "F");
        line += f.RThree != 0 ? "         " + eng(f, Cmap(f, j, f.RThree), "F") : kHighNoR3Dashes;
        return line;
    }
    // The gain resistors of a Sallen-Key section stay resistors in high-pass.
    line += f.RThree != 0 ? "         " + eng(f, f.RThree, "") : kHighNoR3Dashes;
    if (f.RFour != 0) line += "       " + eng(f, f.RFour, "");
    line += "        " + eng(f, Cmap(f, j, f.ROne), "F");
    line += "         " + eng(f, Cmap(f, j, f.RTwo), "F");
    return line;
}

} // namespace

std::string columnHeader(bool sallenKey, bool highPass)
{
    if (sallenKey)
        return "Section       R1              R2               R3               R4               "
               "C1               C2";
    if (highPass)
        return "Section       R1               R2               C1               C2               "
               "C3";
    return "Section       R1               R2               R3               C1               C2";
}

Control& tableBox(QuellmarkForm& f, int j)
{
    const std::array<Control*, 5> boxes{&f.Text45, &f.Text44, &f.Text43, &f.Text42, &f.Text41};
    if (j < 1 || j > 5) throw CalcFailure("no table line for this section");
    return *boxes[static_cast<std::size_t>(j - 1)];
}

std::string sectionNameOf(const QuellmarkForm& f, int j)
{
    // The real stage is the section whose number is n/2 + 0.5.
    if (f.n / 2.0 + 0.5 == j) return "Real";
    static const std::array<const char*, 5> names{"A    ", "B    ", "C    ", "D    ", "E    "};
    const int t = f.sectionRows - j + 1 - f.realPoleCount;
    if (t < 1 || t > 5) return f.sectionName;
    return names[static_cast<std::size_t>(t - 1)];
}

double shownC2(const QuellmarkForm& f, int j)
{
    const double c2 = d64(f.C2[j]);
    return f.FDAcircuit.checked() && f.circuitType == 0 ? c2 / 2 : c2;
}

std::string valueLine(const QuellmarkForm& f, int j)
{
    return f.InvCalc.value == 1 ? highPassValueLine(f, j) : lowPassValueLine(f, j);
}

} // namespace qm
