#include "host/text/Number.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QtEndian>

#include <array>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Shipped(const QString& name)
{
    QFile file(QStringLiteral(DATA_FOLDER) + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Grid
{
    QByteArray Cells;
    std::array<int, 6> Numbers{}; ///< west, south, east, north, columns, rows
};

std::vector<Grid> Grids()
{
    std::vector<Grid> grids;
    for (const QByteArray& line : Shipped(u"terrain/terrain.idx"_s).split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() == 7) {
            Grid grid;
            grid.Cells = Shipped(u"terrain/"_s + QString::fromUtf8(fields[0]));
            for (size_t index = 0; index < grid.Numbers.size(); ++index) {
                grid.Numbers[index] = Number::LeadingInt(fields[static_cast<qsizetype>(index) + 1]);
            }
            grids.push_back(grid);
        }
    }
    return grids;
}

/// The height of the first grid around the place.
int Height(double longitude, double latitude)
{
    for (const Grid& grid : Grids()) {
        const auto [west, south, east, north, columns, rows] = grid.Numbers;
        if (longitude >= west && longitude < east && latitude > south && latitude <= north) {
            const auto column = static_cast<qsizetype>((longitude - west) / (east - west) * columns);
            const auto row = static_cast<qsizetype>((north - latitude) / (north - south) * rows);
            return qFromLittleEndian<qint16>(grid.Cells.constData() + 2 * (row * columns + column));
        }
    }
    return -99999;
}
} // namespace

TEST(ShippedTerrain, HasTheSizesOfItsIndexAndRealHeights)
{
    ASSERT_EQ(Grids().size(), 2U);
    for (const Grid& grid : Grids()) {
        EXPECT_EQ(grid.Cells.size(), qsizetype{2} * grid.Numbers[4] * grid.Numbers[5]);
    }
    EXPECT_GT(Height(138.73, 35.36), 1800); // Mount Fuji, cut down by the size of a cell
    EXPECT_NEAR(Height(88.0, 33.0), 4850, 250);
    EXPECT_NEAR(Height(139.69, 35.69), 25, 25);
    EXPECT_NEAR(Height(-104.99, 39.74), 1610, 60);
    EXPECT_NEAR(Height(35.48, 31.5), -330, 110);
    EXPECT_EQ(Height(-150.0, 20.0), 0);
    EXPECT_EQ(Height(150.0, 33.0), 0);
}

TEST(ShippedOutlines, AreWholeAndHaveNoLinesAtTheEdgeOfTheMap)
{
    for (const QString& name : {u"coast"_s, u"borders"_s, u"coast10"_s, u"borders10"_s}) {
        const QByteArray bytes = Shipped(u"earth/"_s + name + u".kol"_s);
        ASSERT_TRUE(bytes.startsWith("KOL1")) << name.toStdString();
        qsizetype at = 4;
        const auto next = [&bytes, &at] {
            const auto value = qFromLittleEndian<qint32>(bytes.constData() + at);
            at += 4;
            return value;
        };
        for (int lines = next(); lines > 0; --lines) {
            ASSERT_LE(at + 4, bytes.size());
            const int points = next();
            ASSERT_GE(points, 2);
            ASSERT_LE(at + qsizetype{8} * points, bytes.size());
            for (int index = 0, lastLongitude = 0, lastLatitude = 0; index < points; ++index) {
                const int longitude = next();
                const int latitude = next();
                ASSERT_LE(std::abs(longitude), 180'000'000);
                ASSERT_LE(std::abs(latitude), 90'000'000);
                const bool isEdge = std::abs(longitude) == 180'000'000 && std::abs(lastLongitude) == 180'000'000;
                ASSERT_FALSE(index > 0 && (isEdge || (latitude == -90'000'000 && lastLatitude == latitude)));
                ASSERT_FALSE(index > 0 && std::abs(double(longitude) - lastLongitude) > 180e6);
                lastLongitude = longitude;
                lastLatitude = latitude;
            }
        }
        EXPECT_EQ(at, bytes.size());
    }
}

TEST(ShippedEclipse, CrossesHonshuAndIsAboutAHundredKilometresWide)
{
    const QList<QByteArray> parts = Shipped(u"eclipse/20350902.kep"_s).trimmed().split(';');
    ASSERT_EQ(parts.size(), 3);
    const auto latitudeAt = [](const QByteArray& part, const QByteArray& name, double longitude) {
        EXPECT_TRUE(part.startsWith(name + '='));
        double latitude = 0.0;
        double nearest = 360.0;
        for (const QByteArray& point : part.sliced(name.size() + 1).split(',')) {
            const QList<QByteArray> numbers = point.split(' ');
            const double distance = std::abs(Number::LeadingDouble(numbers[0]) - longitude);
            if (distance < nearest) {
                nearest = distance;
                latitude = Number::LeadingDouble(numbers[1]);
            }
        }
        return latitude;
    };
    EXPECT_NEAR(latitudeAt(parts[0], "central", 158.02), 29.1, 0.05);
    EXPECT_NEAR(latitudeAt(parts[0], "central", 138.2), 36.87, 0.1); // north of Nagano
    EXPECT_NEAR(latitudeAt(parts[1], "north", 138.2) - latitudeAt(parts[2], "south", 138.2), 1.1, 0.2);
}

TEST(ShippedPictures, AreMapsOfAWholeGlobe)
{
    for (const QString& name : {u"earth"_s, u"moon"_s}) {
        const QImage picture(QStringLiteral(DATA_FOLDER) + u'/' + name + u"/relief.jpg"_s);
        ASSERT_FALSE(picture.isNull());
        EXPECT_EQ(picture.width(), 2 * picture.height());
        EXPECT_GE(picture.width(), 2048);
    }
}

TEST(ShippedFeatures, AreNamedOnceAndLieOnTheGlobe)
{
    for (const QString& body : {u"moon"_s, u"mars"_s}) {
        const QStringList lines =
            QString::fromUtf8(Shipped(body + u"/features.csv"_s)).split(u'\n', Qt::SkipEmptyParts);
        EXPECT_GE(lines.size(), 40);
        QStringList names;
        for (const QString& line : lines) {
            const QStringList fields = line.split(u',');
            ASSERT_EQ(fields.size(), 4) << line.toStdString();
            EXPECT_LT(Number::LeadingDouble(fields[1]), 360.0);
            EXPECT_GE(Number::LeadingDouble(fields[1]), 0.0);
            EXPECT_LE(std::abs(Number::LeadingDouble(fields[2])), 90.0);
            EXPECT_GT(Number::LeadingDouble(fields[3]), 0.0);
            EXPECT_FALSE(names.contains(fields[0])) << fields[0].toStdString();
            names += fields[0];
        }
    }
}
