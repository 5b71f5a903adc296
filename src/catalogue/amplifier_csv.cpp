#include "catalogue/amplifier_csv.h"

#include "catalogue/csv_text.h"
#include "catalogue/edit_checks.h"

#include <algorithm>
#include <optional>

namespace qm {

namespace {

/// Field number of each column of the file, kAmplifierFields for a column
/// that is not one of the catalogue's.
std::vector<std::size_t> columnFields(const std::vector<std::string>& heads)
{
    std::vector<std::size_t> fields;
    fields.reserve(heads.size());
    for (const std::string& h : heads)
        fields.push_back(fieldOfCaption(h));
    return fields;
}

std::optional<std::string> rowProblem(const CsvRecord& row, const std::vector<std::size_t>& fields,
                                      AmplifierRecord& record, std::vector<std::string>& names)
{
    if (row.fields.size() != fields.size())
        return std::to_string(row.fields.size()) + " fields where the header has " +
               std::to_string(fields.size()) + ".";
    for (std::size_t c = 0; c < fields.size(); ++c) {
        if (!isUtf8(row.fields[c])) return std::string("The row is not UTF-8 text.");
        if (fields[c] < kAmplifierFields) record[fields[c]] = row.fields[c];
    }
    if (auto failure = checkRecord(record, names)) return failure->message;
    names.push_back(record[field::DeviceName]);
    return std::nullopt;
}

} // namespace

std::string ImportReport::summary() const
{
    if (!failure.empty()) return "Nothing imported: " + failure;
    std::string out = std::to_string(taken) + (taken == 1 ? " amplifier" : " amplifiers") +
                      " taken, " + std::to_string(refused.size()) + " refused.";
    for (const RefusedRow& r : refused)
        out += "\nLine " + std::to_string(r.line) + ": " + r.reason;
    return out;
}

ImportReport importAmplifiers(std::string_view csvText, AmplifierStore& store)
{
    ImportReport report;
    std::vector<CsvRecord> rows;
    try {
        rows = parseCsv(csvText);
    } catch (const CsvError& e) {
        report.failure = e.what();
        return report;
    }
    if (rows.empty()) {
        report.failure = "the file is empty";
        return report;
    }
    const std::vector<std::size_t> fields = columnFields(rows.front().fields);
    if (std::find(fields.begin(), fields.end(), field::DeviceName) == fields.end()) {
        report.failure = "the first row has no column headed \"Device Name\"";
        return report;
    }
    std::vector<std::string> names;
    for (const AmplifierRecord& r : store.list())
        names.push_back(r[field::DeviceName]);
    std::vector<AmplifierRecord> taken;
    for (std::size_t k = 1; k < rows.size(); ++k) {
        AmplifierRecord record;
        if (auto problem = rowProblem(rows[k], fields, record, names))
            report.refused.push_back({rows[k].line, *problem});
        else
            taken.push_back(record);
    }
    try {
        store.addAll(taken);
        report.taken = static_cast<int>(taken.size());
    } catch (const StoreError& e) {
        report.failure = e.what();
    }
    return report;
}

std::string exportAmplifiers(const std::vector<AmplifierRecord>& records)
{
    std::vector<std::string> heads;
    for (std::size_t k = 0; k < kAmplifierFields; ++k)
        heads.push_back(flatCaption(k));
    std::string out = csvLine(heads);
    for (const AmplifierRecord& r : records)
        out += csvLine(std::vector<std::string>(r.begin(), r.end()));
    return out;
}

} // namespace qm
