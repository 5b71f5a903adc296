#pragma once
// The splash picture: the program's name over the gain curve of a low-pass
// filter, drawn here, and the one second it stands while the program comes up.
#include <QPixmap>

namespace qm {

/// The picture, at the screen's pixel ratio.
QPixmap splashPicture(qreal pixelRatio);

/// Shows the splash for `milliseconds`, letting window events through, then
/// closes it.
void showSplash(int milliseconds);

} // namespace qm
