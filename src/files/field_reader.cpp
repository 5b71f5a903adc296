#include "files/field_reader.h"

#include "numbers/float_store.h"
#include "numbers/number_text.h"

#include <algorithm>

namespace qm {

namespace {

/// A text of more characters is no entry of the design screen.
constexpr std::size_t kMaxTextCharacters = 1000;
/// Four bytes are the most one character takes.
constexpr std::size_t kMaxFieldBytes = 4 * kMaxTextCharacters;

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool endsField(char c)
{
    return c == ',' || c == '\r' || c == '\n';
}

/// Length of the UTF-8 sequence that starts with `lead`, 0 if none does.
std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

bool isValidUtf8(std::string_view s)
{
    for (std::size_t i = 0; i < s.size();) {
        const auto lead = static_cast<unsigned char>(s[i]);
        const std::size_t n = sequenceLength(lead);
        if (n == 0 || i + n > s.size()) return false;
        for (std::size_t k = 1; k < n; ++k)
            if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return false;
        const auto second = static_cast<unsigned char>(s[i + 1 < s.size() ? i + 1 : i]);
        // Overlong forms, surrogates and code points beyond U+10FFFF.
        if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
            (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
            return false;
        i += n;
    }
    return true;
}

} // namespace

std::string utf8OrLatin1(std::string_view bytes)
{
    if (isValidUtf8(bytes)) return std::string(bytes);
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const char ch : bytes) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 0x80) {
            out += ch;
        } else {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::string FieldReader::field()
{
    while (pos_ < bytes_.size() && isBlank(bytes_[pos_]))
        ++pos_;
    if (pos_ >= bytes_.size()) throw DesignFileError("the file ends early");
    std::string f = bytes_[pos_] == '"' ? quoted() : unquoted();
    if (f.size() > kMaxFieldBytes) throw DesignFileError("a field is too long");
    return f;
}

std::string FieldReader::quoted()
{
    const std::size_t start = pos_ + 1;
    const std::size_t close = bytes_.find('"', start);
    if (close == std::string_view::npos) throw DesignFileError("a text has no end");
    pos_ = close + 1;
    // Whatever stands between the closing quote and the end of the field
    // belongs to no field.
    while (pos_ < bytes_.size() && !endsField(bytes_[pos_]))
        ++pos_;
    endOfField();
    return std::string(bytes_.substr(start, close - start));
}

std::string FieldReader::unquoted()
{
    const std::size_t start = pos_;
    while (pos_ < bytes_.size() && !endsField(bytes_[pos_]))
        ++pos_;
    std::size_t end = pos_;
    while (end > start && isBlank(bytes_[end - 1]))
        --end;
    endOfField();
    return std::string(bytes_.substr(start, end - start));
}

/// Steps over the comma or line end (CR LF, CR or LF) that ends a field.
void FieldReader::endOfField()
{
    if (pos_ >= bytes_.size()) return;
    const char c = bytes_[pos_++];
    if (c == '\r' && pos_ < bytes_.size() && bytes_[pos_] == '\n') ++pos_;
}

std::string FieldReader::text()
{
    std::string t = utf8OrLatin1(field());
    // Characters, not bytes: a text read as Latin-1 and written back as
    // UTF-8 is as long as before.
    const auto characters = std::count_if(
        t.begin(), t.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
    if (static_cast<std::size_t>(characters) > kMaxTextCharacters)
        throw DesignFileError("a text is too long");
    return t;
}

std::int16_t FieldReader::integer()
{
    const std::string f = field();
    try {
        return toI16(strictNumber(f, '.'));
    } catch (const CalcFailure&) {
        throw DesignFileError("not an integer: " + f);
    }
}

float FieldReader::number()
{
    const std::string f = field();
    try {
        return f32(strictNumber(f, '.'));
    } catch (const CalcFailure&) {
        throw DesignFileError("not a number: " + f);
    }
}

bool FieldReader::truth()
{
    const std::string f = field();
    if (f == "#TRUE#") return true;
    if (f == "#FALSE#") return false;
    throw DesignFileError("not a truth value: " + f);
}

} // namespace qm
