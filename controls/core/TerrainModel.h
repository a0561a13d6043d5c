#pragma once

#include <QFile>
#include <QList>
#include <QString>

#include <optional>

/// Heights of the Earth's surface from tiles on disk. The index is a text: a first line "KTI1", then one line per tile
/// "<file> <west> <south> <east> <north> <columns> <rows>" (degrees). A tile lies beside the index: 16-bit
/// little-endian metres, row by row from the north-west, taken at the cell centres; -32768 is a gap. Cells are read
/// when asked for, so a model costs no memory whatever its size.
class CTerrainModel
{
public:
    /// Takes the tiles of an index file; the former ones are dropped. Tiles whose file is missing or has the wrong size
    /// are left out. False when no tile is left.
    bool Load(const QString& indexFile);

    /// Drops all tiles.
    void Clear();

    [[nodiscard]] bool IsEmpty() const { return m_tiles.isEmpty(); }

    /// The height in metres at a longitude (degrees east, any turn) and latitude, between cell centres bilinear, from
    /// the finest tile that has the place; nothing where no tile has it.
    [[nodiscard]] std::optional<double> Altitude(double longitude, double latitude);

private:
    struct Tile
    {
        QString File;
        double West = 0.0;
        double South = 0.0;
        double East = 0.0;
        double North = 0.0;
        int Columns = 0;
        int Rows = 0;

        [[nodiscard]] double CellHeight() const { return (North - South) / Rows; }
    };

    [[nodiscard]] static std::optional<Tile> ReadTile(QStringView line, const QString& folder);
    [[nodiscard]] std::optional<double> TileAltitude(const Tile& tile, double longitude, double latitude);
    [[nodiscard]] std::optional<int> Cell(const Tile& tile, int column, int row);

    QList<Tile> m_tiles; ///< finest first
    QFile m_open;        ///< the tile that was read last
};
