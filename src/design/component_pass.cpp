#include "design/component_pass.h"

#include "design/adjust_pass.h"
#include "design/section_analysis.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"
#include "synthesis/mfb.h"
#include "synthesis/sallen_key.h"

#include <cmath>

namespace qm {

namespace {

// Required GBP: the real stage's amplifier needs 50 times its pole frequency,
// a section's 100 times gain·Q·Fn, and Sallen-Key gain·Q³·Fn.
constexpr double kRealStageGBPFactor = 50;
constexpr double kSectionGBPFactor = 100;
// The Totals row of the gain column.
constexpr int kTotalsRow = 5;

int listSeries(const Control& list, int (*seriesOf)(std::string_view))
{
    if (list.listIndex < 0 || list.listIndex >= static_cast<int>(list.items.size())) return 0;
    return seriesOf(list.items[static_cast<std::size_t>(list.listIndex)]);
}

bool isRealStage(const QuellmarkForm& f, int j)
{
    return f.n % 2 != 0 && j == f.sectionRows;
}

/// The parts of section j, taken from the record and written back however
/// the synthesis ends, as the fields themselves would be.
class PartsBinding
{
  public:
    PartsBinding(QuellmarkForm& f, int j)
        : f_(f),
          j_(static_cast<std::size_t>(j)), parts{f.ROne,   f.RTwo,   f.RThree,    f.RFour,
                                                 f.C1[j_], f.C2[j_], f.c1max[j_], f.c2min[j_]}
    {
    }
    ~PartsBinding()
    {
        f_.ROne = parts.ROne;
        f_.RTwo = parts.RTwo;
        f_.RThree = parts.RThree;
        f_.RFour = parts.RFour;
        f_.C1[j_] = parts.cOne;
        f_.C2[j_] = parts.cTwo;
        f_.c1max[j_] = parts.c1max;
        f_.c2min[j_] = parts.c2min;
    }
    PartsBinding(const PartsBinding&) = delete;
    PartsBinding& operator=(const PartsBinding&) = delete;

  private:
    QuellmarkForm& f_;
    std::size_t j_;

  public:
    SectionParts parts;
};

void runSynthesis(QuellmarkForm& f, int j, RowEntries* row)
{
    RoundingContext rc = roundingFor(f, j);
    SynthesisContext ctx{
        rc,       f.capdiv, row, f.FDAcircuit.checked(), leadingNumber(f.Text18.text, f.decSep) > 1,
        f.digits, f.decSep};
    PartsBinding bound(f, j);
    if (f.circuitType == 0)
        MFB(f.b0[j], f.b1[j], f.sectionGain, bound.parts, ctx);
    else
        Sallen(f.b0[j], f.b1[j], f.sectionGain, bound.parts, ctx);
}

void analyseMfb(QuellmarkForm& f, int j)
{
    MFBAnalyse(f, f.ROne, f.RTwo, f.RThree, f.C1[j], f.C2[j], f.b0[j], f.b1[j]);
    // The inverting gain is R2/R1.
    const float gain = f32(checkedDiv(d64(f.RTwo), d64(f.ROne)));
    if (!isRealStage(f, j))
        f.DCgain[f.sectionRows - j].text = formatPattern(d64(gain), "0.0##", f.decSep);
    f.stageGain[j] = f.RTwo != 0 ? gain : 1.0f;
}

void analyseSallen(QuellmarkForm& f, int j)
{
    SallenAnalyse(f, f.ROne, f.RTwo, f.RThree, f.RFour, f.C1[j], f.C2[j], f.sectionGain, f.b0[j],
                  f.b1[j]);
    // The non-inverting gain is 1 + R4/R3; no pair means a follower.
    if (!isRealStage(f, j)) {
        f.DCgain[f.sectionRows - j].text =
            f.RThree > 0 ? formatPattern(d64(f.RFour) / d64(f.RThree) + 1, "0.0##", f.decSep) : "1";
    }
    f.stageGain[j] = f.RFour > 0 ? f32(d64(f.RFour) / d64(f.RThree) + 1) : 1.0f;
}

} // namespace

RoundingContext roundingFor(QuellmarkForm& f, int j)
{
    return RoundingContext{.resistorSeries = listSeries(f.ResistorList, resistorSeriesOf),
                           .capacitorSeries = listSeries(f.CapacitorList, capacitorSeriesOf),
                           .highPass = f.InvCalc.value == 1,
                           .fc = f.fc,
                           .Fs = f.FnDisplay[static_cast<std::size_t>(j - 1)],
                           .hpRoundGuard = f.hpRoundGuard,
                           .gainResistorFlag = f.gainResistorFlag,
                           .eSeriesSize = f.eSeriesSize};
}

void synthesiseComponents(QuellmarkForm& f, int j)
{
    const int e = f.sectionRows - j - f.realPoleCount;
    if (e >= 0) {
        const auto k = static_cast<std::size_t>(e);
        RowEntries row{f.C1Entry[k].text, f.C2Entry[k].text, f.C1Value[k],
                       f.C2Value[k],      f.C1Changed[k],    f.C2Changed[k]};
        runSynthesis(f, j, &row);
    } else {
        runSynthesis(f, j, nullptr);
    }
    if (f.circuitType == 0)
        analyseMfb(f, j);
    else
        analyseSallen(f, j);
}

void synthesiseSection(QuellmarkForm& f, int j)
{
    synthesiseComponents(f, j);
    if (f.InvCalc.value == 1 && f.RTwo != 0) adjustSection(f, j);
}

double requiredGBPOf(const QuellmarkForm& f, int q)
{
    const auto row = static_cast<std::size_t>(q);
    if (q == 0 && f.n % 2 != 0) return kRealStageGBPFactor * d64(f.FnDisplay[0]);
    if (f.DCgain[row].text.empty()) return 0;
    const double gain = f32(strictNumber(f.DCgain[row].text, f.decSep));
    const double Q = d64(f.QDisplay[row]);
    const double qFactor = f.circuitType == 1 ? Q * Q * Q : Q;
    return kSectionGBPFactor * gain * qFactor * d64(f.FnDisplay[row]);
}

void requiredGBP(QuellmarkForm& f)
{
    const int S = f.sectionRows;
    const int m = S - f.realPoleCount;
    for (int i = 0; i <= m; ++i) {
        const int r = S - i - f.realPoleCount;
        // The row past the last section stands outside the table, or is the
        // Totals row; it is neither worked out nor shown.
        if (r >= kTotalsRow) continue;
        const auto q = static_cast<std::size_t>(r);
        if (r == 0 && f.n % 2 != 0) {
            f.reqGBP = f32(requiredGBPOf(f, r));
        } else if (!f.DCgain[q].text.empty()) {
            f.secGainValue = f32(strictNumber(f.DCgain[q].text, f.decSep));
            f.reqGBP = f32(requiredGBPOf(f, r));
        }
        f.GBPreq[q].text = Engsuffix(f.reqGBP, f.digits, "Hz", f.decSep);
        if (f.n % 2 == 0 && S < kTotalsRow) f.GBPreq[static_cast<std::size_t>(S)].text.clear();
    }
}

} // namespace qm
