#include "catalogue/csv_text.h"

namespace qm {

namespace {

class CsvReader
{
  public:
    explicit CsvReader(std::string_view text) : text_(text) {}

    std::vector<CsvRecord> records()
    {
        std::vector<CsvRecord> out;
        while (pos_ < text_.size()) {
            CsvRecord r;
            r.line = line_;
            r.fields = record();
            const bool blank = r.fields.size() == 1 && r.fields[0].empty();
            if (!blank) out.push_back(std::move(r));
        }
        return out;
    }

  private:
    std::vector<std::string> record()
    {
        std::vector<std::string> fields;
        for (;;) {
            fields.push_back(atQuote() ? quotedField() : plainField());
            if (pos_ >= text_.size()) return fields;
            const char c = text_[pos_++];
            if (c == ',') continue;
            if (c == '\r' && pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
            ++line_;
            return fields;
        }
    }

    bool atQuote() const { return pos_ < text_.size() && text_[pos_] == '"'; }

    std::string plainField()
    {
        const auto end = text_.find_first_of(",\r\n", pos_);
        const auto stop = end == std::string_view::npos ? text_.size() : end;
        std::string f(text_.substr(pos_, stop - pos_));
        pos_ = stop;
        return f;
    }

    std::string quotedField()
    {
        const int start = line_;
        std::string f;
        ++pos_;
        for (;;) {
            if (pos_ >= text_.size())
                throw CsvError("line " + std::to_string(start) + ": a quoted field is not closed");
            const char c = text_[pos_++];
            if (c == '"') {
                if (atQuote()) {
                    f += '"';
                    ++pos_;
                    continue;
                }
                break;
            }
            if (c == '\n') ++line_;
            f += c;
        }
        if (pos_ < text_.size() && text_.find_first_of(",\r\n", pos_) != pos_)
            throw CsvError("line " + std::to_string(line_) + ": text after a closing quote");
        return f;
    }

    std::string_view text_;
    std::size_t pos_ = 0;
    int line_ = 1;
};

bool needsQuotes(const std::string& field)
{
    return field.find_first_of(",\"\r\n") != std::string::npos;
}

} // namespace

std::vector<CsvRecord> parseCsv(std::string_view text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        text.remove_prefix(kByteOrderMark.size());
    return CsvReader(text).records();
}

std::string csvLine(const std::vector<std::string>& fields)
{
    std::string out;
    for (std::size_t k = 0; k < fields.size(); ++k) {
        if (k > 0) out += ',';
        if (!needsQuotes(fields[k])) {
            out += fields[k];
            continue;
        }
        out += '"';
        for (char c : fields[k]) {
            if (c == '"') out += '"';
            out += c;
        }
        out += '"';
    }
    return out + "\r\n";
}

bool isUtf8(std::string_view text)
{
    struct Lead
    {
        unsigned mask, bits;
        int follow;
        unsigned min;
    };
    static constexpr Lead kLeads[] = {{0x80, 0x00, 0, 0},
                                      {0xE0, 0xC0, 1, 0x80},
                                      {0xF0, 0xE0, 2, 0x800},
                                      {0xF8, 0xF0, 3, 0x10000}};
    constexpr unsigned kMaxCode = 0x10FFFF;
    std::size_t k = 0;
    while (k < text.size()) {
        const auto c = static_cast<unsigned char>(text[k]);
        const Lead* lead = nullptr;
        for (const Lead& l : kLeads)
            if ((c & l.mask) == l.bits) lead = &l;
        if (!lead) return false;
        const auto follow = static_cast<std::size_t>(lead->follow);
        if (k + follow >= text.size()) return false;
        unsigned code = c & (0x7Fu >> follow);
        for (std::size_t i = 1; i <= follow; ++i) {
            const auto d = static_cast<unsigned char>(text[k + i]);
            if ((d & 0xC0) != 0x80) return false;
            code = (code << 6) | (d & 0x3Fu);
        }
        const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
        if (code < lead->min || surrogate || code > kMaxCode) return false;
        k += follow + 1;
    }
    return true;
}

} // namespace qm
