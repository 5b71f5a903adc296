#include "design/section_plan.h"

#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <cmath>

namespace qm {

void deriveSectionCounts(QuellmarkForm& f)
{
    const bool odd = f.n % 2 != 0;
    f.realPoleCount = odd ? 1 : 0;
    f.realPoleFlag = odd ? -1 : 0;
    // Int(n/2 + 0.5): the sections with the real stage counted.
    f.sectionRows = static_cast<i16>(std::floor(f.n / 2.0 + 0.5));
}

void writeFnQRows(QuellmarkForm& f)
{
    const int m = f.sectionRows - f.realPoleCount;
    const bool highPass = f.InvCalc.value == 1;
    f.QProduct = 1.0f;
    for (int i = 0; i <= m; ++i) {
        const int k = i + f.realPoleCount;
        if (k == 0) continue;
        const int q = f.sectionRows - k;
        // b0 and b1 are still normalised to a cutoff of 1 here.
        const double root = checkedSqrt(f.b0[k]);
        const float shown = highPass ? f32(checkedDiv(d64(f.fc), root)) : f32(root * d64(f.fc));
        f.FSFreq[q].text = Engsuffix(shown, f.digits + 2, "Hz", f.decSep);
        f.FnDisplay[q] = f32(root * d64(f.fc));
        if (f.b1[k] != 0) {
            const float qValue = f32(root / d64(f.b1[k]));
            f.Qdisp[q].text = Engsuffix(qValue, f.digits + 2, "", f.decSep);
            f.QDisplay[q] = qValue;
            f.QProduct = f32(d64(f.QProduct) * d64(qValue));
        }
    }
}

void writeQtotal(QuellmarkForm& f)
{
    f.Qtotal.visible = f.n > 1;
    f.Qtotal.text = Engsuffix(f.QProduct, f.digits + 2, "", f.decSep);
    if (f.n % 2 == 1) f.DCgain[0].text = std::string(" 1") + f.decSep + "0";
}

namespace {

struct RealStagePlace
{
    Control* picture;
    int rTop;
    int cTop;
    int cLeftOffset;
};

void chooseRealStage(QuellmarkForm& f)
{
    for (Control* c :
         {&f.FDA1p, &f.FDARealHP, &f.RealPole, &f.RealHP, &f.RealPlabel, &f.RealR, &f.RealC})
        c->visible = false;
    if (f.n % 2 == 0) return;
    f.RealPlabel.visible = true;
    f.RealR.visible = true;
    f.RealC.visible = true;
    const bool fda = f.FDAcircuit.checked();
    const bool hp = f.InvCalc.value == 1;
    // Label places go with the picture (screen units, left from RealPole).
    const RealStagePlace place = fda ? (hp ? RealStagePlace{&f.FDARealHP, 4125, 3870, 1100}
                                           : RealStagePlace{&f.FDA1p, 4125, 4350, 1000})
                                     : (hp ? RealStagePlace{&f.RealHP, 4290, 4950, 600}
                                           : RealStagePlace{&f.RealPole, 4290, 4950, 600});
    place.picture->visible = true;
    f.RealR.top = place.rTop;
    f.RealC.top = place.cTop;
    f.RealC.left = f.RealPole.left + place.cLeftOffset;
}

void placeLabel(Control& label, const Control& base, int dTop, int dLeft)
{
    label.top = base.top + dTop;
    label.left = base.left + dLeft;
}

void sallenKeyRow(QuellmarkForm& f, int i, bool inUse, bool hp)
{
    if (!inUse) {
        for (Control* c : {&f.R1[i], &f.R2[i], &f.R3[i], &f.R4[i], &f.C1L[i], &f.C2L[i],
                           &f.SecLabel[i], &f.SK[i], &f.SKg1[i]})
            c->visible = false;
        if (i > 0) f.schLine[i - 1].visible = false;
        return;
    }
    for (Control* c : {&f.R1[i], &f.R2[i], &f.C1L[i], &f.C2L[i], &f.SecLabel[i]})
        c->visible = true;
    if (i > 0) f.schLine[i - 1].visible = true;
    const bool unity = f.gainEntry[i + 1] == 1.0f;
    f.R3[i].visible = !unity;
    f.R4[i].visible = !unity;
    Control& picture = unity ? (hp ? f.SKg1HP[i] : f.SKg1[i]) : (hp ? f.SKhp[i] : f.SK[i]);
    picture.visible = true;
    const Control& base = unity ? f.SKg1[i] : f.SK[i];
    placeLabel(f.R2[i], base, 230, 550);
    placeLabel(f.R3[i], base, 1235, 250);
    placeLabel(f.C1L[i], base, 915, 220);
    placeLabel(f.C2L[i], base, -175, 1100);
}

void multipleFeedbackRow(QuellmarkForm& f, int i, bool inUse, bool hp)
{
    f.R4[i].visible = false;
    f.SK[i].visible = false;
    f.SKg1[i].visible = false;
    if (!inUse) {
        for (Control* c :
             {&f.R1[i], &f.R2[i], &f.R3[i], &f.C1L[i], &f.C2L[i], &f.MFBsch[i], &f.SecLabel[i]})
            c->visible = false;
        if (i > 0) f.schLine[i - 1].visible = false;
        return;
    }
    for (Control* c : {&f.R1[i], &f.R2[i], &f.R3[i], &f.C1L[i], &f.C2L[i], &f.SecLabel[i]})
        c->visible = true;
    const bool fda = f.FDAcircuit.checked();
    Control& picture =
        fda ? (hp ? f.FDAschHP[i] : f.FDAsch[i]) : (hp ? f.MFBschHP[i] : f.MFBsch[i]);
    picture.visible = true;
    if (i > 0) f.schLine[i - 1].visible = true;
    const Control& base = f.MFBsch[i];
    placeLabel(f.R2[i], base, -170, 900);
    placeLabel(f.R3[i], base, 450, 550);
    placeLabel(f.C1L[i], base, 615, 1575);
    placeLabel(f.C2L[i], base, 950, 615);
}

void joiningLines(QuellmarkForm& f)
{
    // The rows have joined their own pictures; a differential design joins
    // its sections by lines of its own, and past five poles the two rows of
    // pictures are joined as well.
    const bool fda = f.FDAcircuit.checked();
    if (fda)
        for (Control& c : f.schLine)
            c.visible = false;
    const bool twoRows = f.n > 5;
    for (Control& c : f.FDAschLine)
        c.visible = twoRows && fda;
    f.Line2.visible = twoRows && !fda;
    f.Line3.visible = twoRows && !fda;
}

} // namespace

void chooseSchematics(QuellmarkForm& f)
{
    chooseRealStage(f);
    for (int i = 0; i <= 4; ++i)
        for (Control* c : {&f.MFBsch[i], &f.MFBschHP[i], &f.FDAsch[i], &f.FDAschHP[i], &f.SK[i],
                           &f.SKhp[i], &f.SKg1[i], &f.SKg1HP[i]})
            c->visible = false;
    const bool hp = f.InvCalc.value == 1;
    for (int i = 0; i <= 4; ++i) {
        const bool inUse = f.n >= 2 * (i + 1);
        if (f.circuitType == 1)
            sallenKeyRow(f, i, inUse, hp);
        else
            multipleFeedbackRow(f, i, inUse, hp);
    }
    joiningLines(f);
}

} // namespace qm
