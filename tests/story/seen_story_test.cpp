// What the maps show, over the shipped data: where land is, which way round, what is written where.

#include "controls/core/EngineBody.h"
#include "controls/globe_map/GlobeMap.h"
#include "controls/road_map/RoadMap.h"
#include "controls/sky_engine/SkyEngine.h"
#include "host/control/GlobeZoom.h"
#include "planetarium/EclipseData.h"
#include "tests/dialog/DialogDriver.h"

#include <numbers>

using namespace Qt::StringLiterals;
namespace Globe = ControlNumber::GlobeMap;
namespace Road = ControlNumber::RoadMap;

namespace
{
const QString Data = QStringLiteral(KIV_SOURCE_DATA);
constexpr int Side = 480; // pixels of a globe
constexpr double Radian = std::numbers::pi / 180.0;

/// Where a point of a globe is seen, north up and east to the right. Worked out here: a map that is mirrored is
/// mirrored in its own arithmetic, too.
QPointF Seen(GeoPoint center, double radius, QSizeF size, GeoPoint point)
{
    const double turned = (point.Longitude - center.Longitude) * Radian;
    const double north = point.Latitude * Radian;
    const double middle = center.Latitude * Radian;
    EXPECT_GT(std::sin(middle) * std::sin(north) + std::cos(middle) * std::cos(north) * std::cos(turned), 0.0)
        << "behind the edge of the disc";
    const double x = std::cos(north) * std::sin(turned);
    const double y = std::cos(middle) * std::sin(north) - std::sin(middle) * std::cos(north) * std::cos(turned);
    return {size.width() / 2 + radius * x, size.height() / 2 - radius * y};
}

/// The radius of a globe that shows so many degrees across its picture; the whole disc leaves a margin.
double RadiusOf(double angle)
{
    return Side / 2.0 * (1.0 / std::sin(angle / 2 * Radian) - 0.045);
}

/// The middle of all that differs between two pictures.
QPointF MiddleOfChange(const QImage& before, const QImage& after)
{
    QRect changed;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y))
                changed |= QRect(x, y, 1, 1);
        }
    }
    return QRectF(changed).center();
}

void ExpectNear(QPointF seen, QPointF meant, double reach)
{
    EXPECT_NEAR(seen.x(), meant.x(), reach);
    EXPECT_NEAR(seen.y(), meant.y(), reach);
}

/// The names of a layer, or of all, in the order in which they were drawn.
std::string NamesOf(const DrawnItems& items, QStringView layer)
{
    QStringList names;
    for (const DrawnItem& item : items) {
        if (item.Layer == layer)
            names += item.Text.isNull() ? u'(' + item.Name + u')' : item.Name;
    }
    return names.join(u' ').toStdString();
}

const DrawnItem* Find(const DrawnItems& items, const QString& name)
{
    const auto found =
        std::find_if(items.begin(), items.end(), [&name](const DrawnItem& item) { return item.Name == name; });
    return found == items.end() ? nullptr : &*found;
}

/// Whether something bright stands where a name is said to be.
bool IsWritten(const QImage& picture, const DrawnItem& item)
{
    const QImage part = picture.copy(item.Text.toAlignedRect());
    int bright = 0;
    for (int index = 0; index < part.width() * part.height(); ++index)
        bright += qGray(part.pixel(index % part.width(), index / part.width())) > 125 ? 1 : 0;
    return bright > 10;
}

/// The Earth without names, marker and lines unless a test asks for them.
class SeenGlobe : public CDialogDriver
{
protected:
    SeenGlobe()
    {
        m_map.resize(Side, Side);
        m_map.Invoke(Globe::Switch12, {false});
        m_map.Invoke(Globe::Switch18, {false});
        m_map.Invoke(Globe::Switch29, {false});
    }
    QImage Show(GeoPoint center, double zoom)
    {
        m_center = center;
        m_radius = RadiusOf(GlobeZoom::ViewAngle(1.0 - zoom));
        m_map.Invoke(Globe::SetCenter, {center.Longitude, center.Latitude});
        m_map.Invoke(Globe::SetZoom, {zoom});
        return Picture();
    }
    QImage Picture()
    {
        m_map.Invoke(Globe::Redraw, {});
        return m_map.grab().toImage();
    }
    [[nodiscard]] QPointF At(GeoPoint point) const { return Seen(m_center, m_radius, {Side, Side}, point); }
    /// Water is bluer than it is green, land is not.
    static bool IsLand(QColor color) { return color.blue() <= color.green(); }

    CGlobeMap m_map{nullptr, Data};
    GeoPoint m_center;
    double m_radius = 0;
};
} // namespace

TEST_F(SeenGlobe, LandAndSeaAreWhereTheyAre)
{
    // With the widest zoom at which the place is some pixels large.
    const std::tuple<const char*, double, double, bool, double> places[] = {
        {"Tokyo", 139.4, 35.9, true, 0},           {"east of Japan", 145, 35, false, 0},
        {"Sinai", 33.8, 29.3, true, 0.2},          {"Red Sea", 37.5, 22, false, 0.2},
        {"Iceland", -20, 65, true, 0.2},           {"Denmark Strait", -30, 66, false, 0.2},
        {"Tasmania", 146.6, -42, true, 0},         {"Tasman Sea", 152, -42, false, 0},
        {"Kerguelen", 69.4, -49.3, true, 0.6},     {"east of Kerguelen", 73, -49, false, 0},
        {"Madagascar", 46.5, -20, true, 0},        {"Mozambique Channel", 41, -20, false, 0},
        {"Tierra del Fuego", -69, -54, true, 0.3}, {"Drake Passage", -66, -58, false, 0}};
    for (const auto& [name, longitude, latitude, isLand, widest] : places) {
        for (const double zoom : {widest, (widest + 0.7) / 2, 0.7, 0.85}) {
            const double aside = GlobeZoom::ViewAngle(1.0 - zoom) / 6;
            const QImage picture = Show({longitude - aside, latitude - aside / 2}, zoom);
            const QColor color = picture.pixelColor(At({longitude, latitude}).toPoint());
            EXPECT_EQ(IsLand(color), isLand) << name << " at " << zoom << ": " << color.name().toStdString();
        }
    }
}

TEST_F(SeenGlobe, EightDirectionsTellAMirroredWorldFromATurnedOne)
{
    const std::tuple<GeoPoint, double, const char*> stars[] = {
        {{10, 0}, 20, "LLLL~~~L"}, // Gabon: Congo, Sudan, Niger, Mali, then the Atlantic, Zambia
        {{135, 36}, 13, "~~LLL~~~"}};
    for (const auto& [center, reach, around] : stars) {
        const QImage picture = Show(center, 0);
        std::string seen;
        for (int direction = 0; direction < 8; ++direction) { // from the east to the north
            const double angle = direction * 45 * Radian;
            const double out = m_radius * std::sin(reach * Radian);
            const QPointF at(Side / 2.0 + out * std::cos(angle), Side / 2.0 - out * std::sin(angle));
            seen += IsLand(picture.pixelColor(at.toPoint())) ? 'L' : '~';
        }
        EXPECT_EQ(seen, around) << center.Longitude;
    }
}

TEST_F(SeenGlobe, TheGridIsNamedAndStandsWhereItsDegreesAre)
{
    m_map.Invoke(Globe::Switch29, {true});
    const std::tuple<GeoPoint, double, const char*> views[] = {{{12, 47}, 0.6, "40°N 45°N 50°N 5°E 10°E 15°E 20°E"},
                                                               {{-70, -33}, 0.6, "35°S 30°S 25°S 75°W 70°W 65°W 60°W"},
                                                               {{179, 1}, 0.6, "5°S 0° 5°N 175°E 180° 175°W"}};
    for (const auto& [center, zoom, names] : views) {
        Show(center, zoom);
        const DrawnItems drawn = m_map.Drawn();
        EXPECT_EQ(NamesOf(drawn, DrawnLayer::Graticule), names);
        for (const DrawnItem& item : drawn) {
            const bool isNegative = item.Name.endsWith(u'W') || item.Name.endsWith(u'S');
            const double degrees = Number::LeadingDouble(item.Name) * (isNegative ? -1 : 1);
            const bool isParallel = item.Place.x() < 10; // named at the left edge, meridians at the lower one
            double nearest = Side;
            for (double way = 0; way < 20; way += 0.05) {
                const QPointF on =
                    isParallel ? At({center.Longitude - way, degrees}) : At({degrees, center.Latitude - way});
                nearest = std::min(nearest, std::hypot(on.x() - item.Place.x(), on.y() - item.Place.y()));
            }
            EXPECT_LT(nearest, 2.0) << item.Name.toStdString();
            EXPECT_LT((item.Text.center() - item.Place).manhattanLength(), 40);
        }
    }
}

TEST_F(SeenGlobe, TheMarkerStandsOnTheSiteAtEveryZoom)
{
    const GeoPoint site{139.69, 35.69};
    for (const double zoom : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        const double aside = GlobeZoom::ViewAngle(1.0 - zoom) / 5;
        m_map.Invoke(Globe::SetObsPosition, {-40.0, -35.0}); // the far side
        const QImage without = Show({site.Longitude - aside, site.Latitude - aside / 2}, zoom);
        m_map.Invoke(Globe::SetObsPosition, {site.Longitude, site.Latitude});
        ExpectNear(MiddleOfChange(without, Picture()), At(site) - QPointF(0.5, 0.5), 1.0);
    }
}

TEST_F(SeenGlobe, AfterADragThePictureIsAsFineAsEver)
{
    m_map.Invoke(Globe::Switch18, {true});
    Show({20, 40}, 0.4);
    QTest::mousePress(&m_map, Qt::LeftButton, {}, {240, 240});
    for (const QPoint point : {QPoint(270, 250), QPoint(300, 260)}) {
        QMouseEvent move(QEvent::MouseMove, point, m_map.mapToGlobal(point), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&m_map, &move);
        static_cast<void>(m_map.grab());
    }
    QTest::mouseRelease(&m_map, Qt::LeftButton, {}, {300, 260});
    EXPECT_LT(m_map.Center().Longitude, 15);
    const QImage dragged = Picture();
    const GeoPoint there = m_map.Center();
    Show({there.Longitude + 90, there.Latitude}, 0.4);
    Show({there.Longitude + 1, there.Latitude}, 0.4); // so small a turn back is seen, too
    EXPECT_EQ(dragged, Show(there, 0.4));
}

TEST_F(SeenGlobe, AMarkStandsOnItsPlace)
{
    const QString list = Folder.filePath(u"places.obs"_s);
    m_map.Invoke(Globe::SetObsPosition, {-40.0, -35.0}); // the far side
    const QImage without = Show({141, 34}, 0.6);
    for (int kind = 0; kind < LandmarkKind::Count; ++kind) {
        WriteFile(list,
                  QByteArray("A").leftJustified(40) + ",143.0E,32.0N,0,+09.00, 1, 0, " + QByteArray::number(kind));
        m_map.Invoke(Globe::SetLandmarkFile, {list});
        m_map.Invoke(Globe::SetLandmarkFileExists, {true});
        ExpectNear(MiddleOfChange(without, Picture()), At({143, 32}) - QPointF(0.5, 0.5), 1.0);
    }
}

TEST_F(SeenGlobe, ANameBesideTheMarkerStandsOnTheSideOfItsPlace)
{
    const GeoPoint tokyo{139.6917, 35.6895};
    m_map.Invoke(Globe::SetLandmarkFile, {Data + u"kivpel.obs"_s});
    m_map.Invoke(Globe::SetLandmarkFileExists, {true});
    m_map.Invoke(Globe::SetObsPosition, {tokyo.Longitude, tokyo.Latitude});
    m_map.Invoke(Globe::Switch12, {true});
    m_map.Invoke(Globe::Switch29, {true});
    const QImage picture = Show({140.5, 36}, 0.7);
    const DrawnItems items = m_map.Drawn();
    const DrawnItem* north = Find(items, u"さいたま市"_s);
    ASSERT_TRUE(north && !north->Text.isNull());
    EXPECT_LT(north->Text.bottom(), At(tokyo).y());
    EXPECT_NEAR(north->Text.center().x(), At(tokyo).x(), 1.0);
    for (const DrawnItem& item : items) { // those of the grid lie under their parallel's end
        const QPointF nearest(std::clamp(item.Place.x(), item.Text.left(), item.Text.right()),
                              std::clamp(item.Place.y(), item.Text.top(), item.Text.bottom()));
        EXPECT_TRUE(item.Text.isNull() || (nearest - item.Place).manhattanLength() < 28) << item.Name.toStdString();
        EXPECT_TRUE(item.Text.isNull() || IsWritten(picture, item)) << item.Name.toStdString();
    }
}

TEST_F(SeenGlobe, TheEclipseRunsOverNotoAndWestOfTokyo)
{
    m_map.Invoke(Globe::SetEclipsePathColor, {QVariant::fromValue<quint32>(0x003C96FF)});
    m_map.Invoke(Globe::SetBesselElementApply, {true});
    QImage without = Show({139, 36.5}, 0.8);
    m_map.Invoke(Globe::SetEclipsePath, {LoadEclipsePath(Data)});
    QImage with = Picture();
    const auto isInBand = [&](GeoPoint point) {
        const QPoint at = At(point).toPoint();
        return with.pixel(at) != without.pixel(at);
    };
    for (const GeoPoint& inside : {GeoPoint{137.0, 37.3}, {138.2, 36.65}, {139.06, 36.39}}) // Noto, Nagano, Maebashi
        EXPECT_TRUE(isInBand(inside)) << inside.Longitude;
    for (const GeoPoint& outside : {GeoPoint{139.7, 35.7}, {138.38, 34.98}, {139.0, 37.9}}) // Tokyo, Shizuoka, Niigata
        EXPECT_FALSE(isInBand(outside)) << outside.Longitude;
    const EclipsePath path = EclipsePath::Parse(LoadEclipsePath(Data));
    m_map.Invoke(Globe::SetEclipsePath, {QString()});
    without = Show({150, 32}, 0.1);
    m_map.Invoke(Globe::SetEclipsePath, {LoadEclipsePath(Data)});
    with = Picture();
    const auto isOnLine = [&](QPointF at) {
        return std::any_of(path.Central.begin(), path.Central.end(), [&](const UnitVector& point) {
            const GeoPoint place = ToGeoPoint(point);
            return std::abs(std::remainder(place.Longitude - 150, 360)) < 60 && (At(place) - at).manhattanLength() < 12;
        });
    };
    for (int index = 0; index < Side * Side; ++index) {
        const QPoint at(index % Side, index / Side);
        const bool isFar = std::hypot(at.x() - Side / 2, at.y() - Side / 2) > m_radius * 0.6;
        EXPECT_TRUE(isFar || with.pixel(at) == without.pixel(at) || isOnLine(at)) << at.x() << ' ' << at.y();
    }
}

namespace
{
/// A sky engine as a planetary globe.
class SeenPlanet : public CDialogDriver
{
protected:
    SeenPlanet()
    {
        m_engine.resize(Side, Side);
        m_engine.Command(u"View.Projection = PlanetaryGlobe; View.Angle = 180"_s);
        m_engine.Command(u"Time = UT(2026, 11, 24, 15, 0, 0)"_s); // full moon
    }
    QImage Show(int body, GeoPoint observer, GeoPoint center)
    {
        const auto of = [body](double east) { return EngineBodies::FromEast(body, east); };
        m_engine.Command(Number::Format("Location = %s(%f, %f, 0); View.PlanetaryGlobe.Center.Longitude = %f; "
                                        "View.PlanetaryGlobe.Center.Latitude = %f; Show Sky",
                                        qUtf8Printable(BodyTable::EngineName(body)), of(observer.Longitude),
                                        observer.Latitude, of(center.Longitude), center.Latitude));
        m_center = center;
        return m_engine.grab().toImage();
    }
    [[nodiscard]] QPointF At(GeoPoint point) const { return Seen(m_center, RadiusOf(180), {Side, Side}, point); }
    [[nodiscard]] int Light(const QImage& picture, GeoPoint point) const
    {
        int sum = 0;
        const QPoint at = At(point).toPoint();
        for (int index = 0; index < 25; ++index)
            sum += qGray(picture.pixel(at + QPoint(index % 5 - 2, index / 5 - 2)));
        return sum / 25;
    }

    CSkyEngine m_engine{nullptr, Data};
    GeoPoint m_center;
};
} // namespace

TEST_F(SeenPlanet, TheMarkerStandsOnTheSiteOfEveryBody)
{
    for (int body = 0; body < BodyTable::Count; ++body) {
        const QImage without = Show(body, {-160, -20}, {20, 10});
        ExpectNear(MiddleOfChange(without, Show(body, {40, 30}, {20, 10})), At({40, 30}) - QPointF(0.5, 0.5), 1.0);
    }
}

TEST_F(SeenPlanet, TheSunLightsThePoleThatHasSummerAndTheSideThatHasDay)
{
    for (const auto& [month, isNorthLit] : {std::pair{6, true}, {12, false}}) {
        m_engine.Command(Number::Format("Time = UT(2026, %d, 21, 12, 0, 0)", month));
        const QImage noon = Show(BodyTable::Earth, {180, 0}, {0, 0});
        EXPECT_EQ(Light(noon, {0, 82}) > Light(noon, {0, -82}), isNorthLit) << month;
        const QImage evening = Show(BodyTable::Earth, {180, 0}, {90, 0});
        EXPECT_GT(Light(evening, {45, 15}), 2 * Light(evening, {100, 15})) << "Arabia, where it is day, and Siam";
        m_engine.Command(Number::Format("Time = UT(2026, %d, 21, 22, 0, 0)", month));
        EXPECT_LT(2 * Light(Show(BodyTable::Earth, {180, 0}, {90, 0}), {45, 15}), Light(evening, {45, 15}));
    }
}

TEST_F(SeenPlanet, MeridiansAreCountedAsTheBodyCountsThem)
{
    m_engine.Command(u"Solar.Planet.Disk.Grid.Visible = TRUE; Solar.Sun.Disk.Grid.Visible = TRUE; "
                     u"Solar.Planet.Earth.Satellite.Moon.Disk.Grid.Visible = TRUE; View.Angle = 40"_s);
    const std::string parallels = "10°S 0° 10°N 20°N ";
    for (const auto& [body, meridians] : {std::pair(BodyTable::Sun, "350°E 0° 10°E"),
                                          {BodyTable::Moon, "10°W 0° 10°E"},
                                          {3, "350°E 0° 10°E"},
                                          {5, "10°W 0° 350°W"}}) {
        Show(body, {170, 0}, {0, 5});
        EXPECT_EQ(NamesOf(m_engine.Drawn(), DrawnLayer::Graticule), parallels + meridians) << body;
    }
}

TEST_F(SeenPlanet, KnownMarksOfTheMoonAndMarsAreWhereTheyAre)
{
    const QImage moon = Show(BodyTable::Moon, {180, 0}, {0, 0});
    const int crises = Light(moon, {59, 16.5});
    for (const GeoPoint& rim : {GeoPoint{47, 16.5}, {59, 27}, {63, 6}, {72, 16.5}})
        EXPECT_GT(Light(moon, rim), crises + 12) << rim.Longitude << ' ' << rim.Latitude;
    EXPECT_GT(Light(moon, {-11.4, -43}), Light(moon, {11.4, 43}) + 5) << "Tycho is in the south";
    const QImage mars = Show(5, {180, 0}, {69, 0});
    EXPECT_GT(Light(mars, {70, -42}), Light(mars, {69, 9}) + 12) << "Hellas is brighter than Syrtis Major";
    EXPECT_GT(Light(mars, {40, 15}), Light(mars, {69, 9}) + 12) << "and so is Arabia, west of it";
    m_engine.Command(u"Solar.Planet.Surface.Name.Visible = TRUE; View.Angle = 40"_s);
    Show(5, {137.4, -4.6}, {130, 0});
    const DrawnItems items = m_engine.Drawn();
    const DrawnItem* gale = Find(items, u"ゲール"_s);
    ASSERT_NE(gale, nullptr) << NamesOf(items, DrawnLayer::Surface);
    ExpectNear(gale->Place, Seen({130, 0}, RadiusOf(40), {Side, Side}, {137.8, -5.4}), 1.0);
    EXPECT_TRUE(IsWritten(m_engine.grab().toImage(), *gale));
}

namespace
{
class SeenRoadMap : public CDialogDriver
{
protected:
    SeenRoadMap() { m_map.resize(401, 301); }
    QImage Show(GeoPoint center, int scale)
    {
        constexpr double unit = Road::MillisecondsPerDegree;
        m_map.Invoke(Road::SetPosition, {false, center.Longitude * unit, center.Latitude * unit});
        m_map.Invoke(Road::SetScale, {scale});
        m_center = center;
        m_radius = 6371000.0 / (scale * 0.0254 / m_map.logicalDpiX());
        return m_map.grab().toImage();
    }
    [[nodiscard]] QPoint At(GeoPoint point) const { return Seen(m_center, m_radius, {401, 301}, point).toPoint(); }

    CRoadMap m_map{nullptr, Data};
    GeoPoint m_center;
    double m_radius = 0;
};
} // namespace

TEST_F(SeenRoadMap, ARiverAndTheBordersOfPrefecturesAreWhereTheyAre)
{
    // Along a line from west to east across the river Shinano above Ojiya, where nothing is written.
    const QImage river = Show({138.79, 37.30}, 250'000);
    const DrawnItems items = m_map.Drawn();
    const auto isBare = [&items](QPointF at) {
        return std::none_of(items.begin(), items.end(), [at](const DrawnItem& item) {
            return item.Text.adjusted(-3, -3, 3, 3).contains(at) || (item.Place - at).manhattanLength() < 12;
        });
    };
    const QPoint crossing = At({138.8139, 37.315});
    int wet = 0;
    for (int x = 20; x < 380; ++x) {
        const QColor color = river.pixelColor(x, crossing.y());
        if (!isBare(QPointF(x, crossing.y())) || color.blue() < color.red() + 20)
            continue;
        ++wet;
        EXPECT_NEAR(x, crossing.x(), 3) << "200 m";
    }
    EXPECT_GT(wet, 0);
    // The river Edo parts Saitama from Chiba; from near no border is drawn.
    const auto countBorder = [this](int scale) {
        const QImage picture = Show({139.858, 35.9}, scale);
        int count = 0;
        for (int x = 180; x <= 220; ++x) {
            const QColor color = picture.pixelColor(x, 150);
            count += color.red() > color.blue() + 8 && color.red() > 70 ? 1 : 0;
        }
        return count;
    };
    EXPECT_GT(countBorder(1'000'000), 0);
    EXPECT_EQ(countBorder(25'000), 0);
}

TEST_F(SeenRoadMap, MountainsAreLitFromTheNorthwestAndFromNearTheShoreIsTheFinerOne)
{
    const QImage fuji = Show({138.727, 35.361}, 1'500'000);
    const auto lightAt = [&](double aside) { // the median of a patch: a name covers less
        const QPoint middle = At({138.727 + aside * 1.23, 35.361 - aside});
        QImage patch = fuji.copy(QRect(middle - QPoint(4, 4), QSize(8, 8))).convertToFormat(QImage::Format_Grayscale8);
        std::nth_element(patch.bits(), patch.bits() + 32, patch.bits() + 64);
        return int{patch.bits()[32]};
    };
    for (const double aside : {0.05, 0.07, 0.09})
        EXPECT_GT(lightAt(-aside), lightAt(aside) + 12) << aside;

    CLineSet fine;
    CLineSet coarse;
    ASSERT_TRUE(fine.Load(Data + u"roadmap/coast.kol"_s) && coarse.Load(Data + u"roadmap/coastwide.kol"_s));
    int compared = 0;
    for (double step = 0; step < 4000 && compared < 3; ++step) { // around the capes of Miura and Boso
        const GeoPoint place{139.6 + 0.004 * std::fmod(step, 100), 34.9 + 0.01 * std::floor(step / 100)};
        const bool isLand = fine.IsInside(place);
        const auto isSame = [&](double aside) {
            return fine.IsInside({place.Longitude + aside, place.Latitude}) == isLand;
        };
        if (coarse.IsInside(place) == isLand || !isSame(0.0004) || !isSame(-0.0004))
            continue;
        ++compared;
        const QColor color = Show({place.Longitude + 0.002, place.Latitude + 0.001}, 20'000).pixelColor(At(place));
        EXPECT_EQ(color.blue() < color.green() + 10, isLand) << place.Longitude << ' ' << place.Latitude;
    }
    EXPECT_GT(compared, 0);
}

TEST_F(SeenRoadMap, APlaceBesideTheMarkerKeepsItsName)
{
    constexpr double unit = Road::MillisecondsPerDegree;
    m_map.Invoke(Road::SetPosition, {true, 138.194 * unit, 36.651 * unit}); // the prefecture's office
    for (const int scale : {25'000, 50'000, 100'000, 250'000, 1'000'000}) {
        Show({138.194, 36.651}, scale);
        const DrawnItems items = m_map.Drawn();
        const DrawnItem* nagano = Find(items, u"長野市"_s);
        ASSERT_NE(nagano, nullptr) << scale;
        EXPECT_FALSE(nagano->Text.isNull()) << scale;
    }
}
