#pragma once
// The legends round the chart: frequencies below, gain on the left, phase
// and group delay on the right.
#include <string>

namespace qm {

class QuellmarkForm;

/// Gfreq(0..3): the sweep's start frequency and the next three decades.
void frequencyLegends(QuellmarkForm& f, float startHz);

/// Ampl(0..8) at 10 dB a division, the line below the top at the multiple of
/// ten at or under totalGainDB, all lifted 10 dB when the sweep reached the
/// top of that scale.
void defaultGainLegend(QuellmarkForm& f);

/// Ampl(0..8) between the designer's top and bottom limits; a limit not
/// given is the present legend's.
void customGainLegend(QuellmarkForm& f);

/// One entry of the custom gain legend, without the unit ("5.0", "0", "-10").
std::string customLegendText(double v, char decSep);

/// Ampl(9..17) in 90° steps, moved by 180° when the design inverts.
void phaseLegend(QuellmarkForm& f);

/// GroupDelay(0..8): from 0.4/gdScale seconds at the top down to 0.
void delayLegend(QuellmarkForm& f);

/// The leading number of a legend or limit text; one that isn't finite
/// reads as 0.
double legendNumber(const std::string& text, char decSep);

} // namespace qm
