#pragma once
// The actions of a command line applied in order, each with the answers that
// belong to it alone.
namespace qm {

class QuellmarkForm;
class RecordingPlatform;
struct CommandLine;

/// Applies every action of `cl` to the form. An action with answers of its
/// own gets them first in line; what it didn't ask for is taken back, so the
/// answers of --answer and --answer-file stay for the questions that follow.
void applyActions(QuellmarkForm& form, RecordingPlatform& platform, const CommandLine& cl);

} // namespace qm
