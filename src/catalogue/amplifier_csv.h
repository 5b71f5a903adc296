#pragma once
// The amplifier catalogue as a spreadsheet file: a header row with the
// column heads, one amplifier a row.
#include "catalogue/amplifier_store.h"

#include <string>
#include <string_view>
#include <vector>

namespace qm {

struct RefusedRow
{
    int line = 0; ///< line of the file, from 1
    std::string reason;
};

/// What an import did: rows taken into the catalogue, rows refused and why.
/// A file that can't be read at all has `failure` set and took nothing.
struct ImportReport
{
    int taken = 0;
    std::vector<RefusedRow> refused;
    std::string failure;

    /// "3 amplifiers taken, 2 refused." and a line for each refused row.
    std::string summary() const;
};

/// Checks every row as an edit is checked and adds those that pass, in one
/// change of the store. Columns are found by their heads, in any order;
/// unknown heads are skipped; a device already in the catalogue or earlier
/// in the file is refused.
ImportReport importAmplifiers(std::string_view csvText, AmplifierStore& store);

/// The whole catalogue as UTF-8 comma-separated text, heads first.
std::string exportAmplifiers(const std::vector<AmplifierRecord>& records);

} // namespace qm
