#include "design/cycle.h"

#include "catalogue/design_marks.h"

#include "chart/chart_pass.h"
#include "design/component_pass.h"
#include "design/result_texts.h"
#include "design/section_plan.h"
#include "design/section_results.h"
#include "design/table_lines.h"
#include "design/unbuildable.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "numbers/pole_pairs.h"
#include "screen/prompts.h"
#include "screen/quellmark_form.h"
#include "screen/requirements_window.h"

#include <cmath>
#include <string>
#include <vector>

namespace qm {

namespace {

constexpr int kMaxPoleCount = 10;

/// Keeps the busy pointer up while the cycle runs, and takes it down however
/// the run ends.
class BusyScope
{
  public:
    explicit BusyScope(BusyPointer* p) : p_(p)
    {
        if (p_) p_->setBusy(true);
    }
    ~BusyScope()
    {
        if (p_) p_->setBusy(false);
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

  private:
    BusyPointer* p_;
};

void setEntryState(Control& c, bool open)
{
    c.backColor = open ? kWhite : kButtonFace;
    c.enabled = open;
}

/// Steps 3 and 4: response frequency default, cleared result arrays, colours.
void prepareRun(QuellmarkForm& f)
{
    if (f.respFreq == 0) f.respFreq = 1000.0f;
    for (int i = 0; i <= 5; ++i) {
        f.gainDBAtResp[i] = 0;
        f.phaseAtResp[i] = 0;
        f.FnDisplay[i] = 0;
        f.QDisplay[i] = 0;
    }
    f.Form.visible = true;
    for (Control* c : f.all())
        if (c->kind == ControlKind::OptionButton || c->kind == ControlKind::Frame)
            c->backColor = kFormColor;
    f.TypeFilter.backColor = kWhite;
}

/// Step 5: the design-level entries.
void readDesignEntries(QuellmarkForm& f)
{
    f.n = toI16(std::round(strictNumber(f.Text18.text, f.decSep)));
    // The section arrays hold ten poles; a count beyond them, which only a
    // design file can bring, is a subscript out of range.
    if (f.n < 1 || f.n > kMaxPoleCount) throw CalcFailure("subscript out of range");
    if (f.FDAcircuit.checked()) {
        f.selectOption(f.MFBtype);
        f.SallenKey.enabled = false;
    } else {
        f.SallenKey.enabled = true;
    }
    std::string temp = f.Text19.text;
    f.Text19.text = CorrectD(temp, f.decSep);
    if (!f.Text19.text.empty()) f.ripple = f32(strictNumber(f.Text19.text, f.decSep));
    std::string entry = f.Text34.text;
    std::string number = EngEntry(entry, f.decSep);
    if (!number.empty()) f.fc = f32(strictNumber(number, f.decSep));
    f.digits = 3;
    f.circuitType = f.SallenKey.selected() ? 1 : 0;
}

/// Steps 8 and 9: which section entries are open.
void openSectionEntries(QuellmarkForm& f)
{
    const int m = f.sectionRows - f.realPoleCount;
    const bool highPass = f.InvCalc.value == 1;
    for (int i = 0; i <= 4; ++i) {
        for (Control* c :
             {&f.DCgain[i], &f.GainF[i], &f.PhaseF[i], &f.GBPreq[i], &f.Qdisp[i], &f.FSFreq[i]})
            c->text.clear();
        if (i >= m) {
            setEntryState(f.C1Entry[i], false);
            setEntryState(f.C2Entry[i], false);
            setEntryState(f.GainTB[i], false);
        } else {
            setEntryState(f.GainTB[i], true);
            setEntryState(f.C1Entry[i], !highPass);
            setEntryState(f.C2Entry[i], !highPass);
        }
    }
    setEntryState(f.C1RealEntry, f.n % 2 == 1);
}

/// Step 10: fixed capacitors from their entries.
void readCapacitorEntries(QuellmarkForm& f)
{
    const int m = f.sectionRows - f.realPoleCount;
    const bool doubled = f.FDAcircuit.checked() && f.circuitType == 0;
    for (int i = 0; i <= m - 1; ++i) {
        const int j = i + 1;
        const int e = m - 1 - i;
        std::string entry = f.C1Entry[e].text;
        std::string number = EngEntry(entry, f.decSep);
        if (!f.C1Entry[e].text.empty()) {
            const double v = strictNumber(number, f.decSep);
            if (v != 0) f.C1[j] = f32(v);
        }
        entry = f.C2Entry[e].text;
        number = EngEntry(entry, f.decSep);
        if (!f.C2Entry[e].text.empty()) {
            const double v = strictNumber(number, f.decSep);
            if (v != 0) f.C2[j] = f32(doubled ? 2 * v : v);
        }
    }
    if (f.n % 2 == 1) {
        std::string entry = f.C1RealEntry.text;
        std::string number = EngEntry(entry, f.decSep);
        f.C1[f.sectionRows] =
            f.C1RealEntry.text.empty() ? 0.0f : f32(-strictNumber(number, f.decSep));
    }
}

/// Step 11: the pole pairs of the family, normalised to a cutoff of 1.
void generatePoles(QuellmarkForm& f)
{
    PolePairSettings s;
    s.filterType = f.filterType;
    s.typeFilterIndex = f.TypeFilter.listIndex;
    s.polesEntry = leadingNumber(f.Text18.text, f.decSep);
    s.sectionRows = f.sectionRows;
    s.realPoleCount = f.realPoleCount;
    s.fc = f.fc;
    s.QScale = f.QScale;
    s.highPass = f.InvCalc.value == 1;
    s.decSep = f.decSep;
    for (int r = 0; r < 5; ++r)
        s.rows[r] = {f.FnInput[r].text, f.QInput[r].text, f.FnInput[r].visible,
                     f.QInput[r].visible};
    polepairs(f.n, f.ripple, f.b0, f.b1, s, f.QBaseProduct);
    f.QInput[0].visible = s.rows[0].qVisible;
}

/// Step 12: gain entries into gainEntry; the last slot read is
/// Round(n/2 - 1), rounding a half to the even neighbour.
void readGainEntries(QuellmarkForm& f)
{
    const int last = static_cast<int>(std::nearbyint(f.n / 2.0 - 1.0));
    for (int i = 0; i <= last; ++i) {
        if (f.GainTB[i].text.empty()) {
            f.gainEntry[i + 1] = 1.0f;
        } else {
            f.gainEntry[i + 1] = f32(strictNumber(f.GainTB[i].text, f.decSep));
            f.GainTB[i].text = generalText(f.gainEntry[i + 1], f.decSep);
        }
    }
}

/// Step 17.1: the R1 seed, reset before every section.
void readSeed(QuellmarkForm& f)
{
    if (f.Text12.text.empty()) f.Text12.text = std::string("10") + f.decSep + "00 k";
    f.R1Seed = engValue(f.Text12.text, f.decSep);
    f.Text12.text = Engsuffix(f.R1Seed, f.digits, "", f.decSep);
    f.ROne = f.R1Seed;
}

/// Step 17.3: a cleared capacitor entry goes back to automatic, unless the
/// other capacitor of its row has just been entered.
void releaseClearedCapacitors(QuellmarkForm& f, int j)
{
    const int e = f.sectionRows - j - f.realPoleCount;
    if (e < 0) return;
    if (f.C1Entry[e].text.empty() && f.C2Changed[e] == 0) f.C1[j] = 0;
    if (f.C2Entry[e].text.empty() && f.C1Changed[e] == 0) f.C2[j] = 0;
}

/// Runs one step of the cycle's last part; a failure there leaves what the
/// step would have written and the design goes on. Returns false then.
template <class Step> bool attempt(Step&& step)
{
    try {
        step();
        return true;
    } catch (const CalcFailure&) {
        return false;
    }
}

/// The response row of a section whose response can't be taken stays empty
/// and adds nothing to the Totals row.
void clearResponseRow(QuellmarkForm& f, int j)
{
    const auto q = static_cast<std::size_t>(f.sectionRows - j);
    f.GainF[q].text.clear();
    f.PhaseF[q].text.clear();
    f.gainDBAtResp[q] = 0;
    f.phaseAtResp[q] = 0;
}

/// Cycle step 17 for section j. Where the formulas give a part that can't be
/// made, or fail on the way, the section shows what it could compute, marks
/// the rest and leaves a notice for the prompt; the next sections go on.
void runSection(QuellmarkForm& f, int j, std::vector<std::string>& notices)
{
    f.sectionNum = static_cast<i16>(j);
    f.b0Design = f.b0[j];
    f.b1Design = f.b1[j];
    SectionFault fault{j, {}};
    try {
        readSeed(f);
        f.gainEntry[0] = 1.0f;
        f.sectionGain = f.gainEntry[f.sectionRows - j + 1 - f.realPoleCount];
        releaseClearedCapacitors(f, j);
        synthesiseSection(f, j);
    } catch (const CalcFailure& e) {
        fault.failure = e.what();
    }
    const std::vector<std::string> missing = unbuildableNames(f, fault);
    if (!missing.empty()) showSectionAsDesigned(f, j);
    attempt([&] { requiredGBP(f); });
    if (!attempt([&] { responseRow(f, j); })) clearResponseRow(f, j);
    const bool shown = attempt([&] { sensitivitiesAndTableLine(f, j); });
    if (!missing.empty()) {
        markUnbuildable(f, j, missing);
        notices.push_back(unbuildableNotice(f, fault, missing));
    } else if (!shown) {
        attempt([&] { tableBox(f, j).text = sectionNameOf(f, j) + "      --"; });
    }
    attempt([&] { keepSectionResult(f, j); });
}

/// Steps 5 to 16: the entries read, the poles made and scaled.
void prepareSections(QuellmarkForm& f)
{
    readDesignEntries(f);
    deriveSectionCounts(f);
    f.viewMode = f.CompValue.selected() ? 0 : 2;
    openSectionEntries(f);
    readCapacitorEntries(f);
    generatePoles(f);
    readGainEntries(f);
    writeFnQRows(f);
    writeQtotal(f);
    ScaleFreq(f.fc, f.b0, f.b1);
    for (Control* c : {&f.Text41, &f.Text42, &f.Text43, &f.Text44, &f.Text45})
        c->text.clear();
    chooseSchematics(f);
}

/// The notices of sections that can't be built stand above the prompt of
/// promptKey, which the next clean recalculation shows alone again.
void showNotices(QuellmarkForm& f, const std::vector<std::string>& notices)
{
    if (notices.empty()) return;
    std::string text;
    for (const std::string& notice : notices)
        text += notice + "\r\n";
    f.Prompt.text = text + "\r\n" + f.Prompt.text;
}

} // namespace

void updatescreen(QuellmarkForm& f)
{
    f.Label18.text = "Hz";
    f.Label9.text = "Hz";
    BusyScope busy(f.platform.busy);
    prepareRun(f);
    // The cycle ends with a whole screen whatever its formulas meet: no
    // failure leaves it half written or goes back to the entry that started
    // it, and the next change of any entry recalculates as usual.
    std::vector<std::string> notices;
    try {
        prepareSections(f);
        for (int j = f.sectionRows; j >= 1; --j)
            runSection(f, j, notices);
    } catch (const CalcFailure& e) {
        // While a design file is read, a design that can't be made is the
        // file's fault: the reader takes the failure and says so.
        if (f.readingDesignFile) throw;
        notices.push_back(markDesignUnbuildable(f, e.what()));
    }
    attempt([&] { checkRequirements(f); });
    attempt([&] { chartGridAndSweep(f); });
    attempt([&] { totalsAndDescription(f); });
    attempt([&] { chartAxesAndTraces(f); });
    ShowPrompt(f, f.promptKey);
    showNotices(f, notices);
    attempt([&] { totalsRow(f); });
    attempt([&] { markDesignLimits(f); });
}

} // namespace qm
