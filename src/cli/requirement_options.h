#pragma once
// --mask and --use-requirement: the requirements window's entries typed and
// a family's row used, as a person would in that window; and the JSON of
// what the requirement says.
#include "cli/command_line.h"

#include <string>

namespace qm {

class QuellmarkForm;

/// fp=1k,ap=1,fs=3k,as=40[,gd=PCT]: opens the window and types the mask.
/// Throws UsageError for a key it doesn't know or a missing one.
void addMask(CommandLine& cl, const std::string& value);
/// Uses the row of the family at list index `family` (0 to 5).
void addUseRequirement(CommandLine& cl, const std::string& family);

/// ", \"requirements\": {...}" while the design has a mask; empty otherwise.
std::string requirementsJsonMember(const QuellmarkForm& form);

} // namespace qm
