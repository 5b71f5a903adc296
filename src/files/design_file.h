#pragma once
// The design file: 22 lines of what the designer entered on the design
// screen, ended by CR LF, with numbers written with a point whatever the
// locale. Reading puts the entries and selections back, one after another
// as a user's clicks would, and recalculates.
#include <cstddef>
#include <string>

namespace qm {

class QuellmarkForm;

/// The one message of a file that can't be read as a design.
constexpr const char* kNotADesignFile = "Selected file is not a valid Quellmark filter design file";

/// A file larger than this is not a design file; it isn't read at all.
constexpr std::size_t kMaxDesignFileBytes = std::size_t{1024} * 1024;

/// The 22 lines of the present design, as SaveSub writes them.
std::string designFileText(const QuellmarkForm& f);

/// Writes the present design to `sfile`, whole or not at all, and makes it
/// currentFile. A file that can't be written is reported in a message that
/// names it and the reason; then currentFile and any earlier file stay.
/// Returns whether the file was written.
bool SaveSub(QuellmarkForm& f, const std::string& sfile);

/// Reads a design file onto the screen and recalculates. A file that isn't
/// a design shows kNotADesignFile and keeps what was read before the fault;
/// the default design file fails silently into the built-in design.
/// Returns whether the whole design was read.
bool OpenFile(QuellmarkForm& f, const std::string& sfile);

/// The default design: the user's file, else the site's, else the
/// built-in design.
void OpenDefault(QuellmarkForm& f);

/// Whether `sfile` is one of the default design files of the platform.
bool isDefaultDesignFile(const QuellmarkForm& f, const std::string& sfile);

} // namespace qm
