#pragma once

#include "module/kivobs_export.h"

/// Longitude, latitude and time zone as the user edits them, in each dialog that shows a position.
struct CoordinateFields
{
    int LongitudeHemisphere = -1; ///< 0 east, 1 west, -1 before the first fill
    int LongitudeDegrees = 0;
    int LongitudeMinutes = 0;
    double LongitudeSeconds = 0.0;
    int LatitudeHemisphere = -1; ///< 0 north, 1 south, -1 before the first fill
    int LatitudeDegrees = 0;
    int LatitudeMinutes = 0;
    double LatitudeSeconds = 0.0;
    int TimeZoneSign = -1; ///< 0 "+", 1 "-", -1 before the first fill
    int TimeZoneHours = 0;
    int TimeZoneMinutes = 0;

    bool operator==(const CoordinateFields&) const = default;
};

/// A location as the user edits it: what the site dialog's data exchange binds to its controls.
struct SiteFields : CoordinateFields
{
    double AltitudeValue = 0.0; ///< display units: metres or kilometres by body
    int AltitudeMode = -1;      ///< 0 automatic, 1 typed by the user, -1 before the first fill

    bool operator==(const SiteFields&) const = default;
};

namespace SiteLocationFormat
{
/// In place of a time zone: there is none.
inline constexpr double NoTimeZone = 9999.0;

/// A longitude as the observer object or an engine gives it, brought into 0 to 360 by one turn at most.
[[nodiscard]] constexpr double PositiveLongitude(double longitude)
{
    return longitude < 0.0 ? longitude + 360.0 : longitude;
}

/// Whether the user chooses the hemisphere of this body's longitude: on the Earth and the Moon.
[[nodiscard]] KIVOBS_EXPORT bool HasHemisphereChoice(int body);

/// Degrees, minutes and seconds of an angle without a sign.
struct SplitAngle
{
    int Degrees = 0;
    int Minutes = 0;
    double Seconds = 0.0;
};

/// Splits an angle of 0 degrees or more: seconds are rounded half up to a tenth and carry into minutes and degrees,
/// and degrees that were carried stop at the cap. What is no number counts as 0.
[[nodiscard]] SplitAngle Split(double degrees, int cap);

/// Highest degrees after a carry.
inline constexpr int LongitudeCap = 180;
inline constexpr int LatitudeCap = 90;

/// Fill the fields of one quantity. Seconds are rounded half up to a tenth and carry into minutes and degrees; the
/// degrees then stop at 180 (longitude) or 90 (latitude) on every body.
KIVOBS_EXPORT void SplitLongitude(double longitude, int body, SiteFields& fields);
KIVOBS_EXPORT void SplitLatitude(double latitude, SiteFields& fields);

/// Fill sign, hours and minutes of a time zone in hours. Minutes are rounded without a carry, on purpose: 5.9999 h
/// shows as 5 h 60 min.
void SplitTimeZone(double timeZone, CoordinateFields& fields);

/// Degrees: -180 to 180 on the Earth and the Moon, without a sign elsewhere.
[[nodiscard]] double JoinLongitude(const CoordinateFields& fields, int body);
[[nodiscard]] double JoinLatitude(const CoordinateFields& fields);
[[nodiscard]] double JoinTimeZone(const CoordinateFields& fields);

/// Altitude between metres and display units: kilometres unless the body counts as small.
[[nodiscard]] constexpr double MetresFromDisplay(double value, bool isSmall)
{
    return isSmall ? value : value * 1000.0;
}
[[nodiscard]] constexpr double DisplayFromMetres(double metres, bool isSmall)
{
    return isSmall ? metres : metres / 1000.0;
}
} // namespace SiteLocationFormat
