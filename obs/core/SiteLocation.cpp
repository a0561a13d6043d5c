#include "obs/core/SiteLocation.h"

#include "host/observer/BodyTable.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double FieldLimit = 1.0e6; // far beyond any angle; keeps the whole parts inside an int

/// Only a number that fits the fields can be split; anything else counts as 0.
double Splittable(double value)
{
    return std::isfinite(value) ? std::clamp(value, -FieldLimit, FieldLimit) : 0.0;
}

double Signed(double value, int sign)
{
    return sign == 0 ? value : -value;
}
} // namespace

bool SiteLocationFormat::HasHemisphereChoice(int body)
{
    return BodyTable::Of(body).Longitudes == BodyTable::Longitude::EastOrWest;
}

SiteLocationFormat::SplitAngle SiteLocationFormat::Split(double degrees, int cap)
{
    const double x = Splittable(degrees);
    SplitAngle result;
    result.Degrees = static_cast<int>(std::floor(x));
    const double m = (x - result.Degrees) * 60;
    result.Minutes = static_cast<int>(std::floor(m));
    const int tenths = static_cast<int>(std::floor((m - result.Minutes) * 60 * 10 + 0.5));
    if (tenths < 600) {
        result.Seconds = tenths / 10.0;
        return result;
    }
    result.Minutes += 1;
    if (result.Minutes == 60) {
        result.Degrees = std::min(result.Degrees + 1, cap);
        result.Minutes = 0;
    }
    return result;
}

void SiteLocationFormat::SplitLongitude(double longitude, int body, SiteFields& fields)
{
    double x = Splittable(longitude);
    if (HasHemisphereChoice(body)) {
        const bool isEast = longitude >= 0.0 && x <= 180.0; // what is no number counts as negative
        fields.LongitudeHemisphere = isEast ? 0 : 1;
        x = isEast || !std::isfinite(longitude) ? x : 360.0 - x;
    } else {
        fields.LongitudeHemisphere = BodyTable::Of(body).Longitudes == BodyTable::Longitude::East ? 0 : 1;
    }
    const SplitAngle angle = Split(x, LongitudeCap);
    fields.LongitudeDegrees = angle.Degrees;
    fields.LongitudeMinutes = angle.Minutes;
    fields.LongitudeSeconds = angle.Seconds;
}

void SiteLocationFormat::SplitLatitude(double latitude, SiteFields& fields)
{
    const double x = Splittable(latitude);
    fields.LatitudeHemisphere = latitude >= 0.0 ? 0 : 1; // what is no number counts as negative
    const SplitAngle angle = Split(std::fabs(x), LatitudeCap);
    fields.LatitudeDegrees = angle.Degrees;
    fields.LatitudeMinutes = angle.Minutes;
    fields.LatitudeSeconds = angle.Seconds;
}

void SiteLocationFormat::SplitTimeZone(double timeZone, CoordinateFields& fields)
{
    const double z = Splittable(timeZone);
    fields.TimeZoneSign = z < 0.0 ? 1 : 0;
    fields.TimeZoneHours = static_cast<int>(std::fabs(z));
    fields.TimeZoneMinutes = static_cast<int>(std::floor((std::fabs(z) - fields.TimeZoneHours) * 60 + 0.5));
}

double SiteLocationFormat::JoinLongitude(const CoordinateFields& fields, int body)
{
    const double sum = fields.LongitudeDegrees + fields.LongitudeMinutes / 60.0 + fields.LongitudeSeconds / 3600.0;
    return HasHemisphereChoice(body) ? Signed(sum, fields.LongitudeHemisphere) : sum;
}

double SiteLocationFormat::JoinLatitude(const CoordinateFields& fields)
{
    return Signed(fields.LatitudeDegrees + fields.LatitudeMinutes / 60.0 + fields.LatitudeSeconds / 3600.0,
                  fields.LatitudeHemisphere);
}

double SiteLocationFormat::JoinTimeZone(const CoordinateFields& fields)
{
    return Signed(fields.TimeZoneHours + fields.TimeZoneMinutes / 60.0, fields.TimeZoneSign);
}
