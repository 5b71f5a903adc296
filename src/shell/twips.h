#pragma once
// The screen's places are in twips (1/1440 inch). Qt's device-independent
// pixel is 1/96 inch, and high-DPI screens scale it by their pixel ratio, so
// one logical pixel is always 15 twips and the picture stays sharp.
#include "screen/control.h"

#include <QRect>
#include <QRectF>

#include <cmath>

namespace qm {

constexpr double kTwipsPerPixel = 15.0;

/// Twips to logical pixels, unrounded: for painting.
constexpr double twipsToPx(double twips)
{
    return twips / kTwipsPerPixel;
}

/// Twips to whole logical pixels: for placing widgets.
inline int twipsToPxRounded(double twips)
{
    return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}

/// Pixels back to twips: for mouse positions on a surface drawn in twips.
constexpr double pxToTwips(double px)
{
    return px * kTwipsPerPixel;
}

/// The widget rectangle of a control. Each edge is rounded on its own, so
/// that controls that touch in twips touch on the screen.
inline QRect controlRect(const Control& c)
{
    const int left = twipsToPxRounded(c.left);
    const int top = twipsToPxRounded(c.top);
    const int right = twipsToPxRounded(c.left + c.width);
    const int bottom = twipsToPxRounded(c.top + c.height);
    return QRect(left, top, right - left, bottom - top);
}

} // namespace qm
