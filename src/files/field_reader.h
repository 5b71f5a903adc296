#pragma once
// Fields of a design file, one after another. A comma and a line end both
// end a field; blanks in front of a field are skipped. A field in double
// quotes runs to the next quote, commas and line ends included; one
// without quotes runs to the next comma or line end, trailing blanks cut.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qm {

/// A file that is not a design: it ends early, or a field isn't of its kind
/// or holds a value the screen can't take.
class DesignFileError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

class FieldReader
{
  public:
    explicit FieldReader(std::string_view bytes) : bytes_(bytes) {}

    /// The next field as it stands. Throws DesignFileError at the end.
    std::string field();

    /// A text field, as UTF-8: bytes that aren't UTF-8 are read as Latin-1.
    /// A text of more than a thousand characters is no entry.
    std::string text();
    /// An integer; a fraction is rounded, halves to even.
    std::int16_t integer();
    /// A 32-bit number with a point as separator; nan, inf and values beyond
    /// the 32-bit range are no numbers.
    float number();
    /// #TRUE# or #FALSE#.
    bool truth();
    /// Where the next field starts, in bytes.
    std::size_t position() const { return pos_; }

  private:
    std::string quoted();
    std::string unquoted();
    void endOfField();

    std::string_view bytes_;
    std::size_t pos_ = 0;
};

/// `bytes` as UTF-8: valid UTF-8 stays as it is, anything else is read as
/// Latin-1, one character per byte.
std::string utf8OrLatin1(std::string_view bytes);

} // namespace qm
