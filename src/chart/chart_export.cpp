#include "chart/chart_export.h"

#include "chart/chart_numbers.h"
#include "chart/group_delay.h"
#include "design/design_record.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"

namespace qm {

namespace {

constexpr const char* kHeader = R"("Freq.","Gain","Phase","Group Delay")";
constexpr const char* kLineEnd = "\r\n";
/// Room for a record: four quoted numbers of up to 13 characters.
constexpr std::size_t kRecordChars = 64;

void appendField(std::string& line, float x, char decSep)
{
    if (!line.empty()) line += ',';
    line += '"';
    line += generalText(x, decSep);
    line += '"';
}

/// Point 0 continues the sweep one step down: the frequency by the ratio of
/// points 1 and 2, the phase in a straight line through them. Record 1 takes
/// its slope from there.
void extrapolatePointZero(DesignRecord& r)
{
    const double f1 = d64(r.sweepFreqs[1]), f2 = d64(r.sweepFreqs[2]);
    r.sweepFreqs[0] = keptF32(f1 * f1 / f2);
    const double p1 = d64(r.sweepPhaseDeg[1]), p2 = d64(r.sweepPhaseDeg[2]);
    r.sweepPhaseDeg[0] = keptF32(p1 - (p2 - p1));
}

} // namespace

std::string chartDataText(DesignRecord& r)
{
    extrapolatePointZero(r);
    std::string text = kHeader;
    text += kLineEnd;
    text.reserve(text.size() + kRecordChars * std::size_t{kExportRecords});
    for (int i = 1; i <= kExportRecords; ++i) {
        const auto at = static_cast<std::size_t>(i);
        std::string line;
        appendField(line, r.sweepFreqs[at], r.decSep);
        appendField(line, r.sweepGainDB[at], r.decSep);
        appendField(line, r.sweepPhaseDeg[at], r.decSep);
        appendField(line, keptF32(exportDelay(r.sweepFreqs, r.sweepPhaseDeg, i)), r.decSep);
        text += line;
        text += kLineEnd;
    }
    return text;
}

} // namespace qm
