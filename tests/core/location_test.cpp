#include "core_test.h"
#include "host/observer/BodyTable.h"
#include "host/system/Registry.h"
#include "host/text/Number.h"
#include "obs/core/EclipseColor.h"
#include "obs/core/EngineLines.h"
#include "obs/core/EntryRules.h"
#include "obs/core/InitialPlaceText.h"
#include "obs/core/Magnification.h"
#include "obs/core/ObsSettings.h"
#include "obs/core/SiteLocation.h"
#include "tests/TestHost.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace SiteLocationFormat;

namespace
{
QString LngText(const SiteFields& f)
{
    return Number::Format("%d %d %d %.1f", f.LongitudeHemisphere, f.LongitudeDegrees, f.LongitudeMinutes,
                          f.LongitudeSeconds);
}

QString LatText(const SiteFields& f)
{
    return Number::Format("%d %d %d %.1f", f.LatitudeHemisphere, f.LatitudeDegrees, f.LatitudeMinutes,
                          f.LatitudeSeconds);
}

QString TzText(const SiteFields& f)
{
    return Number::Format("%d %d %d", f.TimeZoneSign, f.TimeZoneHours, f.TimeZoneMinutes);
}

SiteFields Fields(int hemisphere, int degrees, int minutes, double seconds)
{
    SiteFields fields;
    fields.LongitudeHemisphere = fields.LatitudeHemisphere = hemisphere;
    fields.LongitudeDegrees = fields.LatitudeDegrees = degrees;
    fields.LongitudeMinutes = fields.LatitudeMinutes = minutes;
    fields.LongitudeSeconds = fields.LatitudeSeconds = seconds;
    return fields;
}
} // namespace

TEST(SiteLocation, SplitsAngles)
{
    struct Row
    {
        double Angle;
        int Body;
        QString Text;
    };
    // clang-format off
    for (const Row& row : {Row{139.691772, 4, u"0 139 41 30.4"_s}, {179.99999999, 4, u"0 180 0 0.0"_s},
         {180, 4, u"0 180 0 0.0"_s}, {180.5, 1, u"1 179 30 0.0"_s}, {359.9999999, 4, u"1 0 0 0.0"_s},
         {359.9999999, 6, u"1 180 0 0.0"_s}, {359.99, 5, u"1 359 59 24.0"_s}, {-10, 4, u"1 370 0 0.0"_s},
         {200, 4, u"1 160 0 0.0"_s}, {360, 5, u"1 360 0 0.0"_s}, {12.9999999, 4, u"0 13 0 0.0"_s},
         {0, 4, u"0 0 0 0.0"_s}, {0.5 / 36000, 4, u"0 0 0 0.1"_s}, {0.49 / 36000, 4, u"0 0 0 0.0"_s},
         {Nan, 4, u"1 0 0 0.0"_s}, {Infinity, 5, u"1 0 0 0.0"_s}, {1e300, 5, u"1 1000000 0 0.0"_s}}) {
        // clang-format on
        SiteFields fields;
        SplitLongitude(row.Angle, row.Body, fields);
        EXPECT_EQ(LngText(fields), row.Text) << row.Angle << " on " << row.Body;
    }
    // clang-format off
    for (const Row& row : {Row{35.689236, 4, u"0 35 41 21.2"_s}, {35.6999999, 4, u"0 35 42 0.0"_s},
         {89.99999999, 4, u"0 90 0 0.0"_s}, {-33.25, 4, u"1 33 15 0.0"_s}, {-0.0, 4, u"0 0 0 0.0"_s},
         {-1e-12, 4, u"1 0 0 0.0"_s}, {90, 4, u"0 90 0 0.0"_s}, {Nan, 4, u"1 0 0 0.0"_s},
         {-Infinity, 4, u"1 0 0 0.0"_s}}) {
        // clang-format on
        SiteFields fields;
        SplitLatitude(row.Angle, fields);
        EXPECT_EQ(LatText(fields), row.Text) << row.Angle;
    }
    // clang-format off
    for (const Row& row : {Row{9, 0, u"0 9 0"_s}, {-3.5, 0, u"1 3 30"_s}, {5.9999, 0, u"0 5 60"_s},
         {9.99, 0, u"0 9 59"_s}, {0, 0, u"0 0 0"_s}, {-0.0, 0, u"0 0 0"_s}, {5.75, 0, u"0 5 45"_s},
         {Nan, 0, u"0 0 0"_s}, {1e300, 0, u"0 1000000 0"_s}}) {
        // clang-format on
        SiteFields fields;
        SplitTimeZone(row.Angle, fields);
        EXPECT_EQ(TzText(fields), row.Text) << row.Angle;
    }
}

TEST(SiteLocation, JoinsByBody)
{
    for (int body = 0; body < BodyTable::Count; ++body) {
        const bool isSigned = body == 1 || body == 4;
        SiteFields fields;
        SplitLongitude(200, body, fields);
        EXPECT_EQ(fields.LongitudeHemisphere, body == 0 || body == 3 ? 0 : 1) << body;
        EXPECT_EQ(JoinLongitude(fields, body), isSigned ? -160 : 200) << body;
        EXPECT_EQ(JoinLongitude(Fields(-1, 10, 30, 36), body), isSigned ? -10.51 : 10.51) << body;
        double altitude = 0;
        EXPECT_EQ(
            EntryRules::Check({fields, altitude, body}, EntryRules::Box::LngDeg, EntryRules::Policy::SiteDialog).High,
            isSigned ? 180 : 360);
    }
    EXPECT_EQ(JoinLatitude(Fields(0, 10, 30, 36)), 10.51);
    EXPECT_EQ(JoinLatitude(Fields(1, 10, 30, 36)), -10.51);
    SiteFields zone;
    for (const double hours : {9.0, -3.5, 5.75, 0.0, 14.0}) {
        SplitTimeZone(hours, zone);
        EXPECT_EQ(JoinTimeZone(zone), hours);
    }
    EXPECT_EQ(PositiveLongitude(-10), 350);
    EXPECT_EQ(PositiveLongitude(-400), -40) << "one turn only";
    EXPECT_EQ(MetresFromDisplay(1.4, false), 1400);
    EXPECT_EQ(DisplayFromMetres(1400, true), 1400);
}

TEST(EngineLines, AreWordedExactly)
{
    const QStringList setUp =
        QString(u"View.Device = 3|Operation.MoveView = TRUE|System.Loop = FALSE|View.Projection = PlanetaryGlobe|"
                "View.Angle = 180|Solar.Planet.Surface.Name.Visible = TRUE|"
                "Solar.Planet.Surface.Name.Leadline.Visible = FALSE|Solar.Moon.Surface.Name.Visible = TRUE|"
                "Solar.Moon.Surface.Name.Leadline.Visible = FALSE|Solar.Moon.Brightness = 0.6|"
                "Solar.Sun.Disk.Grid.Visible = TRUE|Solar.Planet.Disk.Grid.Visible = TRUE|"
                "Solar.Planet.Earth.Satellite.Moon.Disk.Grid.Visible = TRUE|"
                "Solar.Planet.Earth.Borderline.Visible = FALSE|"
                "Solar.Planet.Earth.Landscape.IndexFile = \"/t/a.kti\"|Location.Altitude.AutoGet = TRUE"_s)
            .split(u'|');
    const auto lines = [](const std::vector<QString>& all) { return QStringList(all.begin(), all.end()).join(u'\n'); };
    EXPECT_EQ(lines(EngineLines::SetUp(u"/t/a.kti"_s)), setUp.join(u'\n'));
    QStringList withoutTerrain = setUp;
    withoutTerrain.removeAt(14);
    EXPECT_EQ(lines(EngineLines::SetUp({})), withoutTerrain.join(u'\n'));

    const QString centre = u"View.PlanetaryGlobe.Center."_s;
    for (const auto& [line, expected] :
         {std::pair{EngineLines::PlaceOnBody(13, 350.5, -0.0, 39.25),
                    u"Location = Solar.Dwarfplanet.MakeMake(350.50000000, -0.00000000, 39.2); Show Sky"_s},
          {EngineLines::PlaceOnBody(99, 1, 2, 3),
           u"Location = Solar.Planet.Earth(1.00000000, 2.00000000, 3.0); Show Sky"_s},
          {EngineLines::MoveTo(139.691772, -35.5),
           u"Location.Longitude = 139.69177200; Location.Latitude = -35.50000000"_s},
          {EngineLines::MoveToAndShow(1, 2),
           u"Location.Longitude = 1.00000000; Location.Latitude = 2.00000000; show sky"_s},
          {EngineLines::MoveTo(1, 2, 3),
           u"Location.Longitude = 1.00000000; Location.Latitude = 2.00000000;  Location.Altitude = 3.00000000"_s},
          {EngineLines::SetAltitudeAndShow(39), u"Location.Altitude = 39.000000; show sky"_s},
          {EngineLines::CenterAt(1, 2),
           centre + u"Longitude = 1.000000; "_s + centre + u"Latitude = 2.000000; Show Sky"_s},
          {EngineLines::CenterAtFine(1, 2),
           centre + u"Longitude = 1.00000000; "_s + centre + u"Latitude = 2.00000000; Show Sky"_s},
          {EngineLines::CenterLongitude(359), centre + u"Longitude = 359.000000; Show Sky"_s},
          {EngineLines::CenterLatitude(-90), centre + u"Latitude = -90.000000; Show Sky"_s},
          {EngineLines::ViewAngle(30.00001, false),
           u"View.Angle = 30.000010; Solar.Planet.Earth.Borderline.Visible = FALSE; Show Sky"_s},
          {EngineLines::ViewAngle(2, true),
           u"View.Angle = 2.000000; Solar.Planet.Earth.Borderline.Visible = TRUE; Show Sky"_s},
          {EngineLines::UniversalTime(2030, 1, 2, 3, 4, 5), u"Time = UT(2030, 1, 2, 3, 4, 5); Show Sky"_s},
          {EngineLines::Assign(u"location"_s, u"location(%s, 2, 3)"_s), u"location = location(%s, 2, 3)"_s},
          {EngineLines::AssignAndShow(u"time.timezone"_s, u"9.000000"_s), u"time.timezone = 9.000000; Show Sky"_s}})
        EXPECT_EQ(line, expected);
}

TEST(Magnification, MapsTheSliderAndItsMirrorImage)
{
    struct Row
    {
        int Position;
        double Degrees, Zoom;
        int Mirrored;
    };
    for (const Row& row : {Row{0, 2, 1, 200},
                           {99, 29.26, 0.505, 101},
                           {100, 30.00001, 0.5, 100},
                           {200, 180, 0, 0},
                           {-5, 2, 1, 200},
                           {999, 180, 0, 0}}) {
        const auto view = Magnification::SliderValToVal(row.Position);
        EXPECT_NEAR(view.Degrees, row.Degrees, 0.005) << row.Position;
        EXPECT_EQ(view.Zoom, row.Zoom) << row.Position;
        EXPECT_NEAR(Magnification::SliderOfMagnification(view.Degrees), row.Mirrored, 1) << row.Position;
    }
    EXPECT_GE(Magnification::SliderValToVal(100).Degrees, Magnification::BorderlineAngle);
    EXPECT_LT(Magnification::SliderValToVal(99).Degrees, Magnification::BorderlineAngle);
    // clang-format off
    for (const auto& [magnification, position] : {std::pair{1.0, 0}, {90.0, 200}, {2.0, 46}, {1000.0, 200}, {0.5, 0},
         {-1.0, 200}, {0.0, 0}, {Nan, 200}, {Infinity, 200}})
        // clang-format on
        EXPECT_EQ(Magnification::SliderOfMagnification(180.0 / magnification), position) << magnification;
    for (const auto& [from, to] :
         {std::pair{1, 0}, {100, 97}, {3, 0}, {500, 197}, {std::numeric_limits<int>::min(), 0}})
        EXPECT_EQ(Magnification::AfterWheel(from, 1), to) << from;
    EXPECT_EQ(Magnification::AfterWheel(198, -1), 200);
}

TEST(EclipseColor, ReadsWhatTheEngineAnswers)
{
    // clang-format off
    for (const auto& [answer, colour] : {std::pair{u"RGB(255, 128, 0)"_s, 0x0080FFU}, {u"RGB(0, 0, 255)"_s, 0xFF0000U},
         {u"RGB(300, 0, 0)"_s, 44U}, {u"RGB(1,2,3"_s, 0x030201U}, {u"RGB(1,,, 2 , ,3)"_s, 0x030201U}, {u"xxxx7"_s, 7U},
         {u"RGB"_s, 0U}, {u""_s, 0U}, {u"RGB(-1, a, 5x)"_s, 0x0500FFU}, {u"RGB(99999999999, 0, 0)"_s, 255U},
         {u"RGB(1 2)"_s, 1U}})
        // clang-format on
        EXPECT_EQ(ParseEclipseColor(answer), colour) << answer.toStdString();
}

TEST(InitialPlace, AsksAndIsStoredAsTheEngineReadsIt)
{
    SiteFields tokyo = Fields(0, 139, 41, 30.4);
    tokyo.LatitudeDegrees = 35;
    tokyo.LatitudeSeconds = 1.25;
    tokyo.TimeZoneSign = 0;
    tokyo.TimeZoneHours = 9;
    tokyo.AltitudeValue = 38.5;
    EXPECT_EQ(
        InitialPlaceText(tokyo),
        u"東経 139度41分30.4秒\n北緯  35度41分01.2秒\n標高 38m\nタイムゾーン +09時間00分\n\nを初期値として設定します。"_s);
    SiteFields west = Fields(1, 7, 0, 0);
    west.TimeZoneSign = 1;
    EXPECT_TRUE(InitialPlaceText(west).startsWith(
        u"西経   7度00分00.0秒\n南緯   7度00分00.0秒\n標高 0m\nタイムゾーン -00時間00分\n"_s));

    CTestHost machine;
    const auto location = ObsSettings::ReadInitialLocation();
    const auto zone = ObsSettings::ReadInitialTimeZone();
    EXPECT_EQ(EngineLines::Assign(location.Name, location.Value),
              u"location = location(139.691772, 35.689236, 39.000000)"_s);
    EXPECT_EQ(EngineLines::AssignAndShow(zone.Name, zone.Value), u"time.timezone = 9.000000; Show Sky"_s);
    ObsSettings::SaveInitialPlace(JoinLongitude(Fields(1, 74, 0, 21.6), 4), JoinLatitude(Fields(0, 40, 42, 46.1)), 10,
                                  -5);
    machine.ReadAnew();
    EXPECT_EQ(ObsSettings::ReadInitialLocation().Value, u"location(-74.006000, 40.712806, 10.000000)"_s);
    EXPECT_EQ(ObsSettings::ReadInitialTimeZone().Value, u"-5.000000"_s);
}

TEST(ObsSettings, KeepsLayersAndView)
{
    CTestHost machine;
    const QString section = u"Dialog\\Obs"_s;
    EXPECT_EQ(ObsSettings::ReadLayers(section), (ObsSettings::Layers{1, 1, 1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(ObsSettings::ReadViewAngle(section), 0);
    EXPECT_TRUE(ObsSettings::ReadAutoAltitude(section));
    EXPECT_EQ(ObsSettings::ReadEngineVariant(), 5);
    ObsSettings::Save(section, {0, 1, 0, 1, 0, 1, 0, 1}, 123, false);
    machine.Context().Settings().Save();
    EXPECT_EQ(ReadFile(machine.Settings()),
              "[Dialog]\nObs\\AutoAltitude=0\nObs\\FeatureAstro=1\nObs\\FeatureBuilding=0\nObs\\FeatureCity=0\n"
              "Obs\\FeatureCutcherry=1\nObs\\FeatureMount=0\nObs\\FeatureNaturalTerrain=1\nObs\\FeatureObs=0\n"
              "Obs\\FeatureOther=1\nObs\\ViewAngle=123\n");
    EXPECT_EQ(ObsSettings::ReadLayers(section), (ObsSettings::Layers{0, 1, 0, 1, 0, 1, 0, 1}));
    EXPECT_FALSE(ObsSettings::ReadAutoAltitude(section));
}
