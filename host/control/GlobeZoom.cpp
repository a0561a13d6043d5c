#include "host/control/GlobeZoom.h"

#include <cmath>

double GlobeZoom::ViewAngle(double share)
{
    constexpr double power = 2.668378;
    return std::pow(share, power) * (WidestAngle - NarrowestAngle) + NarrowestAngle;
}
