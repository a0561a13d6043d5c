#include "city/core/CoordinateBlock.h"
#include "city/core/PlaceName.h"
#include "host/text/Number.h"
#include "obs/core/EntryRules.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;
using EntryRules::Box;
using EntryRules::Policy;

namespace
{
std::string Text(const CoordinateBlock& b)
{
    return Number::Format("%d:%d %d %.1f, %d:%d %d %.1f, %.0f, %d:%d %d", b.LongitudeHemisphere, b.LongitudeDegrees,
                          b.LongitudeMinutes, b.LongitudeSeconds, b.LatitudeHemisphere, b.LatitudeDegrees,
                          b.LatitudeMinutes, b.LatitudeSeconds, b.Altitude, b.TimeZoneSign, b.TimeZoneHours,
                          b.TimeZoneMinutes)
        .toStdString();
}

CoordinateBlock Split(double longitude, double latitude, double timeZone)
{
    CoordinateBlock block;
    PlaceCoordinates::SplitLongitude(longitude, block);
    PlaceCoordinates::SplitLatitude(latitude, block);
    PlaceCoordinates::SplitTimeZone(timeZone, block);
    return block;
}

TEST(CoordinateBlock, Splits)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const std::tuple<double, double, double, const char*> cases[]{
        {139.99999, 89.99999, 5.75, "0:140 0 0.0, 0:90 0 0.0, 0, 0:5 45"},
        {-0.5, -0.5, -3.5, "1:0 30 0.0, 1:0 30 0.0, 0, 1:3 30"},
        {0.0, -0.0, 0.0, "0:0 0 0.0, 0:0 0 0.0, 0, 0:0 0"},
        {180.99999, 90.99999, 8.1, "0:180 0 0.0, 0:90 0 0.0, 0, 0:8 5"}, // stops at the cap; 8.1 h lose a minute
        {139.7447219, -35.6541667, 9.0, "0:139 44 41.0, 1:35 39 15.0, 0, 0:9 0"},
        {nan, nan, nan, "1:0 0 0.0, 1:0 0 0.0, 0, 1:0 0"},
        {infinite, -infinite, -infinite, "0:0 0 0.0, 1:0 0 0.0, 0, 1:0 0"},
    };
    for (const auto& [longitude, latitude, timeZone, split] : cases)
        EXPECT_EQ(Text(Split(longitude, latitude, timeZone)), split);
}

TEST(CoordinateBlock, EachDialogSpinsByItsOwnRules)
{
    const CoordinateBlock middle = Split(10.5, 20.5, 9.5); // 10 30 0.0, 20 30 0.0, 9 30
    const std::tuple<Box, double, int, const char*, const char*> cases[]{
        {Box::LngDeg, 180, -1, "0:180 30 0.0, 0:20 30 0.0, 0, 0:9 30", nullptr},
        {Box::LngDeg, 0, 1, "0:0 30 0.0, 0:20 30 0.0, 0, 0:9 30", nullptr},
        {Box::LngMin, 59, -1, "0:10 59 0.0, 0:20 30 0.0, 0, 0:9 30", nullptr},
        {Box::LngSec, 59.9, -1, "0:10 30 59.9, 0:20 30 0.0, 0, 0:9 30", nullptr},
        {Box::LngSec, 12.3, 1, "0:10 30 12.2, 0:20 30 0.0, 0, 0:9 30", nullptr},
        {Box::LatDeg, 89, -1, "0:10 30 0.0, 0:90 0 0.0, 0, 0:9 30", "0:10 30 0.0, 0:90 30 0.0, 0, 0:9 30"},
        {Box::LatDeg, 0, 1, "0:10 30 0.0, 0:0 0 0.0, 0, 0:9 30", "0:10 30 0.0, 0:0 30 0.0, 0, 0:9 30"},
        {Box::LatDeg, 45, 0, "0:10 30 0.0, 0:45 30 0.0, 0, 0:9 30", nullptr},
        {Box::LatSec, 0, 1, "0:10 30 0.0, 0:20 30 0.0, 0, 0:9 30", nullptr},
        {Box::Alt, 999999, -1, "0:10 30 0.0, 0:20 30 0.0, 999999, 0:9 30", nullptr},
        {Box::Alt, -9999, 1, "0:10 30 0.0, 0:20 30 0.0, -9999, 0:9 30", nullptr},
        {Box::TzHour, 14, -1, "0:10 30 0.0, 0:20 30 0.0, 0, 0:14 30", nullptr},
        {Box::TzMin, 2147483647, -1, "0:10 30 0.0, 0:20 30 0.0, 0, 0:9 59", nullptr},
    };
    for (const auto& [which, value, delta, cityList, inEditor] : cases) {
        CoordinateBlock list = middle;
        EntryRules::Set({list, list.Altitude}, which, value);
        CoordinateBlock editor = list;
        EntryRules::Spin({list, list.Altitude}, which, delta, Policy::CityList);
        EntryRules::Spin({editor, editor.Altitude}, which, delta, Policy::Editor);
        EXPECT_EQ(Text(list), cityList);
        EXPECT_EQ(Text(editor), inEditor ? inEditor : cityList);
    }

    CoordinateBlock pole = middle;
    pole.LatitudeDegrees = 90;
    CoordinateBlock editorPole = pole;
    EntryRules::Spin({pole, pole.Altitude}, Box::LatMin, -1, Policy::CityList);
    EntryRules::Spin({editorPole, editorPole.Altitude}, Box::LatMin, -1, Policy::Editor);
    EXPECT_EQ(pole.LatitudeMinutes, 0);
    EXPECT_EQ(editorPole.LatitudeMinutes, 31);
}

TEST(PlaceName, RefusesWhatTheFilesCannotKeep)
{
    const std::pair<QString, const char*> names[]{
        {u"東京タワー"_s, ""},
        {u"a@b #1, 2"_s, "名には半角のコンマ「,」を使えません。全角の「，」などを使ってください。\n"},
        {u"@東京"_s, "名の先頭には半角の「@」と「#」を使えません。\n"},
        {u"#1"_s, "名の先頭には半角の「@」と「#」を使えません。\n"},
        {u"東\t京"_s, "名には改行やタブなどの制御文字を使えません。\n"},
        {u"東\n京\u2028"_s, "名には改行やタブなどの制御文字を使えません。\n"},
        {u"Málaga 🗼á"_s, "名の次の文字は、一覧のファイルに保存できないため使えません：á🗼\n"},
        {u"髙﨑①～－"_s, ""}, // of the code page's extensions
    };
    for (const auto& [name, complaint] : names)
        EXPECT_EQ(PlaceName::Complaints(name, u"名"_s).toStdString(), complaint) << name.toStdString();
}
} // namespace
