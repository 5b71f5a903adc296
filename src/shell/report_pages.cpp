#include "shell/report_pages.h"

#include <QPagedPaintDevice>
#include <QPainter>

namespace qm {

namespace {

/// Height of the bands that hold the header and the footer.
constexpr double kBandMillimetres = 9;

class PageSetter
{
  public:
    PageSetter(const QRectF& area, double gap) : area_(area), gap_(gap), y_(area.top()) {}

    std::vector<ReportPage> pages{{}};

    double room() const { return area_.bottom() - y_; }
    bool pageEmpty() const { return pages.back().empty(); }

    void place(const ReportBlock& b, double height)
    {
        pages.back().push_back({&b, QRectF(area_.left(), y_, area_.width(), height)});
        // A heading stands close over what it heads.
        y_ += height + (b.keepsWithNext() ? gap_ / 4 : gap_);
    }

    void newPage()
    {
        pages.emplace_back();
        y_ = area_.top();
    }

  private:
    QRectF area_;
    double gap_;
    double y_;
};

/// How much room a block needs at the foot of a page: a heading takes the
/// least part of what follows it along.
double neededRoom(const ReportBlocks& blocks, std::size_t i, double width, double gap)
{
    const ReportBlock& b = *blocks[i];
    double need = b.height(width);
    for (std::size_t k = i; k + 1 < blocks.size() && blocks[k]->keepsWithNext(); ++k)
        need += gap / 4 + (blocks[k + 1]->keepsWithNext() ? blocks[k + 1]->height(width)
                                                          : blocks[k + 1]->leastHeight(width));
    return need;
}

} // namespace

std::vector<ReportPage> layOutPages(ReportBlocks& blocks, const QRectF& area, double gap)
{
    PageSetter setter(area, gap);
    const double width = area.width();
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        ReportBlock& b = *blocks[i];
        if (b.startsPage() && !setter.pageEmpty()) setter.newPage();
        if (b.keepsWithNext() && neededRoom(blocks, i, width, gap) > setter.room() &&
            !setter.pageEmpty())
            setter.newPage();
        if (b.height(width) > setter.room()) {
            // What fits on a page of its own moves on whole: a table is read
            // best in one piece. What is taller is cut where it can be.
            const bool fitsAPage = b.height(width) <= area.height();
            std::unique_ptr<ReportBlock> rest =
                fitsAPage ? nullptr : b.splitOff(setter.room(), width);
            if (!rest && !setter.pageEmpty()) {
                setter.newPage();
                if (!fitsAPage) rest = b.splitOff(setter.room(), width);
            }
            if (rest)
                blocks.insert(blocks.begin() + static_cast<std::ptrdiff_t>(i) + 1, std::move(rest));
        }
        setter.place(b, b.height(width));
        if (i + 1 < blocks.size() && setter.room() <= 0) setter.newPage();
    }
    return setter.pages;
}

QRectF writingArea(const QRectF& page, const ReportStyle& style)
{
    const double band = kBandMillimetres * style.millimetre;
    // The header's rule stands clear of the first line under it.
    return page.adjusted(0, band + 2 * style.millimetre, 0, -band);
}

namespace {

void paintFurniture(QPainter& p, const QRectF& page, std::size_t number, std::size_t count,
                    const PageFurniture& furniture, const ReportStyle& style)
{
    const double band = kBandMillimetres * style.millimetre;
    QPen rule(style.quiet, 0.2 * style.millimetre);
    p.setFont(style.small);
    if (number > 1) {
        const QRectF header(page.left(), page.top(), page.width(), band - 2 * style.millimetre);
        p.setPen(style.quiet);
        p.drawText(header, Qt::AlignLeft | Qt::AlignBottom | Qt::TextSingleLine, furniture.header);
        p.setPen(rule);
        p.drawLine(header.bottomLeft() + QPointF(0, style.millimetre),
                   header.bottomRight() + QPointF(0, style.millimetre));
    }
    const QRectF footer(page.left(), page.bottom() - band + 2 * style.millimetre, page.width(),
                        band - 2 * style.millimetre);
    p.setPen(rule);
    p.drawLine(footer.topLeft() - QPointF(0, style.millimetre),
               footer.topRight() - QPointF(0, style.millimetre));
    p.setPen(style.quiet);
    p.drawText(footer, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, furniture.footer);
    p.drawText(footer, Qt::AlignRight | Qt::AlignTop | Qt::TextSingleLine,
               QStringLiteral("Page %1 of %2").arg(number).arg(count));
}

} // namespace

void paintPages(QPainter& p, QPagedPaintDevice& device, const std::vector<ReportPage>& pages,
                const PageFurniture& furniture, const ReportStyle& style, const QRectF& page)
{
    for (std::size_t n = 0; n < pages.size(); ++n) {
        if (n > 0) device.newPage();
        paintFurniture(p, page, n + 1, pages.size(), furniture, style);
        for (const PlacedBlock& placed : pages[n])
            placed.block->paint(p, placed.box);
    }
}

} // namespace qm
