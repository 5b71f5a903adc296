// Speed of the design screen in its window, on Qt's offscreen platform:
// from nothing to the built-in design drawn, and one keystroke in an entry
// (Enter with a new cutoff) to the recalculated design repainted. A window
// that feels immediate starts within half a second and answers a keystroke
// within one frame, 16 ms.
#include "shell/main_window.h"
#include "shell/shell_style.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <benchmark/benchmark.h>

namespace {

/// Lets the window system deliver what a show or a change posted: the
/// exposure, the layout, the paint.
void settle()
{
    QApplication::processEvents();
}

void pressEnter(QWidget* entry)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(entry, &press);
}

/// A window as a person leaves it after typing `poles` into the pole count.
void enterPoles(qm::MainWindow& w, const char* poles)
{
    auto* entry = static_cast<QLineEdit*>(w.widgetOf("Text18"));
    entry->setFocus();
    entry->setText(QString::fromLatin1(poles));
    w.form().Text18.text = poles;
    pressEnter(entry);
    settle();
}

void BM_StartUpToDrawnDesign(benchmark::State& state)
{
    for (auto _ : state) {
        qm::MainWindow window;
        window.start();
        window.show();
        settle();
        // Every widget painted, as the screen shows them.
        window.repaint();
        benchmark::DoNotOptimize(window.form().Label8.text);
        state.PauseTiming();
        window.close();
        settle();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_StartUpToDrawnDesign)->Unit(benchmark::kMillisecond);

/// One keystroke: Enter in the cutoff entry with a new value, and the whole
/// window repainted with the recalculated design. `range(0)` is the number
/// of poles; 10 is the largest design the screen holds.
void BM_KeystrokeRecalculateAndRepaint(benchmark::State& state)
{
    qm::MainWindow window;
    window.start();
    window.show();
    settle();
    const std::string poles = std::to_string(state.range(0));
    enterPoles(window, poles.c_str());
    auto* cutoff = static_cast<QLineEdit*>(window.widgetOf("Text34"));
    cutoff->setFocus();
    settle();
    const QString values[] = {QStringLiteral("2k"), QStringLiteral("3k")};
    int k = 0;
    for (auto _ : state) {
        const QString value = values[k++ % 2];
        cutoff->setText(value);
        window.form().Text34.text = value.toStdString();
        pressEnter(cutoff);
        window.repaint();
    }
    // The entry was taken and written back in engineering notation: the
    // keystrokes did start recalculations.
    const std::string& taken = window.form().Text34.text;
    if (taken != "2.00 k" && taken != "3.00 k")
        state.SkipWithError("the cutoff entry was not taken");
}
BENCHMARK(BM_KeystrokeRecalculateAndRepaint)->Arg(3)->Arg(10)->Unit(benchmark::kMillisecond);

/// The share of a keystroke that is the window's own: setting every widget
/// from an unchanged model.
void BM_SyncUnchangedModel(benchmark::State& state)
{
    qm::MainWindow window;
    window.start();
    window.show();
    settle();
    for (auto _ : state)
        window.syncFromModel();
}
BENCHMARK(BM_SyncUnchangedModel)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    qm::applyShellStyle(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
