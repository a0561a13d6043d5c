#include "controls/core/TerrainModel.h"

#include "controls/core/Statement.h"

#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace
{
constexpr qint64 MaximumIndexSize = 1 << 20;
constexpr qsizetype MaximumTiles = 4096;
constexpr double MaximumSide = 1'000'000.0; ///< columns or rows of a tile
constexpr int Gap = -32768;
constexpr int BytesPerCell = 2;

struct Weighted
{
    int Column;
    int Row;
    double Weight;
};
} // namespace

void CTerrainModel::Clear()
{
    m_tiles.clear();
    m_open.close();
    m_open.setFileName({});
}

bool CTerrainModel::Load(const QString& indexFile)
{
    Clear();
    const QFileInfo info(indexFile);
    // A device or a pipe under that name would block or never end.
    if (!info.isFile() || info.size() > MaximumIndexSize)
        return false;
    QFile file(indexFile);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QString text = QString::fromUtf8(file.read(MaximumIndexSize));
    bool isFirst = true;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        if (isFirst && line.trimmed() != u"KTI1")
            return false;
        if (const auto tile = isFirst ? std::nullopt : ReadTile(line.trimmed(), info.absolutePath()))
            m_tiles.append(*tile);
        isFirst = false;
        if (m_tiles.size() == MaximumTiles)
            break;
    }
    std::stable_sort(m_tiles.begin(), m_tiles.end(),
                     [](const Tile& a, const Tile& b) { return a.CellHeight() < b.CellHeight(); });
    return !m_tiles.isEmpty();
}

std::optional<CTerrainModel::Tile> CTerrainModel::ReadTile(QStringView line, const QString& folder)
{
    const QString simplified = line.toString().simplified();
    const QList<QStringView> fields = QStringView(simplified).split(u' ');
    constexpr qsizetype FieldCount = 7;
    if (fields.size() != FieldCount || fields[0].contains(u'/') || fields[0].contains(u'\\'))
        return std::nullopt;
    double numbers[FieldCount] = {};
    for (qsizetype i = 1; i < FieldCount; ++i) {
        const auto number = StatementReader::ReadNumber(fields[i]);
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    const double columns = numbers[5];
    const double rows = numbers[6];
    if (!(columns >= 1.0 && columns <= MaximumSide && rows >= 1.0 && rows <= MaximumSide))
        return std::nullopt;
    const Tile tile{folder + u'/' + fields[0].toString(),
                    numbers[1],
                    numbers[2],
                    numbers[3],
                    numbers[4],
                    static_cast<int>(columns),
                    static_cast<int>(rows)};
    const bool isPlace = tile.West >= -360.0 && tile.East > tile.West && tile.East - tile.West <= 360.0 &&
                         tile.East <= 720.0 && tile.South >= -90.0 && tile.North > tile.South && tile.North <= 90.0;
    const QFileInfo file(tile.File);
    if (!isPlace || !file.isFile() || file.size() != static_cast<qint64>(tile.Columns) * tile.Rows * BytesPerCell)
        return std::nullopt;
    return tile;
}

std::optional<double> CTerrainModel::Altitude(double longitude, double latitude)
{
    if (!std::isfinite(longitude) || !std::isfinite(latitude))
        return std::nullopt;
    for (const Tile& tile : m_tiles) {
        const double turns = std::floor((longitude - tile.West) / 360.0);
        const double inside = longitude - turns * 360.0;
        if (inside > tile.East || latitude < tile.South || latitude > tile.North)
            continue;
        if (const auto altitude = TileAltitude(tile, inside, latitude))
            return altitude;
    }
    return std::nullopt;
}

std::optional<double> CTerrainModel::TileAltitude(const Tile& tile, double longitude, double latitude)
{
    const double x = (longitude - tile.West) / (tile.East - tile.West) * tile.Columns - 0.5;
    const double y = (tile.North - latitude) / (tile.North - tile.South) * tile.Rows - 0.5;
    const bool goesRound = tile.East - tile.West == 360.0;
    const auto column = [&](int c) {
        return goesRound ? (c + tile.Columns) % tile.Columns : std::clamp(c, 0, tile.Columns - 1);
    };
    const auto row = [&](int r) { return std::clamp(r, 0, tile.Rows - 1); };
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const double right = x - left;
    const double down = y - top;
    const Weighted corners[] = {{left, top, (1.0 - right) * (1.0 - down)},
                                {left + 1, top, right * (1.0 - down)},
                                {left, top + 1, (1.0 - right) * down},
                                {left + 1, top + 1, right * down}};
    double sum = 0.0;
    double weights = 0.0;
    for (const Weighted& corner : corners) {
        const auto cell = Cell(tile, column(corner.Column), row(corner.Row));
        if (!cell)
            continue;
        sum += *cell * corner.Weight;
        weights += corner.Weight;
    }
    if (weights <= 0.0)
        return std::nullopt;
    return sum / weights;
}

std::optional<int> CTerrainModel::Cell(const Tile& tile, int column, int row)
{
    if (m_open.fileName() != tile.File || !m_open.isOpen()) {
        m_open.close();
        m_open.setFileName(tile.File);
        if (!m_open.open(QIODevice::ReadOnly))
            return std::nullopt;
    }
    char bytes[BytesPerCell] = {};
    if (!m_open.seek((static_cast<qint64>(row) * tile.Columns + column) * BytesPerCell) ||
        m_open.read(bytes, BytesPerCell) != BytesPerCell)
        return std::nullopt;
    const int height = qFromLittleEndian<qint16>(bytes);
    if (height == Gap)
        return std::nullopt;
    return height;
}
