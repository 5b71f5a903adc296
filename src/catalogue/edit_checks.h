#pragma once
// The checks an amplifier record passes before it is stored.
#include "catalogue/amplifier_fields.h"

#include <optional>
#include <string>
#include <vector>

namespace qm {

/// Why a record can't be stored: the field at fault and the message that
/// names the field and the rule.
struct EditFailure
{
    std::size_t field = 0;
    std::string message;
};

/// Cleans `record` in place (blanks trimmed, T/F upper-cased) and checks it
/// field by field: the device name present and not among `otherNames` (the
/// catalogue's other devices), numbers readable in engineering notation
/// where filled, T/F fields T or F where filled. The first failure, or none.
std::optional<EditFailure> checkRecord(AmplifierRecord& record,
                                       const std::vector<std::string>& otherNames);

} // namespace qm
