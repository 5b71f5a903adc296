#pragma once
// The drawings of the design report: each section's schematic with its
// values, and the chart with its scales. Both are painted by the window's
// own drawing code, in the screen's twips, at the report's scale; their
// texts are set in the report's sizes at the places the screen gives them.
#include "shell/report_blocks.h"
#include "shell/schematic_sketch.h"

#include <optional>

namespace qm {

class LineSurface;
class QuellmarkForm;
struct Control;

/// A text at its place in a drawing, in twips from the drawing's origin.
struct PlacedText
{
    QRectF box;
    QString text;
    Qt::Alignment alignment;
    QColor ink;
};

/// The picture of one section as the screen draws it, with the values of
/// its parts on the labels of the screen.
struct SectionPicture
{
    QString title; ///< as the screen heads the section: "Section A"
    Sketch sketch;
    QSizeF size; ///< the picture control's size
    std::vector<PlacedText> values;
};

/// The picture of the stage of that name ("Real", "A"), or nothing when the
/// screen shows none.
std::optional<SectionPicture> sectionPicture(const QuellmarkForm& f, const std::string& stage);

/// A section: its heading, its schematic and beside it the list of its parts.
class SectionBlock : public ReportBlock
{
  public:
    SectionBlock(const ReportStyle& style, SectionPicture picture, QString facts,
                 ReportTable parts);
    double height(double width) const override;
    void paint(QPainter& p, const QRectF& box) const override;
    /// Device units per twip of the drawing.
    double drawingScale(double width) const;
    /// What the drawing covers at that scale, in twips: the picture, its
    /// values and the names of its parts.
    QRectF drawingBounds(double scale) const;
    /// Where each value's text stands at that scale, in twips.
    std::vector<QRectF> valueRects(double scale) const;
    /// Where the names of the named parts stand at that scale, in twips.
    std::vector<QRectF> nameRects(double scale) const;
    /// The width the list of parts beside the drawing takes.
    double listWidth(double width) const;

  private:
    double headingHeight(double width) const;
    void paintHeading(QPainter& p, const QRectF& box) const;
    QFont nameFont(double scale) const;
    /// The font a value is set in, made to fit its box at that scale.
    QFont valueFont(const PlacedText& v, double scale) const;

    const ReportStyle& style_;
    SectionPicture picture_;
    QString facts_;
    ReportTable parts_;
};

/// The chart: its lines from the chart pass, its scales from the legends
/// round it.
class ChartBlock : public ReportBlock
{
  public:
    ChartBlock(const ReportStyle& style, const QuellmarkForm& f, const LineSurface& surface);
    double height(double width) const override;
    void paint(QPainter& p, const QRectF& box) const override;

  private:
    QRectF bounds() const;
    double scale(double width) const;
    QRectF legendRect(const PlacedText& t) const;
    QString caption() const;

    const ReportStyle& style_;
    const QuellmarkForm& form_;
    const LineSurface& surface_;
    QRectF graph_; ///< the chart picture, twips of the screen
    std::vector<PlacedText> legends_;
};

} // namespace qm
