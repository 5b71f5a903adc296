#include "screen/recording_platform.h"

#include <filesystem>

namespace qm {

RecordingPlatform::RecordingPlatform()
{
    graph.lines.reserve(4096);
    background.lines.reserve(4096);
}

MessageAnswer RecordingPlatform::showMessage(const std::string& text, const std::string& title,
                                             MessageButtons buttons, MessageIcon icon)
{
    messages.push_back({text, title, buttons, icon});
    if (buttons == MessageButtons::Ok) return MessageAnswer::Ok;
    if (answers.empty()) return MessageAnswer::No;
    MessageAnswer a = answers.front();
    answers.pop_front();
    return a;
}

void RecordingPlatform::setBusy(bool b)
{
    busy = b;
    if (b) ++busyCount;
}

std::string RecordingPlatform::showFileDialog(FileDialogKind kind, const FileDialogRequest& request)
{
    dialogs.push_back({kind, request});
    if (fileAnswers.empty()) return {};
    std::string path = fileAnswers.front();
    fileAnswers.pop_front();
    return path;
}

bool RecordingPlatform::fileExists(const std::string& path)
{
    std::error_code ec;
    return std::filesystem::is_regular_file(path, ec);
}

int RecordingPlatform::showPrintDialog()
{
    ++printDialogs;
    const int copies = printAnswers.empty() ? 0 : printAnswers.front();
    if (!printAnswers.empty()) printAnswers.pop_front();
    if (copies <= 0) throw PrintFailure("the print dialog was cancelled");
    return copies;
}

void RecordingPlatform::setOrientation(int o)
{
    orientation = o;
}

void RecordingPlatform::printForm()
{
    if (failAtPage == static_cast<int>(pageOrientations.size()) + 1)
        throw PrintFailure("the printer stopped");
    if (onPage) onPage();
    pageOrientations.push_back(orientation);
}

void RecordingPlatform::endDocument()
{
    ++documentsEnded;
}

void RecordingPlatform::showHelp(int context)
{
    helpOpened.push_back(context);
}

void RecordingPlatform::designUsed(const std::string& path)
{
    designsUsed.push_back(path);
}

std::string MemorySettings::getSetting(const std::string& app, const std::string& section,
                                       const std::string& key, const std::string& fallback)
{
    auto it = values.find(app + "/" + section + "/" + key);
    return it == values.end() ? fallback : it->second;
}

void MemorySettings::saveSetting(const std::string& app, const std::string& section,
                                 const std::string& key, const std::string& value)
{
    values[app + "/" + section + "/" + key] = value;
}

PlatformServices RecordingPlatform::services()
{
    PlatformServices s;
    s.printer = this;
    s.settings = settings;
    s.help = this;
    s.recent = this;
    s.messages = this;
    s.busy = this;
    s.graph = &graph;
    s.background = &background;
    s.dialogs = this;
    s.files = this;
    return s;
}

} // namespace qm
