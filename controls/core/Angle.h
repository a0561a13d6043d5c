#pragma once

#include <numbers>

inline constexpr double RadiansPerDegree = std::numbers::pi / 180.0;
inline constexpr double DegreesPerRadian = 180.0 / std::numbers::pi;
