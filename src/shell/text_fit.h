#pragma once
// Texts of the design screen stand in boxes of fixed size. Where a text is
// wider than its box in the font of the platform, it is set a little narrower
// or a little smaller rather than cut off.
#include <QFont>
#include <QSizeF>
#include <QString>

namespace qm {

/// The font in which `text` fits into `box`: `base` if it fits, else the
/// first of narrower, then smaller, variants that does. With `wrap` the text
/// may break between words and must fit in height as well.
QFont fittedFont(const QFont& base, const QString& text, QSizeF box, bool wrap);

} // namespace qm
