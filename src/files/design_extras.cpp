#include "files/design_extras.h"

#include "files/field_reader.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace qm {

namespace {

/// Fields of the 22 lines, whatever lines they stand on.
constexpr int kDesignFields = 47;
constexpr const char* kMaskTag = "mask";
constexpr const char* kQTotalTag = "qtotal";
constexpr long kMaxEntryCharacters = 1000;

std::string numberText(double v)
{
    return generalText(f32(v), '.');
}

std::string quoted(std::string_view s)
{
    std::string field(s);
    std::erase(field, '"');
    return '"' + field + '"';
}

/// The line as its own fields; a line end ends the last one.
std::vector<std::string> lineFields(std::string_view line)
{
    std::vector<std::string> fields;
    FieldReader in(line);
    while (in.position() < line.size())
        fields.push_back(in.field());
    return fields;
}

/// The numbers of a mask line; nullopt for one that isn't a mask.
std::optional<ResponseMask> maskOfFields(const std::vector<std::string>& fields)
{
    constexpr std::size_t kMaskFields = 6;
    if (fields.size() != kMaskFields) return std::nullopt;
    double v[kMaskFields - 1];
    for (std::size_t k = 1; k < kMaskFields; ++k) {
        try {
            v[k - 1] = d64(f32(strictNumber(fields[k], '.')));
        } catch (const CalcFailure&) {
            return std::nullopt;
        }
    }
    const ResponseMask m{v[0], v[1], v[2], v[3], v[4]};
    // What no mask can be on either passband: edges that are no frequency,
    // losses below nothing, a negative bound.
    if (!(m.passEdgeHz > 0) || !(m.stopEdgeHz > 0) || !(m.passLossDb > 0) || !(m.stopLossDb > 0) ||
        m.delaySpreadPercent < 0)
        return std::nullopt;
    return m;
}

void readLine(std::string_view line, DesignExtras& extras)
{
    std::vector<std::string> fields;
    try {
        fields = lineFields(line);
    } catch (const DesignFileError&) {
        // A text without its closing quote: the line says nothing readable.
        if (line.find(kMaskTag) != std::string_view::npos) extras.maskDamaged = true;
        return;
    }
    if (fields.empty()) return;
    const std::string& tag = fields[0];
    if (tag == kMaskTag) {
        extras.mask = maskOfFields(fields);
        extras.maskDamaged = !extras.mask;
    } else if (tag == kQTotalTag && fields.size() == 2) {
        // As long as an entry can be, in characters, or it is no Q total;
        // so it is read back whole once written as UTF-8.
        // A field can't hold a quote in this format: the writer drops them, so
        // the reader does too, and what is read is what will be written.
        std::string text = utf8OrLatin1(fields[1]);
        std::erase(text, '"');
        const auto characters = std::count_if(text.begin(), text.end(), [](char c) {
            return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        });
        if (characters <= kMaxEntryCharacters) extras.qTotal = std::move(text);
    }
}

} // namespace

std::string designExtrasText(const DesignExtras& extras)
{
    std::string out;
    if (extras.mask) {
        const ResponseMask& m = *extras.mask;
        out += quoted(kMaskTag) + "," + numberText(m.passEdgeHz) + "," + numberText(m.passLossDb) +
               "," + numberText(m.stopEdgeHz) + "," + numberText(m.stopLossDb) + "," +
               numberText(m.delaySpreadPercent) + "\r\n";
    }
    if (extras.qTotal) out += quoted(kQTotalTag) + "," + quoted(*extras.qTotal) + "\r\n";
    return out;
}

DesignExtras readDesignExtras(std::string_view rest)
{
    DesignExtras extras;
    while (!rest.empty()) {
        const std::size_t end = rest.find_first_of("\r\n");
        readLine(rest.substr(0, end), extras);
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    return extras;
}

DesignExtras designFileExtras(std::string_view file)
{
    FieldReader in(file);
    for (int k = 0; k < kDesignFields; ++k)
        in.field();
    return readDesignExtras(file.substr(in.position()));
}

} // namespace qm
