#pragma once

/// The magnification slider of the observation-site dialog: 0 (top, narrowest view) to 200 (bottom, widest).
namespace Magnification
{
inline constexpr int SliderMax = 200;
inline constexpr int TickStep = 20;
inline constexpr int WheelStep = 3;
inline constexpr double BorderlineAngle = 30.0; ///< the border lines show below this view angle

/// What a slider position stands for.
struct View
{
    double Degrees = 0.0; ///< view angle, 2 to 180
    double Zoom = 0.0;    ///< zoom of the globe map, 0.0 to 1.0
};

/// The position itself, or the nearer end of the slider.
[[nodiscard]] int ClampSlider(int position);

/// The view of a slider position; a position outside the slider counts as its nearer end.
[[nodiscard]] View SliderValToVal(int position);

/// Slider position after a wheel notch; direction +1 is away from the user and zooms in.
[[nodiscard]] int AfterWheel(int position, int direction);

/// Slider position for a view angle that the globe map reports, 0 to 200. On purpose the mirror image of
/// SliderValToVal, not its inverse: a wide view puts the slider near the top.
[[nodiscard]] int SliderOfMagnification(double degrees);
} // namespace Magnification
