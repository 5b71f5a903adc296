#include "shell_harness.h"

#include "design/cycle.h"
#include "shell/shell_services.h"
#include "shell/twips.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QStandardPaths>
#include <QTest>

namespace qm::test {

// The windows of the tests keep their amplifier catalogue apart from the
// user's own.
static const bool kTestPaths = [] {
    QStandardPaths::setTestModeEnabled(true);
    return true;
}();

StartedWindow::StartedWindow()
{
    // The about window stays away: these tests are about the design screen.
    window.shell().settings.saveSetting("Quellmark", "ShowAbout", "Value", "False");
    window.start();
    window.show();
    if (!QTest::qWaitForWindowActive(&window)) qWarning("the window didn't become active");
}

HeadlessTwin::HeadlessTwin() : form(platform.services())
{
    platform.memorySettings.values["Quellmark/ShowAbout/Value"] = "False";
    form.runGuarded([this] { Form_Initialize(form); });
    form.moveFocus("RespF");
}

void applySteps(MainWindow& w, HeadlessTwin& twin, const QString& steps)
{
    for (const QString& step : steps.split(';')) {
        const QString verb = step.section(' ', 0, 0), arg = step.section(' ', 1);
        const std::string name = arg.section('=', 0, 0).toStdString();
        const QString value = arg.section('=', 1);
        QWidget* widget = w.widgetOf(name);
        if (verb == "enter" || verb == "type") {
            // Typed as a person does: focus, replace, keys.
            auto* entry = qobject_cast<QLineEdit*>(widget);
            QVERIFY2(entry && entry->isVisible() && entry->isEnabled(), name.c_str());
            entry->setFocus(Qt::TabFocusReason);
            entry->selectAll();
            QTest::keyClicks(entry, value);
            if (verb == "enter") QTest::keyClick(entry, Qt::Key_Return);
            twin.act(verb == "enter" ? ActionKind::Enter : ActionKind::Type, name,
                     value.toStdString());
            // The twin's typing leaves the entry at once; the window's stays in it.
            if (verb == "type") twin.form.moveFocus(name);
        } else if (verb == "focus") {
            widget->setFocus(Qt::TabFocusReason);
            twin.form.moveFocus(name);
        } else if (verb == "click") {
            QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center());
            twin.act(ActionKind::Click, name);
        } else if (verb == "pick") {
            // The list drops down under the mouse; Enter takes the item.
            auto* list = qobject_cast<QComboBox*>(widget);
            QTest::mouseClick(list, Qt::LeftButton, {}, list->rect().center());
            QVERIFY(QTest::qWaitForWindowExposed(list->view()->window()));
            list->view()->setCurrentIndex(list->model()->index(value.toInt(), 0));
            QTest::keyClick(list->view(), Qt::Key_Return);
            QTRY_VERIFY(!list->view()->isVisible());
            twin.act(ActionKind::Select, name, value.toStdString());
        } else {
            QVERIFY2(verb == "menu", qPrintable(step));
            w.actionOf(name)->trigger();
            twin.form.raise(name, FormEvent::Click);
        }
    }
}

namespace {

void diff(QStringList& out, const Control& c, const char* field, const std::string& a,
          const std::string& b)
{
    if (a != b) out << QString::fromStdString(c.name + "." + field + ": '" + a + "' / '" + b + "'");
}

void diff(QStringList& out, const Control& c, const char* field, long a, long b)
{
    diff(out, c, field, std::to_string(a), std::to_string(b));
}

} // namespace

QString shownText(const QWidget* w)
{
    if (auto* e = qobject_cast<const QLineEdit*>(w)) return e->text();
    if (auto* l = dynamic_cast<const TextLabel*>(w)) return l->text();
    if (auto* b = qobject_cast<const QAbstractButton*>(w)) return b->text();
    if (auto* g = qobject_cast<const QGroupBox*>(w)) return g->title();
    return {};
}

QStringList modelDifferences(const QuellmarkForm& a, const QuellmarkForm& b)
{
    QStringList out;
    for (const Control* ca : a.all()) {
        const Control* cb = b.find(ca->name); // the same class: never missing
        diff(out, *ca, "text", ca->text, cb->text);
        diff(out, *ca, "visible", ca->visible, cb->visible);
        diff(out, *ca, "enabled", ca->enabled, cb->enabled);
        diff(out, *ca, "value", ca->value, cb->value);
        diff(out, *ca, "listIndex", ca->listIndex, cb->listIndex);
        diff(out, *ca, "place", ca->left * 100000L + ca->top, cb->left * 100000L + cb->top);
        diff(out, *ca, "x1", ca->x1, cb->x1);
        diff(out, *ca, "height", ca->height, cb->height);
    }
    return out;
}

QStringList widgetDifferences(MainWindow& w)
{
    QStringList out;
    const QuellmarkForm& f = w.form();
    diff(out, f.Form, "title", f.Form.text, w.windowTitle().toStdString());
    for (const Control* c : f.all()) {
        if (const QAction* a = w.actionOf(c->name); a && !a->isSeparator()) {
            if (a->isCheckable()) diff(out, *c, "entry checked", c->selected(), a->isChecked());
            diff(out, *c, "entry visible", c->visible, a->isVisible());
        }
        const QWidget* widget = w.widgetOf(c->name);
        if (!widget) continue;
        const bool textless = c->kind == ControlKind::Picture || c->kind == ControlKind::ListBox;
        diff(out, *c, "shown text", textless ? std::string() : screenText(c->text).toStdString(),
             textless ? std::string() : shownText(widget).toStdString());
        diff(out, *c, "shown visible", c->visible, !widget->isHidden());
        diff(out, *c, "shown tool-tip", c->toolTip, widget->toolTip().toStdString());
        diff(out, *c, "shown enabled", c->enabled, !widget->testAttribute(Qt::WA_ForceDisabled));
        const QPoint at = controlRect(*c).topLeft(), shownAt = widget->geometry().topLeft();
        diff(out, *c, "shown place", at.x() * 10000L + at.y(), shownAt.x() * 10000L + shownAt.y());
        if (auto* list = qobject_cast<const QComboBox*>(widget))
            diff(out, *c, "shown index", c->listIndex, list->currentIndex());
        if (auto* button = dynamic_cast<const ChoiceButton*>(widget))
            diff(out, *c, "shown value", c->checked() || c->selected(), button->isOn());
    }
    return out;
}

QStringList overlappingTexts(MainWindow& w)
{
    std::vector<std::pair<QString, QRectF>> texts;
    for (const Control* c : w.form().all()) {
        auto* label = dynamic_cast<const TextLabel*>(w.widgetOf(c->name));
        // The prompt's panel carries no text of its own.
        if (!label || !label->isVisibleTo(&w) || c == &w.form().Label43) continue;
        const QRectF r = label->shownTextRect();
        if (!r.isEmpty())
            texts.emplace_back(QString::fromStdString(c->name),
                               r.translated(label->mapTo(&w, QPoint(0, 0))));
    }
    QStringList out;
    for (std::size_t a = 0; a < texts.size(); ++a)
        for (std::size_t b = a + 1; b < texts.size(); ++b) {
            const QRectF both = texts[a].second.intersected(texts[b].second);
            if (both.width() > 1 && both.height() > 1)
                out << texts[a].first + QStringLiteral(" / ") + texts[b].first;
        }
    return out;
}

void expectNone(const QStringList& found)
{
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void expectAgreement(MainWindow& w, const HeadlessTwin& twin, bool texts)
{
    expectNone(modelDifferences(w.form(), twin.form) + widgetDifferences(w) +
               (texts ? overlappingTexts(w) : QStringList()));
}

} // namespace qm::test
