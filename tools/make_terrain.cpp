#include "tools/GeoNames.h"
#include "tools/HeightMap.h"

#include <QSaveFile>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
constexpr int CellsPerDegree = CHeightMap::Columns / 360;

/// A grid of the terrain index: whole degrees, cells of `Step` fine cells.
struct Grid
{
    const char* Name;
    int West;
    int South;
    int East;
    int North;
    int Step;

    [[nodiscard]] int Columns() const { return (East - West) * CellsPerDegree / Step; }
    [[nodiscard]] int Rows() const { return (North - South) * CellsPerDegree / Step; }
};

// The finer grid comes first: a reader that takes the first grid around a place takes the better one.
constexpr Grid Grids[] = {
    {"japan.dem", 122, 24, 149, 46, 1},
    {"earth.dem", -180, -90, 180, 90, 6},
};

void Write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
}

QByteArray Cells(const CHeightMap& map, const Grid& grid)
{
    QByteArray bytes;
    const int firstColumn = (grid.West + 180) * CellsPerDegree;
    const int firstRow = (90 - grid.North) * CellsPerDegree;
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int column = 0; column < grid.Columns(); ++column) {
            const double height =
                map.Mean(firstColumn + column * grid.Step, firstRow + row * grid.Step, grid.Step, grid.Step);
            char cell[2];
            qToLittleEndian(static_cast<qint16>(std::lround(height)), cell);
            bytes.append(cell, 2);
        }
    }
    return bytes;
}

/// How far the fine cells are from the heights of the places, which come from another model: a check of the recovered
/// heights.
void Compare(const CHeightMap& map, const QString& places)
{
    std::vector<double> differences;
    for (const GeoPlace& place : GeoNames::ReadPlaces(places)) {
        if (place.Altitude <= -1000 || place.Country != u"JP") {
            continue;
        }
        differences.push_back(map.HeightAt(place.Longitude, place.Latitude) - place.Altitude);
    }
    std::sort(differences.begin(), differences.end());
    const auto part = [&differences](double share) {
        return differences[static_cast<size_t>(share * static_cast<double>(differences.size() - 1))];
    };
    std::printf("Japanese places: %zu, height less GeoNames' at 5, 50, 95 %%: %.0f, %.0f, %.0f m\n", differences.size(),
                part(0.05), part(0.5), part(0.95));
}
} // namespace

// make_terrain <Earth maps> <land map> <places> <output folder>
int main(int argc, char** argv)
{
    if (argc != 5) {
        std::fprintf(stderr, "usage: make_terrain <Earth maps> <land map> <places> <output folder>\n");
        return 2;
    }
    const auto argument = [argv](int index) { return QString::fromLocal8Bit(argv[index]); };
    try {
        const CHeightMap map(argument(1), argument(2));
        for (int grey = 90; grey < 256; grey += 10) {
            std::printf("grey %d: %.0f m (%d)\n", grey, map.HeightOfGrey(grey), map.WitnessesOfGrey(grey));
        }
        Compare(map, argument(3));
        QByteArray index = "KTI1\n";
        for (const Grid& grid : Grids) {
            Write(argument(4) + u'/' + QLatin1String(grid.Name), Cells(map, grid));
            char line[96];
            std::snprintf(line, sizeof line, "%s %d %d %d %d %d %d\n", grid.Name, grid.West, grid.South, grid.East,
                          grid.North, grid.Columns(), grid.Rows());
            index += line;
        }
        Write(argument(4) + u"/terrain.idx"_s, index);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
