#include "shell/twips.h"

namespace qm {

namespace {

double gScale = 1.0;

} // namespace

double screenScale()
{
    return gScale;
}

void setScreenScale(double scale)
{
    gScale = scale;
}

} // namespace qm
