#include "tools/SharedBorders.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
using Point = std::pair<std::int32_t, std::int32_t>;
using Edge = std::pair<Point, Point>;

Point PointOf(const QJsonArray& position)
{
    const auto units = [&position](int axis) {
        return static_cast<std::int32_t>(std::lround(position[axis].toDouble() * 1e6));
    };
    return {units(0), units(1)};
}

Edge EdgeOf(const Point& a, const Point& b)
{
    return a < b ? Edge(a, b) : Edge(b, a);
}

/// The rings of every area, one list an area.
std::vector<std::vector<std::vector<Point>>> Areas(const QJsonArray& features)
{
    std::vector<std::vector<std::vector<Point>>> areas;
    for (const auto& feature : features) {
        const QJsonObject geometry = feature.toObject()[u"geometry"].toObject();
        const QJsonArray coordinates = geometry[u"coordinates"].toArray();
        const QJsonArray polygons =
            geometry[u"type"] == u"MultiPolygon"_s ? coordinates : QJsonArray{QJsonValue(coordinates)};
        auto& rings = areas.emplace_back();
        for (const auto& polygon : polygons) {
            for (const auto& ring : polygon.toArray()) {
                auto& points = rings.emplace_back();
                for (const auto& position : ring.toArray()) {
                    points.push_back(PointOf(position.toArray()));
                }
            }
        }
    }
    return areas;
}
} // namespace

std::vector<MapLine> SharedBorders::Read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    const auto areas = Areas(QJsonDocument::fromJson(file.readAll()).object()[u"features"].toArray());
    if (areas.empty()) {
        throw std::runtime_error(path.toStdString() + " is not the expected map");
    }
    std::map<Edge, int> users;
    for (const auto& rings : areas) {
        for (const auto& ring : rings) {
            for (size_t index = 0; index + 1 < ring.size(); ++index) {
                ++users[EdgeOf(ring[index], ring[index + 1])];
            }
        }
    }
    std::vector<MapLine> lines;
    for (const auto& rings : areas) {
        for (const auto& ring : rings) {
            MapLine line;
            const auto finish = [&lines, &line] {
                if (line.size() > 1) {
                    lines.push_back(line);
                }
                line.clear();
            };
            for (size_t index = 0; index + 1 < ring.size(); ++index) {
                int& count = users[EdgeOf(ring[index], ring[index + 1])];
                if (std::exchange(count, 0) < 2) {
                    finish();
                    continue;
                }
                if (line.empty()) {
                    line.push_back({ring[index].first, ring[index].second});
                }
                line.push_back({ring[index + 1].first, ring[index + 1].second});
            }
            finish();
        }
    }
    return lines;
}
