#pragma once
// The design file options of quellmark-cli: each is the dialog answer, the
// question's answer and the menu click that a person would give.
#include "cli/command_line.h"

#include <string>

namespace qm {

class QuellmarkForm;
class RecordingPlatform;

/// --open PATH: Open with PATH as the dialog's answer.
void addOpen(CommandLine& cl, const std::string& path);
/// --save-as PATH: Save As with PATH, and yes should it ask to overwrite.
void addSaveAs(CommandLine& cl, const std::string& path);
/// --save, --new and --save-as-default; false for any other option.
bool addFileFlag(CommandLine& cl, const std::string& option);

/// Throws UsageError for file options that can't work together:
/// --save-as-default without --default-design.
void checkFileOptions(const CommandLine& cl);

/// Applies the actions in order, each with its own answers when it has
/// them; the others take the answers of --answer and --answer-file.
void runActions(QuellmarkForm& form, RecordingPlatform& platform, const CommandLine& cl);

} // namespace qm
