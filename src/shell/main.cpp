// quellmark: the design screen in a window.
#include <QApplication>
#include <QLabel>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QLabel placeholder(QStringLiteral("Quellmark"));
    placeholder.show();
    return QApplication::exec();
}
