#include "tools/HillShade.h"

#include "host/text/Number.h"

#include <QFile>
#include <QImage>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
constexpr double MetersPerDegree = 111'195.0;
constexpr double Exaggeration = 9; // of the slopes: cells of kilometres have flattened them
constexpr double Flat = 128;
constexpr double Contrast = 90;

QByteArray ReadWhole(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return file.readAll();
}

QStringList IndexFields(const QString& index, const QString& grid)
{
    constexpr qsizetype fieldCount = 7;
    for (const QString& line : QString::fromUtf8(ReadWhole(index)).split(u'\n')) {
        const QStringList fields = line.simplified().split(u' ');
        if (fields.size() == fieldCount && fields[0] == grid) {
            return fields;
        }
    }
    throw std::runtime_error(grid.toStdString() + " is not in " + index.toStdString());
}
} // namespace

void HillShade::Write(const QString& terrainFolder, const QString& grid, const QString& picturePath)
{
    const QStringList fields = IndexFields(terrainFolder + u"/terrain.idx"_s, grid);
    const double south = Number::LeadingDouble(fields[2]);
    const double north = Number::LeadingDouble(fields[4]);
    const int columns = Number::LeadingInt(fields[5]);
    const int rows = Number::LeadingInt(fields[6]);
    const QByteArray cells = ReadWhole(terrainFolder + u'/' + grid);
    if (columns < 1 || rows < 1 || cells.size() != static_cast<qsizetype>(columns) * rows * 2) {
        throw std::runtime_error(grid.toStdString() + " has not the size of its index");
    }
    const auto height = [&](int column, int row) {
        const qsizetype cell =
            static_cast<qsizetype>(std::clamp(row, 0, rows - 1)) * columns + std::clamp(column, 0, columns - 1);
        return static_cast<double>(qFromLittleEndian<qint16>(cells.constData() + cell * 2));
    };
    const double cellHeight = (north - south) / rows * MetersPerDegree;
    QImage picture(columns, rows, QImage::Format_Grayscale8);
    for (int row = 0; row < rows; ++row) {
        const double latitude = north - (row + 0.5) * (north - south) / rows;
        const double cellWidth = cellHeight * std::cos(latitude * std::numbers::pi / 180.0);
        uchar* line = picture.scanLine(row);
        for (int column = 0; column < columns; ++column) {
            const double east = (height(column + 1, row) - height(column - 1, row)) / (2 * cellWidth);
            const double northward = (height(column, row - 1) - height(column, row + 1)) / (2 * cellHeight);
            // The slope towards the light, bent so that steep walls do not burn out.
            const double lit = std::tanh((east - northward) / std::numbers::sqrt2 * Exaggeration);
            line[column] = static_cast<uchar>(std::clamp(std::lround(Flat + Contrast * lit), 0L, 255L));
        }
    }
    picture.setText(u"box"_s, fields.mid(1, 4).join(u' '));
    if (!picture.save(picturePath)) {
        throw std::runtime_error("cannot write " + picturePath.toStdString());
    }
}
