#include "tools/TopoMap.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
constexpr double UnitsPerDegree = 1e6;

/// A polygon that crosses the date line or holds the pole is closed along the edge of the map: no coast is there.
bool IsMapEdge(const MapPoint& a, const MapPoint& b)
{
    constexpr std::int32_t DateLine = 179'990'000;
    constexpr std::int32_t SouthPole = -89'990'000;
    const bool onDateLine = std::abs(a.Longitude) >= DateLine && std::abs(b.Longitude) >= DateLine;
    const bool onPole = a.Latitude <= SouthPole && b.Latitude <= SouthPole;
    return onDateLine || onPole;
}

constexpr std::int32_t HalfTurn = 180'000'000;
constexpr std::int32_t Turn = 360'000'000;

/// Makes the longitudes of a line continuous, starting from its first point.
void Unwrap(MapLine& line)
{
    for (size_t index = 1; index < line.size(); ++index) {
        while (line[index].Longitude - line[index - 1].Longitude > HalfTurn) {
            line[index].Longitude -= Turn;
        }
        while (line[index].Longitude - line[index - 1].Longitude < -HalfTurn) {
            line[index].Longitude += Turn;
        }
    }
}

/// How many turns a continuous longitude is away from the map: 0 between the date lines.
std::int32_t TurnsOf(std::int32_t longitude)
{
    return static_cast<std::int32_t>(std::floor((static_cast<double>(longitude) + HalfTurn) / Turn));
}

/// Cuts a continuous line at the date line and brings the pieces onto the map.
void AppendPieces(std::vector<MapLine>& lines, const MapLine& line)
{
    MapLine piece;
    const auto finish = [&lines, &piece] {
        if (piece.size() > 1) {
            lines.push_back(piece);
        }
        piece.clear();
    };
    std::int32_t turns = 0;
    const auto add = [&piece, &turns](double longitude, double latitude) {
        const MapPoint point{static_cast<std::int32_t>(std::lround(longitude - static_cast<double>(turns) * Turn)),
                             static_cast<std::int32_t>(std::lround(latitude))};
        // A point on the date line itself belongs to both sides.
        if (piece.empty() || piece.back().Longitude != point.Longitude || piece.back().Latitude != point.Latitude) {
            piece.push_back(point);
        }
    };
    for (size_t index = 0; index < line.size(); ++index) {
        const MapPoint& point = line[index];
        if (index > 0) {
            const MapPoint& last = line[index - 1];
            if (IsMapEdge(piece.empty() ? last : piece.back(), {point.Longitude - turns * Turn, point.Latitude})) {
                finish();
            } else if (TurnsOf(point.Longitude) != turns) {
                const bool isEastward = TurnsOf(point.Longitude) > turns;
                const double dateLine = static_cast<double>(turns) * Turn + (isEastward ? HalfTurn : -HalfTurn);
                const double share = (dateLine - last.Longitude) / (point.Longitude - last.Longitude);
                const double latitude = last.Latitude + share * (point.Latitude - last.Latitude);
                add(dateLine, latitude);
                finish();
                turns = TurnsOf(point.Longitude);
                add(dateLine, latitude);
            }
        }
        if (piece.empty()) {
            turns = TurnsOf(point.Longitude);
        }
        add(point.Longitude, point.Latitude);
    }
    finish();
}
} // namespace

CTopoMap::CTopoMap(const QString& path, const QString& objectName)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonObject transform = root[u"transform"].toObject();
    const QJsonArray scale = transform[u"scale"].toArray();
    const QJsonArray origin = transform[u"translate"].toArray();
    const QJsonObject object = root[u"objects"].toObject()[objectName].toObject();
    if (scale.size() != 2 || origin.size() != 2 || object.isEmpty()) {
        throw std::runtime_error(path.toStdString() + " is not the expected map");
    }
    for (const auto& arc : root[u"arcs"].toArray()) {
        MapLine line;
        double x = 0.0;
        double y = 0.0;
        for (const auto& step : arc.toArray()) {
            x += step[0].toDouble();
            y += step[1].toDouble();
            const auto units = [&](double count, int axis) {
                return static_cast<std::int32_t>(
                    std::lround((origin[axis].toDouble() + count * scale[axis].toDouble()) * UnitsPerDegree));
            };
            line.push_back({units(x, 0), units(y, 1)});
        }
        m_arcs.push_back(std::move(line));
    }
    if (object[u"type"] == u"GeometryCollection"_s) {
        for (const auto& geometry : object[u"geometries"].toArray()) {
            AddShape(geometry.toObject());
        }
    } else {
        AddShape(object);
    }
}

void CTopoMap::AddShape(const QJsonObject& geometry)
{
    MapShape shape;
    shape.Id = geometry[u"id"].toString();
    const auto addPolygon = [&shape](const QJsonArray& rings) {
        for (const auto& ring : rings) {
            std::vector<int> arcs;
            for (const auto& arc : ring.toArray()) {
                arcs.push_back(arc.toInt());
            }
            shape.Rings.push_back(std::move(arcs));
        }
    };
    if (geometry[u"type"] == u"MultiPolygon"_s) {
        for (const auto& polygon : geometry[u"arcs"].toArray()) {
            addPolygon(polygon.toArray());
        }
    } else {
        addPolygon(geometry[u"arcs"].toArray());
    }
    m_shapes.push_back(std::move(shape));
}

MapLine CTopoMap::Ring(const std::vector<int>& arcs) const
{
    MapLine line;
    for (const int arc : arcs) {
        MapLine part = m_arcs.at(static_cast<size_t>(arc < 0 ? ~arc : arc));
        if (arc < 0) {
            part = MapLine(part.rbegin(), part.rend());
        }
        // Arcs meet in a common point.
        line.insert(line.end(), line.empty() ? part.begin() : part.begin() + 1, part.end());
    }
    Unwrap(line);
    return line;
}

std::vector<MapLine> CTopoMap::Outlines() const
{
    std::vector<MapLine> lines;
    for (const MapShape& shape : m_shapes) {
        for (const std::vector<int>& ring : shape.Rings) {
            AppendPieces(lines, Ring(ring));
        }
    }
    return lines;
}

std::vector<MapLine> CTopoMap::SharedArcs() const
{
    std::map<int, std::set<size_t>> users;
    for (size_t index = 0; index < m_shapes.size(); ++index) {
        for (const std::vector<int>& ring : m_shapes[index].Rings) {
            for (const int arc : ring) {
                users[arc < 0 ? ~arc : arc].insert(index);
            }
        }
    }
    std::vector<MapLine> lines;
    for (const auto& [arc, shapes] : users) {
        if (shapes.size() > 1) {
            MapLine line = m_arcs[static_cast<size_t>(arc)];
            Unwrap(line);
            AppendPieces(lines, line);
        }
    }
    return lines;
}
