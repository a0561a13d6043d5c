#include "core_test.h"
#include "host/observer/BodyTable.h"
#include "obs/core/EclipseColor.h"
#include "obs/core/SiteLocation.h"

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
    }
    EXPECT_EQ(PositiveLongitude(-10), 350);
    EXPECT_EQ(PositiveLongitude(-400), -40) << "one turn only";
    EXPECT_EQ(MetresFromDisplay(1.4, false), 1400);
    EXPECT_EQ(DisplayFromMetres(1400, true), 1400);
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
