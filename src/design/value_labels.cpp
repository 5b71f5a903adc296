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

void show(const QuellmarkForm& f, Control& label, double x, std::string_view units)
{
    label.text = Engsuffix(f32(x), f.digits, units, f.decSep);
}

void realStageValues(QuellmarkForm& f, int j, bool highPass)
{
    if (highPass) {
        show(f, f.RealR, Cmap(f, j, f.ROne), "F");
        show(f, f.RealC, Rmap(f, j, f.C1[j]), "  ");
    } else {
        show(f, f.RealR, f.ROne, "   ");
        show(f, f.RealC, f.C1[j], "F");
    }
}

// The circuit's hidden labels are written all the same.
void lowPassValues(QuellmarkForm& f, int j, std::size_t e)
{
    show(f, f.R1[e], f.ROne, "   ");
    show(f, f.R2[e], f.RTwo, "   ");
    show(f, f.R3[e], f.RThree, "   ");
    show(f, f.R4[e], f.RFour, "   ");
    show(f, f.C1L[e], f.C1[j], "F  ");
    show(f, f.C2L[e], shownC2(f, j), "F");
}

// The labels keep their places on the high-pass picture, so R1 now stands
// at a capacitor and C1L at a resistor.
void highPassValues(QuellmarkForm& f, int j, std::size_t e)
{
    const bool sk = f.circuitType == 1;
    show(f, f.R1[e], Cmap(f, j, f.ROne), "F  ");
    show(f, f.R2[e], Cmap(f, j, f.RTwo), "F  ");
    // Sallen-Key gain resistors stay resistors; a label without its part
    // keeps what it showed.
    if (f.RThree != 0) {
        if (sk)
            show(f, f.R3[e], f.RThree, "   ");
        else
            show(f, f.R3[e], Cmap(f, j, f.RThree), "F  ");
    }
    if (f.RFour != 0) {
        if (sk)
            show(f, f.R4[e], f.RFour, "   ");
        else
            show(f, f.R4[e], Cmap(f, j, f.RFour), "F  ");
    }
    show(f, f.C1L[e], Rmap(f, j, f.C1[j]), "   ");
    show(f, f.C2L[e], Rmap(f, j, shownC2(f, j)), " ");
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

void writeValueLabels(QuellmarkForm& f, int j)
{
    const bool highPass = f.InvCalc.value == 1;
    if (f.sectionName == "Real") {
        realStageValues(f, j, highPass);
        return;
    }
    const std::size_t e = entryRow(f, j);
    if (highPass)
        highPassValues(f, j, e);
    else
        lowPassValues(f, j, e);
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
