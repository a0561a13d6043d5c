#include "controls/core/EngineBody.h"
#include "controls/sky_engine/SkyEngine.h"
#include "tests/dialog/DialogDriver.h"

#include <QPointingDevice>

#include <tuple>

using namespace Qt::StringLiterals;
namespace Engine = ControlNumber::Engine;

namespace
{
/// Sends each line of a script and compares the answer, which stands behind an arrow.
void ExpectExchanges(CSkyEngine& engine, const char* script)
{
    for (const QString& exchange : QString::fromUtf8(script).trimmed().split(u'\n')) {
        const QStringList sides = exchange.split(u"->"_s);
        EXPECT_EQ(engine.Command(sides[0]), sides.value(1).trimmed()) << exchange.toStdString();
    }
}

/// Metres as the tiles hold them.
QByteArray Heights(std::initializer_list<int> metres)
{
    QByteArray bytes;
    for (const int metre : metres)
        bytes.append(static_cast<char>(metre & 0xFF)).append(static_cast<char>((metre >> 8) & 0xFF));
    return bytes;
}

double Asked(CSkyEngine& engine, const char* query)
{
    return Number::LeadingDouble(engine.Command(QString::fromUtf8(query)));
}

/// A difference of two longitudes, -180 to 180.
double Turn(double a, double b)
{
    return std::remainder(a - b, 360.0);
}

/// An engine set up as the site dialog does it, on the Moon, with its events kept.
class SkyEngineOnTheMoon : public CDialogDriver
{
protected:
    struct Raised
    {
        int Event;
        QVariantList Arguments;
        QString Location; ///< where the engine was when the event came
        quint32 TouchFlags;
    };

    SkyEngineOnTheMoon()
    {
        m_engine.resize(400, 400);
        m_engine.SetControlProperty(Engine::PropertyActive, true);
        m_engine.SetEventSink([this](int event, const QVariantList& arguments) {
            auto* const touch = event == Engine::EventTouch ? arguments[1].value<TouchInput*>() : nullptr;
            m_raised.append({event, arguments, m_engine.Command(u"? Location"_s), touch ? touch->Flags : 0});
        });
        m_engine.Command(u"Operation.MoveView = TRUE; View.Projection = PlanetaryGlobe"_s);
        m_engine.Command(u"Location = Solar.Planet.Earth.Satellite.Moon(10.0, 20.0, 1500.0); Show Sky"_s);
    }

    CSkyEngine m_engine{nullptr, QString()};
    QList<Raised> m_raised;
};
} // namespace

TEST(SkyEngine, AnswersTheSiteDialogsLines)
{
    CSkyEngine engine(nullptr, QString());
    ExpectExchanges(engine, R"(
        View.Device = 3; Operation.MoveView = TRUE; System.Loop = FALSE; ? View.Device -> 3
        View.Projection = PlanetaryGlobe; ? view.projection -> PlanetaryGlobe
        Solar.Moon.Brightness = 0.6; ? SOLAR.MOON.BRIGHTNESS -> 0.6
        Solar.Sun.Disk.Grid.Visible = true; ? Solar.Sun.Disk.Grid.Visible -> TRUE
        View.Angle = 29.260000; Solar.Planet.Earth.Borderline.Visible = TRUE; Show Sky; ? View.Angle -> 29.260000
        ? Solar.Planet.Earth.Borderline.Visible -> TRUE
        Location = Solar.Dwarfplanet.makemake(350.50000000, -12.25000000, 1400.0); Show Sky ->
        ? Location -> Solar.Dwarfplanet.MakeMake(350.500000, -12.250000, 1400.000000)
        Location.Longitude = 10.00000000; ? Location.Longitude -> 10.00000000
        Location.Latitude = 20.00000000;  Location.Altitude = 30.00000000; ? Location.Latitude -> 20.00000000
        ? Location.Altitude -> 30.00000000
        location = location(139.691772, 35.689236, 39.000000); ? Location -> Location(139.691772, 35.689236, 39.000000)
        Location = Location(135.5, 34.7, *); show sky; ? Location -> Location(135.500000, 34.700000, 39.000000)
        time.timezone = 9.000000; Show Sky; ? Time.Timezone -> 9.000000
        Time = UT(2026, 11, 22, 5, 6, 7); Show Sky; ? Time -> UT(2026, 11, 22, 5, 6, 7)
        View.PlanetaryGlobe.Center.Latitude = -90; Show Sky; ? View.PlanetaryGlobe.Center.Latitude -> -90
        Location.Longitude = 1.0; Location.Latitude = 2.0; Calc Stellar; ? Location.Longitude -> 1.00000000
        Solar.Planet.Earth.Landscape.AutoGetAltitude = TRUE; ? Location.Altitude.AutoGet -> TRUE
        ? Solar.Planet.Earth.SolarEclipse.Path.Color -> RGB(255, 128, 0)
        Solar.Planet.Earth.SolarEclipse.Path.Data = "a; b = c"; show   SKY ->
        ? solar.planet.earth.solareclipse.PATH.data -> a; b = c)");
}

TEST(SkyEngine, SaysWhatItCannotReadAndThenChangesNothing)
{
    CSkyEngine engine(nullptr, QString());
    engine.Command(u"Location = Location(1, 2, 3); Time = UT(2026, 1, 2, 3, 4, 5); View.Angle = 90"_s);
    ExpectExchanges(engine, R"(
        ;;; ; ->
        ? No.Such.Path -> エラー：「No.Such.Path」というプロパティはありません。
        View.Angel = 5 -> エラー：「View.Angel」というプロパティはありません。
        View.Angle = wide -> エラー：「View.Angle」に「wide」は設定できません。
        Location.Longitude 5 -> エラー：「Location.Longitude 5」というコマンドはありません。
        View.Angle = -> エラー：「View.Angle =」は書き方に誤りがあります。
        Location.Longitude = 99; Solar.Sun.Disk.Grid.Visible = TRUE; Shw Sky -> エラー：「Shw Sky」というコマンドはありません。
        ? Solar.Sun.Disk.Grid.Visible -> FALSE)");
    constexpr char lines[] = "?|? |=|= 5|View.Angle =|View.Angle = wide|View.Angle = inf|View.Angle = 0x10|"
                             "View.Angle = \"|View.Angle = \"5\" 6|View..Angle = 5|View.Angle. = 5|"
                             "Location = Location(4, 5)|Location = Location(4, 5, 6, 7)|Location = Location(4, x, 6)|"
                             "Location = Location(*, 5, 6)|Location = Solar.Planet.Vulcan(4, 5, 6)|"
                             "Location = Location(4, 5, 6|Location = 4|Location.Longitude = nan|Location.Altitude = *|"
                             "Time = UT(2026, 2, 30, 0, 0, 0)|Time = UT(2026, 1, 1, 24, 0, 0)|"
                             "Time = UT(2026, 1, 1.5, 0, 0, 0)|Time = now|Show|Format C";
    for (const QString& line : QString::fromUtf8(lines).split(u'|')) {
        const QString answer = engine.Command(u"Location.Latitude = 77; "_s + line);
        EXPECT_TRUE(answer.startsWith(u"エラー：「"_s)) << line.toStdString();
        EXPECT_FALSE(Number::FindLeadingDouble(answer)) << line.toStdString();
    }
    ExpectExchanges(engine, R"(
        ? Location -> Location(1.000000, 2.000000, 3.000000)
        ? Time -> UT(2026, 1, 2, 3, 4, 5)
        ? View.Angle -> 90
        Location = Location(1e300, -1e9, 3); ? Location.Latitude -> -90.00000000)");
    EXPECT_LE(std::fabs(Asked(engine, "? Location.Longitude")), 360.0) << "beyond a turn there is no place";
}

TEST(SkyEngine, TakesTheAltitudeFromTheTerrainWhileAutomatic)
{
    QTemporaryDir folder;
    const QString index = folder.filePath(u"terrain.kti"_s);
    // A whole turn of four by two cells, and a finer tile with a gap in its south-east.
    WriteFile(folder.filePath(u"world.dem"_s), Heights({0, 100, 200, 300, 0, 100, 200, 300}));
    WriteFile(folder.filePath(u"japan.dem"_s), Heights({1000, -2000, 3000, -32768}));
    WriteFile(folder.filePath(u"short.dem"_s), Heights({1, 2, 3}));
    WriteFile(index, "KTI1\nworld.dem -180 -90 180 90 4 2\njapan.dem 130 30 132 32 2 2\n"
                     "short.dem -46 -1 -44 1 2 2\nshort.dem 0 0 1 1 1000000 1000000\n"
                     "missing.dem 0 0 1 1 1 1\n./japan.dem 10 10 12 12 2 2\nrubbish\n");
    CSkyEngine engine(nullptr, QString());
    engine.Command(u"Solar.Planet.Earth.Landscape.IndexFile = \""_s + index +
                   u"\"; Location.Altitude.AutoGet = TRUE"_s);

    const std::tuple<double, double, double> places[] = {
        {-45, 0, 100},    {315, 0, 100},       {0, 10, 150},      {11, 11, 162},      {180, 0, 150},
        {-180, -80, 150}, {130.5, 31.5, 1000}, {131, 31.5, -500}, {131.5, 30.5, 300}, {130.5, 31, 2000}};
    for (const auto& [longitude, latitude, altitude] : places) {
        engine.Command(
            Number::Format("Location.Longitude = %.8f; Location.Latitude = %.8f; Calc Stellar", longitude, latitude));
        EXPECT_NEAR(Asked(engine, "? Location.Altitude"), altitude, 30.0) << longitude;
    }
    // An altitude that was set holds until the next move.
    ExpectExchanges(engine, R"(
        Location = Solar.Planet.Earth(130.5, 31.5, 5.0); Show Sky; ? Location.Altitude -> 1000.00000000
        Location.Longitude = 130.5; Location.Altitude = 7; ? Location.Altitude -> 7.00000000
        Location.Latitude = 31.5; ? Location.Altitude -> 1000.00000000
        Location = Solar.Planet.Mars(130.5, 31.5, 5.0); ? Location.Altitude -> 5.00000000
        Location = Location(130.5, 31.5, *); Location.Altitude.AutoGet = FALSE; ? Location.Altitude -> 1000.00000000
        Location.Longitude = -45; Location.Latitude = 0; ? Location.Altitude -> 1000.00000000)");
}

TEST(SkyEngine, LightsTheSideThatFacesTheSun)
{
    // The Earth at an equinox and a solstice, the Moon in a worked example of an almanac, Mars on the
    // day from which its calendar counts.
    const std::tuple<QString, double, double, double> moments[] = {
        {u"Solar.Planet.Earth"_s, 2451623.815972, 68.1, 0.0},
        {u"Solar.Planet.Earth"_s, 2451716.5, 180.4, 23.4},
        {u"Solar.Planet.Earth.Satellite.Moon"_s, 2448724.5, 67.9, 1.5},
        {u"Solar.Planet.Mars"_s, 2451549.5, 185.3, -25.1}};
    for (const auto& [path, julianDay, longitude, latitude] : moments) {
        const GeoPoint sun = EngineBodies::SubsolarPoint(BodyTable::Find(path).value(), julianDay);
        EXPECT_NEAR(Turn(sun.Longitude, longitude), 0.0, 1.0) << path.toStdString();
        EXPECT_NEAR(sun.Latitude, latitude, 1.0) << path.toStdString();
    }
}

TEST_F(SkyEngineOnTheMoon, AClickMovesTheLocationBeforeTheEvent)
{
    QTest::mouseClick(&m_engine, Qt::LeftButton, Qt::ShiftModifier, QPoint(200, 200));
    ASSERT_EQ(m_raised.size(), 1);
    EXPECT_EQ(m_raised[0].Event, Engine::EventMouseUp);
    EXPECT_EQ(m_raised[0].Arguments,
              (QVariantList{QVariant::fromValue<short>(1), QVariant::fromValue<short>(1), 200, 200}));
    EXPECT_TRUE(m_raised[0].Location.startsWith(u"Solar.Planet.Earth.Satellite.Moon("_s));
    EXPECT_NEAR(Turn(Asked(m_engine, "? Location.Longitude"), 0.0), 0.0, 0.5);
    EXPECT_NEAR(Asked(m_engine, "? Location.Latitude"), 0.0, 0.5);
    EXPECT_EQ(Asked(m_engine, "? Location.Altitude"), 1500.0);

    const QString before = m_engine.Command(u"? Location"_s);
    QTest::mouseClick(&m_engine, Qt::LeftButton, {}, QPoint(3, 3)); // beside the disc
    EXPECT_EQ(m_engine.Command(u"? Location"_s), before);
    EXPECT_EQ(m_raised.size(), 2);

    m_engine.SetControlProperty(Engine::PropertyActive, false);
    QTest::mouseClick(&m_engine, Qt::LeftButton, {}, QPoint(250, 200));
    QTest::keyClick(&m_engine, Qt::Key_Space);
    EXPECT_EQ(m_engine.Command(u"? Location"_s), before);
    EXPECT_EQ(m_raised.size(), 2);
}

TEST_F(SkyEngineOnTheMoon, LongitudesCountWestWhereTheDialogShowsWest)
{
    for (const auto& [path, isEast] : {std::pair{u"Solar.Sun"_s, true},
                                       {u"Solar.Planet.Venus"_s, true},
                                       {u"Solar.Planet.Earth.Satellite.Moon"_s, true},
                                       {u"Solar.Planet.Mars"_s, false},
                                       {u"Solar.Dwarfplanet.Eris"_s, false}}) {
        m_engine.Command(u"Location = "_s + path +
                         u"(90, 0, 0); View.PlanetaryGlobe.Center.Longitude = 90; Show Sky"_s);
        QTest::mouseClick(&m_engine, Qt::LeftButton, {}, QPoint(290, 200)); // to the right is east
        EXPECT_EQ(Asked(m_engine, "? Location.Longitude") > 90.0, isEast) << path.toStdString();
        EXPECT_NEAR(std::fabs(Asked(m_engine, "? Location.Longitude") - 90.0), 28.0, 4.0) << path.toStdString();
    }
}

TEST_F(SkyEngineOnTheMoon, ATapMovesTheLocationBeforeTheEvent)
{
    m_engine.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_engine));
    QPointingDevice* const screen = QTest::createTouchDevice();
    QTest::touchEvent(&m_engine, screen).press(0, QPoint(200, 120));
    EXPECT_TRUE(m_raised.isEmpty());
    QTest::touchEvent(&m_engine, screen).release(0, QPoint(200, 120));
    ASSERT_EQ(m_raised.size(), 1);
    EXPECT_EQ(m_raised[0].Event, Engine::EventTouch);
    EXPECT_EQ(m_raised[0].Arguments.size(), 6);
    EXPECT_EQ(m_raised[0].Arguments[0].toUInt(), Engine::TouchKindInput);
    EXPECT_TRUE(m_raised[0].TouchFlags & Engine::TouchFlagUp);
    EXPECT_EQ(m_raised[0].Arguments[2].toInt(), 1);
    EXPECT_NEAR(Asked(m_engine, "? Location.Latitude"), 24.0, 4.0);
}

TEST_F(SkyEngineOnTheMoon, DraggingAndKeysTurnTheGlobe)
{
    Drag(m_engine, {200, 200}, {260, 230});
    EXPECT_TRUE(m_raised.isEmpty());
    EXPECT_EQ(Asked(m_engine, "? Location.Longitude"), 10.0);
    EXPECT_NEAR(Asked(m_engine, "? View.PlanetaryGlobe.Center.Longitude"), 342.5, 2.0);
    EXPECT_NEAR(Asked(m_engine, "? View.PlanetaryGlobe.Center.Latitude"), 8.8, 1.0);

    m_engine.Command(u"View.PlanetaryGlobe.Center.Longitude = 0; Operation.MoveView = FALSE; Show Sky"_s);
    Drag(m_engine, {200, 200}, {260, 230});
    EXPECT_EQ(Asked(m_engine, "? View.PlanetaryGlobe.Center.Longitude"), 0.0);

    m_engine.Command(u"Operation.MoveView = TRUE; View.PlanetaryGlobe.Center.Latitude = 0; Show Sky"_s);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Up, Qt::Key_Plus})
        QTest::keyClick(&m_engine, key);
    EXPECT_NEAR(Asked(m_engine, "? View.PlanetaryGlobe.Center.Longitude"), 5.0, 1e-6);
    EXPECT_NEAR(Asked(m_engine, "? View.PlanetaryGlobe.Center.Latitude"), 5.0, 1e-6);
    EXPECT_LT(Asked(m_engine, "? View.Angle"), 180.0);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true); // closed another window, perhaps
    QApplication::sendEvent(&m_engine, &held);
    EXPECT_TRUE(m_raised.isEmpty());
    QTest::keyClick(&m_engine, Qt::Key_Return);
    EXPECT_EQ(m_raised.size(), 1);
    EXPECT_NEAR(Asked(m_engine, "? Location.Longitude"), 5.0, 0.5);
}

TEST_F(SkyEngineOnTheMoon, DrawsWhatItIsToldOnlyAtShowSky)
{
    const auto isBlue = [this] {
        const QColor middle = m_engine.grab().toImage().pixelColor(200, 200);
        return middle.blue() > middle.red() + 30;
    };
    const auto degrees = [this] { return m_engine.grab(), m_engine.Drawn().size() - 1; }; // but the marker
    m_engine.Command(u"Location = Solar.Planet.Neptune(10, 20, 0); View.Angle = 60"_s);
    EXPECT_FALSE(isBlue());
    m_engine.Command(u"Show Sky"_s);
    EXPECT_TRUE(isBlue());
    EXPECT_EQ(degrees(), 0U);
    m_engine.Command(u"Solar.Planet.Disk.Grid.Visible = TRUE"_s);
    EXPECT_EQ(degrees(), 0U);
    m_engine.Command(u"show sky"_s);
    EXPECT_GT(degrees(), 4U);
}
