#include "files/design_restore.h"

#include "files/field_reader.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "numbers/pole_pairs.h"
#include "screen/quellmark_form.h"
#include "screen/requirements_window.h"

namespace qm {

namespace {

constexpr int kCustomQ = 6;
constexpr int kCustomFnQ = 7;
constexpr int kLastBaseFamily = 5;

i16 polesOnScreen(const QuellmarkForm& f)
{
    return toI16(leadingNumber(f.Text18.text, f.decSep));
}

/// The product of the base family's Qs at the design's pole count, which a
/// Q total is divided by to give the factor of every Q.
float baseQProduct(const QuellmarkForm& f, i16 n)
{
    PolePairSettings s;
    s.filterType = f.baseFilterType;
    s.typeFilterIndex = kCustomQ;
    s.polesEntry = n;
    s.sectionRows = static_cast<i16>((n + 1) / 2);
    s.realPoleCount = static_cast<i16>(n % 2);
    s.fc = f.fc;
    SectionFloats b0{}, b1{};
    float product = 1.0f;
    const float ripple = f.Text19.text.empty() ? f.ripple : engValue(f.Text19.text, f.decSep);
    polepairs(n, ripple, b0, b1, s, product);
    return product;
}

void restoreCustomQ(QuellmarkForm& f, const DesignExtras& extras)
{
    if (f.baseFilterType < 0 || f.baseFilterType > kLastBaseFamily)
        throw DesignFileError("a Custom Q design without a family");
    f.filterType = f.baseFilterType;
    if (!extras.qTotal) return;
    f.Qtotal.text = *extras.qTotal;
    const float product = baseQProduct(f, polesOnScreen(f));
    f.QBaseProduct = product;
    f.QScale = product == 0 ? 1.0f : f32(d64(engValue(f.Qtotal.text, f.decSep)) / d64(product));
}

/// The rows of the file, each shown where n poles use it: row 0 is the real
/// pole of an odd n, with no Q.
void restoreCustomFnQ(QuellmarkForm& f, const CustomRowTexts& rows)
{
    const int n = polesOnScreen(f);
    const int top = (n - 1) / 2;
    for (std::size_t i = 0; i < rows.fn.size(); ++i) {
        const int row = static_cast<int>(i);
        f.FnInput[i].text = rows.fn[i];
        f.QInput[i].text = rows.q[i];
        f.FnInput[i].visible = row <= top;
        f.QInput[i].visible = row <= top && !(row == 0 && n % 2 == 1);
    }
}

} // namespace

void restoreCustomDesign(QuellmarkForm& f, const CustomRowTexts& rows, const DesignExtras& extras)
{
    if (f.TypeFilter.listIndex == kCustomQ) restoreCustomQ(f, extras);
    if (f.TypeFilter.listIndex == kCustomFnQ) restoreCustomFnQ(f, rows);
}

void restoreMask(QuellmarkForm& f, const DesignExtras& extras)
{
    setMaskEntries(f, extras.mask);
    if (extras.maskDamaged) f.showMessage(kMaskDamaged);
}

DesignExtras designExtrasOf(const QuellmarkForm& f)
{
    DesignExtras extras;
    extras.mask = f.requirements.mask;
    if (f.TypeFilter.listIndex == kCustomQ) extras.qTotal = f.Qtotal.text;
    return extras;
}

} // namespace qm
