// Design files in the window: the menu entries and their keys, a file
// dropped on the window, the default design in the user's configuration
// folder, and the title bar that follows.
#include "shell_harness.h"

#include "design/cycle.h"
#include "files/design_file.h"
#include "shell/shell_style.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace qm;
using namespace qm::test;

namespace {

/// A design file of `poles` Butterworth poles, written by the program.
void writeDesign(const QString& path, const char* poles)
{
    RecordingPlatform p;
    QuellmarkForm f(p.services());
    Form_Initialize(f);
    f.moveFocus("Text18");
    f.Text18.text = poles;
    f.moveFocus("");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(designFileText(f)));
}

QString defaultDesignPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
           QStringLiteral("/QMdef.qmf");
}

/// Drags `urls` over `target` and drops them: was the drop taken?
bool drop(QWidget* target, const QList<QUrl>& urls)
{
    QMimeData mime;
    mime.setUrls(urls);
    mime.setText(urls.isEmpty() ? QString() : urls.first().toString());
    const QPointF at(target->rect().center());
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDropEvent dropped(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &dropped);
    return dropped.isAccepted() && enter.isAccepted();
}

} // namespace

class FilesTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QFile::remove(defaultDesignPath());
        applyShellStyle(*qobject_cast<QApplication*>(qApp));
    }
    void cleanup() { QFile::remove(defaultDesignPath()); }

    void fileEntriesAreThereWithTheirKeys()
    {
        StartedWindow s;
        const std::pair<const char*, const char*> kEntries[] = {{"mnuFileNew", ""},
                                                                {"mnuFileOpen", "Ctrl+O"},
                                                                {"mnuFileSave", "Ctrl+S"},
                                                                {"mnuFileSaveAs", ""},
                                                                {"SADmnu", ""}};
        for (const auto& [name, key] : kEntries) {
            QAction* a = s.window.actionOf(name);
            QVERIFY2(a && a->isEnabled(), name);
            if (*key) QCOMPARE(a->shortcut(), QKeySequence(QLatin1String(key)));
        }
        QCOMPARE(s.window.windowTitle(), QStringLiteral("Halvorn Devices Quellmark"));
    }

    void theDefaultDesignLivesInTheUsersConfigurationFolder()
    {
        const PlatformServices services = StartedWindow().window.platform().services();
        QCOMPARE(QString::fromStdString(services.defaultDesignPath), defaultDesignPath());
        QCOMPARE(QString::fromStdString(services.siteDefaultDesignPath),
                 QCoreApplication::applicationDirPath() + QStringLiteral("/QMdef.qmf"));
        QVERIFY(QDir().mkpath(QFileInfo(defaultDesignPath()).path()));
        writeDesign(defaultDesignPath(), "6");
        StartedWindow s;
        QCOMPARE(s.window.form().Text18.text, std::string("6"));
    }

    void aDroppedDesignFileOpens_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("target");
        QTest::addColumn<bool>("opens");
        QTest::newRow("on the chart") << QStringList{"drop.qmf"} << "Graph" << true;
        QTest::newRow("on an entry") << QStringList{"DROP.QMF"} << "Text34" << true;
        QTest::newRow("not a design file") << QStringList{"notes.txt"} << "Graph" << false;
        QTest::newRow("two design files") << QStringList{"a.qmf", "b.qmf"} << "Graph" << false;
        QTest::newRow("not local") << QStringList{"https://example.org/a.qmf"} << "Graph" << false;
    }

    void aDroppedDesignFileOpens()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, target);
        QFETCH(bool, opens);
        QTemporaryDir dir;
        QList<QUrl> urls;
        for (const QString& name : files) {
            urls << (name.startsWith(QLatin1String("https:"))
                         ? QUrl(name)
                         : QUrl::fromLocalFile(dir.filePath(name)));
            if (urls.last().isLocalFile()) writeDesign(urls.last().toLocalFile(), "8");
        }
        StartedWindow s;
        const std::string entryBefore = s.window.form().Text34.text;
        QCOMPARE(drop(s.window.widgetOf(target.toStdString()), urls), opens);
        QCOMPARE(s.window.form().Text18.text, std::string(opens ? "8" : "3"));
        QCOMPARE(s.window.windowTitle(),
                 QStringLiteral("Halvorn Devices Quellmark") +
                     (opens ? QStringLiteral(" - ") + files[0] : QString()));
        if (!opens) QCOMPARE(s.window.form().Text34.text, entryBefore);
    }

    void openingByNameNamesTheFileInTheTitle()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("given.qmf"));
        writeDesign(path, "4");
        StartedWindow s;
        s.window.openDesign(QFile::encodeName(path).toStdString());
        QCOMPARE(s.window.form().Text18.text, std::string("4"));
        QCOMPARE(s.window.windowTitle(), QStringLiteral("Halvorn Devices Quellmark - given.qmf"));
    }
};

QTEST_MAIN(FilesTest)
#include "shell_files_test.moc"
