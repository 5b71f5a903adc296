#include "chart/chart_legends.h"

#include "chart/chart_numbers.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"

#include <cmath>

namespace qm {

namespace {

constexpr int kGainLines = 9;  ///< Ampl(0..8), top to bottom
constexpr int kPhaseFirst = 9; ///< Ampl(9) is the bottom phase entry
constexpr double kDbPerDivision = 10;
constexpr int kDegreesPerDivision = 90;
constexpr int kPhaseBottom = -630; ///< bottom of the low-pass, non-inverting scale
constexpr int kDelayDigits = 2;
/// The top of the delay legend at gdScale 1, in tenths of a second.
constexpr double kDelayTopTenths = 4;

/// The designs of n poles whose multiple-feedback stages invert an even
/// number of times: 1, 4, 5, 8 and 9 poles.
bool evenInversions(int n)
{
    return n == 1 || n == 4 || n == 5 || n == 8 || n == 9;
}

} // namespace

double legendNumber(const std::string& text, char decSep)
{
    const double v = leadingNumber(text, decSep);
    return std::isfinite(v) ? v : 0.0;
}

void frequencyLegends(QuellmarkForm& f, float startHz)
{
    double decade = 1;
    for (Control& label : f.Gfreq) {
        label.text = Engsuffix(keptF32(d64(startHz) * decade), f.digits, "Hz", f.decSep);
        decade *= 10;
    }
}

void defaultGainLegend(QuellmarkForm& f)
{
    for (int k = 0; k < kGainLines; ++k) {
        const double below = d64(f.totalGainDB) - (k - 1) * kDbPerDivision;
        f.ampStep = keptF32(std::floor(below / kDbPerDivision) * kDbPerDivision);
        if (f.gainOverTop == -1) f.ampStep = keptF32(d64(f.ampStep) + kDbPerDivision);
        f.Ampl[static_cast<std::size_t>(k)].text = generalText(f.ampStep, f.decSep) + "dB";
    }
}

std::string customLegendText(double v, char decSep)
{
    const char* pattern = "0";
    if (v > 0 && v < 1)
        pattern = ".00#";
    else if (v >= 1 && v < 10)
        // NOLINTNEXTLINE(bugprone-branch-clone): -1 < v <= 0 below takes this format too
        pattern = ".0#";
    else if (v >= 10)
        pattern = "0.0"; // above 100 too: the format of the nearest range
    else if (v > -1)
        pattern = ".0#";
    else if (v > -10)
        pattern = ".0";
    // -10 and below, beyond -100 too, read as whole numbers.
    std::string text = formatPattern(v, pattern, decSep);
    if (text == std::string(1, decSep) + "0") text = "0";
    return text;
}

void customGainLegend(QuellmarkForm& f)
{
    std::string& top = f.ampTextArray[0];
    std::string& bottom = f.ampTextArray[8];
    if (!f.TopAmp.text.empty()) {
        top = f.TopAmp.text;
        if (f.BotAmp.text.empty())
            bottom = generalText(legendNumber(f.Ampl[8].text, f.decSep), f.decSep);
    }
    if (!f.BotAmp.text.empty()) {
        bottom = f.BotAmp.text;
        if (f.TopAmp.text.empty())
            top = generalText(legendNumber(f.Ampl[0].text, f.decSep), f.decSep);
    }
    const double a0 = legendNumber(top, f.decSep);
    const double a8 = legendNumber(bottom, f.decSep);
    f.ampStep = keptF32((a0 - a8) / (kGainLines - 1));
    for (int k = 0; k < kGainLines; ++k) {
        const double v = a0 - k * d64(f.ampStep);
        f.Ampl[static_cast<std::size_t>(k)].text = customLegendText(v, f.decSep) + "dB";
    }
}

void phaseLegend(QuellmarkForm& f)
{
    f.phaseBase = static_cast<i16>(f.InvCalc.value == 1 ? 540 : 0);
    const bool e = f.SallenKey.selected() || evenInversions(f.n);
    const bool d = f.FDAcircuit.checked() && f.realPoleCount == 1;
    // The legend turns by 180° when the chain inverts; the trace never does.
    const int offset = e != d ? 0 : -180;
    for (int k = kPhaseFirst; k < kPhaseFirst + kGainLines; ++k) {
        const int degrees =
            (k - kPhaseFirst) * kDegreesPerDivision + kPhaseBottom + offset + f.phaseBase;
        f.Ampl[static_cast<std::size_t>(k)].text = std::to_string(degrees) + "°";
    }
}

void delayLegend(QuellmarkForm& f)
{
    for (int k = 0; k < kGainLines; ++k) {
        const double seconds =
            ((kDelayTopTenths / f.gdScale) * (kGainLines - 1 - k) / (kGainLines - 1)) / 10;
        f.GroupDelay[static_cast<std::size_t>(k)].text =
            Engsuffix(keptF32(seconds), kDelayDigits, "s", f.decSep);
    }
}

} // namespace qm
