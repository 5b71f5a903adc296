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

PlatformServices RecordingPlatform::services()
{
    PlatformServices s;
    s.messages = this;
    s.busy = this;
    s.graph = &graph;
    s.background = &background;
    s.dialogs = this;
    s.files = this;
    return s;
}

} // namespace qm
