// Setting the widgets from the model. Every setter here is silent: signals
// are blocked, and focus changes that hiding or disabling a widget causes
// are not taken for the user's.
#include "shell/analysis_window.h"
#include "shell/catalogue_shell.h"
#include "shell/chart_view.h"
#include "shell/form_canvas.h"
#include "shell/main_window.h"
#include "shell/menu_keys.h"
#include "shell/recent_menu.h"
#include "shell/schematic_view.h"
#include "shell/shell_services.h"
#include "shell/side_window.h"
#include "shell/twips.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSignalBlocker>

namespace qm {

namespace {

bool sameGeometry(const Control& a, const Control& b)
{
    return a.left == b.left && a.top == b.top && a.width == b.width && a.height == b.height;
}

QColor textColorOf(const Control& c, const QPalette& palette)
{
    return c.foreColor == kBlack ? QColor() : qtColor(c.foreColor, palette);
}

QColor groundOf(const Control& c, const QPalette& palette)
{
    return c.backColor == kFormColor ? QColor() : qtColor(c.backColor, palette);
}

/// An entry's ground: white reads as the platform's entry colour.
QColor entryGround(const Control& c, const QPalette& palette)
{
    return c.backColor == kWhite ? palette.color(QPalette::Base) : qtColor(c.backColor, palette);
}

void syncEntry(EntryBox& e, const Control& c, const Control& shown, bool fresh)
{
    e.showText(QString::fromStdString(c.text));
    if (fresh || c.backColor != shown.backColor) {
        QPalette pal = e.palette();
        const QColor ground = entryGround(c, pal);
        for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            pal.setColor(group, QPalette::Base, ground);
        e.setPalette(pal);
    }
    if (fresh || c.raised != shown.raised) e.setFrame(c.raised);
    if (fresh || c.readOnly != shown.readOnly) e.setReadOnly(c.readOnly);
}

void syncList(ListChoice& l, const Control& c, const Control& shown, bool fresh)
{
    if (fresh || c.items != shown.items) {
        l.clear();
        for (const std::string& item : c.items)
            l.addItem(QString::fromStdString(item));
    }
    if (l.currentIndex() != c.listIndex) l.setCurrentIndex(c.listIndex);
}

void syncLabel(TextLabel& l, const Control& c)
{
    l.setText(screenText(c.text));
    l.setColors(textColorOf(c, l.palette()), groundOf(c, l.palette()));
    l.setBorder(c.raised);
}

} // namespace

void MainWindow::syncKind(Binding& b)
{
    const Control& c = *b.control;
    QWidget* w = b.widget;
    switch (c.kind) {
    case ControlKind::TextBox:
        if (auto* entry = dynamic_cast<EntryBox*>(w))
            syncEntry(*entry, c, b.shown, b.fresh);
        else
            syncLabel(*static_cast<TextLabel*>(w), c);
        break;
    case ControlKind::ListBox:
        syncList(*static_cast<ListChoice*>(w), c, b.shown, b.fresh);
        break;
    case ControlKind::CheckBox:
    case ControlKind::OptionButton: {
        auto* button = static_cast<ChoiceButton*>(w);
        button->setText(QString::fromStdString(c.text));
        button->setOn(c.kind == ControlKind::CheckBox ? c.checked() : c.selected());
        break;
    }
    case ControlKind::Frame:
        static_cast<FrameBox*>(w)->setTitle(QString::fromStdString(c.text));
        break;
    case ControlKind::Button:
        static_cast<CommandButton*>(w)->setText(QString::fromStdString(c.text));
        break;
    case ControlKind::Label:
        syncLabel(*static_cast<TextLabel*>(w), c);
        break;
    case ControlKind::Picture:
        if (auto* label = dynamic_cast<TextLabel*>(w)) syncLabel(*label, c);
        break;
    default:
        break;
    }
}

void MainWindow::syncWidget(Binding& b)
{
    const Control& c = *b.control;
    Control& shown = b.shown;
    QWidget* w = b.widget;
    const QSignalBlocker block(w);
    if (b.fresh || !sameGeometry(c, shown)) w->setGeometry(controlRect(c));
    if (b.fresh || c.toolTip != shown.toolTip) w->setToolTip(QString::fromStdString(c.toolTip));
    syncKind(b);
    if (b.fresh || c.enabled != shown.enabled) w->setEnabled(c.enabled);
    if (b.fresh || c.visible != shown.visible) w->setVisible(c.visible);
    shown = c;
    b.fresh = false;
}

void MainWindow::syncMenus()
{
    for (Control* c : form_.all()) {
        if (c->kind != ControlKind::Menu || c->menu.empty()) continue;
        QAction* a = actions_[c->name];
        if (!a || a->isSeparator()) continue;
        const QSignalBlocker block(a);
        a->setChecked(c->value == kSelected);
        a->setVisible(c->visible);
        // An entry whose operation this build doesn't have yet is shown, but
        // can't be chosen.
        const bool built = form_.hasHandler(c->base, FormEvent::Click) || c == &form_.Exitmnu;
        a->setEnabled(c->enabled && built);
    }
    syncMenuTexts(menuBar()->actions());
    for (const auto& [name, menu] : menus_)
        syncMenuTexts(menu->actions());
    if (recentMenu_) recentMenu_->syncEnabled();
}

void MainWindow::syncMenuTexts(const QList<QAction*>& actions)
{
    // The model's captions, and the shell's own entries as they stand, with
    // a key letter for each.
    QStringList captions;
    for (const QAction* a : actions) {
        auto it = menuControls_.find(a);
        captions << (a->isSeparator()            ? QString()
                     : it != menuControls_.end() ? QString::fromStdString(it->second->text)
                                                 : a->text());
    }
    const QStringList shown = withMnemonics(captions);
    for (qsizetype k = 0; k < actions.size(); ++k)
        if (!actions[k]->isSeparator()) actions[k]->setText(shown[k]);
}

void MainWindow::syncWindow()
{
    setWindowTitle(QString::fromStdString(form_.Form.text));
    // Controls in the form's own colour follow the form, white for paper.
    const QColor ground = qtColor(form_.Form.backColor, palette());
    if (canvas_->palette().color(QPalette::Window) != ground) {
        QPalette pal = canvas_->palette();
        pal.setColor(QPalette::Window, ground);
        canvas_->setPalette(pal);
    }
    const int height = form_.Form.height;
    if (height != shownHeight_) {
        shownHeight_ = height;
        screenHeightChanged();
    }
}

void MainWindow::syncFromModel()
{
    const bool wasSyncing = syncing_;
    syncing_ = true;
    syncWindow();
    for (Binding& b : bindings_)
        syncWidget(b);
    syncMenus();
    for (SideWindow* side : sideWindows_)
        side->syncFromModel();
    chart_->refresh();
    canvas_->refresh();
    if (shell_) shell_->syncFromModel();
    if (analysis_) analysis_->designChanged();
    if (catalogue_) catalogue_->syncFromModel();
    syncing_ = wasSyncing;
}

} // namespace qm
