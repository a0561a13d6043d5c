#pragma once

#include <QJsonObject>
#include <QString>

#include <cstdint>
#include <vector>

/// A point of an outline in millionths of a degree, east and north positive.
struct MapPoint
{
    std::int32_t Longitude = 0;
    std::int32_t Latitude = 0;
};

using MapLine = std::vector<MapPoint>;

/// A geometry of a map: its rings as lists of arc numbers (negative: the arc's complement, reversed).
struct MapShape
{
    QString Id; ///< three-digit ISO 3166-1 number, empty when the map has none
    std::vector<std::vector<int>> Rings;
};

/// A quantised TopoJSON map of polygons.
class CTopoMap
{
public:
    /// Throws std::runtime_error when the file is not such a map or lacks the object.
    CTopoMap(const QString& path, const QString& objectName);

    [[nodiscard]] const std::vector<MapShape>& Shapes() const { return m_shapes; }

    /// The ring as one closed line. Longitudes go on beyond the date line instead of jumping, so that the ring may
    /// leave the range of 180 degrees; around a pole it ends a whole turn from where it began.
    [[nodiscard]] MapLine Ring(const std::vector<int>& arcs) const;

    /// Every ring of every shape, cut at the date line, without lines that only close a polygon at the map's edge.
    [[nodiscard]] std::vector<MapLine> Outlines() const;

    /// The arcs that two different shapes share, cut in the same way.
    [[nodiscard]] std::vector<MapLine> SharedArcs() const;

private:
    void AddShape(const QJsonObject& geometry);

    std::vector<MapLine> m_arcs;
    std::vector<MapShape> m_shapes;
};
