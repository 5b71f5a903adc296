// quellmark: the design screen in a window.
#include "shell/main_window.h"
#include "shell/shell_style.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quellmark"));
    QApplication::setOrganizationName(QStringLiteral("Quellmark"));
    qm::applyShellStyle(app);
    qm::MainWindow window;
    window.start();
    window.readSettings();
    window.show();
    return QApplication::exec();
}
