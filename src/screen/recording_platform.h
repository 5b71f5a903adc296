#pragma once
// A platform without a window: message boxes are recorded and answered from a
// script, drawings are kept as lists of lines. The command line and the tests
// run the design screen on it.
#include "screen/platform.h"

#include <deque>
#include <functional>
#include <map>
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

/// Settings kept in memory for one run: nothing reaches the user's own.
class MemorySettings : public SettingsStore
{
  public:
    std::string getSetting(const std::string& app, const std::string& section,
                           const std::string& key, const std::string& fallback) override;
    void saveSetting(const std::string& app, const std::string& section, const std::string& key,
                     const std::string& value) override;

    /// "app/section/key" to value.
    std::map<std::string, std::string> values;
};

class RecordingPlatform : public MessageBoxes,
                          public BusyPointer,
                          public FileDialogs,
                          public FileTest,
                          public Printer,
                          public HelpViewer,
                          public RecentDesigns
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
    /// Answers with the next scripted number of copies; 0 or a dry script
    /// is Cancel.
    int showPrintDialog() override;
    void setOrientation(int orientation) override;
    /// Records a page with the orientation it was given, after `onPage`
    /// has seen the form; the page numbered `failAtPage` fails instead.
    void printForm() override;
    void endDocument() override;
    void showHelp(int context) override;
    void designUsed(const std::string& path) override;

    /// The services to hand to a form.
    PlatformServices services();

    std::vector<RecordedMessage> messages;
    /// Answers for Yes/No questions, taken in order; No when it runs dry.
    std::deque<MessageAnswer> answers;
    std::vector<RecordedDialog> dialogs;
    /// Paths the file dialogs return, taken in order; an empty one cancels.
    std::deque<std::string> fileAnswers;
    /// Copies the print dialogs return, taken in order.
    std::deque<int> printAnswers;
    int printDialogs = 0;
    int orientation = kPortrait;
    std::vector<int> pageOrientations; ///< one per page printed
    int documentsEnded = 0;
    int failAtPage = 0; ///< 1-based; 0 never fails
    std::function<void()> onPage;
    std::vector<int> helpOpened;          ///< context numbers, in order
    std::vector<std::string> designsUsed; ///< opened or saved by name, in order
    MemorySettings memorySettings;
    /// The store handed to a form: memorySettings unless set to another.
    SettingsStore* settings = &memorySettings;
    bool busy = false;
    int busyCount = 0;
    RecordingSurface graph;
    RecordingSurface background;
};

} // namespace qm
