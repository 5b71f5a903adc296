#pragma once
// The noise figures of a catalogue amplifier, read from the texts of its
// "Vn" and "Ib" fields. The catalogue gives them as plain numbers in the
// units data sheets use (nV/√Hz and µA) or with their own scale and unit.
#include <optional>
#include <string_view>

namespace qm {

/// Field 15 ("Vn") in V/√Hz: a plain number is in nV/√Hz, a number with a
/// scale letter or the unit reads as it says ("4.5 nV/rtHz"). Nothing when
/// the text isn't a number above 0 or speaks of another unit.
std::optional<double> voltageNoiseOf(std::string_view text);

/// Field 20 ("Ib") in amperes: a plain number is in µA, a number with a
/// scale letter or the unit reads as it says ("250 nA"). The sign of a bias
/// current gives only its direction, so the size is taken. Nothing when
/// the text isn't a number, is 0 or speaks of another unit.
std::optional<double> biasCurrentOf(std::string_view text);

} // namespace qm
