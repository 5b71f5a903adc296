#pragma once
// What the chart answers: a click chooses the response frequency and moves
// the blue cursor there, a double click inverts the ground, the top and
// bottom gain legends open entries for a scale of the designer's own, and
// the View menu shows and hides the three traces.
#include <string>

namespace qm {

class QuellmarkForm;
struct EventArgs;
struct Control;

/// Prompt keys of the chart.
constexpr int kPromptGraph = 19;
constexpr int kPromptBottomLimit = 20;
constexpr int kPromptTopLimit = 21;

/// Gain limits of a custom scale lie within ±100 dB and at least 0.2 dB apart.
constexpr double kGainLimit = 100;
constexpr double kLeastLimitGap = 0.2;

/// The chart's left edge in Hz, read back from the caption of Gfreq(0) (so
/// already rounded to three digits); 0 before the first chart.
double chartStartFrequency(const QuellmarkForm& f);

/// Any button: the cursor goes to x and RespF shows the frequency there,
/// three decades across the chart's width. y is not used.
void Graph_MouseDown(QuellmarkForm& f, const EventArgs& args);
/// Commits the entry being typed, recalculates, shows the chart's prompt.
void Graph_Click(QuellmarkForm& f);
/// White ground becomes black and any other becomes white.
void Graph_DblClick(QuellmarkForm& f);

/// Ampl(0) opens TopAmp and Ampl(8) BotAmp; the other legends do nothing.
void Ampl_Click(QuellmarkForm& f, int index);
/// Both limit boxes take the legend's caption where they are empty.
void AmpLimits_GotFocus(QuellmarkForm& f);
/// A limit outside ±100 or too close to the other is dropped without a
/// word: the box empties and nothing is recalculated. An empty box hides.
void TopAmp_LostFocus(QuellmarkForm& f);
void BotAmp_LostFocus(QuellmarkForm& f);

/// Ticks or unticks a trace's menu entry and recalculates, held or not.
void toggleTrace(QuellmarkForm& f, Control& menuEntry);

/// Writes the last sweep to a file the designer chooses (chart_data_file.cpp).
void SaveChartData_Click(QuellmarkForm& f);

} // namespace qm
