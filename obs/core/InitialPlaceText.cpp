#include "obs/core/InitialPlaceText.h"

#include "host/text/Number.h"

using namespace Qt::StringLiterals;

QString InitialPlaceText(const SiteFields& fields)
{
    return Number::Format("%s %3d度%02d分%04.1f秒\n%s %3d度%02d分%04.1f秒\n標高 %.0fm\nタイムゾーン %s%02d時間%02d分",
                          fields.LongitudeHemisphere ? "西経" : "東経", fields.LongitudeDegrees,
                          fields.LongitudeMinutes, fields.LongitudeSeconds, fields.LatitudeHemisphere ? "南緯" : "北緯",
                          fields.LatitudeDegrees, fields.LatitudeMinutes, fields.LatitudeSeconds, fields.AltitudeValue,
                          fields.TimeZoneSign ? "-" : "+", fields.TimeZoneHours, fields.TimeZoneMinutes) +
           u"\n\nを初期値として設定します。"_s;
}
