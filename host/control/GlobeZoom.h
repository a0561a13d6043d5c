#pragma once

/// How the globe map's zoom stands for a view angle, the degrees of the surface across its smaller side.
namespace GlobeZoom
{
inline constexpr double NarrowestAngle = 2.0;
inline constexpr double WidestAngle = 180.0;

/// The view angle of a share 0 (the nearest view) to 1 (the whole globe); the near half of the range is the finer one.
[[nodiscard]] double ViewAngle(double share);
} // namespace GlobeZoom
