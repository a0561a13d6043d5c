#include "controls/core/GeoPoint.h"

#include "controls/core/Angle.h"

#include <cmath>

namespace
{
} // namespace

UnitVector ToVector(const GeoPoint& point)
{
    const double longitude = point.Longitude / DegreesPerRadian;
    const double latitude = point.Latitude / DegreesPerRadian;
    return {std::cos(latitude) * std::cos(longitude), std::cos(latitude) * std::sin(longitude), std::sin(latitude)};
}

GeoPoint ToGeoPoint(const UnitVector& vector)
{
    return {std::atan2(vector.Y, vector.X) * DegreesPerRadian,
            std::atan2(vector.Z, std::hypot(vector.X, vector.Y)) * DegreesPerRadian};
}

double WrapLongitude(double longitude)
{
    if (!std::isfinite(longitude))
        return 0;
    const double turned = std::remainder(longitude, 360.0);
    return turned <= -180.0 ? 180.0 : turned;
}
