#pragma once
// The options of quellmark-cli, turned into the actions a person would take.
#include "cli/catalogue_run.h"
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
    CatalogueOptions catalogue;
};

/// Parses the arguments; throws UsageError with a one-line reason.
CommandLine parseCommandLine(const std::vector<std::string>& args);

std::string usageText();

} // namespace qm
