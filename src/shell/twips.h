#pragma once
// The screen's places are in twips (1/1440 inch). Qt's device-independent
// pixel is 1/96 inch, so at the screen's own size one logical pixel is 15
// twips. The window scales the whole screen with its size: at scale s one
// logical pixel is 15/s twips, and everything is painted from twips at that
// scale, so text and drawings stay sharp at every size.
#include "screen/control.h"

#include <QRect>
#include <QRectF>

#include <cmath>

namespace qm {

/// Twips per logical pixel at the screen's own size.
constexpr double kTwipsPerPixel = 15.0;

/// The scale the screen is drawn at, 1 for its own size. One window shows
/// the screen, so the scale is one for the program.
double screenScale();
void setScreenScale(double scale);

/// Twips to logical pixels, unrounded: for painting.
inline double twipsToPx(double twips)
{
    return twips * screenScale() / kTwipsPerPixel;
}

/// Twips to whole logical pixels: for placing widgets.
inline int twipsToPxRounded(double twips)
{
    return static_cast<int>(std::lround(twipsToPx(twips)));
}

/// Pixels back to twips: for mouse positions on a surface drawn in twips.
inline double pxToTwips(double px)
{
    return px * kTwipsPerPixel / screenScale();
}

/// Pixels at the screen's own size to pixels at the present scale.
inline double scaledPx(double px)
{
    return px * screenScale();
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
