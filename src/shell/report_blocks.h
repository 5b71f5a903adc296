#pragma once
// The pieces a design report is made of: blocks that stand one under the
// other down the page, each knowing its height at a width and painting
// itself into the box it is given. A table can be cut between rows and go
// on, under its head again, on the next page.
#include "circuit/report_tables.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <memory>
#include <vector>

class QPaintDevice;
class QPainter;

namespace qm {

/// Fonts and spacing of the report, measured on the device it is written
/// to. Lengths are in the device's units.
struct ReportStyle
{
    explicit ReportStyle(QPaintDevice* device);

    QPaintDevice* device;
    QFont title, heading, body, bold, small, smallBold;
    QColor ink{0x20, 0x20, 0x20};
    QColor quiet{0x60, 0x60, 0x60}; ///< notes, page furniture, table rules
    double gap;                     ///< between blocks
    double cellPad;                 ///< left and right of a table cell's text
    double rowPad;                  ///< above and below a table row's text
    double millimetre;

    /// Height of `text` set in `font`, broken into lines of `width`.
    double textHeight(const QFont& font, const QString& text, double width) const;
    /// Width of `text` on one line.
    double textWidth(const QFont& font, const QString& text) const;
};

class ReportBlock
{
  public:
    virtual ~ReportBlock() = default;
    virtual double height(double width) const = 0;
    /// The least part of the block that may stand at the foot of a page:
    /// a table's title, head and first row.
    virtual double leastHeight(double width) const { return height(width); }
    virtual void paint(QPainter& p, const QRectF& box) const = 0;
    /// Cuts the block so that what it keeps fits `room`, and returns the
    /// rest; nullptr where it can't be cut there.
    virtual std::unique_ptr<ReportBlock> splitOff(double room, double width);
    /// The block begins a new page.
    virtual bool startsPage() const { return false; }
    /// The block stays on the page of the one after it: a heading.
    virtual bool keepsWithNext() const { return false; }
};

using ReportBlocks = std::vector<std::unique_ptr<ReportBlock>>;

/// Lines of text in one font, broken to the width.
class TextBlock : public ReportBlock
{
  public:
    TextBlock(const ReportStyle& style, QString text, QFont font, QColor ink,
              bool keepWithNext = false);
    double height(double width) const override;
    void paint(QPainter& p, const QRectF& box) const override;
    bool keepsWithNext() const override { return keep_; }

  private:
    const ReportStyle& style_;
    QString text_;
    QFont font_;
    QColor ink_;
    bool keep_;
};

/// Nothing, on a page of its own beginning.
class PageBreak : public ReportBlock
{
  public:
    double height(double) const override { return 0; }
    void paint(QPainter&, const QRectF&) const override {}
    bool startsPage() const override { return true; }
};

/// Where a table's columns stand at a width: each as wide as its widest
/// text; where the whole is too wide, the widest columns give up room and
/// their texts break into lines.
class TableLayout
{
  public:
    TableLayout(const ReportStyle& style, const ReportTable& table, double width);
    double width() const;
    double headHeight() const { return headHeight_; }
    double rowHeight(std::size_t row) const { return rowHeights_[row]; }
    /// Paints the head and rows [first, last) from `topLeft`; returns the
    /// height painted.
    double paint(QPainter& p, QPointF topLeft, std::size_t first, std::size_t last) const;

  private:
    double paintRow(QPainter& p, QPointF topLeft, const std::vector<std::string>& cells,
                    const QFont& font, double height) const;

    const ReportStyle& style_;
    const ReportTable& table_;
    std::vector<double> columns_;
    double headHeight_ = 0;
    std::vector<double> rowHeights_;
};

/// A table under its title, with its notes below it.
class TableBlock : public ReportBlock
{
  public:
    TableBlock(const ReportStyle& style, ReportTable table);
    double height(double width) const override;
    double leastHeight(double width) const override;
    void paint(QPainter& p, const QRectF& box) const override;
    std::unique_ptr<ReportBlock> splitOff(double room, double width) override;
    const ReportTable& table() const { return table_; }

  private:
    double titleHeight(double width) const;
    double notesHeight(double width) const;

    const ReportStyle& style_;
    ReportTable table_;
};

} // namespace qm
