#include "design/value_labels.h"

#include "design/table_lines.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

namespace qm {

namespace {

/// Frequency of the high-pass mapping of section j. It is the one that the
/// rounding of standard values goes through, so that a rounded value is
/// still standard when it is shown.
double mappingFreq(const QuellmarkForm& f, int j)
{
    return d64(f.FnDisplay[static_cast<std::size_t>(j - 1)]);
}

/// Collects the texts of the value labels in the order they are written.
class LabelTexts
{
  public:
    explicit LabelTexts(const QuellmarkForm& f) : f_(f) {}
    void show(Control& label, double x, std::string_view units)
    {
        texts.labels.emplace_back(&label, Engsuffix(f32(x), f_.digits, units, f_.decSep));
    }
    ValueLabelTexts texts;

  private:
    const QuellmarkForm& f_;
};

void realStageValues(QuellmarkForm& f, int j, bool highPass, LabelTexts& out)
{
    if (highPass) {
        out.show(f.RealR, Cmap(f, j, f.ROne), "F");
        out.show(f.RealC, Rmap(f, j, f.C1[j]), "  ");
    } else {
        out.show(f.RealR, f.ROne, "   ");
        out.show(f.RealC, f.C1[j], "F");
    }
}

// The circuit's hidden labels are written all the same.
void lowPassValues(QuellmarkForm& f, int j, std::size_t e, LabelTexts& out)
{
    out.show(f.R1[e], f.ROne, "   ");
    out.show(f.R2[e], f.RTwo, "   ");
    out.show(f.R3[e], f.RThree, "   ");
    out.show(f.R4[e], f.RFour, "   ");
    out.show(f.C1L[e], f.C1[j], "F  ");
    out.show(f.C2L[e], shownC2(f, j), "F");
}

// The labels keep their places on the high-pass picture, so R1 now stands
// at a capacitor and C1L at a resistor.
void highPassValues(QuellmarkForm& f, int j, std::size_t e, LabelTexts& out)
{
    const bool sk = f.circuitType == 1;
    out.show(f.R1[e], Cmap(f, j, f.ROne), "F  ");
    out.show(f.R2[e], Cmap(f, j, f.RTwo), "F  ");
    // Sallen-Key gain resistors stay resistors; a label without its part
    // keeps what it showed.
    if (f.RThree != 0) {
        if (sk)
            out.show(f.R3[e], f.RThree, "   ");
        else
            out.show(f.R3[e], Cmap(f, j, f.RThree), "F  ");
    }
    if (f.RFour != 0) {
        if (sk)
            out.show(f.R4[e], f.RFour, "   ");
        else
            out.show(f.R4[e], Cmap(f, j, f.RFour), "F  ");
    }
    out.show(f.C1L[e], Rmap(f, j, f.C1[j]), "   ");
    out.show(f.C2L[e], Rmap(f, j, shownC2(f, j)), " ");
}

std::size_t entryRow(const QuellmarkForm& f, int j)
{
    return static_cast<std::size_t>(f.sectionRows - j - f.realPoleCount);
}

} // namespace

double Cmap(const QuellmarkForm& f, int j, double R)
{
    // A low-pass resistor R becomes the high-pass capacitor 1/(wc²/wm · R).
    const double fc = d64(f.fc);
    return checkedDiv(1.0, checkedDiv(fc * fc * 2 * Pi, mappingFreq(f, j)) * R);
}

double Rmap(const QuellmarkForm& f, int j, double C)
{
    // A low-pass capacitor C becomes the high-pass resistor 1/(wm · C).
    return checkedDiv(1.0, 2 * Pi * mappingFreq(f, j) * C);
}

ValueLabelTexts valueLabelTexts(QuellmarkForm& f, int j)
{
    const bool highPass = f.InvCalc.value == 1;
    LabelTexts out(f);
    try {
        if (f.sectionName == "Real")
            realStageValues(f, j, highPass, out);
        else if (highPass)
            highPassValues(f, j, entryRow(f, j), out);
        else
            lowPassValues(f, j, entryRow(f, j), out);
    } catch (const CalcFailure& e) {
        out.texts.failure = e.what();
    }
    return out.texts;
}

void showValueLabels(const ValueLabelTexts& texts)
{
    for (const auto& [label, text] : texts.labels)
        label->text = text;
    if (texts.failure) throw CalcFailure(*texts.failure);
}

void writeValueLabels(QuellmarkForm& f, int j)
{
    showValueLabels(valueLabelTexts(f, j));
}

void writeSensitivityLabels(QuellmarkForm& f, int j)
{
    if (f.sectionName == "Real") {
        f.RealR.text = f.sensR1;
        f.RealC.text = f.sensC1;
        return;
    }
    const std::size_t e = entryRow(f, j);
    f.R1[e].text = f.sensR1;
    f.R2[e].text = f.sensR2;
    f.R3[e].text = f.sensR3;
    f.R4[e].text = f.sensR4;
    f.C1L[e].text = f.sensC1;
    f.C2L[e].text = f.sensC2;
}

} // namespace qm
