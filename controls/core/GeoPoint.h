#pragma once

/// A point of a sphere, in degrees; longitude east positive, latitude north positive.
struct GeoPoint
{
    double Longitude = 0;
    double Latitude = 0;
};

/// A direction from the centre of a sphere: X to longitude 0, Y to longitude 90, Z to the north pole; length 1.
struct UnitVector
{
    double X = 1;
    double Y = 0;
    double Z = 0;
};

[[nodiscard]] constexpr double Dot(const UnitVector& a, const UnitVector& b)
{
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

/// The direction of a point; any finite longitude and latitude.
[[nodiscard]] UnitVector ToVector(const GeoPoint& point);

/// The point of a direction, longitude -180 to 180.
[[nodiscard]] GeoPoint ToGeoPoint(const UnitVector& vector);

/// The longitude brought into -180 (excluded) to 180; 0 when it is not finite.
[[nodiscard]] double WrapLongitude(double longitude);
