#pragma once
// What the cycle writes for a designer to read: the response rows, the
// sensitivities and the value table, the totals and the description line.

namespace qm {

class QuellmarkForm;

/// Cycle step 17.7 for section j: row captions and the response at the
/// response frequency.
void responseRow(QuellmarkForm& f, int j);
/// Cycle step 17.8 for section j: sensitivities, schematic labels and the
/// section's table line.
void sensitivitiesAndTableLine(QuellmarkForm& f, int j);
/// Cycle step 19: totalGain, totalGainDB and the description line Label8.
void totalsAndDescription(QuellmarkForm& f);
/// Cycle step 22: the Totals row of the response table.
void totalsRow(QuellmarkForm& f);

} // namespace qm
