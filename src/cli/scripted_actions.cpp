#include "cli/scripted_actions.h"

#include "cli/command_line.h"
#include "screen/recording_platform.h"

#include <algorithm>

namespace qm {

namespace {

/// Runs one action with its own path and Yes ahead of the scripted answers.
void applyWithOwnAnswers(QuellmarkForm& form, RecordingPlatform& platform, const UserAction& action,
                         const std::string& path)
{
    const std::size_t paths = platform.fileAnswers.size();
    const std::size_t answers = platform.answers.size();
    platform.fileAnswers.push_front(path);
    platform.answers.push_front(MessageAnswer::Yes);
    // Whatever happens, the answers the action left unused go back.
    const auto takeBack = [&] {
        if (platform.fileAnswers.size() > paths) platform.fileAnswers.pop_front();
        if (platform.answers.size() > answers) platform.answers.pop_front();
    };
    try {
        applyAction(form, action);
    } catch (...) {
        takeBack();
        throw;
    }
    takeBack();
}

} // namespace

void applyActions(QuellmarkForm& form, RecordingPlatform& platform, const CommandLine& cl)
{
    for (std::size_t i = 0; i < cl.actions.size(); ++i) {
        const auto own =
            std::find_if(cl.ownAnswers.begin(), cl.ownAnswers.end(),
                         [i](const CommandLine::OwnAnswer& a) { return a.action == i; });
        if (own == cl.ownAnswers.end())
            applyAction(form, cl.actions[i]);
        else
            applyWithOwnAnswers(form, platform, cl.actions[i], own->path);
    }
}

} // namespace qm
