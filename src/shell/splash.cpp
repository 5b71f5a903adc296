#include "shell/splash.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QSplashScreen>
#include <QTimer>

#include <cmath>

namespace qm {

namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 280;
constexpr int kPoles = 3;
constexpr double kDecades = 3.0;
constexpr double kBottomDB = -120.0;

/// Gain in dB of a Butterworth low-pass of kPoles poles at f / fc.
double butterworthDB(double ratio)
{
    // |H|^2 = 1 / (1 + (f/fc)^(2n))
    return -10.0 * std::log10(1.0 + std::pow(ratio, 2.0 * kPoles));
}

void drawGrid(QPainter& p, const QRectF& plot)
{
    p.setPen(QPen(QColor(0xd6, 0xdd, 0xe6), 1));
    for (int d = 0; d <= 3; ++d) {
        const double x = plot.left() + plot.width() * d / kDecades;
        p.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
    }
    for (int k = 0; k <= 4; ++k) {
        const double y = plot.top() + plot.height() * k / 4.0;
        p.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }
}

void drawCurve(QPainter& p, const QRectF& plot)
{
    QPainterPath curve;
    constexpr int kSteps = 240;
    for (int i = 0; i <= kSteps; ++i) {
        // The cutoff stands one decade in from the left.
        const double decade = kDecades * i / kSteps;
        const double ratio = std::pow(10.0, decade - 1.0);
        const double db = std::max(butterworthDB(ratio), kBottomDB);
        const QPointF pt(plot.left() + plot.width() * decade / kDecades,
                         plot.top() + plot.height() * db / kBottomDB);
        if (i == 0)
            curve.moveTo(pt);
        else
            curve.lineTo(pt);
    }
    p.setPen(QPen(QColor(0x1f, 0x5f, 0xbf), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(curve);
}

} // namespace

QPixmap splashPicture(qreal pixelRatio)
{
    QPixmap pixmap(QSize(kWidth, kHeight) * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::white);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF plot(30, 40, kWidth - 60, kHeight - 70);
    drawGrid(p, plot);
    drawCurve(p, plot);
    // The name stands on a veil of the paper, so that the curve under it
    // doesn't cut the letters.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 255, 255, 215));
    p.drawRoundedRect(QRectF(70, 78, kWidth - 140, 96), 10, 10);
    QFont title = p.font();
    title.setPointSize(34);
    title.setBold(true);
    p.setFont(title);
    p.setPen(QColor(0x20, 0x26, 0x30));
    p.drawText(QRectF(0, 70, kWidth, 80), Qt::AlignCenter, QStringLiteral("Quellmark"));
    QFont line = p.font();
    line.setPointSize(11);
    line.setBold(false);
    p.setFont(line);
    p.drawText(QRectF(0, 140, kWidth, 30), Qt::AlignCenter, QStringLiteral("Active filter design"));
    p.setPen(QPen(QColor(0x9a, 0xa4, 0xb0), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(0.5, 0.5, kWidth - 1, kHeight - 1));
    return pixmap;
}

void showSplash(int milliseconds)
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    QSplashScreen splash(splashPicture(screen ? screen->devicePixelRatio() : 1.0));
    splash.show();
    QEventLoop wait;
    QTimer::singleShot(milliseconds, &wait, &QEventLoop::quit);
    wait.exec();
    splash.close();
}

} // namespace qm
