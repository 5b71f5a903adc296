// quellmark: the design screen in a window.
#include "shell/main_window.h"
#include "shell/shell_style.h"

#include <QApplication>
#include <QPixmap>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quellmark"));
    qm::applyShellStyle(app);
    qm::MainWindow window;
    window.start();
    window.show();
    // QUELLMARK_GRAB=file.png writes a picture of the window as it first
    // shows, and ends: for looking at the screen without a display.
    const QString grab = qEnvironmentVariable("QUELLMARK_GRAB");
    if (!grab.isEmpty()) {
        QApplication::processEvents();
        return window.grab().save(grab) ? 0 : 1;
    }
    return QApplication::exec();
}
