#include "shell/qt_platform.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QStandardPaths>

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

QString dialogFilter(const std::string& filter)
{
    const QStringList parts = QString::fromStdString(filter).split(QLatin1Char('|'));
    QStringList entries;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString caption = parts[i];
        // The caption names the files; the pattern after it is what the
        // dialog really shows, so the entry carries the pattern.
        const qsizetype paren = caption.indexOf(QLatin1Char('('));
        if (paren >= 0) caption = caption.left(paren).trimmed();
        entries << caption + QStringLiteral(" (") + parts[i + 1] + QLatin1Char(')');
    }
    return entries.join(QStringLiteral(";;"));
}

std::string QtPlatform::showFileDialog(FileDialogKind kind, const FileDialogRequest& request)
{
    QFileDialog dialog(parent_, QString::fromStdString(request.title),
                       QString::fromStdString(request.fileName), dialogFilter(request.filter));
    const bool save = kind == FileDialogKind::Save;
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // The design screen asks its own overwrite question.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    if (!request.defaultExt.empty())
        dialog.setDefaultSuffix(QString::fromStdString(request.defaultExt));
    const bool wasBusy = busy_;
    if (wasBusy) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (wasBusy) QGuiApplication::restoreOverrideCursor();
    if (!accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().constFirst().toStdString();
}

bool QtPlatform::fileExists(const std::string& path)
{
    const QFileInfo info(QString::fromStdString(path));
    return info.exists() && info.isFile();
}

PlatformServices QtPlatform::services()
{
    PlatformServices s;
    s.messages = this;
    s.busy = this;
    s.graph = &graph;
    s.background = &background;
    s.dialogs = this;
    s.files = this;
    // The user's default design in the user's configuration folder; the
    // site's beside the program, which the program never writes.
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    if (!config.isEmpty())
        s.defaultDesignPath = (config + QStringLiteral("/QMdef.qmf")).toStdString();
    s.siteDefaultDesignPath =
        (QCoreApplication::applicationDirPath() + QStringLiteral("/QMdef.qmf")).toStdString();
    return s;
}

} // namespace qm
