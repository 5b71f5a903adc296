#pragma once
// The shape of an amplifier record: 35 fields of text, each with the head of
// its grid column, the column's width, alignment and number format.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

constexpr std::size_t kAmplifierFields = 35;

/// One amplifier: the texts of its fields, numbered from 0. Field 0, the
/// device name, is the key.
using AmplifierRecord = std::array<std::string, kAmplifierFields>;

enum class FieldAlignment { General, Left, Centre };

/// What a field holds, for the checks of an edit and for sorting.
enum class FieldKind { Name, Text, TrueFalse, Number, Area };

struct FieldShape
{
    const char* caption; ///< "\r" breaks a two-line head
    int widthTwips;
    FieldAlignment alignment;
    const char* format; ///< digit pattern, or "" for the text as stored
    FieldKind kind;
};

/// Fields of an amplifier record by number.
namespace field {
constexpr std::size_t DeviceName = 0;
constexpr std::size_t Supplier = 1;
constexpr std::size_t Description = 2;
constexpr std::size_t Function = 3;
constexpr std::size_t RRInput = 4;
constexpr std::size_t RROutput = 5;
constexpr std::size_t MaxVcc = 7;
constexpr std::size_t BW = 9;
constexpr std::size_t SlewRate = 10;
constexpr std::size_t Vn = 15;
constexpr std::size_t Ib = 20;
constexpr std::size_t Area = 33;
} // namespace field

const std::array<FieldShape, kAmplifierFields>& amplifierFields();

/// A head on one line: its line break becomes a blank ("RR Input T/F").
std::string flatCaption(std::size_t field);

/// The field whose flat caption is `caption`, compared without case and
/// surrounding blanks; kAmplifierFields when none is.
std::size_t fieldOfCaption(std::string_view caption);

/// Blanks (spaces, tabs) cut from both ends.
std::string trimmed(std::string_view text);
std::string lowerCase(std::string_view text);

} // namespace qm
