#include "shell/qt_platform.h"

#include <QGuiApplication>
#include <QMessageBox>

namespace qm {

void LineSurface::clear()
{
    lines_.clear();
    ++revision_;
}

void LineSurface::line(float x1, float y1, float x2, float y2, Color color)
{
    lines_.push_back({QLineF(static_cast<double>(x1), static_cast<double>(y1),
                             static_cast<double>(x2), static_cast<double>(y2)),
                      color});
    ++revision_;
}

QString screenText(const std::string& text)
{
    QString s = QString::fromStdString(text);
    s.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    s.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return s;
}

namespace {

QMessageBox::Icon iconOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

MessageAnswer QtPlatform::showMessage(const std::string& text, const std::string& title,
                                      MessageButtons buttons, MessageIcon icon)
{
    const bool yesNo = buttons == MessageButtons::YesNo;
    QMessageBox box(iconOf(icon), QString::fromStdString(title), screenText(text),
                    yesNo ? (QMessageBox::Yes | QMessageBox::No) : QMessageBox::Ok, parent_);
    // A message is read with the normal pointer, even in a recalculation.
    const bool wasBusy = busy_;
    if (wasBusy) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = box.exec();
    if (wasBusy) QGuiApplication::restoreOverrideCursor();
    if (!yesNo) return MessageAnswer::Ok;
    return answer == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

void QtPlatform::setBusy(bool busy)
{
    if (busy == busy_) return;
    busy_ = busy;
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

QtPlatform::~QtPlatform()
{
    // A window that goes while busy leaves the pointer as it found it.
    setBusy(false);
}

PlatformServices QtPlatform::services()
{
    PlatformServices s;
    s.messages = this;
    s.busy = this;
    s.graph = &graph;
    s.background = &background;
    return s;
}

} // namespace qm
