#pragma once

#include "tools/TopoMap.h"

#include <QString>

#include <vector>

/// A box in whole degrees.
struct ShoreBox
{
    int West = 0;
    int South = 0;
    int East = 0;
    int North = 0;
};

/// Shorelines and rivers of the GSHHG data, which are stored in pieces, one bin a square degree.
namespace ShoreBins
{
/// The shores in the box as closed rings; land that goes on outside is closed along the edge of the box. Lakes are
/// rings in rings. Throws std::runtime_error when the file is not as expected.
[[nodiscard]] std::vector<MapLine> ReadShores(const QString& path, const ShoreBox& box);

/// The rivers in the box, without canals and dry beds.
[[nodiscard]] std::vector<MapLine> ReadRivers(const QString& path, const ShoreBox& box);

/// The line with so few points that it stays within the tolerance (millionths of a degree of latitude).
[[nodiscard]] MapLine Simplified(const MapLine& line, double tolerance);
} // namespace ShoreBins
