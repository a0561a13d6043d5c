#include "controls/globe_map/GlobeMap.h"
#include "controls/sphere/RowCrew.h"
#include "host/control/ControlNumbers.h"
#include "host/text/CodePage932.h"
#include "tests/TestFile.h"

#include <QDir>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
namespace Method = ControlNumber::GlobeMap;

namespace
{
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

QByteArray PlaceLine(const char16_t* name, const char* rest)
{
    return CodePage932::Encode(QStringView(name)).leftJustified(40, ' ') + "," + rest + "\r\n";
}

// A map of a fixed size over a data folder of its own, and the events that it raised.
class GlobeMapTest : public testing::Test
{
protected:
    GlobeMapTest() : m_map(nullptr, m_folder.path())
    {
        m_map.resize(401, 401);
        m_map.SetEventSink(
            [this](int event, const QVariantList& arguments) { m_events.emplace_back(event, arguments); });
    }

    void Flags(std::array<qint32, LandmarkKind::Count> flags)
    {
        m_map.Invoke(Method::SetFeatureFlags, {QVariant::fromValue(reinterpret_cast<quint64>(flags.data()))});
        flags.fill(-1); // the map must have its own copy
    }

    void ShowList(const QByteArray& bytes)
    {
        const QString path = m_folder.filePath(u"places.obs"_s);
        WriteFile(path, bytes);
        m_map.Invoke(Method::SetLandmarkFile, {path});
        m_map.Invoke(Method::SetLandmarkFileExists, {true});
    }

    // Longitudes and latitudes of lines, as a line file of the data folder.
    void WriteLines(const QString& name, const std::vector<std::vector<GeoPoint>>& lines)
    {
        QByteArray bytes = "KOL1";
        const auto append = [&bytes](std::size_t number) {
            char raw[4];
            qToLittleEndian(static_cast<quint32>(number), raw);
            bytes.append(raw, 4);
        };
        append(lines.size());
        for (const auto& line : lines) {
            append(line.size());
            for (const GeoPoint& point : line) {
                append(static_cast<std::size_t>(std::lround(point.Longitude * 1e6)));
                append(static_cast<std::size_t>(std::lround(point.Latitude * 1e6)));
            }
        }
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"earth"_s));
        WriteFile(m_folder.filePath(u"earth/"_s + name), bytes);
    }

    QImage Picture()
    {
        m_map.Invoke(Method::Redraw, {});
        return m_map.grab().toImage();
    }

    QTemporaryDir m_folder;
    CGlobeMap m_map;
    std::vector<std::pair<int, QVariantList>> m_events;
};
} // namespace

TEST_F(GlobeMapTest, CenterIsBroughtIntoRangeAndReadBack)
{
    const struct
    {
        double Longitude, Latitude, ExpectedLongitude, ExpectedLatitude;
    } cases[] = {{139.5, 35.5, 139.5, 35.5}, {359, -10, -1, -10}, {-190, 0, 170, 0},   {180, 95, 180, 90},
                 {540, -1e300, 180, -90},    {-180, 0, 180, 0},   {720.25, 1, 0.25, 1}};
    for (const auto& sample : cases) {
        m_map.Invoke(Method::SetCenter, {sample.Longitude, sample.Latitude});
        double longitude = 0;
        double latitude = 0;
        m_map.Invoke(Method::GetCenter, {QVariant::fromValue(&longitude), QVariant::fromValue(&latitude)});
        EXPECT_DOUBLE_EQ(longitude, sample.ExpectedLongitude);
        EXPECT_DOUBLE_EQ(latitude, sample.ExpectedLatitude);
    }
}

TEST_F(GlobeMapTest, WrongCallsChangeNothing)
{
    m_map.Invoke(Method::SetCenter, {10.0, 20.0});
    m_map.Invoke(Method::SetZoom, {0.5});
    const QImage before = Picture();
    double number = 7;
    double* const nowhere = nullptr;
    const std::pair<int, QVariantList> calls[] = {
        {Method::SetCenter, {}},
        {Method::SetCenter, {1.0}},
        {Method::SetCenter, {Nan, 1.0}},
        {Method::SetCenter, {1.0, Infinity}},
        {Method::SetCenter, {u"1"_s, u"2"_s}},
        {Method::GetCenter, {QVariant::fromValue(nowhere), QVariant::fromValue(&number)}},
        {Method::GetCenter, {1.0, 2.0}},
        {Method::GetCenter, {QVariant::fromValue(&number)}},
        {Method::SetObsPosition, {Nan, Nan}},
        {Method::SetObsPosition, {1, 2, 3}},
        {Method::Redraw, {1}},
        {Method::SetZoom, {Nan}},
        {Method::SetZoom, {u"0.1"_s}},
        {Method::Switch12, {}},
        {Method::Switch18, {u"false"_s}},
        {Method::Switch29, {0.0}},
        {Method::SetLandmarkFileExists, {u"TRUE"_s}},
        {Method::SetLandmarkFile, {5}},
        {Method::SetFeatureFlags, {QVariant::fromValue<quint64>(0)}},
        {Method::SetFeatureFlags, {}},
        {Method::SetFeatureFlags, {1.5}},
        {Method::ReloadUserPlaces, {}},
        {Method::SetEclipsePath, {}},
        {Method::SetBesselElementApply, {QVariant()}},
        {Method::SetEclipsePathColor, {u"red"_s}},
        {0, {}},
        {-607, {1}},
        {99, {1.0}},
    };
    for (const auto& [method, arguments] : calls)
        EXPECT_FALSE(m_map.Invoke(method, arguments).isValid()) << method;
    EXPECT_EQ(number, 7);
    EXPECT_EQ(Picture(), before);
}

TEST_F(GlobeMapTest, ZoomGoesByThePower)
{
    const std::pair<double, double> cases[] = {{0, 180},  {1, 2},     {0.5, 30.00001}, {0.505, 29.259},
                                               {-3, 180}, {1e300, 2}, {1, 2}};
    for (const auto& [zoom, angle] : cases) {
        m_map.Invoke(Method::SetZoom, {zoom});
        EXPECT_NEAR(m_map.ViewAngle(), angle, 0.01) << zoom;
    }
    m_map.Invoke(Method::SetZoom, {Nan});
    EXPECT_NEAR(m_map.ViewAngle(), 2, 1e-9);
}

TEST_F(GlobeMapTest, ClickPicksThePointUnderThePointer)
{
    const struct
    {
        double Longitude = 0.0, Latitude = 0.0, Zoom = 0.0;
        QPoint Pixel;
    } cases[] = {{139, 36, 0, {200, 200}},
                 {139, 36, 0, {260, 90}},
                 {-179.9, -60, 0.6, {20, 390}},
                 {0, 90, 1, {150, 260}},
                 {15, -90, 0.3, {301, 7}}};
    for (const auto& sample : cases) {
        m_map.Invoke(Method::SetCenter, {sample.Longitude, sample.Latitude});
        m_map.Invoke(Method::SetZoom, {sample.Zoom});
        m_events.clear();
        QTest::mouseClick(&m_map, Qt::LeftButton, {}, sample.Pixel);
        ASSERT_EQ(m_events.size(), 1U);
        EXPECT_EQ(m_events[0].first, Method::EventObsPosition);
        const GeoPoint picked{m_events[0].second[0].toDouble(), m_events[0].second[1].toDouble()};
        const auto back = CSphereView::ForAngle(m_map.Center(), m_map.ViewAngle(), m_map.size())
                              .ToScreen(picked.Longitude, picked.Latitude);
        ASSERT_TRUE(back);
        EXPECT_NEAR(back->x(), sample.Pixel.x(), 0.01);
        EXPECT_NEAR(back->y(), sample.Pixel.y(), 0.01);
        EXPECT_LE(std::abs(picked.Longitude), 180);
    }
}

TEST_F(GlobeMapTest, ClickBesideTheDiscAndDragPickNothing)
{
    QTest::mouseClick(&m_map, Qt::LeftButton, {}, QPoint(3, 3));
    m_map.Invoke(Method::SetCenter, {100.0, 0.0});
    QTest::mousePress(&m_map, Qt::LeftButton, {}, QPoint(200, 200));
    for (const int x : {210, 230, 260})
        QTest::mouseEvent(QTest::MouseMove, &m_map, Qt::LeftButton, {}, QPoint(x, 200));
    QMouseEvent move(QEvent::MouseMove, QPointF(280, 200), QPointF(280, 200), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_map, &move);
    QTest::mouseRelease(&m_map, Qt::LeftButton, {}, QPoint(280, 200));
    EXPECT_TRUE(m_events.empty());
    // The ground went to the right with the pointer.
    EXPECT_LT(m_map.Center().Longitude, 90);
    EXPECT_NEAR(m_map.Center().Latitude, 0, 1);
}

TEST_F(GlobeMapTest, KeysTurnZoomAndPick)
{
    m_map.Invoke(Method::SetCenter, {179.0, 0.0});
    m_map.Invoke(Method::SetObsPosition, {-70.5, -30.25});
    QTest::keyClick(&m_map, Qt::Key_Right);
    QTest::keyClick(&m_map, Qt::Key_Up);
    EXPECT_LT(m_map.Center().Longitude, -165);
    EXPECT_GT(m_map.Center().Latitude, 5);
    for (int press = 0; press < 40; ++press)
        QTest::keyClick(&m_map, Qt::Key_Down);
    EXPECT_EQ(m_map.Center().Latitude, -90);
    EXPECT_TRUE(m_events.empty());

    QTest::keyClick(&m_map, Qt::Key_Home);
    QTest::keyClick(&m_map, Qt::Key_Return);
    ASSERT_EQ(m_events.size(), 1U);
    EXPECT_EQ(m_events[0].first, Method::EventObsPosition);
    EXPECT_EQ(m_events[0].second, (QVariantList{-70.5, -30.25}));

    m_events.clear();
    QTest::keyClick(&m_map, Qt::Key_Plus);
    ASSERT_EQ(m_events.size(), 1U);
    EXPECT_EQ(m_events[0].first, Method::EventMagnification);
    EXPECT_DOUBLE_EQ(m_events[0].second[0].toDouble(), 180 / m_map.ViewAngle());
    EXPECT_LT(m_map.ViewAngle(), 180);
    for (int press = 0; press < 60; ++press)
        QTest::keyClick(&m_map, Qt::Key_PageUp);
    EXPECT_DOUBLE_EQ(m_events.back().second[0].toDouble(), 90);
    const std::size_t count = m_events.size();
    QTest::keyClick(&m_map, Qt::Key_PageUp); // at the limit nothing changes any more
    EXPECT_EQ(m_events.size(), count);
}

TEST_F(GlobeMapTest, WheelIsLeftToTheWindow)
{
    QWheelEvent wheel({200, 200}, {200, 200}, {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&m_map, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(m_map.ViewAngle(), 180);
}

TEST_F(GlobeMapTest, ListLinesAreReadWithTolerance)
{
    const QByteArray bytes =
        "# header, with, many, commas, and, so, on, 3\r\n@Folder, 1E, 2N, 3, 4, 5, 6, 7\n" +
        PlaceLine(u"港見台", "139.7500000E,35.6250000N,      0,+09.50, 1, 1, 3") +
        PlaceLine(u"South", "118.0575000w,33.2500000s,   1742,-08.00, 1, 1,12") +
        PlaceLine(u"short", "1.0E,2.0N,0,+00.00, 0, 0") + PlaceLine(u"far", "400.0E,2.0N,0,+00.00, 0, 0, 0") +
        PlaceLine(u"", "1.0E,2.0N,0,+00.00, 0, 0, 0") + PlaceLine(u"below", "1.0E,91.0N,0,+00.00, 0, 0, 0") +
        "#\r\n\r\n,,,,,,,,,\n" + QByteArray(39, 'x') + "\x8A" + ",1E,2N,0,0,0,0,-1";
    const std::vector<Landmark> places = LandmarkList::Parse(bytes);
    ASSERT_EQ(places.size(), 3U);
    const auto find = [&](const QString& name) {
        for (const Landmark& place : places) {
            if (place.Name == name)
                return place;
        }
        ADD_FAILURE() << name.toStdString();
        return Landmark{};
    };
    EXPECT_EQ(find(u"港見台"_s).Kind, 3);
    EXPECT_DOUBLE_EQ(find(u"港見台"_s).Position.Longitude, 139.75);
    EXPECT_EQ(find(u"South"_s).Kind, LandmarkKind::Other);
    EXPECT_DOUBLE_EQ(find(u"South"_s).Position.Longitude, -118.0575);
    EXPECT_DOUBLE_EQ(find(u"South"_s).Position.Latitude, -33.25);
    EXPECT_EQ(find(QString(39, u'x')).Kind, LandmarkKind::Other);
    EXPECT_LE(LandmarkList::Parse(bytes.repeated(20000)).size(), 20000U);
}

TEST_F(GlobeMapTest, LayersAndReloadChangeThePicture)
{
    m_map.Invoke(Method::SetCenter, {139.75, 35.6});
    const QImage empty = Picture();
    const QByteArray mountain = PlaceLine(u"港見山", "139.7500000E,35.6250000N,    900,+09.00, 1, 0, 4");
    ShowList(mountain);
    Flags({0, 0, 0, 0, 1, 0, 0, 0});
    const QImage shown = Picture();
    EXPECT_NE(shown, empty);
    Flags({1, 1, 1, 1, 0, 1, 1, 1});
    EXPECT_EQ(Picture(), empty);
    Flags({0, 0, 0, 0, 1, 0, 0, 0});

    const QString path = m_folder.filePath(u"places.obs"_s);
    WriteFile(path, mountain + PlaceLine(u"遠い山", "150.0000000E,20.0000000N,    900,+09.00, 1, 0, 4"));
    EXPECT_EQ(Picture(), shown);
    m_map.Invoke(Method::ReloadUserPlaces, {true});
    EXPECT_NE(Picture(), shown);
    m_map.Invoke(Method::SetLandmarkFileExists, {false});
    EXPECT_EQ(Picture(), empty);
}

TEST_F(GlobeMapTest, SwitchesAndMarkerShow)
{
    WriteLines(u"coast.kol"_s, {{{-20, 0}, {20, 10}}});
    m_map.Invoke(Method::SetCenter, {0.0, 0.0});
    ShowList(PlaceLine(u"都", "10.0E,30.0N,0,+00.00, 0, 0, 2"));
    QImage last = Picture();
    for (const int method : {Method::Switch29, Method::Switch18, Method::Switch12}) {
        m_map.Invoke(method, {false});
        const QImage next = Picture();
        EXPECT_NE(next, last) << method;
        last = next;
    }
    m_map.Invoke(Method::SetObsPosition, {180.0, 0.0});
    EXPECT_EQ(Picture(), last); // on the far side
    m_map.Invoke(Method::SetObsPosition, {359.0, 5.0});
    EXPECT_NE(Picture(), last);
}

TEST_F(GlobeMapTest, LandIsGreenFromNear)
{
    const auto ring = [](GeoPoint middle, double size) {
        return std::vector<GeoPoint>{{middle.Longitude - size, middle.Latitude - size},
                                     {middle.Longitude + size, middle.Latitude - size},
                                     {middle.Longitude + size, middle.Latitude + size},
                                     {middle.Longitude - size, middle.Latitude + size},
                                     {middle.Longitude - size, middle.Latitude - size}};
    };
    // A continent with a lake, an island across the date line, an island at the far side of the continent.
    WriteLines(u"coast10.kol"_s, {ring({40, 10}, 25),
                                  ring({40, 10}, 2),
                                  {{179, -1}, {-179, -1}, {-179, 1}, {179, 1}, {179, -1}},
                                  ring({-140, -10}, 1)});
    m_map.Invoke(Method::SetZoom, {0.9});
    m_map.Invoke(Method::Switch29, {false});
    const struct
    {
        GeoPoint Place;
        bool IsLand = false;
    } cases[] = {{{40, 10}, false},    {{43, 10.5}, true}, {{52, 20}, true},    {{28, -3}, true},
                 {{66, 10}, false},    {{180, 0.3}, true}, {{177.5, 0}, false}, {{-140, -10}, true},
                 {{-138, -10}, false}, {{0, 89}, false},   {{100, -90}, false}, {{64.5, 34.5}, true}};
    for (const auto& sample : cases) {
        m_map.Invoke(Method::SetCenter, {sample.Place.Longitude, sample.Place.Latitude});
        const QColor color = Picture().pixelColor(204, 207);
        EXPECT_EQ(color.green() > color.blue(), sample.IsLand) << sample.Place.Longitude;
    }
}

TEST(RowCrewTest, EveryRowIsDoneOnce)
{
    for (const int count : {0, 1, 23, 24, 25, 1000}) {
        std::vector<std::atomic<int>> done(static_cast<std::size_t>(count));
        RowCrew::ForSlices(count, [&done](int first, int end) {
            for (int row = first; row < end; ++row)
                ++done.at(static_cast<std::size_t>(row));
        });
        EXPECT_TRUE(std::all_of(done.begin(), done.end(), [](int times) { return times == 1; })) << count;
    }
}

TEST(LineSetTest, DamagedFilesAreRefused)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"lines.kol"_s);
    const QByteArray good = QByteArray::fromHex("4b4f4c31 01000000 02000000 00000000 00000000 40420f00 40420f00");
    const std::pair<QByteArray, bool> cases[] = {
        {good, true},
        {good + "rest", true},
        {good.chopped(1), false},
        {QByteArray(), false},
        {QByteArray("KOL1"), false},
        {QByteArray("KOL2") + good.sliced(4), false},
        {QByteArray::fromHex("4b4f4c31 ffffffff ffffffff"), false},
        {QByteArray::fromHex("4b4f4c31 01000000 ffffff1f 00000000"), false},
    };
    for (const auto& [bytes, isGood] : cases) {
        WriteFile(path, bytes);
        CLineSet lines;
        EXPECT_EQ(lines.Load(path), isGood) << bytes.toHex().constData();
        EXPECT_EQ(lines.IsEmpty(), !isGood);
    }
}

TEST_F(GlobeMapTest, EclipsePathIsDrawnAndGarbageIsNot)
{
    m_map.Invoke(Method::SetCenter, {140.0, 30.0});
    const QImage empty = Picture();
    for (const QString& text :
         {u"garbage"_s, u"central="_s, u"central=nan nan,inf 1;north=1;south"_s, u"middle=130 30,140 31"_s,
          u"central=400 10,500 20"_s, u"central=130 91,131 92"_s, QString(10 << 20, u';'),
          u"central="_s + QString(10 << 20, u'9'), QString(10 << 20, u'='), QString(10 << 20, u',')}) {
        m_map.Invoke(Method::SetEclipsePath, {text});
        EXPECT_EQ(Picture(), empty) << text.left(40).toStdString();
    }
    const QString path = u"CENTRAL=130 30,x y,140 31,150 30;north=130 32,140 33,150 32;south=130 28,150 28"_s;
    m_map.Invoke(Method::SetEclipsePath, {path});
    m_map.Invoke(Method::SetEclipsePathColor, {QVariant::fromValue<quint32>(0x000000FF)});
    const QImage line = Picture();
    EXPECT_NE(line, empty);
    const QPointF onLine = *CSphereView::ForAngle(m_map.Center(), m_map.ViewAngle(), m_map.size()).ToScreen(140, 31);
    m_map.Invoke(Method::SetBesselElementApply, {true});
    const QImage band = Picture();
    EXPECT_NE(band, line);
    EXPECT_GT(band.pixelColor(onLine.toPoint()).red(), 150);
    EXPECT_LT(band.pixelColor(onLine.toPoint()).blue(), 120);
    m_map.Invoke(Method::SetEclipsePath, {u"central="_s + u"1 2,80 -20,"_s.repeated(1000000)});
    EXPECT_FALSE(Picture().isNull());
    m_map.Invoke(Method::SetEclipsePath, {QString()});
    EXPECT_EQ(Picture(), empty);
}
