#pragma once
// The value labels of the schematic: what a section's components are, or how
// sensitive the section is to each of them. A high-pass section is calculated
// as its low-pass prototype; its parts are shown through Cmap and Rmap.

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qm {

class QuellmarkForm;
struct Control;

/// High-pass capacitor that stands where the low-pass prototype of section j
/// has the resistor R.
double Cmap(const QuellmarkForm& f, int j, double R);
/// High-pass resistor that stands where the low-pass prototype of section j
/// has the capacitor C.
double Rmap(const QuellmarkForm& f, int j, double C);

/// What the value labels of section j show, label by label in the order
/// they are written, as far as the values can be worked out.
struct ValueLabelTexts
{
    std::vector<std::pair<Control*, std::string>> labels;
    /// Why the labels after these can't be worked out, when they can't.
    std::optional<std::string> failure;
};

/// The component values of section j as its schematic labels show them,
/// without writing them: the parts list reads them before they are shown.
ValueLabelTexts valueLabelTexts(QuellmarkForm& f, int j);
/// Writes the texts; a failure is raised once the labels before it are
/// written, as writing label by label meets it.
void showValueLabels(const ValueLabelTexts& texts);
/// Component values of section j on its schematic labels.
void writeValueLabels(QuellmarkForm& f, int j);
/// The measured sensitivity texts sensR1..sensC2 on the labels of section j.
void writeSensitivityLabels(QuellmarkForm& f, int j);

} // namespace qm
