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

void AppendWithoutMapEdge(std::vector<MapLine>& lines, const MapLine& line)
{
    MapLine piece;
    const auto finish = [&lines, &piece] {
        if (piece.size() > 1) {
            lines.push_back(piece);
        }
        piece.clear();
    };
    for (const MapPoint& point : line) {
        if (!piece.empty() && IsMapEdge(piece.back(), point)) {
            finish();
        }
        piece.push_back(point);
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
    return line;
}

std::vector<MapLine> CTopoMap::Outlines() const
{
    std::vector<MapLine> lines;
    for (const MapShape& shape : m_shapes) {
        for (const std::vector<int>& ring : shape.Rings) {
            AppendWithoutMapEdge(lines, Ring(ring));
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
            AppendWithoutMapEdge(lines, m_arcs[static_cast<size_t>(arc)]);
        }
    }
    return lines;
}
