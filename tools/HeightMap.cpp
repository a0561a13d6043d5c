#include "tools/HeightMap.h"

#include "tools/TopoMap.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
constexpr int TileSize = 675;
constexpr int FineLevel = 3; // 8 rows of 16 tiles
constexpr int Ratio = 8;     // fine cells along a coarse one
constexpr int CoarseColumns = CHeightMap::Columns / Ratio;
/// Gaps of the survey are cells of -32768, and cells at a gap's edge were averaged with it: no such heights exist.
constexpr int LowestHeight = -450;
constexpr int HighestHeight = 9000;

bool IsHeight(int metres)
{
    return metres >= LowestHeight && metres <= HighestHeight;
}

QImage ReadTile(const QString& folder, int level, int row, int column, const QString& suffix)
{
    const QString path = u"%1/%2/%3/%3_%4.%5"_s.arg(folder)
                             .arg(level)
                             .arg(row, 6, 10, QChar(u'0'))
                             .arg(column, 6, 10, QChar(u'0'))
                             .arg(suffix);
    QImage tile(path);
    if (tile.width() != TileSize || tile.height() != TileSize) {
        throw std::runtime_error("no tile " + path.toStdString());
    }
    return tile;
}
} // namespace

CHeightMap::CHeightMap(const QString& earth, const QString& landMap)
    : m_grey(static_cast<size_t>(Columns) * Rows), m_coarse(static_cast<size_t>(CoarseColumns) * (Rows / Ratio))
{
    for (int tileRow = 0; tileRow < 1 << FineLevel; ++tileRow) {
        for (int tileColumn = 0; tileColumn < 2 << FineLevel; ++tileColumn) {
            const QImage tile = ReadTile(earth + u"/srtm"_s, FineLevel, tileRow, tileColumn, u"jpg"_s)
                                    .convertToFormat(QImage::Format_Grayscale8);
            for (int y = 0; y < TileSize; ++y) {
                const auto start =
                    static_cast<size_t>(tileRow * TileSize + y) * Columns + static_cast<size_t>(tileColumn * TileSize);
                std::copy_n(tile.constScanLine(y), TileSize, m_grey.begin() + start);
            }
        }
    }
    for (int tileColumn = 0; tileColumn < 2; ++tileColumn) {
        const QImage tile = ReadTile(earth + u"/srtm2"_s, 0, 0, tileColumn, u"png"_s);
        for (int y = 0; y < TileSize; ++y) {
            for (int x = 0; x < TileSize; ++x) {
                // The colour is the height, a 16-bit two's complement in green and blue.
                const size_t cell =
                    static_cast<size_t>(y) * CoarseColumns + static_cast<size_t>(tileColumn * TileSize + x);
                m_coarse[cell] = static_cast<std::int16_t>(tile.pixel(x, y) & 0xffffU);
            }
        }
    }
    DrawLand(landMap);
    Calibrate();
}

void CHeightMap::DrawLand(const QString& landMap)
{
    constexpr double CellsPerUnit = 30.0 / 1e6;
    const CTopoMap map(landMap, u"land"_s);
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    for (const MapShape& shape : map.Shapes()) {
        for (const std::vector<int>& ring : shape.Rings) {
            const MapLine line = map.Ring(ring);
            QPolygonF polygon;
            for (const MapPoint& point : line) {
                polygon << QPointF((point.Longitude + 180e6) * CellsPerUnit, (90e6 - point.Latitude) * CellsPerUnit);
            }
            if (std::abs(polygon.last().x() - polygon.first().x()) > 1.0) {
                // Antarctica goes round the pole.
                polygon << QPointF(polygon.last().x(), Rows) << QPointF(polygon.first().x(), Rows);
            }
            // What leaves the map at the date line comes in at its other side.
            for (const int offset : {-Columns, 0, Columns}) {
                path.addPolygon(polygon.translated(offset, 0));
                path.closeSubpath();
            }
        }
    }
    m_land = QImage(Columns, Rows, QImage::Format_Grayscale8);
    m_land.fill(0);
    QPainter painter(&m_land);
    painter.fillPath(path, Qt::white);
}

void CHeightMap::Calibrate()
{
    // Where the picture is of one grey all over a coarse cell, that cell gives the height of the grey.
    constexpr int LeastWitnesses = 5;
    constexpr int Evenness = 3;
    std::array<std::vector<int>, 256> witnesses;
    for (int row = 0; row < Rows; row += Ratio) {
        for (int column = 0; column < Columns; column += Ratio) {
            const int height = Coarse(column, row);
            if (!IsHeight(height) || height == 0) {
                continue;
            }
            int least = 255;
            int most = 0;
            int sum = 0;
            bool isLand = true;
            for (int y = row; y < row + Ratio; ++y) {
                for (int x = column; x < column + Ratio; ++x) {
                    const int grey = Grey(x, y);
                    least = std::min(least, grey);
                    most = std::max(most, grey);
                    sum += grey;
                    isLand = isLand && IsLand(x, y);
                }
            }
            if (isLand && most - least <= Evenness) {
                witnesses[static_cast<size_t>((sum + Ratio * Ratio / 2) / (Ratio * Ratio))].push_back(height);
            }
        }
    }
    int last = -1;
    for (int grey = 0; grey < 256; ++grey) {
        auto& heights = witnesses[static_cast<size_t>(grey)];
        m_witnesses[static_cast<size_t>(grey)] = static_cast<int>(heights.size());
        if (static_cast<int>(heights.size()) < LeastWitnesses) {
            continue;
        }
        std::nth_element(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2),
                         heights.end());
        const double height = heights[heights.size() / 2];
        const double lastHeight = last < 0 ? 0.0 : m_heights[static_cast<size_t>(last)];
        m_heights[static_cast<size_t>(grey)] = std::max(height, lastHeight);
        for (int between = last + 1; last >= 0 && between < grey; ++between) {
            m_heights[static_cast<size_t>(between)] =
                lastHeight + (m_heights[static_cast<size_t>(grey)] - lastHeight) * (between - last) / (grey - last);
        }
        last = grey;
    }
    // The highest mountains are never even: go on as steeply as the last stretch rises.
    constexpr int Stretch = 12;
    if (last < Stretch) {
        throw std::runtime_error("the tiles do not show heights");
    }
    const double slope =
        (m_heights[static_cast<size_t>(last)] - m_heights[static_cast<size_t>(last - Stretch)]) / Stretch;
    for (int grey = last + 1; grey < 256; ++grey) {
        m_heights[static_cast<size_t>(grey)] = m_heights[static_cast<size_t>(last)] + slope * (grey - last);
    }
}

int CHeightMap::Grey(int column, int row) const
{
    return m_grey[static_cast<size_t>(row) * Columns + static_cast<size_t>(column)];
}

bool CHeightMap::IsLand(int column, int row) const
{
    return m_land.constScanLine(row)[column] != 0;
}

int CHeightMap::Coarse(int column, int row) const
{
    return m_coarse[static_cast<size_t>(row / Ratio) * CoarseColumns + static_cast<size_t>(column / Ratio)];
}

double CHeightMap::Height(int column, int row) const
{
    const int coarse = Coarse(column, row);
    const bool isBelowSea = coarse < 0 && IsHeight(coarse);
    if (isBelowSea) {
        return coarse;
    }
    return IsLand(column, row) ? HeightOfGrey(Grey(column, row)) : 0.0;
}

double CHeightMap::HeightAt(double longitude, double latitude) const
{
    const double x = (longitude + 180.0) * Columns / 360.0 - 0.5;
    const double y = std::clamp((90.0 - latitude) * Rows / 180.0 - 0.5, 0.0, Rows - 1.001);
    const double shareX = x - std::floor(x);
    const double shareY = y - std::floor(y);
    const int left = (static_cast<int>(std::floor(x)) + Columns) % Columns;
    const int right = (left + 1) % Columns;
    const int top = static_cast<int>(y);
    return (Height(left, top) * (1.0 - shareX) + Height(right, top) * shareX) * (1.0 - shareY) +
           (Height(left, top + 1) * (1.0 - shareX) + Height(right, top + 1) * shareX) * shareY;
}

double CHeightMap::Mean(int column, int row, int columns, int rows) const
{
    double sum = 0.0;
    for (int y = row; y < row + rows; ++y) {
        for (int x = column; x < column + columns; ++x) {
            sum += Height(x, y);
        }
    }
    return sum / (columns * rows);
}
