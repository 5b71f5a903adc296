#pragma once
// Comma-separated text: fields quoted with '"' where they hold a comma, a
// quote or a line break, a quote inside doubled, records ended by CR LF.
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

struct CsvRecord
{
    int line = 0; ///< line of the file where the record starts, from 1
    std::vector<std::string> fields;
};

/// A text that can't be read as comma-separated records, and where.
class CsvError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// Reads every record; a leading UTF-8 byte-order mark is skipped, lines may
/// end in LF or CR LF, a blank line is no record. Throws CsvError for a
/// quoted field that is never closed or text after a closing quote.
std::vector<CsvRecord> parseCsv(std::string_view text);

/// One record as a line, CR LF at its end.
std::string csvLine(const std::vector<std::string>& fields);

/// True when `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

} // namespace qm
