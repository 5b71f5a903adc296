// quellmark [PATH]: the design screen in a window, with the design file
// PATH opened if one is given.
#include "shell/main_window.h"
#include "shell/shell_style.h"

#include <QApplication>
#include <QFile>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quellmark"));
    qm::applyShellStyle(app);
    qm::MainWindow window;
    window.start();
    window.show();
    // quellmark PATH: the design file opens once the screen is up.
    const QStringList args = QApplication::arguments();
    if (args.size() > 1) window.openDesign(QFile::encodeName(args.at(1)).toStdString());
    return QApplication::exec();
}
