#include "shell/analysis_chart.h"

#include <QAreaSeries>
#include <QGraphicsScene>
#include <QHBoxLayout>
#include <QLabel>
#include <QLegend>
#include <QLineSeries>
#include <QLogValueAxis>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <QValueAxis>

#include <algorithm>
#include <cmath>
#include <limits>

namespace qm {

/// The chart's view: rectangle zoom, and the mouse's place reported as
/// values of the axes.
class AnalysisChart::View : public QChartView
{
  public:
    View(AnalysisChart& owner, QWidget* parent) : QChartView(new QChart, parent), owner_(owner)
    {
        setRubberBand(QChartView::RectangleRubberBand);
        setRenderHint(QPainter::Antialiasing);
        setMouseTracking(true);
        chart()->legend()->setAlignment(Qt::AlignBottom);
        chart()->setMargins(QMargins(4, 4, 4, 4));
    }

  protected:
    void mouseMoveEvent(QMouseEvent* e) override
    {
        QChartView::mouseMoveEvent(e);
        if (!chart()->series().isEmpty())
            owner_.mouseAt(chart()->mapToValue(e->position(), chart()->series().first()));
    }

  private:
    AnalysisChart& owner_;
};

AnalysisChart::AnalysisChart(const QString& xTitle, const QString& yTitle, bool logX,
                             QWidget* parent)
    : QWidget(parent), view_(new View(*this, this)), readOut_(new QLabel(this)),
      reset_(new QPushButton(tr("Reset zoom"), this)), xTitle_(xTitle), yTitle_(yTitle), logX_(logX)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_, 1);
    auto* row = new QHBoxLayout;
    readOut_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    row->addWidget(readOut_, 1);
    row->addWidget(reset_);
    layout->addLayout(row);
    connect(reset_, &QPushButton::clicked, this, [this] { view_->chart()->zoomReset(); });
    view_->setMinimumSize(420, 260);
}

void AnalysisChart::show(const std::vector<ChartCurve>& curves, const std::vector<ChartBand>& bands)
{
    QChart* chart = view_->chart();
    chart->removeAllSeries();
    curves_ = curves;
    for (const ChartBand& b : bands) {
        auto* low = new QLineSeries;
        auto* high = new QLineSeries;
        for (std::size_t i = 0; i < b.x.size(); ++i) {
            low->append(b.x[i], b.low[i]);
            high->append(b.x[i], b.high[i]);
        }
        auto* area = new QAreaSeries(high, low);
        area->setName(b.name);
        QColor fill = b.color;
        fill.setAlpha(70);
        area->setBrush(fill);
        area->setPen(QPen(b.color, 0.5));
        chart->addSeries(area);
    }
    for (const ChartCurve& c : curves) {
        auto* s = new QLineSeries;
        s->setName(c.name);
        for (std::size_t i = 0; i < c.x.size(); ++i)
            if (std::isfinite(c.y[i])) s->append(c.x[i], c.y[i]);
        s->setPen(QPen(c.color, 1.5, c.style));
        chart->addSeries(s);
    }
    rebuildAxes();
}

void AnalysisChart::rebuildAxes()
{
    QChart* chart = view_->chart();
    for (QAbstractAxis* a : chart->axes())
        chart->removeAxis(a);
    double xLow = std::numeric_limits<double>::max(), xHigh = -xLow;
    double yLow = xLow, yHigh = -xLow;
    for (const ChartCurve& c : curves_)
        for (std::size_t i = 0; i < c.x.size(); ++i) {
            if (!std::isfinite(c.y[i])) continue;
            xLow = std::min(xLow, c.x[i]);
            xHigh = std::max(xHigh, c.x[i]);
            yLow = std::min(yLow, c.y[i]);
            yHigh = std::max(yHigh, c.y[i]);
        }
    if (xLow >= xHigh) return;
    QAbstractAxis* x = nullptr;
    if (logX_) {
        auto* axis = new QLogValueAxis;
        axis->setBase(10);
        axis->setLabelFormat("%g");
        axis->setMinorTickCount(8);
        axis->setRange(xLow, xHigh);
        x = axis;
    } else {
        auto* axis = new QValueAxis;
        axis->setLabelFormat("%.3g");
        axis->setRange(xLow, xHigh);
        x = axis;
    }
    x->setTitleText(xTitle_);
    if (span_ > 0) yLow = std::max(yLow, yHigh - span_);
    auto* y = new QValueAxis;
    const double pad = std::max(1e-12, (yHigh - yLow) * 0.05);
    y->setRange(yLow - pad, yHigh + pad);
    y->applyNiceNumbers();
    y->setTitleText(yTitle_);
    y->setLabelFormat("%.4g");
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    for (QAbstractSeries* s : chart->series()) {
        s->attachAxis(x);
        s->attachAxis(y);
    }
}

QString AnalysisChart::readOut(double x) const
{
    QString text = xTitle_ + " " + QString::number(x, 'g', 4);
    for (const ChartCurve& c : curves_) {
        if (c.x.empty()) continue;
        // The sample nearest to x, on the axis' own scale.
        std::size_t best = 0;
        double gap = std::numeric_limits<double>::max();
        for (std::size_t i = 0; i < c.x.size(); ++i) {
            const double d = logX_ && c.x[i] > 0 && x > 0 ? std::fabs(std::log(c.x[i] / x))
                                                          : std::fabs(c.x[i] - x);
            if (d < gap) {
                gap = d;
                best = i;
            }
        }
        text += QStringLiteral("   %1: %2").arg(c.name).arg(c.y[best], 0, 'g', 5);
    }
    return text;
}

void AnalysisChart::render(QPainter& p, const QRectF& box) const
{
    // The scene is laid out at the view's size; drawn into the box it
    // keeps its proportions.
    QChart* chart = view_->chart();
    QGraphicsScene* scene = chart->scene();
    if (scene) scene->render(&p, box, chart->geometry(), Qt::KeepAspectRatio);
}

void AnalysisChart::mouseAt(QPointF value)
{
    readOut_->setText(readOut(value.x()));
}

} // namespace qm
