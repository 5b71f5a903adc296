#include "shell/report_blocks.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace qm {

namespace {

constexpr double kTitlePoints = 16;
constexpr double kHeadingPoints = 11;
constexpr double kBodyPoints = 9;
constexpr double kSmallPoints = 7.5;

QFont reportFont(double points, bool bold)
{
    QFont f = QApplication::font();
    f.setPointSizeF(points);
    f.setBold(bold);
    f.setStretch(QFont::Unstretched);
    // No ligatures: a reader who copies "Cutoff" from the page gets those
    // six letters.
    f.setStyleStrategy(QFont::PreferNoShaping);
    return f;
}

QString qs(const std::string& s)
{
    return QString::fromStdString(s);
}

} // namespace

ReportStyle::ReportStyle(QPaintDevice* d)
    : device(d), title(reportFont(kTitlePoints, true)), heading(reportFont(kHeadingPoints, true)),
      body(reportFont(kBodyPoints, false)), bold(reportFont(kBodyPoints, true)),
      small(reportFont(kSmallPoints, false)), smallBold(reportFont(kSmallPoints, true))
{
    constexpr double kMillimetresPerInch = 25.4;
    millimetre = d->logicalDpiY() / kMillimetresPerInch;
    gap = 6 * millimetre;
    cellPad = 1.5 * millimetre;
    rowPad = 0.6 * millimetre;
}

double ReportStyle::textHeight(const QFont& font, const QString& text, double width) const
{
    if (text.isEmpty()) return 0;
    const QFontMetricsF m(font, device);
    return m.boundingRect(QRectF(0, 0, width, 1e6), Qt::TextWordWrap, text).height();
}

double ReportStyle::textWidth(const QFont& font, const QString& text) const
{
    return QFontMetricsF(font, device).horizontalAdvance(text);
}

std::unique_ptr<ReportBlock> ReportBlock::splitOff(double, double)
{
    return nullptr;
}

// --- TextBlock ---------------------------------------------------------------

TextBlock::TextBlock(const ReportStyle& style, QString text, QFont font, QColor ink,
                     bool keepWithNext)
    : style_(style), text_(std::move(text)), font_(std::move(font)), ink_(ink), keep_(keepWithNext)
{
}

double TextBlock::height(double width) const
{
    return style_.textHeight(font_, text_, width);
}

void TextBlock::paint(QPainter& p, const QRectF& box) const
{
    p.setFont(font_);
    p.setPen(ink_);
    p.drawText(box, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text_);
}

// --- TableLayout -------------------------------------------------------------

namespace {

/// Narrows the widest columns to a common width until the whole fits, no
/// column narrower than `least`.
void fitColumns(std::vector<double>& columns, double width, double least)
{
    double total = std::accumulate(columns.begin(), columns.end(), 0.0);
    while (total > width) {
        const auto widest = std::max_element(columns.begin(), columns.end());
        double next = least;
        for (double c : columns)
            if (c < *widest) next = std::max(next, c);
        const auto count = static_cast<double>(std::count(columns.begin(), columns.end(), *widest));
        // Bring the widest down to the next width, or as far as is needed.
        const double cut = std::min(*widest - next, (total - width) / count);
        if (cut <= 0) return;
        const double from = *widest;
        for (double& c : columns)
            if (c == from) c -= cut;
        total -= cut * count;
    }
}

} // namespace

TableLayout::TableLayout(const ReportStyle& style, const ReportTable& table, double width)
    : style_(style), table_(table), columns_(table.head.size(), 0)
{
    const double pad = 2 * style.cellPad;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        columns_[c] = style.textWidth(style.smallBold, qs(table.head[c])) + pad;
        for (std::size_t r = 0; r < table.rows.size(); ++r) {
            const bool bold = r < table.boldRows.size() && table.boldRows[r];
            columns_[c] = std::max(
                columns_[c],
                style.textWidth(bold ? style.bold : style.body, qs(table.rows[r][c])) + pad);
        }
    }
    constexpr double kLeastColumnMillimetres = 12;
    fitColumns(columns_, width, kLeastColumnMillimetres * style.millimetre);
    const auto rowHeight = [&](const std::vector<std::string>& cells, const QFont& font) {
        double h = 0;
        for (std::size_t c = 0; c < cells.size(); ++c)
            h = std::max(h, style.textHeight(font, qs(cells[c]), columns_[c] - pad));
        return std::max(h, QFontMetricsF(font, style.device).height()) + 2 * style.rowPad;
    };
    headHeight_ = rowHeight(table.head, style.smallBold);
    for (std::size_t r = 0; r < table.rows.size(); ++r) {
        const bool bold = r < table.boldRows.size() && table.boldRows[r];
        rowHeights_.push_back(rowHeight(table.rows[r], bold ? style.bold : style.body));
    }
}

double TableLayout::width() const
{
    return std::accumulate(columns_.begin(), columns_.end(), 0.0);
}

double TableLayout::paintRow(QPainter& p, QPointF topLeft, const std::vector<std::string>& cells,
                             const QFont& font, double height) const
{
    p.setFont(font);
    double x = topLeft.x();
    for (std::size_t c = 0; c < cells.size(); ++c) {
        const QRectF cell(x + style_.cellPad, topLeft.y() + style_.rowPad,
                          columns_[c] - 2 * style_.cellPad, height - 2 * style_.rowPad);
        const bool right = c < table_.rightAligned.size() && table_.rightAligned[c];
        p.drawText(cell, (right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignTop | Qt::TextWordWrap,
                   qs(cells[c]));
        x += columns_[c];
    }
    return height;
}

double TableLayout::paint(QPainter& p, QPointF topLeft, std::size_t first, std::size_t last) const
{
    QPen rule(style_.quiet, 0.25 * style_.millimetre);
    const double right = topLeft.x() + width();
    p.setPen(style_.quiet);
    double y = topLeft.y() + paintRow(p, topLeft, table_.head, style_.smallBold, headHeight_);
    p.setPen(rule);
    p.drawLine(QPointF(topLeft.x(), y), QPointF(right, y));
    for (std::size_t r = first; r < last; ++r) {
        const bool bold = r < table_.boldRows.size() && table_.boldRows[r];
        if (bold && r > first) {
            p.setPen(rule);
            p.drawLine(QPointF(topLeft.x(), y), QPointF(right, y));
        }
        p.setPen(style_.ink);
        y += paintRow(p, QPointF(topLeft.x(), y), table_.rows[r], bold ? style_.bold : style_.body,
                      rowHeights_[r]);
    }
    p.setPen(rule);
    p.drawLine(QPointF(topLeft.x(), y), QPointF(right, y));
    return y - topLeft.y();
}

// --- TableBlock --------------------------------------------------------------

TableBlock::TableBlock(const ReportStyle& style, ReportTable table)
    : style_(style), table_(std::move(table))
{
}

double TableBlock::titleHeight(double width) const
{
    if (table_.title.empty()) return 0;
    return style_.textHeight(style_.heading, qs(table_.title), width) + 1.5 * style_.millimetre;
}

double TableBlock::notesHeight(double width) const
{
    double h = 0;
    for (const std::string& note : table_.notes)
        h += style_.textHeight(style_.small, qs(note), width) + 0.5 * style_.millimetre;
    return h > 0 ? h + style_.millimetre : 0;
}

double TableBlock::height(double width) const
{
    const TableLayout layout(style_, table_, width);
    double h = titleHeight(width) + layout.headHeight() + notesHeight(width);
    for (std::size_t r = 0; r < table_.rows.size(); ++r)
        h += layout.rowHeight(r);
    return h;
}

double TableBlock::leastHeight(double width) const
{
    const TableLayout layout(style_, table_, width);
    const double firstRow = table_.rows.empty() ? 0 : layout.rowHeight(0);
    return titleHeight(width) + layout.headHeight() + firstRow;
}

void TableBlock::paint(QPainter& p, const QRectF& box) const
{
    const double width = box.width();
    p.setFont(style_.heading);
    p.setPen(style_.ink);
    p.drawText(box, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, qs(table_.title));
    const TableLayout layout(style_, table_, width);
    double y = box.top() + titleHeight(width);
    y += layout.paint(p, QPointF(box.left(), y), 0, table_.rows.size()) + style_.millimetre;
    p.setFont(style_.small);
    p.setPen(style_.quiet);
    for (const std::string& note : table_.notes) {
        const QRectF area(box.left(), y, width, box.bottom() - y);
        p.drawText(area, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, qs(note));
        y += style_.textHeight(style_.small, qs(note), width) + 0.5 * style_.millimetre;
    }
}

std::unique_ptr<ReportBlock> TableBlock::splitOff(double room, double width)
{
    const TableLayout layout(style_, table_, width);
    double used = titleHeight(width) + layout.headHeight();
    std::size_t kept = 0;
    while (kept < table_.rows.size() && used + layout.rowHeight(kept) <= room)
        used += layout.rowHeight(kept++);
    // No row is left alone on either side of the cut, and the notes go on
    // with the last rows.
    constexpr std::size_t kLeastRows = 4;
    kept = std::min(kept, table_.rows.size() - std::min(kLeastRows, table_.rows.size()));
    if (kept < kLeastRows) return nullptr;
    ReportTable rest = table_;
    constexpr const char* kContinued = " (continued)";
    if (!rest.title.empty() && !rest.title.ends_with(kContinued)) rest.title += kContinued;
    const auto cut = static_cast<std::ptrdiff_t>(kept);
    rest.rows.erase(rest.rows.begin(), rest.rows.begin() + cut);
    table_.rows.resize(kept);
    if (rest.boldRows.size() > kept) {
        rest.boldRows.erase(rest.boldRows.begin(), rest.boldRows.begin() + cut);
        table_.boldRows.resize(kept);
    } else {
        rest.boldRows.clear();
    }
    table_.notes.clear();
    return std::make_unique<TableBlock>(style_, std::move(rest));
}

} // namespace qm
