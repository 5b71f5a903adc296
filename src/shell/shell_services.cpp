#include "shell/shell_services.h"

#include "screen/about_window.h"
#include "screen/shell_menus.h"
#include "shell/about_dialog.h"
#include "shell/form_canvas.h"
#include "shell/main_window.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPainter>

#include <algorithm>

namespace qm {

ShellServices::ShellServices(MainWindow& window)
    : QObject(&window),
      printer([&window](QPainter& p, const QRectF& page) { renderFormPage(window, p, page); },
              &window),
      help(&window), window_(window)
{
    QuellmarkForm& form = window.form();
    about_ = new AboutDialog(
        form, window.controlEvents(),
        [&window] {
            closeAboutWindow(window.form());
            window.syncFromModel();
        },
        &window);
    form.platform.printer = &printer;
    form.platform.settings = &settings;
    form.platform.help = &help;
    form.platform.recent = &recent;
    form.on("ExportReport", FormEvent::Click,
            [this](QuellmarkForm& f, int, const EventArgs&) { exportReport(f, reportSources()); });
    window.installEventFilter(this);
}

ReportSources ShellServices::reportSources() const
{
    return {window_.form(), window_.platform().graph, reportAdditions};
}

void ShellServices::syncFromModel()
{
    if (window_.isVisible()) about_->syncFromModel();
}

bool ShellServices::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &window_ && event->type() == QEvent::Show) about_->syncFromModel();
    return QObject::eventFilter(watched, event);
}

void ShellServices::openHelp()
{
    QuellmarkForm& form = window_.form();
    // With a menu open, F1 is about its highlighted entry.
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
        const QAction* highlighted = menu->activeAction();
        for (const Control* c : form.all())
            if (highlighted && window_.actionOf(c->name) == highlighted) {
                menu->close();
                pressF1(form, c->name);
                return;
            }
    }
    window_.controlEvents().userEvent(form.HelpCont.name, FormEvent::Click, {});
}

void renderFormPage(MainWindow& window, QPainter& painter, const QRectF& page)
{
    window.syncFromModel();
    QWidget* canvas = window.canvas();
    const QSizeF size = canvas->size();
    // The screen's 96 pixels an inch become the printer's own: the whole
    // form fills the page as far as its shape allows, centred.
    const double scale = std::min(page.width() / size.width(), page.height() / size.height());
    painter.save();
    painter.translate(page.left() + (page.width() - size.width() * scale) / 2,
                      page.top() + (page.height() - size.height() * scale) / 2);
    painter.scale(scale, scale);
    canvas->render(&painter, QPoint(), QRegion(canvas->rect()),
                   QWidget::DrawWindowBackground | QWidget::DrawChildren);
    painter.restore();
}

} // namespace qm
