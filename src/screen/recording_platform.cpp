#include "screen/recording_platform.h"

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
    if (answers.empty()) return MessageAnswer::Yes;
    MessageAnswer a = answers.front();
    answers.pop_front();
    return a;
}

void RecordingPlatform::setBusy(bool b)
{
    busy = b;
    if (b) ++busyCount;
}

PlatformServices RecordingPlatform::services()
{
    return {this, this, &graph, &background};
}

} // namespace qm
