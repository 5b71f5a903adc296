#include "shell/main_window.h"

#include "circuit/circuit_exports.h"
#include "design/cycle.h"
#include "files/file_menu.h"
#include "shell/about_dialog.h"
#include "shell/analysis_window.h"
#include "shell/catalogue_shell.h"
#include "shell/chart_view.h"
#include "shell/design_drop.h"
#include "shell/form_canvas.h"
#include "shell/menu_keys.h"
#include "shell/recent_menu.h"
#include "shell/schematic_view.h"
#include "shell/shell_services.h"
#include "shell/side_window.h"
#include "shell/twips.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QLayout>
#include <QMenuBar>

#include <algorithm>
#include <cmath>

namespace qm {

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent), form_(platform_.services())
{
    platform_.setParentWidget(this);
    // A new window starts at the screen's own size.
    setScreenScale(1.0);
    catalogue_ = std::make_unique<CatalogueShell>(form_, this, [this] { syncFromModel(); });
    addCircuitHandlers(form_);
    buildWidgets();
    shell_ = new ShellServices(*this);
    analysis_ = new AnalysisWindow(form_, this);
    // A report made while the analyses are shown carries their pages.
    shell_->reportAdditions.push_back([this](const ReportStyle& style, ReportBlocks& blocks) {
        if (analysis_->isVisible()) analysis_->addReportBlocks(style, blocks);
    });
    form_.on("AnalysisWindowMnu", FormEvent::Click,
             [this](QuellmarkForm&, int, const EventArgs&) { analysis_->open(); });
    buildMenus();
    addRecentMenu();
    applyTabOrder();
    stage_->onResize = [this] { fitToStage(); };
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { focusMovedTo(now); });
    setAcceptDrops(true);
    qApp->installEventFilter(new DesignDrop(
        this, [this](const QString& path) { openDesign(QFile::encodeName(path).toStdString()); }));
    syncFromModel();
}

MainWindow::~MainWindow()
{
    // The widgets go with the window; no focus change may reach the form
    // while they do.
    syncing_ = true;
    disconnect(qApp, nullptr, this, nullptr);
}

void MainWindow::start()
{
    dispatch([this] { form_.runGuarded([this] { Form_Initialize(form_); }); });
    // The screen comes up with the focus on the first control of the tab
    // order that can take it.
    for (const Binding* b : tabOrder_)
        if (b->control->visible && b->control->enabled) {
            b->widget->setFocus(Qt::TabFocusReason);
            break;
        }
}

void MainWindow::openDesign(const std::string& path)
{
    dispatch([&] { form_.runGuarded([&] { openDesignFile(form_, path); }); });
}

QWidget* MainWindow::widgetOf(std::string_view control) const
{
    auto it = byName_.find(std::string(control));
    if (it != byName_.end()) return bindings_[it->second].widget;
    for (const SideWindow* side : sideWindows_)
        if (QWidget* w = side->widgetOf(std::string(control))) return w;
    return nullptr;
}

SideWindow* MainWindow::sideWindow(std::string_view window) const
{
    for (SideWindow* side : sideWindows_)
        if (side->objectName().toStdString() == window) return side;
    return nullptr;
}

QAction* MainWindow::actionOf(std::string_view control) const
{
    auto it = actions_.find(std::string(control));
    return it == actions_.end() ? nullptr : it->second;
}

// --- Building ---------------------------------------------------------------

namespace {

/// Widgets are made in layers: frames, which hold others; pictures; texts
/// over the pictures; and on top what the user works with.
int layerOf(const Control& c)
{
    switch (c.kind) {
    case ControlKind::Frame:
        return c.container.empty() ? 0 : 1;
    case ControlKind::Picture:
        return 2;
    case ControlKind::Label:
        return 3;
    case ControlKind::TextBox:
    case ControlKind::ListBox:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::Button:
        return 4;
    default:
        return -1;
    }
}

constexpr int kLayers = 5;

/// A line of the value table, or its head: one table in columns.
bool isValueTableLine(const Control& c)
{
    static const char* const kLines[] = {"Label40", "Text41", "Text42",
                                         "Text43",  "Text44", "Text45"};
    return std::any_of(std::begin(kLines), std::end(kLines),
                       [&](const char* b) { return c.base == b; });
}

/// Where the columns of the value table start: the section's name, then the
/// six parts.
std::vector<int> valueTableColumns()
{
    constexpr int kNameColumn = 900;
    constexpr int kPartColumn = 1500;
    constexpr int kParts = 6;
    std::vector<int> lefts{0};
    for (int k = 0; k < kParts; ++k)
        lefts.push_back(twipsToPxRounded(kNameColumn + k * kPartColumn));
    return lefts;
}

} // namespace

void MainWindow::buildWidgets()
{
    stage_ = new ScreenStage(this);
    canvas_ = new FormCanvas(form_, platform_.background, *this, stage_);
    setCentralWidget(stage_);
    bindings_.reserve(form_.all().size());
    for (int layer = 0; layer < kLayers; ++layer) {
        for (Control* c : form_.all()) {
            if (layerOf(*c) != layer) continue;
            QWidget* w = createWidget(*c);
            styleWidget(*c, w);
            byName_[c->name] = bindings_.size();
            byWidget_[w] = bindings_.size();
            bindings_.push_back({c, w, *c, true});
        }
    }
    for (Control* window : form_.windows()) {
        if (hasWindowOfItsOwn(*window)) continue;
        auto* side = new SideWindow(form_, *window, *this, this);
        side->setObjectName(QString::fromStdString(window->name));
        sideWindows_.push_back(side);
    }
}

bool MainWindow::hasWindowOfItsOwn(const Control& window)
{
    // The about window and the catalogue's two windows are built by the
    // shell services and the catalogue shell; the others are plain dialogs.
    static const char* const kOwn[] = {"AboutQuellmark", "frmKRNamps", "PartList"};
    return std::any_of(std::begin(kOwn), std::end(kOwn),
                       [&](const char* name) { return window.name == name; });
}

QWidget* MainWindow::createWidget(Control& c)
{
    QWidget* parent = c.container.empty() ? canvas_ : widgetOf(c.container);
    if (!parent) parent = canvas_;
    switch (c.kind) {
    case ControlKind::Frame:
        return new FrameBox(c.name, *this, parent);
    case ControlKind::TextBox:
        // The lines of the value table are read, never typed into.
        if (isValueTableLine(c)) return new TextLabel(c.name, *this, parent);
        return new EntryBox(c.name, *this, parent);
    case ControlKind::ListBox:
        return new ListChoice(c.name, *this, parent);
    case ControlKind::CheckBox:
        return new ChoiceButton(c.name, ChoiceButton::Style::Check, *this, parent);
    case ControlKind::OptionButton:
        return new ChoiceButton(c.name, ChoiceButton::Style::Option, *this, parent);
    case ControlKind::Button:
        return new CommandButton(c.name, *this, parent);
    case ControlKind::Picture:
        if (&c == &form_.Graph) {
            chart_ = new ChartView(form_.Graph, form_.Cursor, platform_.graph, *this, parent);
            return chart_;
        }
        if (const auto kind = pictureOf(c.base))
            return new SchematicView(c.name, *kind, *this, parent);
        return new TextLabel(c.name, *this, parent);
    default:
        return new TextLabel(c.name, *this, parent);
    }
}

namespace {

/// Value labels of the schematics stand over lines of the drawings.
bool isSchematicValue(const Control& c)
{
    static const char* const kBases[] = {"R1", "R2", "R3", "R4", "C1L", "C2L", "RealR", "RealC"};
    return std::any_of(std::begin(kBases), std::end(kBases),
                       [&](const char* b) { return c.base == b; });
}

/// The results table is set a little narrower than the rest: its columns
/// carry numbers with units in little room.
bool isInResultsTable(const Control& c)
{
    static const char* const kBases[] = {"DCgain", "GainF",  "PhaseF",  "FSFreq", "Qdisp",
                                         "GBPreq", "Qtotal", "FnInput", "QInput", "Label2",
                                         "Label3", "Label4", "Label5",  "Label6", "Label7"};
    return std::any_of(std::begin(kBases), std::end(kBases),
                       [&](const char* b) { return c.base == b; });
}

} // namespace

void MainWindow::styleWidget(const Control& c, QWidget* w)
{
    QFont font = QApplication::font();
    font.setPointSizeF((c.fontSize > 0 ? c.fontSize : font.pointSizeF()) * screenScale());
    font.setBold(c.bold);
    if (isInResultsTable(c)) font.setStretch(QFont::SemiCondensed);
    w->setFont(font);
    if (auto* label = dynamic_cast<TextLabel*>(w)) {
        label->setWrap(c.multiLine);
        label->setAlignment(controlAlignment(c));
        if (isSchematicValue(c)) label->setHalo(palette().color(QPalette::Base));
        if (&c == &form_.Prompt) label->setMargin(static_cast<int>(std::lround(scaledPx(6))));
        if (isValueTableLine(c)) label->setColumns(valueTableColumns());
    }
    if (auto* entry = dynamic_cast<EntryBox*>(w)) {
        entry->setBaseFont(font);
        entry->setAlignment(c.alignment == 1 ? Qt::AlignRight : Qt::AlignLeft);
        if (c.tabIndex < 0) entry->setFocusPolicy(Qt::ClickFocus);
    }
}

void MainWindow::applyTabOrder()
{
    std::vector<const Binding*> order;
    for (const Binding& b : bindings_)
        if (b.control->tabIndex >= 0) order.push_back(&b);
    std::sort(order.begin(), order.end(), [](const Binding* a, const Binding* b) {
        return a->control->tabIndex < b->control->tabIndex;
    });
    for (std::size_t k = 1; k < order.size(); ++k)
        QWidget::setTabOrder(order[k - 1]->widget, order[k]->widget);
    tabOrder_ = std::move(order);
}

void MainWindow::buildMenus()
{
    for (Control* c : form_.all()) {
        if (c->kind != ControlKind::Menu) continue;
        const QString caption = QString::fromStdString(c->text);
        if (c->menu.empty()) {
            QMenu* menu = menuBar()->addMenu(caption);
            menus_[c->name] = menu;
            menuControls_[menu->menuAction()] = c;
            continue;
        }
        QMenu* menu = menus_[c->menu];
        QAction* a = c->text == "-" ? menu->addSeparator() : menu->addAction(caption);
        if (c->text != "-") {
            a->setShortcuts(menuShortcuts(form_, *c));
            if (isApplicationWide(form_, *c)) a->setShortcutContext(Qt::ApplicationShortcut);
            // The entries of the View menu carry ticks.
            a->setCheckable(c->menu == form_.viewmnu.name);
            connect(a, &QAction::triggered, this, [this, name = c->name] { menuChosen(name); });
        }
        actions_[c->name] = a;
        menuControls_[a] = c;
    }
    // Entries that the windows beside the design screen bring, at the end
    // of the menu they name.
    for (Control* c : form_.menuEntries()) {
        QMenu* menu = menus_[c->menu];
        if (!menu) continue;
        QAction* a = menu->addAction(QString::fromStdString(c->text));
        connect(a, &QAction::triggered, this, [this, name = c->name] { menuChosen(name); });
        actions_[c->name] = a;
    }
}

void MainWindow::addRecentMenu()
{
    QMenu* file = menus_[form_.mnuFile.name];
    recentMenu_ = new RecentMenu(
        shell_->recent,
        [this](const QString& path) { openDesign(QFile::encodeName(path).toStdString()); }, file);
    // Right below Open.
    const QList<QAction*> entries = file->actions();
    const qsizetype open = entries.indexOf(actionOf(form_.mnuFileOpen.name));
    file->insertMenu(entries.value(open + 1), recentMenu_);
}

// --- Events -----------------------------------------------------------------

void MainWindow::dispatch(const std::function<void()>& work)
{
    ++eventsDispatched_;
    {
        // Handlers nest: the widgets follow the model once the outermost
        // one is done, however it ends.
        struct Depth
        {
            int& depth;
            explicit Depth(int& d) : depth(d) { ++depth; }
            ~Depth() { --depth; }
            Depth(const Depth&) = delete;
            Depth& operator=(const Depth&) = delete;
        } nested(depth_);
        work();
    }
    if (depth_ == 0) syncFromModel();
}

void MainWindow::entryEdited(const std::string& control, const QString& text)
{
    Control* c = form_.find(control);
    if (!c) return;
    c->text = text.toStdString();
    if (form_.hasHandler(c->base, FormEvent::Change))
        dispatch([&] { form_.raise(control, FormEvent::Change); });
}

void MainWindow::userEvent(const std::string& control, FormEvent event, const EventArgs& args)
{
    dispatch([&] { form_.raise(control, event, args); });
}

void MainWindow::listChosen(const std::string& control, int index)
{
    Control* c = form_.find(control);
    if (!c) return;
    dispatch([&] { form_.runGuarded([&] { form_.setListIndex(*c, index); }); });
}

void MainWindow::choiceClicked(const std::string& control)
{
    Control* c = form_.find(control);
    if (!c) return;
    dispatch([&] {
        form_.runGuarded([&] {
            if (c->kind == ControlKind::OptionButton)
                form_.selectOption(*c);
            else
                form_.setCheck(*c, c->checked() ? 0 : kChecked);
        });
    });
}

void MainWindow::menuChosen(const std::string& control)
{
    // Help Contents is F1 too, which with a menu open is about its
    // highlighted entry.
    if (control == form_.HelpCont.name) {
        shell_->openHelp();
        return;
    }
    const Control* c = form_.find(control);
    if (c && c->name == form_.Exitmnu.name && !form_.hasHandler(c->base, FormEvent::Click)) {
        close();
        return;
    }
    userEvent(control, FormEvent::Click, {});
}

const MainWindow::Binding* MainWindow::bindingAt(QWidget* w) const
{
    // A list's drop-down belongs to the list.
    for (; w; w = w->parentWidget()) {
        auto it = byWidget_.find(w);
        if (it != byWidget_.end()) return &bindings_[it->second];
        if (w == this) break;
    }
    return nullptr;
}

const Control* MainWindow::sideControlAt(QWidget* w) const
{
    for (const SideWindow* side : sideWindows_)
        if (const Control* c = side->controlAt(w)) return c;
    return nullptr;
}

void MainWindow::focusMovedTo(QWidget* now)
{
    if (syncing_ || !now) return;
    const Binding* b = bindingAt(now);
    const Control* c = b ? b->control : sideControlAt(now);
    if (!c || now->focusPolicy() == Qt::NoFocus) return;
    const std::string name = c->name;
    if (form_.focusedControl() == name) return;
    dispatch([&] { form_.moveFocus(name); });
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    // The program ends with no question and writes nothing; the windows
    // beside the design screen go with it.
    if (HelpWindow* help = shell_->help.window()) help->close();
    shell_->about()->hide();
    // The program ends with no question; of the design it writes nothing,
    // only where the window stood.
    writeSettings();
    event->accept();
}

} // namespace qm
