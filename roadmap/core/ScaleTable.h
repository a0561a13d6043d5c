#pragma once

/// The scales of the road map, from detail to wide.
namespace ScaleTable
{
inline constexpr int Count = 332;
inline constexpr int SliderCount = 330; ///< scales that the slider reaches; the rest only a stored index
inline constexpr int SliderMax = SliderCount - 1;
inline constexpr int TickStep = SliderCount / 10;
inline constexpr int DefaultIndex = 80;

/// The nearest index inside the table.
[[nodiscard]] int ClampIndex(int index);

/// n of the scale 1:n; an index outside the table counts as its nearest end.
[[nodiscard]] int Denominator(int index);
} // namespace ScaleTable
