#pragma once
// The options of quellmark-cli, turned into the actions a person would take.
#include "cli/analysis_request.h"
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

/// Answers that one action brings with it (--open, --save-as,
/// --save-as-default): its dialogs and questions get these alone, and an
/// answer it didn't need is not left for later ones.
struct OwnAnswers
{
    std::size_t action = 0; ///< place of the action in CommandLine::actions
    std::vector<std::string> fileAnswers;
    std::vector<MessageAnswer> answers;
};

struct CommandLine
{
    std::vector<UserAction> actions;
    bool json = false;
    bool help = false;
    bool version = false;
    bool listControls = false;
    char decimalSeparator = '\0';
    std::vector<std::string> only; ///< controls to print; empty prints all
    /// Answers for the dialogs and questions the actions raise, in order.
    std::vector<std::string> fileAnswers;
    std::vector<MessageAnswer> answers;
    std::vector<int> printAnswers; ///< copies from the print dialogs; 0 cancels
    std::string settingsFile;      ///< INI file of the settings; empty keeps them in memory
    std::vector<OwnAnswers> ownAnswers;
    /// Where this run's default design lives; empty for none.
    std::string defaultDesign;
    CatalogueOptions catalogue;
    AnalysisRequest analysis;
};

/// Parses the arguments; throws UsageError with a one-line reason.
CommandLine parseCommandLine(const std::vector<std::string>& args);

std::string usageText();

} // namespace qm
