#include "catalogue/edit_checks.h"

#include "catalogue/amplifier_store.h"
#include "catalogue/record_sort.h"

#include <algorithm>

namespace qm {

namespace {

std::optional<std::string> fieldProblem(std::size_t k, std::string& text)
{
    const std::string name = flatCaption(k);
    switch (amplifierFields()[k].kind) {
    case FieldKind::Name:
        if (text.empty()) return name + " must be filled.";
        break;
    case FieldKind::TrueFalse:
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        if (!text.empty() && text != "T" && text != "F")
            return name + " field must be either 'T' or 'F'.";
        break;
    case FieldKind::Number:
        if (!text.empty() && !engineeringValue(text))
            return name + " field must be a number, such as 4.7, 100 M or 2e-3.";
        break;
    case FieldKind::Area:
        if (!text.empty() && !areaValue(text))
            return name + " field must be a number or a size such as 3 x 3.";
        break;
    case FieldKind::Text:
        break;
    }
    return std::nullopt;
}

} // namespace

std::optional<EditFailure> checkRecord(AmplifierRecord& record,
                                       const std::vector<std::string>& otherNames)
{
    for (std::size_t k = 0; k < kAmplifierFields; ++k) {
        record[k] = trimmed(record[k]);
        if (auto problem = fieldProblem(k, record[k])) return EditFailure{k, *problem};
    }
    const std::string& name = record[field::DeviceName];
    // Names differ by more than case: data sheets are found by the name in
    // lower case.
    const std::string key = lowerCase(name);
    if (std::any_of(otherNames.begin(), otherNames.end(),
                    [&](const std::string& other) { return lowerCase(other) == key; }))
        return EditFailure{field::DeviceName, duplicateDeviceText(name)};
    return std::nullopt;
}

} // namespace qm
