#pragma once

#include "controls/core/GeoPoint.h"
#include "host/observer/BodyTable.h"

/// Kepler's elements at J2000 and their change in a Julian century: semi-major axis (au), eccentricity, inclination,
/// mean longitude, longitude of perihelion, longitude of the node (degrees, ecliptic of J2000).
struct OrbitElements
{
    double Axis, AxisRate;
    double Eccentricity, EccentricityRate;
    double Inclination, InclinationRate;
    double MeanLongitude, MeanLongitudeRate;
    double Perihelion, PerihelionRate;
    double Node, NodeRate;
};

/// Direction of the north pole (right ascension and declination of J2000 with their change in a Julian century) and
/// the angle of the prime meridian with its change in a day; degrees.
struct RotationElements
{
    double RightAscension, RightAscensionRate;
    double Declination, DeclinationRate;
    double Meridian, MeridianRate;
};

/// How a body's picture comes about when there is none on disk: never with made-up craters or spots, which an observer
/// would take for real ones.
enum class BodyLook
{
    Star,
    Rock,
    Desert,
    Clouds,
    Haze,
    Ice
};

/// What the engine knows of a body beyond the table of bodies.
struct EngineBody
{
    const char16_t* Folder; ///< its folder in the data folder
    BodyLook Look;
    unsigned Color; ///< 0xRRGGBB
    RotationElements Rotation;
    OrbitElements Orbit; ///< the Moon has the Earth's; the Sun none
};

namespace EngineBodies
{
[[nodiscard]] const EngineBody& Of(int body);

/// Whether location longitudes count to the east.
[[nodiscard]] bool CountsEast(int body);

/// The point of the body over which the Sun stands, right to about a degree in the centuries around 2000; the
/// day is a Julian day of universal time; longitude 0 to below 360. For the Sun itself the origin.
[[nodiscard]] GeoPoint SubsolarPoint(int body, double julianDay);

/// A longitude of the body's location as degrees to the east, and back, each 0 to below 360.
[[nodiscard]] double ToEast(int body, double longitude);
[[nodiscard]] double FromEast(int body, double east);

/// The angle brought into 0 to below 360 degrees; 0 when it is not finite.
[[nodiscard]] double FullTurn(double degrees);
} // namespace EngineBodies
