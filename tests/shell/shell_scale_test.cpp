// The window at any size: the design screen keeps its layout and is drawn at
// the scale that fits, the window's size and place are kept between runs,
// the family list shows each item in full, and a closed entry looks closed
// in every style.
#include "shell_harness.h"

#include "shell/form_canvas.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QAction>
#include <QApplication>
#include <QFontMetricsF>
#include <QSettings>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>

using namespace qm;
using namespace qm::test;

class ScaleTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase()
    {
        applyShellStyle(*qobject_cast<QApplication*>(qApp));
        // Settings of a test stay in a folder of its own.
        QVERIFY(settingsDir_.isValid());
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settingsDir_.path());
        QCoreApplication::setOrganizationName(QStringLiteral("QuellmarkTest"));
    }

    void screenScalesWithTheWindow_data()
    {
        QTest::addColumn<double>("widthFactor");
        QTest::addColumn<double>("heightFactor");
        QTest::addColumn<double>("scale");
        QTest::newRow("own size") << 1.0 << 1.0 << 1.0;
        QTest::newRow("twice, as on a large display") << 2.0 << 2.0 << 2.0;
        QTest::newRow("wide: the height decides") << 3.0 << 1.5 << 1.5;
        QTest::newRow("tall: the width decides") << 1.25 << 3.0 << 1.25;
        QTest::newRow("too small to read stops") << 0.3 << 0.3 << 0.9;
    }

    void screenScalesWithTheWindow()
    {
        QFETCH(double, widthFactor);
        QFETCH(double, heightFactor);
        QFETCH(double, scale);
        StartedWindow s;
        QWidget* stage = s.window.centralWidget();
        const QSize own = stage->size();
        const QSize extra = s.window.size() - own;
        s.window.resize(QSize(static_cast<int>(own.width() * widthFactor + extra.width()),
                              static_cast<int>(own.height() * heightFactor + extra.height())));
        QCoreApplication::processEvents();
        QVERIFY(std::abs(screenScale() - scale) < 0.01);
        // Same layout, drawn larger or smaller: every widget where its
        // control's twips put it at this scale, set in a font as much larger.
        expectNone(widgetDifferences(s.window) + overlappingTexts(s.window));
        const QFont label = s.window.widgetOf("Label8")->font();
        QVERIFY(std::abs(label.pointSizeF() - QApplication::font().pointSizeF() * screenScale()) <
                0.01);
        // The screen stands in the middle of what it doesn't fill.
        const QRect screen = s.window.canvas()->geometry();
        QVERIFY(std::abs(screen.center().x() - stage->rect().center().x()) <= 1 ||
                screen.left() == 0);
        QVERIFY(stage->rect().contains(screen) || scale < widthFactor);
        QVERIFY(s.window.grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_at_%1.png")
                                         .arg(QString::number(scale))));
    }

    void theValueTableGrowsTheWindowAtItsScale()
    {
        StartedWindow s;
        s.window.resize(s.window.size() * 2);
        QCoreApplication::processEvents();
        const double scale = screenScale();
        const int before = s.window.canvas()->height();
        s.window.actionOf("ShowValuesTable")->trigger();
        QCoreApplication::processEvents();
        QCOMPARE(screenScale(), scale);
        const int grown = static_cast<int>(std::lround((10700 - 8880) / kTwipsPerPixel * scale));
        QVERIFY(std::abs(s.window.canvas()->height() - before - grown) <= 1);
    }

    void sizeAndPlaceAreKeptBetweenRuns()
    {
        QRect kept;
        {
            StartedWindow s;
            s.window.setGeometry(QRect(QPoint(40, 30), s.window.size() * 3 / 2));
            QCoreApplication::processEvents();
            kept = s.window.geometry();
            s.window.close();
        }
        MainWindow w;
        w.start();
        w.readSettings();
        QCOMPARE(w.geometry().size(), kept.size());
        QCOMPARE(w.geometry().topLeft(), kept.topLeft());
    }

    void everyFamilyReadsInFull()
    {
        StartedWindow s;
        auto* list = dynamic_cast<ListChoice*>(s.window.widgetOf("TypeFilter"));
        QVERIFY(list);
        for (int i = 0; i < list->count(); ++i) {
            applyAction(s.window.form(), {ActionKind::Select, "TypeFilter", std::to_string(i)});
            s.window.syncFromModel();
            const QFont font = list->shownFont();
            QVERIFY2(QFontMetricsF(font).horizontalAdvance(list->currentText()) <=
                         list->textRect().width(),
                     qPrintable(list->currentText()));
            // Narrowed, never shrunk past reading.
            QVERIFY(font.pointSizeF() >= 0.8 * list->font().pointSizeF());
        }
    }

    void closedEntriesLookClosedInEveryStyle_data()
    {
        QTest::addColumn<QString>("style");
        for (const QString& key : QStyleFactory::keys())
            QTest::newRow(qPrintable(key)) << key;
    }

    void closedEntriesLookClosedInEveryStyle()
    {
        QFETCH(QString, style);
        QApplication::setStyle(QStyleFactory::create(style));
        {
            StartedWindow s;
            // The built-in design has three poles: section A is open, B closed.
            const QImage open = s.window.widgetOf("C1Entry(0)")->grab().toImage();
            const QImage closed = s.window.widgetOf("C1Entry(1)")->grab().toImage();
            // Flat: the closed entry's edge is its ground, no frame.
            const QRgb ground = closed.pixel(closed.width() / 2, closed.height() / 2);
            for (QPoint edge : {QPoint(0, 0), QPoint(closed.width() - 1, closed.height() - 1),
                                QPoint(closed.width() / 2, 0), QPoint(0, closed.height() / 2)})
                QCOMPARE(closed.pixel(edge), ground);
            // Grey, where an open entry is its text area's colour.
            const QRgb openGround = open.pixel(open.width() / 2, open.height() / 2);
            QVERIFY(qGray(ground) < qGray(openGround) - 10);
            QVERIFY(qAbs(qRed(ground) - qBlue(ground)) < 16);
        }
        applyShellStyle(*qobject_cast<QApplication*>(qApp));
    }

  private:
    QTemporaryDir settingsDir_;
};

QTEST_MAIN(ScaleTest)
#include "shell_scale_test.moc"
