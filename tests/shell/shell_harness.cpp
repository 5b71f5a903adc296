#include "shell_harness.h"

#include "design/cycle.h"
#include "shell/twips.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace qm::test {

StartedWindow::StartedWindow()
{
    window.start();
    window.show();
    if (!QTest::qWaitForWindowActive(&window)) qWarning("the window didn't become active");
}

HeadlessTwin::HeadlessTwin() : form(platform.services())
{
    form.runGuarded([this] { Form_Initialize(form); });
    form.moveFocus("RespF");
}

void HeadlessTwin::act(ActionKind kind, const std::string& control, const std::string& text)
{
    applyAction(form, {kind, control, text});
}

namespace {

void applyStep(MainWindow& w, HeadlessTwin& twin, const QString& verb, const QString& arg)
{
    const std::string name = arg.section('=', 0, 0).toStdString();
    const QString value = arg.section('=', 1);
    if (verb == QLatin1String("enter") || verb == QLatin1String("type")) {
        const bool enter = verb == QLatin1String("enter");
        typeInto(w, name.c_str(), value);
        if (enter) pressEnter(w, name.c_str());
        twin.act(enter ? ActionKind::Enter : ActionKind::Type, name, value.toStdString());
        // The twin's typing leaves the entry at once; the window's stays in it.
        if (!enter) twin.form.moveFocus(name);
    } else if (verb == QLatin1String("focus")) {
        w.widgetOf(name)->setFocus(Qt::TabFocusReason);
        twin.form.moveFocus(name);
    } else if (verb == QLatin1String("click")) {
        clickOn(w, name.c_str());
        twin.act(ActionKind::Click, name);
    } else if (verb == QLatin1String("pick")) {
        pickFromList(w, name.c_str(), value.toInt());
        twin.act(ActionKind::Select, name, value.toStdString());
    } else if (verb == QLatin1String("menu")) {
        w.actionOf(name)->trigger();
        twin.form.raise(name, FormEvent::Click);
    } else {
        const QPoint at(arg.section(',', 0, 0).toInt(), arg.section(',', 1).toInt());
        QTest::mouseClick(w.widgetOf("Graph"), Qt::LeftButton, {}, at);
        EventArgs args;
        args.x = static_cast<float>(pxToTwips(at.x()));
        args.y = static_cast<float>(pxToTwips(at.y()));
        twin.form.raise("Graph", FormEvent::MouseDown, args);
        twin.form.raise("Graph", FormEvent::Click, args);
    }
}

} // namespace

void applySteps(MainWindow& w, HeadlessTwin& twin, const QString& steps)
{
    for (const QString& step : steps.split(';'))
        applyStep(w, twin, step.section(' ', 0, 0), step.section(' ', 1));
}

namespace {

void compare(QStringList& out, const Control& c, const char* field, const std::string& a,
             const std::string& b)
{
    if (a != b)
        out << QStringLiteral("%1.%2: '%3' / '%4'")
                   .arg(QString::fromStdString(c.name), QLatin1String(field),
                        QString::fromStdString(a), QString::fromStdString(b));
}

void compare(QStringList& out, const Control& c, const char* field, long a, long b)
{
    compare(out, c, field, std::to_string(a), std::to_string(b));
}

} // namespace

QStringList modelDifferences(const QuellmarkForm& a, const QuellmarkForm& b)
{
    QStringList out;
    for (const Control* ca : a.all()) {
        const Control* cb = b.find(ca->name);
        if (!cb) {
            out << QString::fromStdString(ca->name) + QStringLiteral(": missing");
            continue;
        }
        compare(out, *ca, "text", ca->text, cb->text);
        compare(out, *ca, "visible", ca->visible, cb->visible);
        compare(out, *ca, "enabled", ca->enabled, cb->enabled);
        compare(out, *ca, "value", ca->value, cb->value);
        compare(out, *ca, "listIndex", ca->listIndex, cb->listIndex);
        compare(out, *ca, "left", ca->left, cb->left);
        compare(out, *ca, "top", ca->top, cb->top);
        compare(out, *ca, "x1", ca->x1, cb->x1);
        compare(out, *ca, "height", ca->height, cb->height);
    }
    return out;
}

namespace {

/// The text a widget shows, in the model's terms.
std::string shownText(const QWidget* w)
{
    if (auto* e = qobject_cast<const QLineEdit*>(w)) return e->text().toStdString();
    if (auto* l = dynamic_cast<const TextLabel*>(w)) return l->text().toStdString();
    if (auto* b = qobject_cast<const QAbstractButton*>(w)) return b->text().toStdString();
    if (auto* g = qobject_cast<const QGroupBox*>(w)) return g->title().toStdString();
    return {};
}

std::string modelText(const Control& c)
{
    if (c.kind == ControlKind::Picture || c.kind == ControlKind::ListBox) return {};
    return screenText(c.text).toStdString();
}

} // namespace

QStringList widgetDifferences(const MainWindow& mw)
{
    auto& w = const_cast<MainWindow&>(mw);
    QStringList out;
    for (const Control* c : w.form().all()) {
        const QWidget* widget = w.widgetOf(c->name);
        if (!widget) continue;
        compare(out, *c, "shown text", modelText(*c),
                c->kind == ControlKind::Picture || c->kind == ControlKind::ListBox
                    ? std::string()
                    : shownText(widget));
        compare(out, *c, "shown visible", c->visible, !widget->isHidden());
        compare(out, *c, "shown tool-tip", c->toolTip, widget->toolTip().toStdString());
        compare(out, *c, "shown enabled", c->enabled, !widget->testAttribute(Qt::WA_ForceDisabled));
        const QRect r = controlRect(*c);
        compare(out, *c, "shown place", r.left() * 10000L + r.top(),
                widget->geometry().left() * 10000L + widget->geometry().top());
        if (auto* list = qobject_cast<const QComboBox*>(widget))
            compare(out, *c, "shown index", c->listIndex, list->currentIndex());
        if (auto* button = dynamic_cast<const ChoiceButton*>(widget))
            compare(out, *c, "shown value", c->checked() || c->selected(), button->isOn());
    }
    return out;
}

QStringList overlappingTexts(const MainWindow& mw)
{
    auto& w = const_cast<MainWindow&>(mw);
    struct Shown
    {
        QString name;
        QRectF rect;
    };
    std::vector<Shown> texts;
    for (const Control* c : w.form().all()) {
        auto* label = dynamic_cast<const TextLabel*>(w.widgetOf(c->name));
        // The prompt's panel carries no text of its own.
        if (!label || !label->isVisibleTo(&w) || c == &w.form().Label43) continue;
        const QRectF r = label->shownTextRect();
        if (!r.isEmpty())
            texts.push_back(
                {QString::fromStdString(c->name), r.translated(label->mapTo(&w, QPoint(0, 0)))});
    }
    QStringList out;
    constexpr double kTolerance = 1;
    for (std::size_t a = 0; a < texts.size(); ++a)
        for (std::size_t b = a + 1; b < texts.size(); ++b) {
            const QRectF both = texts[a].rect.intersected(texts[b].rect);
            if (both.width() > kTolerance && both.height() > kTolerance)
                out << texts[a].name + QStringLiteral(" / ") + texts[b].name;
        }
    return out;
}

// --- Message boxes -----------------------------------------------------------

struct MessageCatcher::State
{
    QTimer timer;
    std::vector<CaughtMessage> messages;
};

MessageCatcher::MessageCatcher(int button) : state_(std::make_unique<State>())
{
    State* s = state_.get();
    QObject::connect(&s->timer, &QTimer::timeout, [s, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        s->messages.push_back({box->windowTitle(), box->text()});
        QAbstractButton* press =
            button ? box->button(static_cast<QMessageBox::StandardButton>(button)) : nullptr;
        if (!press) press = box->defaultButton() ? box->defaultButton() : box->buttons().value(0);
        press->click();
    });
    constexpr int kPollMs = 10;
    s->timer.start(kPollMs);
}

MessageCatcher::~MessageCatcher() = default;

const std::vector<CaughtMessage>& MessageCatcher::messages() const
{
    return state_->messages;
}

// --- A person's actions --------------------------------------------------------

void typeInto(MainWindow& w, const char* control, const QString& text)
{
    auto* entry = qobject_cast<QLineEdit*>(w.widgetOf(control));
    QVERIFY2(entry && entry->isVisible() && entry->isEnabled(), control);
    entry->setFocus(Qt::TabFocusReason);
    entry->selectAll();
    QTest::keyClicks(entry, text);
}

void pressEnter(MainWindow& w, const char* control)
{
    QTest::keyClick(w.widgetOf(control), Qt::Key_Return);
}

void clickOn(MainWindow& w, const char* control)
{
    QWidget* widget = w.widgetOf(control);
    QVERIFY2(widget, control);
    QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center());
}

void doubleClickOn(QWidget* widget, QPoint at)
{
    QWidget* top = widget->window();
    QTest::mouseDClick(top->windowHandle(), Qt::LeftButton, {}, widget->mapTo(top, at));
}

void pickFromList(MainWindow& w, const char* control, int index)
{
    auto* list = qobject_cast<QComboBox*>(w.widgetOf(control));
    QVERIFY2(list, control);
    QTest::mouseClick(list, Qt::LeftButton, {}, list->rect().center());
    QAbstractItemView* view = list->view();
    QVERIFY(QTest::qWaitForWindowExposed(view->window()));
    // In the open list a person moves to the item and takes it with Enter.
    view->setCurrentIndex(list->model()->index(index, 0));
    QTest::keyClick(view, Qt::Key_Return);
    QTRY_VERIFY(!view->isVisible());
}

} // namespace qm::test
