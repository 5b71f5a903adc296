#include "shell/catalogue_window.h"

#include "shell/chart_view.h"
#include "shell/grid_view.h"
#include "shell/qt_platform.h"
#include "shell/twips.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace qm {

CatalogueWindow::CatalogueWindow(QuellmarkForm& form, const std::string& window,
                                 ControlEvents& events, QWidget* owner)
    : QWidget(owner, Qt::Window), form_(form), window_(*form.find(window)), events_(events)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    client_ = new QWidget(this);
    client_->setFixedSize(twipsToPxRounded(window_.width), twipsToPxRounded(window_.height));
    // Frames first, so that the controls in them have their parent.
    for (bool frames : {true, false})
        for (Control* c : form_.windowControls()) {
            if (c->window != window || (c->kind == ControlKind::Frame) != frames) continue;
            if (c->kind == ControlKind::Menu) {
                if (!menuBar_) menuBar_ = new QMenuBar(this);
                QAction* a = menuBar_->addAction(QString::fromStdString(c->text));
                connect(a, &QAction::triggered, this,
                        [this, name = c->name] { events_.userEvent(name, FormEvent::Click); });
                continue;
            }
            QWidget* parent = c->container.empty() ? client_ : widgetOf(c->container);
            bindings_.push_back({c, createWidget(*c, parent ? parent : client_)});
        }
    if (menuBar_) layout->setMenuBar(menuBar_);
    layout->addWidget(client_);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* CatalogueWindow::createWidget(Control& c, QWidget* parent)
{
    switch (c.kind) {
    case ControlKind::Frame:
        return new FrameBox(c.name, events_, parent);
    case ControlKind::TextBox:
        return new EntryBox(c.name, events_, parent);
    case ControlKind::Button:
        return new CommandButton(c.name, events_, parent);
    case ControlKind::Grid: {
        auto* g = new GridView(c.name, *form_.grid(c.name), events_, parent);
        grids_.push_back(g);
        return g;
    }
    default:
        return new TextLabel(c.name, events_, parent);
    }
}

QWidget* CatalogueWindow::widgetOf(const std::string& control) const
{
    for (const Binding& b : bindings_)
        if (b.control->name == control) return b.widget;
    return nullptr;
}

void CatalogueWindow::syncWidget(const Binding& b)
{
    const Control& c = *b.control;
    QWidget* w = b.widget;
    const QSignalBlocker block(w);
    w->setGeometry(controlRect(c));
    w->setEnabled(c.enabled);
    w->setToolTip(QString::fromStdString(c.toolTip));
    const QString text = screenText(c.text);
    if (auto* e = dynamic_cast<EntryBox*>(w)) {
        if (e->text() != text) e->showText(text);
    } else if (auto* l = dynamic_cast<TextLabel*>(w)) {
        l->setText(text);
    } else if (auto* f = dynamic_cast<FrameBox*>(w)) {
        f->setTitle(text);
    } else if (auto* p = dynamic_cast<CommandButton*>(w)) {
        p->setText(text);
    }
    w->setVisible(c.visible);
}

void CatalogueWindow::syncFromModel()
{
    setWindowTitle(QString::fromStdString(window_.text));
    for (const Binding& b : bindings_)
        syncWidget(b);
    if (!window_.visible) {
        hide();
        return;
    }
    for (GridView* g : grids_)
        g->syncFromModel();
    if (!isVisible()) show();
}

void CatalogueWindow::closeEvent(QCloseEvent* event)
{
    // Closing the frame hides the window, as its Close button does; it stays
    // loaded.
    window_.visible = false;
    event->accept();
}

} // namespace qm
