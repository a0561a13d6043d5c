#include "controls/core/EclipsePath.h"
#include "controls/globe_map/GlobeMap.h"
#include "tests/core/core_test.h"
#include "tests/dialog/DialogDriver.h"

#include <QDataStream>

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
namespace Method = ControlNumber::GlobeMap;

namespace
{
QByteArray PlaceLine(const char16_t* name, const char* rest)
{
    return CodePage932::Encode(QStringView(name)).leftJustified(40, ' ') + "," + rest + "\r\n";
}

// A map of a fixed size over a data folder of its own, and the events that it raised.
class GlobeMapTest : public CDialogDriver
{
protected:
    GlobeMapTest()
    {
        m_map.resize(401, 401);
        m_map.SetEventSink(
            [this](int event, const QVariantList& arguments) { m_events.emplace_back(event, arguments); });
    }

    void Show(double longitude, double latitude, double zoom)
    {
        m_map.Invoke(Method::SetCenter, {longitude, latitude});
        m_map.Invoke(Method::SetZoom, {zoom});
    }

    void Flags(std::array<qint32, LandmarkKind::Count> flags)
    {
        m_map.Invoke(Method::SetFeatureFlags, {QVariant::fromValue(reinterpret_cast<quint64>(flags.data()))});
        flags.fill(-1); // the map must have its own copy
    }

    void ShowList(const QByteArray& bytes)
    {
        WriteFile(m_list, bytes);
        m_map.Invoke(Method::SetLandmarkFile, {m_list});
        m_map.Invoke(Method::SetLandmarkFileExists, {true});
    }

    // Longitudes and latitudes of lines, as a line file of the data folder.
    void WriteLines(const QString& name, const std::vector<std::vector<GeoPoint>>& lines)
    {
        QByteArray bytes = "KOL1";
        QDataStream stream(&bytes, QIODevice::Append);
        stream.setByteOrder(QDataStream::LittleEndian);
        stream << static_cast<quint32>(lines.size());
        for (const auto& line : lines) {
            stream << static_cast<quint32>(line.size());
            for (const GeoPoint& point : line)
                stream << qRound(point.Longitude * 1e6) << qRound(point.Latitude * 1e6);
        }
        WriteFile(Folder.filePath(u"earth/"_s + name), bytes);
    }

    QImage Picture()
    {
        m_map.Invoke(Method::Redraw, {});
        return m_map.grab().toImage();
    }

    // The layers and names of the picture, in the order of their importance; a mark without its name in brackets.
    std::string DrawnText()
    {
        Picture();
        QStringList items;
        for (const DrawnItem& item : m_map.Drawn()) {
            if (item.Layer != QStringView(DrawnLayer::Graticule))
                items += item.Layer + u':' + (item.Text.isNull() ? u'(' + item.Name + u')' : item.Name);
        }
        return items.join(u' ').toStdString();
    }

    [[nodiscard]] QPointF OnScreen(double longitude, double latitude) const
    {
        return CSphereView::ForAngle(m_map.Center(), m_map.ViewAngle(), m_map.size())
            .ToScreen(longitude, latitude)
            .value_or(QPointF());
    }

    const QString m_list = Folder.filePath(u"places.obs"_s);
    CGlobeMap m_map{nullptr, Folder.path()};
    ControlEvents m_events;
};
} // namespace

TEST_F(GlobeMapTest, CenterIsBroughtIntoRangeAndReadBack)
{
    const std::array<double, 4> cases[] = {{139.5, 35.5, 139.5, 35.5}, {359, -10, -1, -10},     {-190, 0, 170, 0},
                                           {180, 95, 180, 90},         {540, -1e300, 180, -90}, {-180, 0, 180, 0},
                                           {720.25, 1, 0.25, 1}};
    for (const auto& [fromLongitude, fromLatitude, toLongitude, toLatitude] : cases) {
        m_map.Invoke(Method::SetCenter, {fromLongitude, fromLatitude});
        double longitude = 0;
        double latitude = 0;
        m_map.Invoke(Method::GetCenter, {QVariant::fromValue(&longitude), QVariant::fromValue(&latitude)});
        EXPECT_DOUBLE_EQ(longitude, toLongitude);
        EXPECT_DOUBLE_EQ(latitude, toLatitude);
    }
}

TEST_F(GlobeMapTest, WrongCallsChangeNothing)
{
    Show(10, 20, 0.5);
    const QImage before = Picture();
    double number = 7;
    const QVariant place = QVariant::fromValue(&number);
    const QVariant nowhere = QVariant::fromValue<double*>(nullptr);
    const std::pair<int, std::vector<QVariantList>> calls[] = {
        {Method::SetCenter, {{}, {1.0}, {Nan, 1.0}, {1.0, Infinity}, {u"1"_s, u"2"_s}}},
        {Method::GetCenter, {{nowhere, place}, {1.0, 2.0}, {place}}},
        {Method::SetObsPosition, {{Nan, Nan}, {1, 2, 3}}},
        {Method::SetZoom, {{Nan}, {u"0.1"_s}}},
        {Method::Switch18, {{u"false"_s}}},
        {Method::SetLandmarkFile, {{5}}},
        {Method::SetFeatureFlags, {{QVariant::fromValue<quint64>(0)}, {}, {1.5}}},
        {Method::SetEclipsePathColor, {{u"red"_s}}},
        {99, {{1.0}}}};
    for (const auto& [method, argumentLists] : calls) {
        for (const QVariantList& arguments : argumentLists)
            EXPECT_FALSE(m_map.Invoke(method, arguments).isValid()) << method;
    }
    EXPECT_EQ(number, 7);
    EXPECT_EQ(Picture(), before);
}

TEST_F(GlobeMapTest, ClickPicksThePointUnderThePointer)
{
    const std::tuple<double, double, double, int, int> cases[] = {{139, 36, 0, 200, 200},
                                                                  {139, 36, 0, 260, 90},
                                                                  {-179.9, -60, 0.6, 20, 390},
                                                                  {0, 90, 1, 150, 260},
                                                                  {15, -90, 0.3, 301, 7}};
    for (const auto& [longitude, latitude, zoom, x, y] : cases) {
        Show(longitude, latitude, zoom);
        m_events.clear();
        QTest::mouseClick(&m_map, Qt::LeftButton, {}, QPoint(x, y));
        ASSERT_EQ(m_events.size(), 1U);
        EXPECT_EQ(m_events[0].first, Method::EventObsPosition);
        const double pickedLongitude = m_events[0].second[0].toDouble();
        const QPointF back = OnScreen(pickedLongitude, m_events[0].second[1].toDouble());
        EXPECT_NEAR(back.x(), x, 0.01);
        EXPECT_NEAR(back.y(), y, 0.01);
        EXPECT_LE(std::abs(pickedLongitude), 180);
    }
}

TEST_F(GlobeMapTest, ClickBesideTheDiscAndDragPickNothing)
{
    QTest::mouseClick(&m_map, Qt::LeftButton, {}, QPoint(3, 3));
    Show(100, 0, 0);
    Drag(m_map, {200, 200}, {280, 200});
    EXPECT_TRUE(m_events.empty());
    EXPECT_LT(m_map.Center().Longitude, 90) << "the ground went to the right with the pointer";
    EXPECT_NEAR(m_map.Center().Latitude, 0, 1);
    Show(100, -84, 0); // so near to a pole the ground follows roughly
    Drag(m_map, {200, 200}, {200, 230});
    EXPECT_NEAR(m_map.Center().Latitude, -75, 2);
}

TEST_F(GlobeMapTest, KeysTurnZoomAndPick)
{
    Show(179, 0, 0);
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
    EXPECT_EQ(m_events, (ControlEvents{{Method::EventObsPosition, {-70.5, -30.25}}}));

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

TEST_F(GlobeMapTest, ListLinesAreReadWithTolerance)
{
    const QByteArray bytes =
        "# header, with, many, commas, and, so, on, 3\r\n@Folder, 1E, 2N, 3, 4, 5, 6, 7\n" +
        PlaceLine(u"港見台", "139.7500000E,35.6250000N,      0,+09.50, 1, 1, 3") +
        PlaceLine(u"South", "118.0575000W,33.2500000s,   1742,-08.00, 1, 1,12") +
        PlaceLine(u"short", "1.0E,2.0N,0,+00.00, 0, 0") + PlaceLine(u"far", "400.0E,2.0N,0,+00.00, 0, 0, 0") +
        PlaceLine(u"", "1.0E,2.0N,0,+00.00, 0, 0, 0") + PlaceLine(u"below", "1.0E,91.0N,0,+00.00, 0, 0, 0") +
        "#\r\n\r\n,,,,,,,,,\n" + QByteArray(39, 'x') + "\x8A" + ",1E,2N,0,0,0,0,-1";
    QStringList places;
    for (const Landmark& place : LandmarkList::Parse(bytes))
        places +=
            place.Name + Number::Format(" %d %.4f %.4f", place.Kind, place.Position.Longitude, place.Position.Latitude);
    places.sort();
    EXPECT_EQ(places, (QStringList{u"South 7 -118.0575 -33.2500"_s, QString(39, u'x') + u" 7 1.0000 2.0000"_s,
                                   u"港見台 3 139.7500 35.6250"_s}));
    EXPECT_EQ(LandmarkList::Parse(bytes.repeated(20000)).size(), 20000U);
}

TEST_F(GlobeMapTest, EachLayerShowsItsPlacesOfTheListAsItIs)
{
    m_map.Invoke(Method::SetCenter, {139.75, 35.6});
    m_map.Invoke(Method::SetZoom, {0.6});
    const QByteArray list =
        PlaceLine(u"観", "135.0E,38.0N,0,+09.00, 1, 0, 0") + PlaceLine(u"市", "139.0E,31.0N,0,+09.00, 1, 0, 1") +
        PlaceLine(u"都", "144.0E,38.0N,0,+09.00, 1, 0, 2") + PlaceLine(u"台", "135.0E,35.0N,0,+09.00, 1, 0, 3") +
        PlaceLine(u"山", "139.0E,35.0N,0,+09.00, 1, 0, 4");
    ShowList(list);
    EXPECT_EQ(DrawnText(), "都市:都 観測地:観 天文台:台 山岳:山 市区町村:市");
    Flags({0, 0, 0, 0, 1, 0, 0, 0});
    EXPECT_EQ(DrawnText(), "山岳:山");
    Flags({1, 1, 1, 1, 0, 1, 1, 1});
    EXPECT_EQ(DrawnText(), "都市:都 観測地:観 天文台:台 市区町村:市");
    m_map.Invoke(Method::Switch12, {false});
    EXPECT_EQ(DrawnText(), "都市:(都) 観測地:(観) 天文台:(台) 市区町村:(市)") << "marks without names";
    m_map.Invoke(Method::Switch12, {true});

    WriteFile(m_list, list + PlaceLine(u"新", "144.0E,33.0N,0,+09.00, 1, 0, 0"));
    EXPECT_EQ(DrawnText(), "都市:都 観測地:観 天文台:台 市区町村:市") << "read when the module says so";
    m_map.Invoke(Method::ReloadUserPlaces, {true});
    EXPECT_EQ(DrawnText(), "都市:都 観測地:観 観測地:新 天文台:台 市区町村:市");
    m_map.Invoke(Method::SetLandmarkFileExists, {false});
    EXPECT_EQ(DrawnText(), "");
}

TEST_F(GlobeMapTest, NamesGiveWayToTheMoreImportantAndToTheMarker)
{
    m_map.Invoke(Method::SetCenter, {139.0, 35.0});
    m_map.Invoke(Method::SetZoom, {0.9});
    QByteArray list;
    for (int i = 0; i < 30; ++i) // side by side, a few pixels apart
        list += PlaceLine(u"何という地名",
                          qUtf8Printable(Number::Format("%.3fE,35.0N,0,+09.00, 1, 0, 1", 138.9 + 0.02 * i)));
    ShowList(list + PlaceLine(u"観測地", "139.1E,35.0N,0,+09.00, 1, 0, 0"));
    Picture();
    m_map.Invoke(Method::Switch29, {false});
    EXPECT_EQ(DrawnText(), "観測地:観測地 市区町村:何という地名 市区町村:(何という地名) 市区町村:何という地名");
    const DrawnItems items = m_map.Drawn();
    for (const DrawnItem& item : items) {
        for (const DrawnItem& other : items)
            EXPECT_TRUE(&item == &other || !item.Text.adjusted(0, 3, 0, -3).intersects(other.Text));
    }
    // Beneath the marker and beside it: both keep their names, which stay clear of it.
    ShowList(PlaceLine(u"下", "139.0E,35.0N,0,+09.00, 1, 0, 2") + PlaceLine(u"脇", "139.06E,35.0N,0,+09.00, 1, 0, 2"));
    m_map.Invoke(Method::SetObsPosition, {139.0, 35.0});
    EXPECT_EQ(DrawnText(), "都市:下 都市:脇 観測者:()");
    for (const DrawnItem& item : m_map.Drawn())
        EXPECT_FALSE(item.Text.intersects(QRectF(OnScreen(139, 35) - QPointF(12, 12), QSizeF(24, 24))));
    m_map.Invoke(Method::SetObsPosition, {-41.0, -35.0});
    EXPECT_EQ(DrawnText(), "都市:下") << "without the marker their marks would touch";
}

TEST_F(GlobeMapTest, CoastsAndGridAreSwitched)
{
    WriteLines(u"coast.kol"_s, {{{-20, 0}, {20, 10}}});
    m_map.Invoke(Method::SetCenter, {0.0, 0.0});
    const auto isLight = [this](double longitude, double latitude) {
        const QPoint at = OnScreen(longitude, latitude).toPoint();
        const QImage picture = Picture();
        int most = 0;
        for (int index = 0; index < 9; ++index)
            most = std::max(most, qGray(picture.pixel(at + QPoint(index % 3 - 1, index / 3 - 1))));
        return most - qGray(picture.pixel(at + QPoint(6, 6))) > 8;
    };
    EXPECT_TRUE(isLight(10, 7.5) && isLight(30, -20)) << "the coast, the meridian of 30 degrees";
    m_map.Invoke(Method::Switch29, {false});
    EXPECT_TRUE(isLight(10, 7.5) && !isLight(30, -20));
    m_map.Invoke(Method::Switch18, {false});
    EXPECT_FALSE(isLight(10, 7.5));
}

TEST_F(GlobeMapTest, LandIsGreenFromNear)
{
    // A continent with a lake, an island across the date line, an island at the far side of the continent.
    WriteLines(u"coast10.kol"_s, {{{15, -15}, {65, -15}, {65, 35}, {15, 35}, {15, -15}},
                                  {{38, 8}, {42, 8}, {42, 12}, {38, 12}, {38, 8}},
                                  {{179, -1}, {-179, -1}, {-179, 1}, {179, 1}, {179, -1}},
                                  {{-141, -11}, {-139, -11}, {-139, -9}, {-141, -9}, {-141, -11}}});
    m_map.Invoke(Method::Switch29, {false});
    const std::tuple<double, double, bool> cases[] = {{40, 10, false},   {43, 10.5, true},  {52, 20, true},
                                                      {28, -3, true},    {66, 10, false},   {180, 0.3, true},
                                                      {177.5, 0, false}, {-140, -10, true}, {-138, -10, false},
                                                      {0, 89, false},    {100, -90, false}, {64.5, 34.5, true}};
    for (const auto& [longitude, latitude, isLand] : cases) {
        Show(longitude, latitude, 0.9);
        const QColor color = Picture().pixelColor(204, 207);
        EXPECT_EQ(color.green() > color.blue(), isLand) << longitude;
    }
}

TEST_F(GlobeMapTest, EclipsePathIsDrawnAndGarbageIsNot)
{
    m_map.Invoke(Method::SetCenter, {140.0, 30.0});
    const QImage empty = Picture();
    for (const QString& text :
         {u"garbage"_s, u"central="_s, u"central=nan nan,inf 1;north=1;south"_s, u"middle=130 30,140 31"_s,
          u"central=400 10,500 20"_s, u"central=130 91,131 92"_s, QString(10 << 20, u',')}) {
        m_map.Invoke(Method::SetEclipsePath, {text});
        EXPECT_EQ(Picture(), empty) << text.left(40).toStdString();
    }
    const QString path = u"CENTRAL=130 30,x y,140 31,150 30;north=130 32,140 33,150 32;south=130 28,150 28"_s;
    m_map.Invoke(Method::SetEclipsePath, {path});
    m_map.Invoke(Method::SetEclipsePathColor, {QVariant::fromValue<quint32>(0x000000FF)});
    const QColor onLine = Picture().pixelColor(OnScreen(140, 31).toPoint());
    EXPECT_TRUE(onLine.red() > 150 && onLine.blue() < 120) << onLine.name().toStdString();
    m_map.Invoke(Method::SetEclipsePath, {QString()});
    EXPECT_EQ(Picture(), empty);
    EXPECT_EQ(EclipsePath::Parse(u"central="_s + u"1 2,80 -20,"_s.repeated(1000000)).Central.size(), 3000U);
}
