#include "cli/file_options.h"

#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

namespace qm {

namespace {

void addClick(CommandLine& cl, const char* menu, std::vector<std::string> files,
              std::vector<MessageAnswer> answers)
{
    cl.ownAnswers.push_back({cl.actions.size(), std::move(files), std::move(answers)});
    cl.actions.push_back({ActionKind::Click, menu, ""});
}

} // namespace

void addOpen(CommandLine& cl, const std::string& path)
{
    addClick(cl, "mnuFileOpen", {path}, {});
}

void addSaveAs(CommandLine& cl, const std::string& path)
{
    addClick(cl, "mnuFileSaveAs", {path}, {MessageAnswer::Yes});
}

bool addFileFlag(CommandLine& cl, const std::string& option)
{
    if (option == "--save")
        cl.actions.push_back({ActionKind::Click, "mnuFileSave", ""});
    else if (option == "--new")
        cl.actions.push_back({ActionKind::Click, "mnuFileNew", ""});
    else if (option == "--save-as-default")
        addClick(cl, "SADmnu", {}, {MessageAnswer::Yes});
    else
        return false;
    return true;
}

void checkFileOptions(const CommandLine& cl)
{
    if (!cl.defaultDesign.empty()) return;
    for (const OwnAnswers& own : cl.ownAnswers)
        if (cl.actions[own.action].control == "SADmnu")
            throw UsageError("--save-as-default needs --default-design PATH");
}

void runActions(QuellmarkForm& form, RecordingPlatform& platform, const CommandLine& cl)
{
    for (std::size_t i = 0; i < cl.actions.size(); ++i) {
        const OwnAnswers* own = nullptr;
        for (const OwnAnswers& o : cl.ownAnswers)
            if (o.action == i) own = &o;
        if (!own) {
            applyAction(form, cl.actions[i]);
            continue;
        }
        auto files = std::move(platform.fileAnswers);
        auto answers = std::move(platform.answers);
        platform.fileAnswers.assign(own->fileAnswers.begin(), own->fileAnswers.end());
        platform.answers.assign(own->answers.begin(), own->answers.end());
        try {
            applyAction(form, cl.actions[i]);
        } catch (...) {
            platform.fileAnswers = std::move(files);
            platform.answers = std::move(answers);
            throw;
        }
        platform.fileAnswers = std::move(files);
        platform.answers = std::move(answers);
    }
}

} // namespace qm
