#pragma once
// The report's blocks set on pages: one under the other, a block that
// doesn't fit the rest of a page on the next one (a table longer than a
// page cut between its rows), a heading never alone at a page's foot;
// every page but the first headed by the design's description, every page
// numbered.
#include "shell/report_blocks.h"

class QPagedPaintDevice;

namespace qm {

struct PlacedBlock
{
    const ReportBlock* block;
    QRectF box;
};

using ReportPage = std::vector<PlacedBlock>;

/// Sets the blocks on pages of the given writing area. Tables that are cut
/// leave their rest as new blocks in `blocks`.
std::vector<ReportPage> layOutPages(ReportBlocks& blocks, const QRectF& area, double gap);

struct PageFurniture
{
    QString header; ///< over every page but the first
    QString footer; ///< left at the foot of every page, the page number right
};

/// The writing area of a page whose printable area is `page`: room is kept
/// above for the header and below for the footer.
QRectF writingArea(const QRectF& page, const ReportStyle& style);

/// Paints the pages, starting a new page of `device` for each but the
/// first.
void paintPages(QPainter& p, QPagedPaintDevice& device, const std::vector<ReportPage>& pages,
                const PageFurniture& furniture, const ReportStyle& style, const QRectF& page);

} // namespace qm
