#pragma once
// The design on the screen as numbers in SI units, for scripts: the settings,
// every section with its parts by schematic name, and the totals.
#include <string>

namespace qm {

class QuellmarkForm;

/// The JSON object of the design (no trailing newline), indented to sit as
/// a member of the screen's object.
std::string designAsJson(const QuellmarkForm& form);

/// A number as JSON: seven significant digits, null for what isn't finite.
std::string jsonNumber(double x);

} // namespace qm
