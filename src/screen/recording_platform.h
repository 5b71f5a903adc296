#pragma once
// A platform without a window: message boxes are recorded and answered from a
// script, drawings are kept as lists of lines. The command line and the tests
// run the design screen on it.
#include "screen/platform.h"

#include <deque>
#include <vector>

namespace qm {

struct RecordedMessage
{
    std::string text;
    std::string title;
    MessageButtons buttons = MessageButtons::Ok;
    MessageIcon icon = MessageIcon::None;
};

struct RecordedLine
{
    float x1, y1, x2, y2;
    Color color;
};

class RecordingSurface : public DrawingSurface
{
  public:
    void clear() override
    {
        lines.clear();
        ++clears;
    }
    void line(float x1, float y1, float x2, float y2, Color color) override
    {
        lines.push_back({x1, y1, x2, y2, color});
    }

    std::vector<RecordedLine> lines;
    int clears = 0;
};

struct RecordedDialog
{
    FileDialogKind kind = FileDialogKind::Open;
    FileDialogRequest request;
};

class RecordingPlatform : public MessageBoxes,
                          public BusyPointer,
                          public FileDialogs,
                          public FileTest
{
  public:
    RecordingPlatform();

    MessageAnswer showMessage(const std::string& text, const std::string& title,
                              MessageButtons buttons, MessageIcon icon) override;
    void setBusy(bool busy) override;
    /// Answers with the next scripted path; cancels when the script is dry.
    std::string showFileDialog(FileDialogKind kind, const FileDialogRequest& request) override;
    /// Asks the real file system.
    bool fileExists(const std::string& path) override;

    /// The services to hand to a form.
    PlatformServices services();

    std::vector<RecordedMessage> messages;
    /// Answers for Yes/No questions, taken in order; No when it runs dry.
    std::deque<MessageAnswer> answers;
    std::vector<RecordedDialog> dialogs;
    /// Paths the file dialogs return, taken in order; an empty one cancels.
    std::deque<std::string> fileAnswers;
    bool busy = false;
    int busyCount = 0;
    RecordingSurface graph;
    RecordingSurface background;
};

} // namespace qm
