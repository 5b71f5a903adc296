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
    char decimalSeparator = '\0';
    std::vector<std::string> only; ///< controls to print; empty prints all
    /// Answers for the dialogs and questions the actions raise, in order.
    std::vector<std::string> fileAnswers;
    std::vector<MessageAnswer> answers;
    std::vector<int> printAnswers; ///< copies from the print dialogs; 0 cancels
    std::string settingsFile;      ///< INI file of the settings; empty keeps them in memory
};

/// Parses the arguments; throws UsageError with a one-line reason.
CommandLine parseCommandLine(const std::vector<std::string>& args);

std::string usageText();

} // namespace qm
