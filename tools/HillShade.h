#pragma once

#include <QString>

/// A grey picture of a terrain grid, lit from the north-west: 128 is flat, brighter is turned to the light.
namespace HillShade
{
/// Shades the grid of that name in the terrain's index. The picture has a pixel a cell and names the box that it covers
/// in its text "box": west, south, east, north in degrees. Throws std::runtime_error when a file fails.
void Write(const QString& terrainFolder, const QString& grid, const QString& picturePath);
} // namespace HillShade
