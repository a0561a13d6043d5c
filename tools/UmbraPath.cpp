#include "tools/UmbraPath.h"

#include <algorithm>
#include <cmath>
#include <libnova/lunar.h>
#include <libnova/nutation.h>
#include <libnova/precession.h>
#include <libnova/sidereal_time.h>
#include <libnova/solar.h>
#include <numbers>

namespace
{
constexpr double EquatorRadius = 6378.137; // kilometres
constexpr double Flattening = 1.0 / 298.257223563;
constexpr double MoonRadius = 0.272281 * EquatorRadius; // without the valleys at the limb, as umbral paths are computed
constexpr double SunRadius = 696000.0;
constexpr double AstronomicalUnit = 149597870.7;
constexpr double LightSpeed = 299792.458; // kilometres a second
constexpr double SecondsPerDay = 86400.0;
constexpr double J2000 = 2451545.0;
constexpr double J2000Obliquity = 23.4392911;

double Radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

double Degrees(double radians)
{
    return radians * 180.0 / std::numbers::pi;
}

double Dot(const Vector3& a, const Vector3& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector3 Cross(const Vector3& a, const Vector3& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector3 Along(const Vector3& from, const Vector3& direction, double length)
{
    return {from[0] + direction[0] * length, from[1] + direction[1] * length, from[2] + direction[2] * length};
}

Vector3 Unit(const Vector3& a)
{
    const double length = std::sqrt(Dot(a, a));
    return {a[0] / length, a[1] / length, a[2] / length};
}

Vector3 Spherical(double longitude, double latitude, double radius)
{
    return {radius * std::cos(latitude) * std::cos(longitude), radius * std::cos(latitude) * std::sin(longitude),
            radius * std::sin(latitude)};
}

/// Turns the frame about its first axis: from the ecliptic to the equator for minus the obliquity.
Vector3 TurnAboutX(const Vector3& a, double angle)
{
    return {a[0], a[1] * std::cos(angle) + a[2] * std::sin(angle), a[2] * std::cos(angle) - a[1] * std::sin(angle)};
}

Vector3 TurnAboutZ(const Vector3& a, double angle)
{
    return {a[0] * std::cos(angle) + a[1] * std::sin(angle), a[1] * std::cos(angle) - a[0] * std::sin(angle), a[2]};
}

/// From libnova's frame, the ecliptic and equinox of J2000, to the true equator and equinox of date.
Vector3 TrueEquator(const Vector3& inertial, double terrestrialDay)
{
    const Vector3 equator = TurnAboutX(inertial, -Radians(J2000Obliquity));
    const double distance = std::sqrt(Dot(equator, equator));
    ln_equ_posn mean{Degrees(std::atan2(equator[1], equator[0])), Degrees(std::asin(equator[2] / distance))};
    ln_equ_posn ofDate{};
    ln_get_equ_prec2(&mean, J2000, terrestrialDay, &ofDate);
    const Vector3 meanEquator = Spherical(Radians(ofDate.ra), Radians(ofDate.dec), distance);

    ln_nutation nutation{};
    ln_get_nutation(terrestrialDay, &nutation);
    const double centuries = (terrestrialDay - J2000) / 36525.0;
    const double obliquity = Radians(J2000Obliquity - (46.8150 * centuries + 0.00059 * centuries * centuries) / 3600.0);
    const Vector3 ecliptic = TurnAboutX(meanEquator, obliquity);
    return TurnAboutX(TurnAboutZ(ecliptic, -Radians(nutation.longitude)), -obliquity - Radians(nutation.obliquity));
}

/// The Moon in kilometres, where the light that arrives shows it.
Vector3 ApparentMoon(double terrestrialDay)
{
    ln_rect_posn moon{};
    ln_get_lunar_geo_posn(terrestrialDay, &moon, 0.0);
    const double lightDays = std::hypot(moon.X, moon.Y, moon.Z) / LightSpeed / SecondsPerDay;
    ln_get_lunar_geo_posn(terrestrialDay - lightDays, &moon, 0.0);
    return TrueEquator({moon.X, moon.Y, moon.Z}, terrestrialDay);
}

/// The same for the Sun, which aberration puts back by the way that the Earth goes while its light travels.
Vector3 ApparentSun(double terrestrialDay)
{
    constexpr double Aberration = 20.49552 / 3600.0;
    ln_helio_posn sun{};
    ln_get_solar_geom_coords(terrestrialDay, &sun);
    return TrueEquator(Spherical(Radians(sun.L - Aberration / sun.R), Radians(sun.B), sun.R * AstronomicalUnit),
                       terrestrialDay);
}

/// Where a line first meets the ellipsoid.
std::optional<Vector3> MeetGround(const Vector3& from, const Vector3& direction)
{
    // Stretched along the Earth's axis the ellipsoid is a sphere.
    constexpr double Stretch = 1.0 / (1.0 - Flattening);
    const Vector3 start{from[0], from[1], from[2] * Stretch};
    const Vector3 way{direction[0], direction[1], direction[2] * Stretch};
    const double a = Dot(way, way);
    const double b = Dot(start, way);
    const double c = Dot(start, start) - EquatorRadius * EquatorRadius;
    const double discriminant = b * b - a * c;
    if (discriminant < 0.0) {
        return std::nullopt;
    }
    return Along(from, direction, (-b - std::sqrt(discriminant)) / a);
}

GroundPoint Geodetic(const Vector3& point)
{
    constexpr double Squeeze = (1.0 - Flattening) * (1.0 - Flattening);
    return {Degrees(std::atan2(point[1], point[0])),
            Degrees(std::atan2(point[2], Squeeze * std::hypot(point[0], point[1])))};
}

Vector3 Rectangular(const GroundPoint& place)
{
    constexpr double Squeeze = (1.0 - Flattening) * (1.0 - Flattening);
    const double latitude = Radians(place.Latitude);
    const double longitude = Radians(place.Longitude);
    const double normal = EquatorRadius / std::sqrt(std::cos(latitude) * std::cos(latitude) +
                                                    Squeeze * std::sin(latitude) * std::sin(latitude));
    return {normal * std::cos(latitude) * std::cos(longitude), normal * std::cos(latitude) * std::sin(longitude),
            normal * Squeeze * std::sin(latitude)};
}
} // namespace

CUmbraPath::Shadow CUmbraPath::ShadowAt(double day) const
{
    const double terrestrialDay = day + m_deltaT / SecondsPerDay;
    const double sidereal = Radians(ln_get_apparent_sidereal_time(day) * 15.0);
    const Vector3 moon = TurnAboutZ(ApparentMoon(terrestrialDay), sidereal);
    const Vector3 sun = TurnAboutZ(ApparentSun(terrestrialDay), sidereal);

    Shadow shadow;
    shadow.Moon = moon;
    const Vector3 way = Along(moon, sun, -1.0);
    shadow.Axis = Unit(way);
    const double sine = (SunRadius - MoonRadius) / std::sqrt(Dot(way, way));
    shadow.ConeTangent = sine / std::sqrt(1.0 - sine * sine);
    shadow.ConeApex = MoonRadius / sine;
    return shadow;
}

double CUmbraPath::Depth(const Shadow& shadow, const Vector3& point)
{
    const Vector3 fromMoon = Along(point, shadow.Moon, -1.0);
    const double along = Dot(fromMoon, shadow.Axis);
    const Vector3 aside = Along(fromMoon, shadow.Axis, -along);
    return (shadow.ConeApex - along) * shadow.ConeTangent - std::sqrt(Dot(aside, aside));
}

std::optional<GroundPoint> CUmbraPath::Central(double day) const
{
    const Shadow shadow = ShadowAt(day);
    const std::optional<Vector3> point = MeetGround(shadow.Moon, shadow.Axis);
    return point ? std::optional(Geodetic(*point)) : std::nullopt;
}

CUmbraPath::Limits CUmbraPath::LimitsAt(double day) const
{
    // A limit is the envelope of the umbra's edge: the points of the edge that the umbra neither gains nor loses.
    constexpr double Moment = 1.0 / SecondsPerDay;
    constexpr int Steps = 360;
    constexpr int Halvings = 40;
    const Shadow now = ShadowAt(day);
    const Shadow before = ShadowAt(day - Moment);
    const Shadow after = ShadowAt(day + Moment);
    const Vector3 east = Unit(Cross({0.0, 0.0, 1.0}, now.Axis));
    const Vector3 north = Cross(now.Axis, east);
    const Vector3 apex = Along(now.Moon, now.Axis, now.ConeApex);

    const auto edge = [&](double angle) {
        const Vector3 aside = Along(Along({}, east, std::cos(angle)), north, std::sin(angle));
        // Down the cone, towards its apex.
        return MeetGround(Along(now.Moon, aside, now.ConeApex * now.ConeTangent),
                          Unit(Along(apex, Along(now.Moon, aside, now.ConeApex * now.ConeTangent), -1.0)));
    };
    const auto gain = [&](const Vector3& point) { return Depth(after, point) - Depth(before, point); };

    Limits limits;
    const double step = 2.0 * std::numbers::pi / Steps;
    for (int index = 0; index < Steps; ++index) {
        double low = index * step;
        double high = low + step;
        std::optional<Vector3> lowPoint = edge(low);
        const std::optional<Vector3> highPoint = edge(high);
        if (!lowPoint || !highPoint || (gain(*lowPoint) < 0.0) == (gain(*highPoint) < 0.0)) {
            continue;
        }
        for (int halving = 0; halving < Halvings; ++halving) {
            const double middle = (low + high) / 2.0;
            const std::optional<Vector3> point = edge(middle);
            if (!point) {
                break;
            }
            if ((gain(*point) < 0.0) == (gain(*lowPoint) < 0.0)) {
                low = middle;
                lowPoint = point;
            } else {
                high = middle;
            }
        }
        (std::sin(low) > 0.0 ? limits.North : limits.South) = Geodetic(*lowPoint);
    }
    return limits;
}

double CUmbraPath::AxisDistance(double day) const
{
    const Shadow shadow = ShadowAt(day);
    const Vector3 aside = Along(shadow.Moon, shadow.Axis, -Dot(shadow.Moon, shadow.Axis));
    return std::sqrt(Dot(aside, aside)) / EquatorRadius;
}

double CUmbraPath::DepthInUmbra(const GroundPoint& place, double day) const
{
    return Depth(ShadowAt(day), Rectangular(place));
}

double CUmbraPath::Distance(const GroundPoint& a, const GroundPoint& b)
{
    const Vector3 way = Along(Rectangular(a), Rectangular(b), -1.0);
    return std::sqrt(Dot(way, way));
}
