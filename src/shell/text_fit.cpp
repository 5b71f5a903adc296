#include "shell/text_fit.h"

#include <QFontMetricsF>
#include <QRectF>

namespace qm {

namespace {

// Narrowing goes no further than this, shrinking no smaller: below these a
// text is hard to read, and it is better cut.
constexpr int kNarrowestStretch = 75;
constexpr int kStretchStep = 5;
constexpr double kSmallestPoints = 6.0;
constexpr double kPointStep = 0.5;

bool fits(const QFont& font, const QString& text, QSizeF box, bool wrap)
{
    const QFontMetricsF m(font);
    if (!wrap) return m.horizontalAdvance(text) <= box.width();
    const QRectF area(0, 0, box.width(), 1e6);
    const QRectF used = m.boundingRect(area, Qt::TextWordWrap, text);
    return used.width() <= box.width() && used.height() <= box.height();
}

} // namespace

QFont fittedFont(const QFont& base, const QString& text, QSizeF box, bool wrap)
{
    if (text.isEmpty() || fits(base, text, box, wrap)) return base;
    QFont font = base;
    const double basePoints = base.pointSizeF() > 0 ? base.pointSizeF() : 8.0;
    for (double points = basePoints; points >= kSmallestPoints; points -= kPointStep) {
        font.setPointSizeF(points);
        for (int stretch = 100; stretch >= kNarrowestStretch; stretch -= kStretchStep) {
            font.setStretch(stretch);
            if (fits(font, text, box, wrap)) return font;
        }
    }
    return font;
}

} // namespace qm
