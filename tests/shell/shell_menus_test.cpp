// The window's menus by the keyboard and File > Open Recent: the standard
// keys, a mnemonic for every entry, and the recent designs kept between runs.
#include "shell_harness.h"

#include "files/design_file.h"
#include "shell/menu_keys.h"
#include "shell/recent_files.h"
#include "shell/recent_menu.h"
#include "shell/shell_services.h"
#include "shell/shell_style.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace qm;
using namespace qm::test;

namespace {

/// A design file of `poles` Butterworth poles, written by the program.
void writeDesign(const QString& path, const char* poles)
{
    HeadlessTwin twin;
    twin.act(ActionKind::Enter, "Text18", poles);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(designFileText(twin.form)));
}

/// The entries of Open Recent as they show when it opens: text, and "-"
/// for a greyed one.
QStringList recentEntries(MainWindow& w)
{
    RecentMenu* menu = w.recentMenu();
    emit menu->aboutToShow();
    QStringList out;
    for (const QAction* a : menu->actions())
        out << (a->isSeparator() ? QStringLiteral("|") : (a->isEnabled() ? "" : "-") + a->text());
    return out;
}

QAction* entryNamed(QMenu* menu, const QString& text)
{
    for (QAction* a : menu->actions())
        if (a->text() == text) return a;
    return nullptr;
}

/// Every menu of the window: the menu bar's and the menus within them.
QList<QMenu*> menusOf(MainWindow& w)
{
    QList<QMenu*> menus;
    QList<QAction*> pending = w.menuBar()->actions();
    while (!pending.isEmpty())
        if (QMenu* m = pending.takeFirst()->menu()) {
            menus << m;
            pending << m->actions();
        }
    return menus;
}

} // namespace

class MenusTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void mnemonicsAreGivenWhereFree_data()
    {
        QTest::addColumn<QStringList>("captions");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("first letters") << QStringList{"File", "Options", "View", "Help"}
                                       << QStringList{"&File", "&Options", "&View", "&Help"};
        QTest::newRow("a given one stays and is kept from the others")
            << QStringList{"Save chart data", "&Save", "Close"}
            << QStringList{"Save chart &data", "&Save", "&Close"};
        QTest::newRow("first letters before word starts before any letter")
            << QStringList{"Show Phase Trace", "Show Gain Trace", "Sgx", "Print"}
            << QStringList{"&Show Phase Trace", "Show &Gain Trace", "Sg&x", "&Print"};
        QTest::newRow("upper and lower case are one key")
            << QStringList{"&save", "Save as", "s"} << QStringList{"&save", "Save &as", "s"};
        QTest::newRow("an ampersand is no key")
            << QStringList{"Fn&&Q", "&&Q"} << QStringList{"&Fn&&Q", "&&&Q"};
        QTest::newRow("separators stay empty")
            << QStringList{"", "New", ""} << QStringList{"", "&New", ""};
        QTest::newRow("digits are keys too")
            << QStringList{"&1 a.qmf", "1 b.qmf"} << QStringList{"&1 a.qmf", "1 &b.qmf"};
    }

    void mnemonicsAreGivenWhereFree()
    {
        QFETCH(QStringList, captions);
        QFETCH(QStringList, shown);
        QCOMPARE(withMnemonics(captions), shown);
    }

    void everyMenuEntryHasAKeyOfItsOwn()
    {
        StartedWindow s;
        QList<QList<QAction*>> lists{s.window.menuBar()->actions()};
        for (QMenu* m : menusOf(s.window))
            lists << m->actions();
        for (const QList<QAction*>& list : lists) {
            QStringList keys;
            for (const QAction* a : list) {
                if (a->isSeparator()) continue;
                const QString text = QString(a->text()).replace(QStringLiteral("&&"), QString());
                const qsizetype at = text.indexOf(QLatin1Char('&'));
                QVERIFY2(at >= 0 && at + 1 < text.size(), qPrintable(a->text()));
                QVERIFY2(text.indexOf(QLatin1Char('&'), at + 1) < 0, qPrintable(a->text()));
                keys << text.mid(at + 1, 1).toLower();
            }
            QCOMPARE(QSet<QString>(keys.begin(), keys.end()).size(), keys.size());
        }
        // The captions themselves are the model's.
        QCOMPARE(s.window.actionOf("mnuFileNew")->text(), QStringLiteral("&New"));
        QCOMPARE(s.window.actionOf("Exitmnu")->text(), QStringLiteral("&Close"));
        QCOMPARE(s.window.actionOf("mnuFileSaveAs")->text(), QStringLiteral("Save &As"));
    }

    void standardOperationsTakeTheirKeys_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QKeySequence>("key");
        QTest::newRow("New") << "mnuFileNew" << QKeySequence("Ctrl+N");
        QTest::newRow("Open") << "mnuFileOpen" << QKeySequence("Ctrl+O");
        QTest::newRow("Save") << "mnuFileSave" << QKeySequence("Ctrl+S");
        QTest::newRow("Save As, which the offscreen platform has no key for")
            << "mnuFileSaveAs" << QKeySequence("Ctrl+Shift+S");
        QTest::newRow("Print") << "Print" << QKeySequence("Ctrl+P");
        QTest::newRow("Quit, on the entry Close") << "Exitmnu" << QKeySequence("Ctrl+Q");
        QTest::newRow("Help Contents") << "HelpCont" << QKeySequence("F1");
    }

    void standardOperationsTakeTheirKeys()
    {
        QFETCH(QString, entry);
        QFETCH(QKeySequence, key);
        StartedWindow s;
        QCOMPARE(s.window.actionOf(entry.toStdString())->shortcut(), key);
    }

    void noTwoEntriesShareAKey()
    {
        // A key on two entries of one window does neither.
        StartedWindow s;
        QStringList keys;
        for (const QAction* a : s.window.findChildren<QAction*>())
            for (const QKeySequence& k : a->shortcuts())
                keys << k.toString();
        QCOMPARE(QSet<QString>(keys.begin(), keys.end()).size(), keys.size());
    }

    void quitKeyClosesTheWindow()
    {
        StartedWindow s;
        QWidget* cutoff = s.window.widgetOf("Text34");
        cutoff->setFocus(Qt::TabFocusReason);
        QTest::keyClick(cutoff, Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!s.window.isVisible());
    }

    void recentListKeepsTheLastEightNewestFirst_data()
    {
        QTest::addColumn<QStringList>("used");
        QTest::addColumn<QStringList>("kept");
        QTest::newRow("one") << QStringList{"/d/a.qmf"} << QStringList{"/d/a.qmf"};
        QTest::newRow("newest first") << QStringList{"/d/a.qmf", "/d/b.qmf", "/d/c.qmf"}
                                      << QStringList{"/d/c.qmf", "/d/b.qmf", "/d/a.qmf"};
        QTest::newRow("used again goes to the head, once")
            << QStringList{"/d/a.qmf", "/d/b.qmf", "/d/a.qmf"}
            << QStringList{"/d/a.qmf", "/d/b.qmf"};
        QTest::newRow("one name for one file")
            << QStringList{"/d/a.qmf", "/d/x/../a.qmf", "/d//a.qmf"} << QStringList{"/d/a.qmf"};
        QStringList nine, eight;
        for (int k = 1; k <= 9; ++k)
            nine << QStringLiteral("/d/%1.qmf").arg(k);
        for (int k = 9; k >= 2; --k)
            eight << QStringLiteral("/d/%1.qmf").arg(k);
        QTest::newRow("nine keep the last eight") << nine << eight;
        QTest::newRow("a name from the working folder")
            << QStringList{"a.qmf"} << QStringList{QDir::current().absoluteFilePath("a.qmf")};
    }

    void recentListKeepsTheLastEightNewestFirst()
    {
        QFETCH(QStringList, used);
        QFETCH(QStringList, kept);
        MemorySettings store;
        RecentFiles recent(store);
        for (const QString& path : used)
            recent.designUsed(QFile::encodeName(path).toStdString());
        QCOMPARE(recent.files(), kept);
        QCOMPARE(RecentFiles(store).files(), kept);
    }

    void aHandEditedListIsReadAsItCanBe()
    {
        MemorySettings store;
        store.values = {{"Quellmark/RecentFiles/File1", "/d/a.qmf"},
                        {"Quellmark/RecentFiles/File3", "/d/b.qmf"},
                        {"Quellmark/RecentFiles/File4", "/d/a.qmf"},
                        {"Quellmark/RecentFiles/File9", "/d/c.qmf"}};
        RecentFiles recent(store);
        QCOMPARE(recent.files(), (QStringList{"/d/a.qmf", "/d/b.qmf"}));
        recent.designUsed("/d/b.qmf");
        QCOMPARE(recent.files(), (QStringList{"/d/b.qmf", "/d/a.qmf"}));
    }

    void recentEntriesNameTheirDesigns_data()
    {
        const QString home = QDir::homePath();
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("shown");
        QTest::newRow("in the home folder") << 1 << home + "/qm/a.qmf"
                                            << "&1 ~/qm/a.qmf";
        QTest::newRow("elsewhere") << 8 << "/srv/qm/a.qmf"
                                   << "&8 /srv/qm/a.qmf";
        QTest::newRow("a folder whose name only starts as home's") << 2 << home + "2/a.qmf"
                                                                   << "&2 " + home + "2/a.qmf";
        QTest::newRow("an ampersand in a name") << 3 << "/srv/R&D.qmf"
                                                << "&3 /srv/R&&D.qmf";
    }

    void recentEntriesNameTheirDesigns()
    {
        QFETCH(int, number);
        QFETCH(QString, path);
        QFETCH(QString, shown);
        QCOMPARE(recentEntryText(number, path), shown);
    }

    void openRecentListsOpensGreysAndClears()
    {
        QTemporaryDir dir;
        const QString a = dir.filePath("a.qmf"), b = dir.filePath("b&c.qmf");
        writeDesign(a, "4");
        writeDesign(b, "6");
        StartedWindow s;
        MainWindow& w = s.window;
        // Right below Open, shut while the list is empty.
        QMenu* file = w.menuBar()->actions().value(0)->menu();
        QCOMPARE(file->actions().indexOf(w.recentMenu()->menuAction()),
                 file->actions().indexOf(w.actionOf("mnuFileOpen")) + 1);
        QVERIFY(!w.recentMenu()->menuAction()->isEnabled());
        w.openDesign(QFile::encodeName(a).toStdString());
        w.openDesign(QFile::encodeName(b).toStdString());
        QVERIFY(w.recentMenu()->menuAction()->isEnabled());
        QCOMPARE(recentEntries(w), (QStringList{recentEntryText(1, b), recentEntryText(2, a), "|",
                                                "-&Remove missing files", "&Clear list"}));

        entryNamed(w.recentMenu(), recentEntryText(2, a))->trigger();
        QCOMPARE(w.form().Text18.text, std::string("4"));
        QCOMPARE(w.windowTitle(), QStringLiteral("Halvorn Devices Quellmark - a.qmf"));
        QCOMPARE(w.shell().recent.files(), (QStringList{a, b}));

        QVERIFY(QFile::remove(b));
        QCOMPARE(recentEntries(w), (QStringList{recentEntryText(1, a), "-" + recentEntryText(2, b),
                                                "|", "&Remove missing files", "&Clear list"}));
        entryNamed(w.recentMenu(), "&Remove missing files")->trigger();
        QCOMPARE(w.shell().recent.files(), QStringList{a});
        entryNamed(w.recentMenu(), "&Clear list")->trigger();
        QVERIFY(w.shell().recent.files().isEmpty());
        QVERIFY(!w.recentMenu()->menuAction()->isEnabled());
    }

    void recentListStaysWithTheRunsSettingsFile()
    {
        QTemporaryDir dir;
        const QString design = dir.filePath("kept.qmf"), ini = dir.filePath("settings.ini");
        writeDesign(design, "5");
        {
            MainWindow w;
            w.shell().settings.useFile(ini);
            w.start();
            w.openDesign(QFile::encodeName(design).toStdString());
        }
        QCOMPARE(QSettings(ini, QSettings::IniFormat).value("RecentFiles/File1").toString(),
                 design);
        MainWindow next;
        next.shell().settings.useFile(ini);
        next.start();
        next.readSettings();
        QVERIFY(next.recentMenu()->menuAction()->isEnabled());
        QCOMPARE(recentEntries(next).value(0), recentEntryText(1, design));
        // A window with no settings file of its own never sees it.
        QVERIFY(!StartedWindow().window.recentMenu()->menuAction()->isEnabled());
    }
};

QTEST_MAIN(MenusTest)
#include "shell_menus_test.moc"
