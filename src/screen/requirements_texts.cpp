#include "screen/requirements_texts.h"

#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"
#include "screen/requirements_window.h"

#include <algorithm>

namespace qm {

namespace {

constexpr Color kMetColor = rgb(0, 128, 0);
constexpr Color kMissedColor = rgb(192, 0, 0);
/// A family that doesn't reach the mask is greyed in the list.
constexpr Color kUnreachedRow = rgb(224, 224, 224);
constexpr int kCutoffDigits = 4;

std::string decibels(double db, char decSep)
{
    return formatPattern(db, "0.00", decSep) + " dB";
}

std::string percent(double pct, char decSep)
{
    return formatPattern(pct, "0.0", decSep) + " %";
}

void showVerdictLine(Control& c, const std::string& text, bool met)
{
    c.text = text;
    c.foreColor = met ? kMetColor : kMissedColor;
}

void clearVerdict(QuellmarkForm& f)
{
    for (const char* name : {"PassbandResult", "StopbandResult", "DelayResult", "VerdictResult"}) {
        Control& c = requirementsControl(f, name);
        c.text.clear();
        c.foreColor = kBlack;
    }
}

void showVerdict(QuellmarkForm& f, const DesignVerdict& v)
{
    const char sep = f.decSep;
    showVerdictLine(requirementsControl(f, "PassbandResult"),
                    "Worst passband attenuation " + decibels(v.passbandWorstDb, sep),
                    v.passbandMet);
    showVerdictLine(requirementsControl(f, "StopbandResult"),
                    "Stopband margin " + decibels(v.stopMarginDb, sep), v.stopbandMet);
    showVerdictLine(requirementsControl(f, "DelayResult"),
                    "Group-delay variation " + percent(v.delaySpreadPercent, sep), v.delayMet);
    showVerdictLine(requirementsControl(f, "VerdictResult"),
                    v.meets ? "The design meets the requirement."
                            : "The design misses the requirement.",
                    v.meets);
}

void showRows(QuellmarkForm& f)
{
    GridModel& g = *f.grid(kFamiliesGrid);
    const RequirementsState& r = f.requirements;
    g.rows.clear();
    if (r.inForce())
        for (const FamilyRow& row : r.rows)
            g.rows.push_back(familyCells(row, f.decSep));
    g.clearMarks();
    for (std::size_t k = 0; k < g.rows.size(); ++k) {
        if (r.rows[k].reached()) continue;
        g.rowColors[k] = kUnreachedRow;
        g.rowTips[k] = "Margin and delay variation with 10 poles";
    }
    g.row = std::clamp(g.row, 0, std::max(0, g.rowCount() - 1));
}

std::string maskNote(const QuellmarkForm& f)
{
    const RequirementsState& r = f.requirements;
    if (!r.problem.empty()) return r.problem;
    if (!r.mask) return "Enter fp, Ap, fs and As to check the design against them.";
    return f.InvCalc.value == 1 ? "High-pass mask: the passband lies above fp."
                                : "Low-pass mask: the passband lies below fp.";
}

} // namespace

std::vector<std::string> familyCells(const FamilyRow& row, char decSep)
{
    std::vector<std::string> cells{familyName(row.family)};
    if (!row.reached()) {
        cells.insert(cells.end(), {kNotReachable, "", ""});
    } else {
        cells.push_back(std::to_string(row.poles));
        cells.push_back(Engsuffix(f32(row.cutoffHz), kCutoffDigits, "Hz", decSep));
        cells.push_back(row.family == kChebychevFamily ? decibels(row.rippleDb, decSep) : "");
    }
    cells.push_back(decibels(row.stopMarginDb, decSep));
    cells.push_back(percent(row.delaySpreadPercent, decSep));
    return cells;
}

void showRequirements(QuellmarkForm& f)
{
    requirementsControl(f, "MaskNote").text = maskNote(f);
    requirementsControl(f, "MaskNote").foreColor =
        f.requirements.problem.empty() ? kBlack : kMissedColor;
    showRows(f);
    const RequirementsState& r = f.requirements;
    if (r.verdict)
        showVerdict(f, *r.verdict);
    else
        clearVerdict(f);
    requirementsControl(f, "UseFamily").enabled = r.inForce();
}

} // namespace qm
