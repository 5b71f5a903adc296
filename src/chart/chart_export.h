#pragma once
// The chart-data file: the last sweep as comma-separated text that a
// spreadsheet opens as it stands.
#include <string>

namespace qm {

struct DesignRecord;

/// Records of the file after its header: every point of the sweep, where the
/// traces stop a few points earlier.
constexpr int kExportRecords = 570;

/// Sets point 0 of sweepFreqs and sweepPhaseDeg one sweep step below point
/// 1, then renders the header and one record per sweep point: frequency in
/// Hz, gain in dB without the passband gain, phase in degrees, and the phase
/// slope towards the point before in degrees per hertz. Every field is a
/// 32-bit number in plain text with decSep, in double quotes; fields are
/// parted by a comma and lines end in CR LF. Nothing is recalculated.
std::string chartDataText(DesignRecord& r);

} // namespace qm
