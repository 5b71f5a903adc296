#pragma once
// Sorting the amplifier records: by a field and a type code that says how
// its texts compare, with a second key for ties.
#include "catalogue/amplifier_fields.h"

#include <optional>
#include <string_view>
#include <vector>

namespace qm {

/// How the texts of a sort field compare.
namespace sortType {
constexpr int AsStored = 0; ///< byte by byte, as the texts come
constexpr int Number = 5;   ///< by value in engineering notation
constexpr int Area = 7;     ///< by area: "W x L" multiplied out, or a number
constexpr int Text = 9;     ///< by text, without regard to case
} // namespace sortType

struct SortKey
{
    std::size_t field = 0;
    int type = sortType::AsStored;
    bool operator==(const SortKey&) const = default;
};

/// The key that a sort-by text names ("value", "tol", ...), looked up in
/// lower case; any other text gives field 0 as stored.
SortKey sortKeyFor(std::string_view keyText);

/// The key of a column-head click: that field, its numbers as numbers.
SortKey headSortKey(std::size_t field);

/// The key that breaks ties of `first`: field 3 by number, or field 4 when
/// the first key is field 3.
SortKey tieKey(const SortKey& first);

/// Sorts ascending by `first`, ties by `second`, then in the order the rows
/// came. Texts that don't read as numbers follow the numbers, in text order.
void sortRecords(std::vector<AmplifierRecord>& rows, const SortKey& first, const SortKey& second);

/// A number in engineering notation with an optional unit ("100 MHz",
/// "4.7k", "-3e-3 V/us"); nothing when the text isn't one.
std::optional<double> engineeringValue(std::string_view text);

/// An area: "3 x 3" or "3x3" multiplied out, or a plain number.
std::optional<double> areaValue(std::string_view text);

} // namespace qm
