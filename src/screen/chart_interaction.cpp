#include "screen/chart_interaction.h"

#include "design/cycle.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/design_entries.h"
#include "screen/event_table.h"
#include "screen/prompts.h"
#include "screen/quellmark_form.h"

#include <cmath>
#include <optional>

namespace qm {

namespace {

constexpr i16 kChartDecades = 3;
/// A mouse position further out than this is no place on any screen.
constexpr double kFarthestTwips = 1e7;

std::optional<double> limitOf(const Control& box, char decSep)
{
    const double v = leadingNumber(box.text, decSep);
    if (!std::isfinite(v)) return std::nullopt;
    return v;
}

/// Steps shared by both limit boxes; `other` is the box of the other end.
void checkLimit(QuellmarkForm& f, Control& box, const Control& other, int promptKey)
{
    // An emptied box hides; its empty text still counts as 0 below.
    if (box.text.empty()) box.visible = false;
    const auto limit = limitOf(box, f.decSep);
    const auto otherLimit = limitOf(other, f.decSep);
    const bool fits = limit && otherLimit && std::fabs(*limit) <= kGainLimit &&
                      std::fabs(*limit - *otherLimit) >= kLeastLimitGap;
    if (!fits) {
        box.text.clear();
        return;
    }
    f.promptKey = static_cast<i16>(promptKey);
    recalculateUnlessHeld(f);
}

} // namespace

double chartStartFrequency(const QuellmarkForm& f)
{
    std::string caption = f.Gfreq[0].text;
    return leadingNumber(EngEntry(caption, f.decSep), f.decSep);
}

void Graph_MouseDown(QuellmarkForm& f, const EventArgs& args)
{
    const double x = d64(args.x);
    if (!(std::fabs(x) <= kFarthestTwips)) throw CalcFailure("the mouse position is off the chart");
    f.Cursor.x1 = static_cast<int>(std::lround(x));
    f.Cursor.x2 = f.Cursor.x1;
    f.graphWidth = toI16(f.Graph.width);
    f.graphHeight = toI16(f.Graph.height);
    f.decades = kChartDecades;
    // The chart is logarithmic: each width/decades twips is one decade.
    const double start = chartStartFrequency(f);
    const float hz = f32(std::pow(10.0, x * f.decades / f.Graph.width) * start);
    f.RespF.text = Engsuffix(hz, f.digits, "", f.decSep);
}

void Graph_Click(QuellmarkForm& f)
{
    ValidatePendingEntry(f);
    recalculateUnlessHeld(f);
    ShowPrompt(f, kPromptGraph);
}

void Graph_DblClick(QuellmarkForm& f)
{
    f.Graph.backColor = f.Graph.backColor != kBlack ? kBlack : kWhite;
    recalculateUnlessHeld(f);
}

void Ampl_Click(QuellmarkForm& f, int index)
{
    if (index == 0)
        f.TopAmp.visible = true;
    else if (index == 8)
        f.BotAmp.visible = true;
    else
        return;
    AmpLimits_GotFocus(f);
}

void AmpLimits_GotFocus(QuellmarkForm& f)
{
    // The caption's "dB" comes along; reading the limit ignores it.
    if (f.TopAmp.text.empty()) f.TopAmp.text = f.Ampl[0].text;
    if (f.BotAmp.text.empty()) f.BotAmp.text = f.Ampl[8].text;
}

void TopAmp_LostFocus(QuellmarkForm& f)
{
    checkLimit(f, f.TopAmp, f.BotAmp, kPromptTopLimit);
}

void BotAmp_LostFocus(QuellmarkForm& f)
{
    checkLimit(f, f.BotAmp, f.TopAmp, kPromptBottomLimit);
}

void toggleTrace(QuellmarkForm& f, Control& menuEntry)
{
    menuEntry.value = menuEntry.value != 0 ? 0 : kSelected;
    updatescreen(f);
}

void registerChartHandlers(QuellmarkForm& form)
{
    using E = FormEvent;
    form.on("Graph", E::MouseDown,
            [](QuellmarkForm& f, int, const EventArgs& args) { Graph_MouseDown(f, args); });
    form.on("Graph", E::Click, [](QuellmarkForm& f, int, const EventArgs&) { Graph_Click(f); });
    form.on("Graph", E::DblClick,
            [](QuellmarkForm& f, int, const EventArgs&) { Graph_DblClick(f); });
    form.on("Ampl", E::Click,
            [](QuellmarkForm& f, int index, const EventArgs&) { Ampl_Click(f, index); });
    for (const char* box : {"TopAmp", "BotAmp"})
        form.on(box, E::GotFocus,
                [](QuellmarkForm& f, int, const EventArgs&) { AmpLimits_GotFocus(f); });
    form.on("TopAmp", E::LostFocus,
            [](QuellmarkForm& f, int, const EventArgs&) { TopAmp_LostFocus(f); });
    form.on("BotAmp", E::LostFocus,
            [](QuellmarkForm& f, int, const EventArgs&) { BotAmp_LostFocus(f); });
    form.on("ShowGainTrace", E::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { toggleTrace(f, f.ShowGainTrace); });
    form.on("ShowPhaseTrace", E::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { toggleTrace(f, f.ShowPhaseTrace); });
    form.on("ShowGDTrace", E::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { toggleTrace(f, f.ShowGDTrace); });
    form.on("SaveChartData", E::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { SaveChartData_Click(f); });
}

} // namespace qm
