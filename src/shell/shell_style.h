#pragma once
// The look of the window: the platform's own style where it has one, else a
// neutral light one, and a font size that fits the screen's fixed places.

class QApplication;

namespace qm {

/// Sets style, palette and font for the whole program.
void applyShellStyle(QApplication& app);

} // namespace qm
