#include "city/core/CoordinateBlock.h"

#include "host/observer/BodyTable.h"
#include "host/text/Number.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
/// 1 for a negative value and for what is no number.
int SignOf(double value)
{
    return value >= 0.0 ? 0 : 1;
}

double Unsigned(int degrees, int minutes, double seconds)
{
    return degrees + minutes / 60.0 + seconds / 3600.0;
}
} // namespace

void PlaceCoordinates::SplitLongitude(double longitude, CoordinateBlock& block)
{
    const auto angle = SiteLocationFormat::Split(std::fabs(longitude), SiteLocationFormat::LongitudeCap);
    block.LongitudeHemisphere = SignOf(longitude);
    block.LongitudeDegrees = angle.Degrees;
    block.LongitudeMinutes = angle.Minutes;
    block.LongitudeSeconds = angle.Seconds;
}

void PlaceCoordinates::SplitLatitude(double latitude, CoordinateBlock& block)
{
    const auto angle = SiteLocationFormat::Split(std::fabs(latitude), SiteLocationFormat::LatitudeCap);
    block.LatitudeHemisphere = SignOf(latitude);
    block.LatitudeDegrees = angle.Degrees;
    block.LatitudeMinutes = angle.Minutes;
    block.LatitudeSeconds = angle.Seconds;
}

void PlaceCoordinates::SplitTimeZone(double timeZone, CoordinateBlock& block)
{
    constexpr double mostHours = 1.0e6; // keeps the whole hours inside an int
    const double offset = std::isfinite(timeZone) ? std::min(std::fabs(timeZone), mostHours) : 0.0;
    block.TimeZoneSign = SignOf(timeZone);
    block.TimeZoneHours = static_cast<int>(offset);
    block.TimeZoneMinutes = static_cast<int>((offset - block.TimeZoneHours) * 60);
}

double PlaceCoordinates::ComposeLongitude(const CoordinateBlock& block)
{
    return SiteLocationFormat::JoinLongitude(block, BodyTable::Earth);
}

double PlaceCoordinates::ComposeLatitude(const CoordinateBlock& block)
{
    return SiteLocationFormat::JoinLatitude(block);
}

double PlaceCoordinates::ComposeTimeZone(const CoordinateBlock& block)
{
    return SiteLocationFormat::JoinTimeZone(block);
}

bool PlaceCoordinates::IsSamePosition(const CoordinateBlock& one, const CoordinateBlock& other)
{
    return one.LongitudeHemisphere == other.LongitudeHemisphere && one.LongitudeDegrees == other.LongitudeDegrees &&
           one.LongitudeMinutes == other.LongitudeMinutes && one.LongitudeSeconds == other.LongitudeSeconds &&
           one.LatitudeHemisphere == other.LatitudeHemisphere && one.LatitudeDegrees == other.LatitudeDegrees &&
           one.LatitudeMinutes == other.LatitudeMinutes && one.LatitudeSeconds == other.LatitudeSeconds;
}

QString PlaceCoordinates::InitialPlaceText(const CoordinateBlock& block)
{
    // Blanks where the site dialog's question has zeros, on purpose.
    return Number::Format("%s %3d度%2d分%4.1f秒\n%s %3d度%2d分%4.1f秒\n標高 %.0fm\nタイムゾーン %s%2d時間%2d分",
                          block.LongitudeHemisphere ? "西経" : "東経", block.LongitudeDegrees, block.LongitudeMinutes,
                          block.LongitudeSeconds, block.LatitudeHemisphere ? "南緯" : "北緯", block.LatitudeDegrees,
                          block.LatitudeMinutes, block.LatitudeSeconds, block.Altitude, block.TimeZoneSign ? "-" : "+",
                          block.TimeZoneHours, block.TimeZoneMinutes) +
           u"\n\nを初期値として設定します。"_s;
}

QString PlaceCoordinates::FinalComplaints(const CoordinateBlock& block)
{
    struct FinalRule
    {
        double Value;
        double Low;
        double High;
        const char16_t* Message;
    };
    const std::array rules{
        FinalRule{Unsigned(block.LongitudeDegrees, block.LongitudeMinutes, block.LongitudeSeconds), 0, 180,
                  u"経度には 0.0 から 180.0 までの値を入力してください\n"},
        FinalRule{double(block.LongitudeMinutes), 0, 59, u"経度の分には 0 から 59 までの値を入力してください\n"},
        FinalRule{block.LongitudeSeconds, 0, 59.9, u"経度の秒には 0 から 59.9 までの値を入力してください\n"},
        FinalRule{Unsigned(block.LatitudeDegrees, block.LatitudeMinutes, block.LatitudeSeconds), 0, 90,
                  u"緯度には 0.0 から 90.0 までの値を入力してください\n"},
        FinalRule{double(block.LatitudeMinutes), 0, 59, u"緯度の分には 0 から 59 までの値を入力してください\n"},
        FinalRule{block.LatitudeSeconds, 0, 59.9, u"緯度の秒には 0 から 59.9 までの値を入力してください\n"},
        FinalRule{block.Altitude, -9999, 999999, u"標高には -9999 から 999999 までの値を入力してください\n"},
        FinalRule{block.TimeZoneHours + block.TimeZoneMinutes / 60.0, 0, 14,
                  u"タイムゾーンには 0 から 14 までの値を入力してください\n"},
        FinalRule{double(block.TimeZoneMinutes), 0, 59, u"タイムゾーンの分には 0 から 59 までの値を入力してください\n"},
    };
    QString complaints;
    for (const FinalRule& rule : rules) {
        if (rule.Value < rule.Low || rule.Value > rule.High)
            complaints += QString::fromUtf16(rule.Message);
    }
    return complaints;
}
