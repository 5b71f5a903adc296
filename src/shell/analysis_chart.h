#pragma once
// A chart of the Analysis window: curves over frequency (logarithmic) or
// time, axes with units, a legend, the values under the mouse, zoom by
// dragging a rectangle and a button that resets it.
#include <QChartView>
#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;

namespace qm {

struct ChartCurve
{
    QString name;
    std::vector<double> x, y;
    QColor color;
    Qt::PenStyle style = Qt::SolidLine;
};

/// A band between two curves, drawn under the curves: the spread of trials.
struct ChartBand
{
    QString name;
    std::vector<double> x, low, high;
    QColor color;
};

class AnalysisChart : public QWidget
{
  public:
    AnalysisChart(const QString& xTitle, const QString& yTitle, bool logX, QWidget* parent);

    /// Shows at most `span` below the highest value: a gain chart stops
    /// where the stopband stops mattering.
    void setSpan(double span) { span_ = span; }
    /// Replaces what the chart shows.
    void show(const std::vector<ChartCurve>& curves, const std::vector<ChartBand>& bands = {});
    /// The read-out under the mouse at x, as the label shows it.
    QString readOut(double x) const;
    /// Paints the chart as it stands into `box`, as lines and text: for
    /// the report.
    void render(QPainter& p, const QRectF& box) const;

  private:
    class View;
    void rebuildAxes();
    void mouseAt(QPointF value);

    View* view_;
    QLabel* readOut_;
    QPushButton* reset_;
    QString xTitle_, yTitle_;
    bool logX_;
    double span_ = 0;
    std::vector<ChartCurve> curves_;
};

} // namespace qm
