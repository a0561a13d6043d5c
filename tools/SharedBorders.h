#pragma once

#include "tools/TopoMap.h"

#include <QString>

#include <vector>

/// The lines between the areas of a GeoJSON map, such as prefectures: every stretch that two areas share, once.
namespace SharedBorders
{
/// Throws std::runtime_error when the file is no collection of polygons.
[[nodiscard]] std::vector<MapLine> Read(const QString& path);
} // namespace SharedBorders
