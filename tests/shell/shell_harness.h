#pragma once
// What the window tests share: a started window, its headless twin driven
// by the command line's actions, comparisons of the two, and a catcher for
// the message boxes that a handler opens.
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"
#include "shell/main_window.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace qm::test {

/// The design screen in a window, started and shown, with the focus where
/// the window puts it first.
struct StartedWindow
{
    StartedWindow();
    MainWindow window;
};

/// The same design screen without a window, as quellmark-cli runs it. It
/// takes the focus where the window first takes it, so that the two see the
/// same events.
struct HeadlessTwin
{
    HeadlessTwin();
    void act(ActionKind kind, const std::string& control, const std::string& text = {});
    RecordingPlatform platform;
    QuellmarkForm form;
};

/// Does the same steps on the window, by its widgets, and on the twin, by
/// the command line's actions. Steps are parted by ';': "enter NAME=TEXT"
/// (type and press Enter), "type NAME=TEXT" (type only), "focus NAME",
/// "click NAME", "pick LIST=INDEX", "menu NAME", "chart X,Y" (a click on
/// the chart, in pixels).
void applySteps(MainWindow& w, HeadlessTwin& twin, const QString& steps);

/// Controls whose text, visibility, enabled state, value or list index
/// differ between the two forms, one line each.
QStringList modelDifferences(const QuellmarkForm& a, const QuellmarkForm& b);

/// Controls whose widget doesn't show what the model holds.
QStringList widgetDifferences(const MainWindow& w);

/// Pairs of texts of the screen that stand on each other.
QStringList overlappingTexts(const MainWindow& w);

/// A message box that was answered.
struct CaughtMessage
{
    QString title;
    QString text;
};

/// Answers every message box that opens while it lives, pressing `button`
/// if the box has it, else the box's default.
class MessageCatcher
{
  public:
    explicit MessageCatcher(int button = 0);
    ~MessageCatcher();
    MessageCatcher(const MessageCatcher&) = delete;
    MessageCatcher& operator=(const MessageCatcher&) = delete;
    const std::vector<CaughtMessage>& messages() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Types `text` into an entry as a person does: focus, replace, keys.
void typeInto(MainWindow& w, const char* control, const QString& text);
/// Presses Enter in the entry that has the focus.
void pressEnter(MainWindow& w, const char* control);
/// Clicks a widget in its middle.
void clickOn(MainWindow& w, const char* control);
/// Double-clicks a widget as the platform delivers it: press, release,
/// press, double click, release.
void doubleClickOn(QWidget* widget, QPoint at);
/// Opens a list's drop-down with the mouse and picks an item in it.
void pickFromList(MainWindow& w, const char* control, int index);

} // namespace qm::test
