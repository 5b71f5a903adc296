#pragma once
// Preferred component values. Every section is designed as a low-pass
// prototype; in a high-pass filter each prototype resistor becomes a capacitor
// of the real circuit and each prototype capacitor a resistor, so rounding in
// high-pass goes by way of the other kind of part.
#include <cstdint>
#include <string_view>

namespace qm {

/// What rounding reads besides the value, and the three counters it shares
/// with the rest of the design.
struct RoundingContext
{
    int resistorSeries = 0;  ///< 0 (no rounding), 12, 24, 48, 96 or 192
    int capacitorSeries = 0; ///< 6, 12 or 24; 0 keeps eSeriesSize as it stands
    bool highPass = false;
    float fc = 0;               ///< cutoff in Hz
    float Fs = 0;               ///< Fn in Hz that sets the section's impedance level in high-pass
    std::int16_t& hpRoundGuard; ///< -1 while one rounding is inside the other's mapping
    std::int16_t& gainResistorFlag; ///< -1 while gain resistors, which stay resistors, are rounded
    std::int16_t& eSeriesSize;      ///< capacitor series last read: 6, 12 or 24
};

/// Series size of a resistor list choice ("E96" gives 96); "Exact" and any
/// text the list doesn't hold give 0, no rounding.
int resistorSeriesOf(std::string_view listText);
/// Series size of a capacitor list choice; 0 for a text the list doesn't hold.
int capacitorSeriesOf(std::string_view listText);

/// Rounds a resistor to the nearest value of the resistor series. In
/// high-pass it rounds the capacitor that the resistor becomes.
void StdRes(float& r, RoundingContext& ctx);

/// Rounds a capacitor in place: op 0 to the nearest series value, +1 one
/// position above the nearest, -1 one below. With capdiv 2 the half value is
/// rounded and the result is twice a series value. In high-pass it rounds the
/// resistor that the capacitor becomes, to the nearest value.
void StdCaps(float& C, int op, int capdiv, RoundingContext& ctx);

} // namespace qm
