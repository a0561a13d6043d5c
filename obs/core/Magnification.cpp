#include "obs/core/Magnification.h"

#include "host/control/GlobeZoom.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double MirrorExponent = 0.37475949809209935; // the inverse of the zoom's
constexpr double Span = GlobeZoom::WidestAngle - GlobeZoom::NarrowestAngle;
} // namespace

int Magnification::ClampSlider(int position)
{
    return std::clamp(position, 0, SliderMax);
}

Magnification::View Magnification::SliderValToVal(int position)
{
    const double share = ClampSlider(position) / 200.0;
    return {GlobeZoom::ViewAngle(share), std::clamp((SliderMax - ClampSlider(position)) / 200.0, 0.0, 1.0)};
}

int Magnification::AfterWheel(int position, int direction)
{
    return ClampSlider(ClampSlider(position) - WheelStep * direction);
}

int Magnification::SliderOfMagnification(double degrees)
{
    const double position = 200.0 - 200.0 * std::pow((degrees - GlobeZoom::NarrowestAngle) / Span, MirrorExponent);
    if (std::isnan(position))
        return SliderMax; // a view angle below the narrowest has no power
    return static_cast<int>(std::clamp(position, 0.0, 200.0));
}
