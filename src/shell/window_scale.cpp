// The window's size: the design screen keeps its layout and is drawn at the
// scale that fits the window, centred in it; the size and place of the
// window are kept between runs.
#include "shell/analysis_window.h"
#include "shell/form_canvas.h"
#include "shell/main_window.h"
#include "shell/recent_menu.h"
#include "shell/twips.h"

#include <QApplication>
#include <QMenuBar>
#include <QResizeEvent>
#include <QSettings>

#include <algorithm>
#include <cmath>

namespace qm {

namespace {

/// The window's title and menu bar take this much of the screen's height;
/// the rest is the client area the controls stand in.
constexpr int kFrameTwips = 795;
// Much smaller than its own size the screen's texts no longer fit their
// places; past four times it fills any desktop there is.
constexpr double kLeastScale = 0.9;
constexpr double kGreatestScale = 4.0;

const char* const kGeometryKey = "window/geometry";

} // namespace

ScreenStage::ScreenStage(QWidget* parent) : QWidget(parent)
{
    setAutoFillBackground(true);
}

void ScreenStage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (onResize) onResize();
}

QSizeF MainWindow::screenSizeAtScaleOne() const
{
    return {form_.Form.width / kTwipsPerPixel, (form_.Form.height - kFrameTwips) / kTwipsPerPixel};
}

void MainWindow::screenHeightChanged()
{
    const QSizeF base = screenSizeAtScaleOne();
    stage_->setMinimumSize(QSize(static_cast<int>(std::ceil(base.width() * kLeastScale)),
                                 static_cast<int>(std::ceil(base.height() * kLeastScale))));
    // A window the user sized keeps its size and the screen fits into it;
    // otherwise the window grows or shrinks with the screen.
    if (isMaximized() || isFullScreen()) {
        fitToStage();
        return;
    }
    const QSize screen(static_cast<int>(std::lround(base.width() * screenScale())),
                       static_cast<int>(std::lround(base.height() * screenScale())));
    resize(screen.width(), screen.height() + menuBar()->sizeHint().height());
    fitToStage();
}

void MainWindow::fitToStage()
{
    const QSizeF base = screenSizeAtScaleOne();
    if (base.isEmpty() || stage_->size().isEmpty()) return;
    const double scale =
        std::clamp(std::min(stage_->width() / base.width(), stage_->height() / base.height()),
                   kLeastScale, kGreatestScale);
    if (scale != screenScale()) {
        setScreenScale(scale);
        rescaleWidgets();
    }
    const QSize size(static_cast<int>(std::lround(base.width() * scale)),
                     static_cast<int>(std::lround(base.height() * scale)));
    canvas_->setGeometry(std::max(0, (stage_->width() - size.width()) / 2),
                         std::max(0, (stage_->height() - size.height()) / 2), size.width(),
                         size.height());
}

void MainWindow::rescaleWidgets()
{
    for (Binding& b : bindings_) {
        styleWidget(*b.control, b.widget);
        b.fresh = true;
    }
    if (!syncing_) syncFromModel();
}

void MainWindow::readSettings()
{
    const QSettings settings;
    const QByteArray geometry = settings.value(QLatin1String(kGeometryKey)).toByteArray();
    if (!geometry.isEmpty()) restoreGeometry(geometry);
    if (analysis_) analysis_->readSettings(settings);
    // The recent designs are in the store chosen for this run.
    if (recentMenu_) recentMenu_->refresh();
}

void MainWindow::writeSettings() const
{
    QSettings settings;
    settings.setValue(QLatin1String(kGeometryKey), saveGeometry());
    if (analysis_) analysis_->writeSettings(settings);
}

} // namespace qm
