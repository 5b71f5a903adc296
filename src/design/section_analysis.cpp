#include "design/section_analysis.h"

#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"

#include <cmath>

namespace qm {

namespace {

// What a real stage shows in place of a Q part.
constexpr const char* kNoQPart = "; --       ";
// Percentages from here on lose their decimal.
constexpr double kThreeDigits = 100;

/// A single pole at 1/(R·C): b0 is the pole itself, b1 is 0.
void realPoleOf(QuellmarkForm& f, float r, float c, float& b0out, float& b1out)
{
    f.anaWn = f32(checkedDiv(1.0, d64(r) * d64(c)));
    b0out = f.anaWn;
    b1out = 0;
}

} // namespace

void MFBAnalyse(QuellmarkForm& f, float ROne, float RTwo, float RThree, float cOne, float cTwo,
                float& b0out, float& b1out)
{
    if (cOne <= 0) return;
    if (cTwo <= 0) {
        realPoleOf(f, ROne, cOne, b0out, b1out);
        return;
    }
    f.sectionGain = f32(checkedDiv(d64(RTwo), d64(ROne)));
    if (RThree == 0) {
        realPoleOf(f, ROne, cOne, b0out, b1out);
        return;
    }
    const double r1 = d64(ROne), r2 = d64(RTwo), r3 = d64(RThree);
    const double c1 = d64(cOne), c2 = d64(cTwo);
    // wn² = 1/(R2·R3·C1·C2)
    f.anaWn = f32(checkedDiv(1.0, checkedSqrt(r2 * r3 * c1 * c2)));
    // 1/Q = (sqrt(R2·R3)/R1 + sqrt(R3/R2) + sqrt(R2/R3))·sqrt(C1/C2)
    const double invQ = (checkedDiv(checkedSqrt(r2 * r3), r1) + checkedSqrt(checkedDiv(r3, r2)) +
                         checkedSqrt(checkedDiv(r2, r3))) *
                        checkedSqrt(checkedDiv(c1, c2));
    f.anaQ = f32(checkedDiv(1.0, invQ));
    b0out = f32(d64(f.anaWn) * d64(f.anaWn));
    b1out = f32(std::fabs(checkedDiv(d64(f.anaWn), d64(f.anaQ))));
}

void SallenAnalyse(QuellmarkForm& f, float ROne, float RTwo, float RThree, float RFour, float cOne,
                   float cTwo, float& g, float& b0out, float& b1out)
{
    g = RThree > 0 ? f32(checkedDiv(d64(RFour), d64(RThree)) + 1) : 1.0f;
    if (RTwo == 0) {
        if (cOne > 0) realPoleOf(f, ROne, cOne, b0out, b1out);
        return;
    }
    if (cTwo <= 0) return;
    const double r1 = d64(ROne), r2 = d64(RTwo), c1 = d64(cOne), c2 = d64(cTwo);
    // wn² = 1/(R1·R2·C1·C2)
    f.anaWn = f32(checkedDiv(1.0, checkedSqrt(r1 * r2 * c1 * c2)));
    // 1/Q = sqrt(C1·R2/(R1·C2)) + sqrt(C1·R1/(R2·C2)) + (1 − g)·sqrt(C2·R1/(R2·C1))
    const double a = checkedSqrt(checkedDiv(c1 * r2, r1 * c2));
    const double b = checkedSqrt(checkedDiv(c1 * r1, r2 * c2));
    const double c = checkedSqrt(checkedDiv(c2 * r1, r2 * c1));
    const double d = (1 - d64(g)) * c + b + a;
    f.anaQ = f32(checkedDiv(1.0, d));
    b0out = f32(checkedDiv(1.0, r1 * r2 * c1 * c2));
    b1out = f32(std::fabs(d * d64(f.anaWn)));
}

namespace {

/// Percent change of Fn (new minus old) and of Q (old minus new) between the
/// section as built and as perturbed.
struct Percents
{
    double fn;
    double q;
};

Percents percentChange(double b0, double b1, double b0Real, double b1Real)
{
    const double root = std::sqrt(b0);
    const double realRoot = checkedSqrt(b0Real);
    return {checkedDiv((realRoot - root) * 100, root),
            checkedDiv((checkedDiv(root, b1) - checkedDiv(realRoot, b1Real)) * 100, root) * b1};
}

/// What SensText measures before it writes: the change of a real stage's
/// pole, the changes of Fn and Q, or nothing where the section as built has
/// no Fn and Q to compare with.
struct Measured
{
    enum class Kind { Pole, FnAndQ, Nothing };
    Kind kind = Kind::Nothing;
    double pole = 0;
    Percents percents{0, 0};
};

Measured measureChange(const QuellmarkForm& f)
{
    const double b0 = d64(f.b0[f.sectionNum]);
    const double b1 = d64(f.b1[f.sectionNum]);
    Measured m;
    if (f.b1Real == 0) {
        // A real stage: b0 is the pole, so this is the pole's change.
        m.kind = Measured::Kind::Pole;
        m.pole = checkedDiv((d64(f.b0Real) - b0) * 100, b0);
    } else if (b0 > 0 && b1 > 0) {
        m.kind = Measured::Kind::FnAndQ;
        m.percents = percentChange(b0, b1, d64(f.b0Real), d64(f.b1Real));
    }
    return m;
}

} // namespace

void SensText(QuellmarkForm& f, std::string& text, float& FnPercent, float& QPercent)
{
    const Measured m = measureChange(f);
    if (m.kind == Measured::Kind::Pole) {
        text = formatPattern(m.pole, "#0.0", f.decSep) + kNoQPart;
        return;
    }
    if (m.kind == Measured::Kind::Nothing) return;
    const Percents& p = m.percents;
    f.sensFnText = "  " + formatPattern(p.fn, "#0.0", f.decSep);
    FnPercent = f32(p.fn);
    TrimSensitivityText(f.sensFnText, f.decSep);
    f.sensQText = formatPattern(p.q, "##0.0", f.decSep);
    QPercent = f32(p.q);
    TrimSensitivityText(f.sensQText, f.decSep);
    text = f.sensFnText + "; " + f.sensQText;
}

void SensNumbers(QuellmarkForm& f, float& FnPercent, float& QPercent)
{
    const Measured m = measureChange(f);
    if (m.kind != Measured::Kind::FnAndQ) return;
    FnPercent = f32(m.percents.fn);
    QPercent = f32(m.percents.q);
}

void SensPercents(QuellmarkForm& f, float& FnPercent, float& QPercent)
{
    // A real stage's pole change is not taken here, so it can't fail either.
    if (f.b1Real == 0) return;
    SensNumbers(f, FnPercent, QPercent);
}

void TrimSensitivityText(std::string& text, char decSep)
{
    const double x = leadingNumber(text, decSep);
    if (x >= kThreeDigits)
        text = generalText(std::floor(x), decSep);
    else if (x <= -kThreeDigits)
        text = generalText(-std::floor(std::fabs(x)), decSep);
}

} // namespace qm
