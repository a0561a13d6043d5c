#include "tools/CsvTable.h"
#include "tools/LineWriter.h"
#include "tools/TopoMap.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string_view>

using namespace Qt::StringLiterals;

namespace
{
struct Box
{
    double West = 180.0;
    double South = 90.0;
    double East = -180.0;
    double North = -90.0;

    [[nodiscard]] bool Meets(const Box& other, double margin) const
    {
        return West <= other.East + margin && other.West <= East + margin && South <= other.North + margin &&
               other.South <= North + margin;
    }
    void Join(const Box& other)
    {
        West = std::min(West, other.West);
        South = std::min(South, other.South);
        East = std::max(East, other.East);
        North = std::max(North, other.North);
    }
};

/// Boxes of a shape's parts, neighbouring ones joined, so that far islands do not blow up the box of the mainland.
std::vector<Box> Boxes(const CTopoMap& map, const MapShape& shape)
{
    constexpr double Neighbourhood = 1.0;
    std::vector<Box> boxes;
    for (const std::vector<int>& ring : shape.Rings) {
        Box box;
        for (const MapPoint& point : map.Ring(ring)) {
            const double longitude = point.Longitude / 1e6;
            const double latitude = point.Latitude / 1e6;
            box.Join({longitude, latitude, longitude, latitude});
        }
        // A joined box may reach others that neither of the two did.
        for (size_t index = 0; index < boxes.size();) {
            if (boxes[index].Meets(box, Neighbourhood)) {
                box.Join(boxes[index]);
                boxes.erase(boxes.begin() + static_cast<std::ptrdiff_t>(index));
                index = 0;
            } else {
                ++index;
            }
        }
        boxes.push_back(box);
    }
    return boxes;
}

/// Boxes across the date line as two, one on each side.
std::vector<Box> OnMap(const std::vector<Box>& boxes)
{
    std::vector<Box> result;
    for (const Box& box : boxes) {
        for (const double turn : {-360.0, 0.0, 360.0}) {
            const Box part{std::max(box.West + turn, -180.0), box.South, std::min(box.East + turn, 180.0), box.North};
            if (part.West < part.East) {
                result.push_back(part);
            }
        }
    }
    return result;
}

void WriteBoxes(const QString& maps, const QString& countries, const QString& path)
{
    const CTopoMap map(maps + u"/countries-10m.json"_s, u"countries"_s);
    QByteArray text = "# name,west,south,east,north\n"
                      "# Made by make_outlines from the Natural Earth countries: where a place of a folder may lie.\n";
    for (const QStringList& row : CsvTable::Read(countries, 4)) {
        for (const MapShape& shape : map.Shapes()) {
            if (row[2].isEmpty() || shape.Id != row[2]) {
                continue;
            }
            for (const Box& box : OnMap(Boxes(map, shape))) {
                char numbers[64];
                std::snprintf(numbers, sizeof numbers, ",%.2f,%.2f,%.2f,%.2f\n", box.West, box.South, box.East,
                              box.North);
                text += row[3].toUtf8() + numbers;
            }
        }
    }
    LineWriter::WriteBytes(path, text);
}
} // namespace

// make_outlines <maps> <output folder>
// make_outlines --boxes <maps> <countries table> <boxes table>
int main(int argc, char** argv)
{
    const auto argument = [argv](int index) { return QString::fromLocal8Bit(argv[index]); };
    try {
        if (argc == 5 && std::string_view(argv[1]) == "--boxes") {
            WriteBoxes(argument(2), argument(3), argument(4));
            return 0;
        }
        if (argc != 3) {
            std::fprintf(stderr, "usage: make_outlines <maps> <output folder>\n"
                                 "       make_outlines --boxes <maps> <countries table> <boxes table>\n");
            return 2;
        }
        for (const auto& [scale, suffix] : {std::pair(u"50m"_s, u""_s), std::pair(u"10m"_s, u"10"_s)}) {
            const CTopoMap land(argument(1) + u"/land-"_s + scale + u".json"_s, u"land"_s);
            LineWriter::WriteLines(argument(2) + u"/coast"_s + suffix + u".kol"_s, land.Outlines());
            const CTopoMap countries(argument(1) + u"/countries-"_s + scale + u".json"_s, u"countries"_s);
            LineWriter::WriteLines(argument(2) + u"/borders"_s + suffix + u".kol"_s, countries.SharedArcs());
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
