#include "design/sensitivity_table.h"

#include "design/section_analysis.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

namespace qm {

namespace {

// Dash pieces that hold the columns of components a stage doesn't have, so
// that every line stays under its header.
constexpr const char* kMfbLowRealDashes = "     --; --          --; --        ";
constexpr const char* kSkLowRealDashes = "       --; --          --; --          --; --        ";
constexpr const char* kSkNoGainDashes = "      --; --             --; --      ";
constexpr const char* kMfbHighRealDashes = "      --; --            --; --          ";
constexpr const char* kSkHighRealDashes = "       --; --           --; --           --; --        ";

/// A component raised by 1% for one analysis; the stored value stays.
float raised(float x)
{
    return f32(d64(x) * 1.01);
}

std::size_t slot(Part p)
{
    return static_cast<std::size_t>(p);
}

std::string& fieldOf(QuellmarkForm& f, Part p)
{
    switch (p) {
    case Part::R1:
        return f.sensR1;
    case Part::R2:
        return f.sensR2;
    case Part::R3:
        return f.sensR3;
    case Part::R4:
        return f.sensR4;
    case Part::C1:
        return f.sensC1;
    case Part::C2:
        break;
    }
    return f.sensC2;
}

/// Analyses section j with `part` raised by 1% into b0Real, b1Real.
void analyseRaised(QuellmarkForm& f, int j, Part part)
{
    float r1 = f.ROne, r2 = f.RTwo, r3 = f.RThree, r4 = f.RFour;
    float c1 = f.C1[j], c2 = f.C2[j];
    float* target[] = {&r1, &r2, &r3, &r4, &c1, &c2};
    *target[slot(part)] = raised(*target[slot(part)]);
    if (f.circuitType == 1)
        SallenAnalyse(f, r1, r2, r3, r4, c1, c2, f.sectionGain, f.b0Real, f.b1Real);
    else
        MFBAnalyse(f, r1, r2, r3, c1, c2, f.b0Real, f.b1Real);
}

/// Measures one part, keeps the text in its field and in the line's parts.
void take(QuellmarkForm& f, int j, Part p, SensitivityLineParts& parts)
{
    std::string text = perturb(f, j, p);
    fieldOf(f, p) = text;
    parts.text[slot(p)] = std::move(text);
}

/// The gain resistors of a Sallen-Key section, when it has them. The
/// analyses before this one have left the realised gain in sectionGain.
void takeGainResistors(QuellmarkForm& f, int j, SensitivityLineParts& parts)
{
    parts.gainResistors = f.sectionGain > 1;
    if (!parts.gainResistors) return;
    take(f, j, Part::R3, parts);
    take(f, j, Part::R4, parts);
}

const std::string& textOf(const SensitivityLineParts& p, Part part)
{
    return p.text[slot(part)];
}

std::string lowPassLine(const SensitivityLineParts& p)
{
    auto t = [&p](Part part) { return textOf(p, part); };
    std::string line = p.name + "     " + t(Part::R1);
    if (p.sallenKey) {
        if (p.realStage)
            line += kSkLowRealDashes;
        else
            line += "  " + t(Part::R2) +
                    (p.gainResistors ? "  " + t(Part::R3) + "  " + t(Part::R4) : kSkNoGainDashes);
        line += "  " + t(Part::C1);
        if (!p.realStage) line += "  " + t(Part::C2);
        return line;
    }
    if (p.realStage)
        line += kMfbLowRealDashes;
    else
        line += "    " + t(Part::R2) + "    " + t(Part::R3);
    line += "    " + t(Part::C1);
    if (!p.realStage) line += "    " + t(Part::C2);
    return line;
}

// In high-pass the columns follow the high-pass circuit, where the low-pass
// capacitors have become its resistors: C1 and C2 come first.
std::string highPassLine(const SensitivityLineParts& p)
{
    auto t = [&p](Part part) { return textOf(p, part); };
    if (p.sallenKey) {
        std::string line = p.name + "     " + t(Part::C1);
        if (p.realStage)
            line += kSkHighRealDashes;
        else
            line += "     " + t(Part::C2) +
                    (p.gainResistors ? "   " + t(Part::R3) + "   " + t(Part::R4) : kSkNoGainDashes);
        line += "  " + t(Part::R1);
        if (!p.realStage) line += "  " + t(Part::R2);
        return line;
    }
    std::string line = p.name + "    " + t(Part::C1);
    if (p.realStage) return line + kMfbHighRealDashes + "    " + t(Part::R1);
    return line + "    " + t(Part::C2) + "     " + t(Part::R1) + "    " + t(Part::R2) + "    " +
           t(Part::R3);
}

} // namespace

std::string perturb(QuellmarkForm& f, int j, Part part)
{
    analyseRaised(f, j, part);
    SensText(f, f.workText, f.sensFnValue, f.sensQValue);
    return f.workText;
}

void perturbNumbers(QuellmarkForm& f, int j, Part part)
{
    analyseRaised(f, j, part);
    SensNumbers(f, f.sensFnValue, f.sensQValue);
}

std::string sensitivityLine(const SensitivityLineParts& p)
{
    return p.highPass ? highPassLine(p) : lowPassLine(p);
}

std::string measureForTable(QuellmarkForm& f, int j)
{
    SensitivityLineParts p;
    p.name = f.sectionName;
    p.sallenKey = f.circuitType == 1;
    p.highPass = f.InvCalc.value == 1;
    p.realStage = f.sectionName == "Real";
    const bool second = !p.realStage;
    if (!p.highPass) {
        take(f, j, Part::R1, p);
        if (second) {
            take(f, j, Part::R2, p);
            if (p.sallenKey)
                takeGainResistors(f, j, p);
            else
                take(f, j, Part::R3, p);
        }
        take(f, j, Part::C1, p);
        if (second) take(f, j, Part::C2, p);
    } else {
        take(f, j, Part::C1, p);
        if (second) {
            take(f, j, Part::C2, p);
            if (p.sallenKey) takeGainResistors(f, j, p);
        }
        take(f, j, Part::R1, p);
        if (second) take(f, j, Part::R2, p);
        if (second && !p.sallenKey) take(f, j, Part::R3, p);
    }
    return sensitivityLine(p);
}

void measureForSchematic(QuellmarkForm& f, int j)
{
    // One order for both passbands: the labels keep their places on the
    // picture, so they name the low-pass prototype's parts.
    SensitivityLineParts unused;
    for (Part p : {Part::R1, Part::R2, Part::R3})
        take(f, j, p, unused);
    if (f.circuitType == 1) take(f, j, Part::R4, unused);
    take(f, j, Part::C1, unused);
    if (f.sectionName != "Real") take(f, j, Part::C2, unused);
}

} // namespace qm
