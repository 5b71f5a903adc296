#include "shell/side_window.h"

#include "shell/chart_view.h"
#include "shell/grid_view.h"
#include "shell/twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSignalBlocker>

#include <algorithm>

namespace qm {

namespace {

// Room between the main window's frame and the dialog's.
constexpr int kGapPx = 8;

void syncKind(QWidget* w, const Control& c)
{
    const QString text = QString::fromStdString(c.text);
    switch (c.kind) {
    case ControlKind::TextBox:
        static_cast<EntryBox*>(w)->showText(text);
        break;
    case ControlKind::ListBox: {
        auto* list = static_cast<ListChoice*>(w);
        if (list->count() != static_cast<int>(c.items.size())) {
            list->clear();
            for (const std::string& item : c.items)
                list->addItem(QString::fromStdString(item));
        }
        if (list->currentIndex() != c.listIndex) list->setCurrentIndex(c.listIndex);
        break;
    }
    case ControlKind::CheckBox:
    case ControlKind::OptionButton: {
        auto* button = static_cast<ChoiceButton*>(w);
        button->setText(text);
        button->setOn(c.kind == ControlKind::CheckBox ? c.checked() : c.selected());
        break;
    }
    case ControlKind::Button:
        static_cast<CommandButton*>(w)->setText(text);
        break;
    case ControlKind::Frame:
        static_cast<FrameBox*>(w)->setTitle(text);
        break;
    case ControlKind::Grid:
        static_cast<GridView*>(w)->syncFromModel();
        break;
    default: {
        auto* label = static_cast<TextLabel*>(w);
        label->setText(text);
        // A label in a colour of its own (a verdict in green or red).
        label->setColors(c.foreColor == kBlack ? QColor() : qtColor(c.foreColor, w->palette()),
                         QColor());
        break;
    }
    }
}

} // namespace

SideWindow::SideWindow(QuellmarkForm& form, Control& window, ControlEvents& events, QWidget* parent)
    : QDialog(parent), form_(form), window_(window)
{
    setModal(false);
    setWindowTitle(QString::fromStdString(window.text));
    setFixedSize(twipsToPxRounded(window.width), twipsToPxRounded(window.height));
    buildWidgets(events);
}

void SideWindow::buildWidgets(ControlEvents& events)
{
    for (Control* c : form_.windowControls()) {
        if (c->window != window_.name) continue;
        QWidget* w = createWidget(*c, events);
        w->setGeometry(controlRect(*c));
        bindings_.push_back({c, w});
    }
    // Frames first, so that what stands in them is drawn over them.
    for (const Binding& b : bindings_)
        if (b.control->kind == ControlKind::Frame) b.widget->lower();
    std::vector<const Binding*> order;
    for (const Binding& b : bindings_)
        if (b.control->tabIndex >= 0) order.push_back(&b);
    std::sort(order.begin(), order.end(), [](const Binding* a, const Binding* b) {
        return a->control->tabIndex < b->control->tabIndex;
    });
    for (std::size_t k = 1; k < order.size(); ++k)
        QWidget::setTabOrder(order[k - 1]->widget, order[k]->widget);
}

QWidget* SideWindow::createWidget(Control& c, ControlEvents& events)
{
    QWidget* parent = this;
    for (const Binding& b : bindings_)
        if (b.control->name == c.container) parent = b.widget;
    switch (c.kind) {
    case ControlKind::TextBox: {
        auto* entry = new EntryBox(c.name, events, parent);
        entry->setBaseFont(font());
        return entry;
    }
    case ControlKind::ListBox:
        return new ListChoice(c.name, events, parent);
    case ControlKind::CheckBox:
        return new ChoiceButton(c.name, ChoiceButton::Style::Check, events, parent);
    case ControlKind::OptionButton:
        return new ChoiceButton(c.name, ChoiceButton::Style::Option, events, parent);
    case ControlKind::Button: {
        auto* button = new CommandButton(c.name, events, parent);
        // Enter belongs to the entries, which calculate on it.
        button->setAutoDefault(false);
        return button;
    }
    case ControlKind::Frame:
        return new FrameBox(c.name, events, parent);
    case ControlKind::Grid:
        return new GridView(c.name, *form_.grid(c.name), events, parent);
    default: {
        auto* label = new TextLabel(c.name, events, parent);
        label->setBorder(c.raised);
        return label;
    }
    }
}

void SideWindow::syncWidget(const Binding& b)
{
    const Control& c = *b.control;
    const QSignalBlocker block(b.widget);
    syncKind(b.widget, c);
    if (b.widget->isEnabled() != c.enabled) b.widget->setEnabled(c.enabled);
    if (b.widget->isVisibleTo(this) != c.visible) b.widget->setVisible(c.visible);
}

void SideWindow::syncFromModel()
{
    setWindowTitle(QString::fromStdString(window_.text));
    for (const Binding& b : bindings_)
        syncWidget(b);
    if (window_.visible && !isVisible()) {
        if (!placed_) placeBesideParent();
        show();
        raise();
        activateWindow();
    } else if (!window_.visible && isVisible()) {
        hide();
    }
}

void SideWindow::placeBesideParent()
{
    placed_ = true;
    QWidget* main = parentWidget();
    if (!main) return;
    const QRect frame = main->frameGeometry();
    QPoint at(frame.right() + kGapPx, frame.top());
    // Where the screen has no room on the right, the dialog overlaps the
    // main window's right edge rather than leaving the screen.
    if (const QScreen* screen = main->screen()) {
        const QRect room = screen->availableGeometry();
        at.setX(std::min(at.x(), room.right() - width()));
        at.setY(std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() - height())));
    }
    move(at);
}

const Control* SideWindow::controlAt(const QWidget* w) const
{
    for (; w && w != this; w = w->parentWidget())
        for (const Binding& b : bindings_)
            if (b.widget == w) return b.control;
    return nullptr;
}

QWidget* SideWindow::widgetOf(const std::string& control) const
{
    for (const Binding& b : bindings_)
        if (b.control->name == control) return b.widget;
    return nullptr;
}

void SideWindow::reject()
{
    // Hidden, not destroyed: it keeps its state for the next opening.
    window_.visible = false;
    hide();
}

} // namespace qm
