#pragma once
// The options of quellmark-cli, turned into the actions a person would take.
#include "screen/platform.h"
#include "screen/user_actions.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace qm {

class UsageError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

struct CommandLine
{
    std::vector<UserAction> actions;
    bool json = false;
    bool help = false;
    bool listControls = false;
    char decimalSeparator = '\0';
    std::vector<std::string> only; ///< controls to print; empty prints all
    /// Answers for the dialogs and questions the actions raise, in order.
    std::vector<std::string> fileAnswers;
    std::vector<MessageAnswer> answers;
    /// Answers that belong to one action alone: its file dialog takes `path`
    /// and its overwrite question, if it asks one, Yes.
    struct OwnAnswer
    {
        std::size_t action; ///< index into actions
        std::string path;
    };
    std::vector<OwnAnswer> ownAnswers;
    std::vector<int> printAnswers; ///< copies from the print dialogs; 0 cancels
    std::string settingsFile;      ///< INI file of the settings; empty keeps them in memory
};

/// Parses the arguments; throws UsageError with a one-line reason.
CommandLine parseCommandLine(const std::vector<std::string>& args);

std::string usageText();

} // namespace qm
