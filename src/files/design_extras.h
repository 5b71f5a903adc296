#pragma once
// The lines after the 22 of a design file: what the 22-line format has no
// room for. A reader of the 22 lines never gets there, so the format stays
// readable both ways. Each line starts with a text naming what it holds:
//   "mask",fp,Ap,fs,As,gd        the response mask (gd 0: no bound)
//   "qtotal","text"             the Q total entry of a Custom Q design
// A line with any other name is passed over.
#include "requirements/response_mask.h"

#include <optional>
#include <string>
#include <string_view>

namespace qm {

struct DesignExtras
{
    std::optional<ResponseMask> mask;
    /// A mask line was there but could not be read.
    bool maskDamaged = false;
    std::optional<std::string> qTotal;

    bool empty() const { return !mask && !qTotal; }
};

/// The message when a mask line is damaged: the design opens without it.
constexpr const char* kMaskDamaged =
    "The response mask in this file is damaged; the design was opened without it.";

/// The extra lines, ended by CR LF; empty when there is nothing to add.
std::string designExtrasText(const DesignExtras& extras);

/// Reads the extra lines from `rest`, the bytes after line 22.
DesignExtras readDesignExtras(std::string_view rest);

/// The extra lines of a whole design file: its 22 lines' fields are passed
/// over as the reader takes them. Throws DesignFileError where those end
/// early.
DesignExtras designFileExtras(std::string_view file);

} // namespace qm
