// The window at any size: the design screen keeps its layout and is drawn at
// the scale that fits, the window's size and place are kept between runs,
// and the family list shows each item in full.
#include "shell_harness.h"

#include "shell/form_canvas.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QAction>
#include <QApplication>
#include <QFontMetricsF>
#include <QSettings>
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
        const QSize own = stage->size(), extra = s.window.size() - own;
        s.window.resize(QSize(static_cast<int>(own.width() * widthFactor + extra.width()),
                              static_cast<int>(own.height() * heightFactor + extra.height())));
        QCoreApplication::processEvents();
        QVERIFY(std::abs(screenScale() - scale) < 0.01);
        // Same layout, drawn larger or smaller: every widget where its
        // control's twips put it at this scale, set in a font as much larger.
        expectNone(widgetDifferences(s.window) + overlappingTexts(s.window));
        QVERIFY(std::abs(s.window.widgetOf("Label8")->font().pointSizeF() -
                         QApplication::font().pointSizeF() * scale) < 0.01);
        // The screen stands in the middle of what it doesn't fill.
        const QRect screen = s.window.canvas()->geometry();
        QVERIFY(std::abs(screen.center().x() - stage->rect().center().x()) <= 1 ||
                screen.left() == 0);
        QVERIFY(stage->rect().contains(screen) || scale < widthFactor);
        QVERIFY(s.window.grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_at_%1.png")
                                         .arg(QString::number(scale))));
        // Drawn larger, the value table grows the window at its scale.
        if (scale <= 1) return;
        const int before = s.window.canvas()->height();
        s.window.actionOf("ShowValuesTable")->trigger();
        QCoreApplication::processEvents();
        QVERIFY(std::abs(screenScale() - scale) < 0.01);
        QVERIFY(std::abs(s.window.canvas()->height() - before -
                         std::lround((10700 - 8880) / kTwipsPerPixel * scale)) <= 1);
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
        QCOMPARE(w.geometry(), kept);
    }

    void everyFamilyReadsInFull()
    {
        StartedWindow s;
        auto* list = dynamic_cast<ListChoice*>(s.window.widgetOf("TypeFilter"));
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

  private:
    QTemporaryDir settingsDir_;
};

QTEST_MAIN(ScaleTest)
#include "shell_scale_test.moc"
