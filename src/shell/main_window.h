#pragma once
// The design screen in a window: one widget per control of the view model,
// placed in twips, and the menus. What the user does goes to the form's
// handlers by control name; after every handler the widgets are set again
// from the model, and setting a widget raises nothing.
#include "screen/quellmark_form.h"
#include "shell/control_widgets.h"
#include "shell/qt_platform.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

class QAction;
class QMenu;

namespace qm {

class AnalysisWindow;

class CatalogueShell;
class ChartView;
class RecentMenu;
class FormCanvas;
class SideWindow;
class ShellServices;

/// The window's client area: the design screen stands in it, centred, at
/// the scale that fits.
class ScreenStage : public QWidget
{
  public:
    explicit ScreenStage(QWidget* parent);
    std::function<void()> onResize;

  protected:
    void resizeEvent(QResizeEvent* event) override;
};

class MainWindow : public QMainWindow, private ControlEvents
{
  public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Starts the design screen: the default design, recalculated and drawn.
    void start();
    /// Opens a design file as the Open menu does once it has the name.
    void openDesign(const std::string& path);

    QuellmarkForm& form() { return form_; }
    QtPlatform& platform() { return platform_; }
    /// The widget that shows a control, or nullptr.
    QWidget* widgetOf(std::string_view control) const;
    /// The menu entry of a menu control, or nullptr.
    QAction* actionOf(std::string_view control) const;
    /// The dialog of a window beside the design screen, or nullptr.
    SideWindow* sideWindow(std::string_view window) const;
    ChartView* chart() const { return chart_; }
    FormCanvas* canvas() const { return canvas_; }
    /// Printer, settings, help and the about window.
    ShellServices& shell() { return *shell_; }
    /// Where the widgets of other windows send what the user does.
    ControlEvents& controlEvents() { return *this; }
    CatalogueShell* catalogue() const { return catalogue_.get(); }
    AnalysisWindow* analysis() const { return analysis_; }
    /// File > Open Recent.
    RecentMenu* recentMenu() const { return recentMenu_; }

    /// Sets every widget from the model; sends nothing to the form.
    void syncFromModel();
    /// User events that reached the form so far.
    int eventsDispatched() const { return eventsDispatched_; }

    /// The window's size and place as the last run left them, and keeping
    /// them for the next (the per-user settings of the application).
    void readSettings();
    void writeSettings() const;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    struct Binding
    {
        Control* control;
        QWidget* widget;
        Control shown; ///< the state the widget shows
        bool fresh = true;
    };

    // ControlEvents
    void entryEdited(const std::string& control, const QString& text) override;
    void userEvent(const std::string& control, FormEvent event, const EventArgs& args) override;
    void listChosen(const std::string& control, int index) override;
    void choiceClicked(const std::string& control) override;

    void dispatch(const std::function<void()>& work);
    void focusMovedTo(QWidget* now);
    void menuChosen(const std::string& control);

    void buildWidgets();
    QWidget* createWidget(Control& c);
    static bool hasWindowOfItsOwn(const Control& window);
    void styleWidget(const Control& c, QWidget* w);
    void buildMenus();
    void addRecentMenu();
    void applyTabOrder();
    void syncWidget(Binding& b);
    void syncKind(Binding& b);
    void syncMenus();
    void syncMenuTexts(const QList<QAction*>& actions);
    void syncWindow();
    const Binding* bindingAt(QWidget* w) const;
    const Control* sideControlAt(QWidget* w) const;
    QSizeF screenSizeAtScaleOne() const;
    void screenHeightChanged();
    void fitToStage();
    void rescaleWidgets();

    QtPlatform platform_;
    QuellmarkForm form_;
    ScreenStage* stage_ = nullptr;
    FormCanvas* canvas_ = nullptr;
    ChartView* chart_ = nullptr;
    ShellServices* shell_ = nullptr;
    std::vector<Binding> bindings_;
    std::vector<SideWindow*> sideWindows_;
    std::vector<const Binding*> tabOrder_;
    std::unordered_map<std::string, std::size_t> byName_;
    std::unordered_map<const QWidget*, std::size_t> byWidget_;
    std::unordered_map<std::string, QAction*> actions_;
    std::unordered_map<std::string, QMenu*> menus_;
    std::unordered_map<const QAction*, const Control*> menuControls_;
    RecentMenu* recentMenu_ = nullptr;
    int depth_ = 0;
    bool syncing_ = false;
    int eventsDispatched_ = 0;
    int shownHeight_ = -1;
    std::unique_ptr<CatalogueShell> catalogue_;
    AnalysisWindow* analysis_ = nullptr;
};

} // namespace qm
