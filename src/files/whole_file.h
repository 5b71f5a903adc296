#pragma once
// Files written whole or not at all: the bytes go to a temporary file beside
// the target, which replaces the target only once everything is on disk. A
// failure leaves any earlier file as it was.
#include <stdexcept>
#include <string>
#include <string_view>

namespace qm {

/// A file that could not be written; the message names the file and why.
class FileWriteError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// Writes `bytes` to `path`, replacing any file there. Throws FileWriteError.
void writeWholeFile(const std::string& path, std::string_view bytes);

} // namespace qm
