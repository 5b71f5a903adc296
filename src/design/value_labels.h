#pragma once
// The value labels of the schematic: what a section's components are, or how
// sensitive the section is to each of them. A high-pass section is calculated
// as its low-pass prototype; its parts are shown through Cmap and Rmap.

namespace qm {

class QuellmarkForm;

/// High-pass capacitor that stands where the low-pass prototype of section j
/// has the resistor R.
double Cmap(const QuellmarkForm& f, int j, double R);
/// High-pass resistor that stands where the low-pass prototype of section j
/// has the capacitor C.
double Rmap(const QuellmarkForm& f, int j, double C);

/// Component values of section j on its schematic labels.
void writeValueLabels(QuellmarkForm& f, int j);
/// The measured sensitivity texts sensR1..sensC2 on the labels of section j.
void writeSensitivityLabels(QuellmarkForm& f, int j);

} // namespace qm
