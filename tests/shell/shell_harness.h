#pragma once
// What the window tests share: a started window, its headless twin driven
// by the command line's actions, and comparisons of the two.
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"
#include "shell/main_window.h"

#include <QString>
#include <QStringList>

#include <string>

namespace qm::test {

/// The design screen in a window, started, shown and active.
struct StartedWindow
{
    StartedWindow();
    MainWindow window;
};

/// The same design screen without a window, as quellmark-cli runs it, with
/// the focus where the window first puts it.
struct HeadlessTwin
{
    HeadlessTwin();
    void act(ActionKind kind, const std::string& control, const std::string& text = {})
    {
        applyAction(form, {kind, control, text});
    }
    RecordingPlatform platform;
    QuellmarkForm form;
};

/// Does the same steps on the window, by its widgets, and on the twin, by
/// the command line's actions. Steps are parted by ';': "enter NAME=TEXT"
/// (type and press Enter), "type NAME=TEXT", "focus NAME", "click NAME",
/// "pick LIST=INDEX", "menu NAME".
void applySteps(MainWindow& w, HeadlessTwin& twin, const QString& steps);

/// The text a widget shows.
QString shownText(const QWidget* w);
/// Controls whose state differs between the two forms, one line each.
QStringList modelDifferences(const QuellmarkForm& a, const QuellmarkForm& b);
/// Controls whose widget or menu entry doesn't show what the model holds.
QStringList widgetDifferences(MainWindow& w);
/// Pairs of texts of the screen that stand on each other.
QStringList overlappingTexts(MainWindow& w);
/// Fails with the found lines, one a line, unless there are none.
void expectNone(const QStringList& found);
/// The window and its twin agree, the widgets show the model and, with
/// `texts`, no two texts stand on each other.
void expectAgreement(MainWindow& w, const HeadlessTwin& twin, bool texts = true);

} // namespace qm::test
