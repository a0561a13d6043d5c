#include "controls/core/EngineBody.h"

#include "controls/core/Angle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr double J2000 = 2451545.0;
constexpr double DaysPerCentury = 36525.0;
constexpr double Obliquity = 23.43928;
/// Rotation and orbits run in dynamical time, which is this far ahead of universal time.
constexpr double DynamicalTimeLead = 69.2 / 86400.0;

constexpr OrbitElements NoOrbit{};
constexpr OrbitElements EarthOrbit{1.00000261,   0.00000562,     0.01671123,   -0.00004392, -0.00001531, -0.01294668,
                                   100.46457166, 35999.37244981, 102.93768193, 0.32327364,  0.0,         0.0};

// Poles and meridians of Haumea, Makemake and Eris are little known: their orbit's or ring's pole, their period, and
// an arbitrary meridian.
// clang-format off
constexpr std::array<EngineBody, BodyTable::Count> Bodies{{
    {u"sun", BodyLook::Star, 0xFFD27A,
     {286.13, 0, 63.87, 0, 84.176, 14.1844},
     NoOrbit},
    {u"moon", BodyLook::Rock, 0xB4B1AA,
     {269.9949, 0.0031, 66.5392, 0.0130, 38.3213, 13.17635815},
     EarthOrbit},
    {u"mercury", BodyLook::Rock, 0x9F978C,
     {281.0103, -0.0328, 61.4155, -0.0049, 329.5988, 6.1385108},
     {0.38709927, 0.00000037, 0.20563593, 0.00001906, 7.00497902, -0.00594749,
      252.25032350, 149472.67411175, 77.45779628, 0.16047689, 48.33076593, -0.12534081}},
    {u"venus", BodyLook::Haze, 0xE3C68F,
     {272.76, 0, 67.16, 0, 160.20, -1.4813688},
     {0.72333566, 0.00000390, 0.00677672, -0.00004107, 3.39467605, -0.00078890,
      181.97909950, 58517.81538729, 131.60246718, 0.00268329, 76.67984255, -0.27769418}},
    {u"earth", BodyLook::Haze, 0x2E6FA8,
     {0, -0.641, 90, -0.557, 190.147, 360.9856235},
     EarthOrbit},
    {u"mars", BodyLook::Desert, 0xC4744A,
     {317.68143, -0.1061, 52.88650, -0.0609, 176.630, 350.89198226},
     {1.52371034, 0.00001847, 0.09339410, 0.00007882, 1.84969142, -0.00813131,
      -4.55343205, 19140.30268499, -23.94362959, 0.44441088, 49.55953891, -0.29257343}},
    {u"jupiter", BodyLook::Clouds, 0xD2A87C,
     {268.056595, -0.006499, 64.495303, 0.002413, 284.95, 870.5360000},
     {5.20288700, -0.00011607, 0.04838624, -0.00013253, 1.30439695, -0.00183714,
      34.39644051, 3034.74612775, 14.72847983, 0.21252668, 100.47390909, 0.20469106}},
    {u"saturn", BodyLook::Clouds, 0xDCC08D,
     {40.589, -0.036, 83.537, -0.004, 38.90, 810.7939024},
     {9.53667594, -0.00125060, 0.05386179, -0.00050991, 2.48599187, 0.00193609,
      49.95424423, 1222.49362201, 92.59887831, -0.41897216, 113.66242448, -0.28867794}},
    {u"uranus", BodyLook::Haze, 0x9CCFD6,
     {257.311, 0, -15.175, 0, 203.81, -501.1600928},
     {19.18916464, -0.00196176, 0.04725744, -0.00004397, 0.77263783, -0.00242939,
      313.23810451, 428.48202785, 170.95427630, 0.40805281, 74.01692503, 0.04240589}},
    {u"neptune", BodyLook::Haze, 0x5C86D6,
     {299.36, 0, 43.46, 0, 253.18, 536.3128492},
     {30.06992276, 0.00026291, 0.00859048, 0.00005105, 1.77004347, 0.00035372,
      -55.12002969, 218.45945325, 44.96476227, -0.32241464, 131.78422574, -0.00508664}},
    {u"ceres", BodyLook::Rock, 0x8A8680,
     {291.418, 0, 66.764, 0, 170.650, 952.1532},
     {2.7660, 0, 0.0785, 0, 10.587, 0,
      160.36, 7820.37, 153.91, 0, 80.27, 0}},
    {u"pluto", BodyLook::Ice, 0xC9B29A,
     {132.993, 0, -6.163, 0, 302.695, 56.3625225},
     {39.48211675, -0.00031596, 0.24882730, 0.00005170, 17.14001206, 0.00004818,
      238.92903833, 145.20780515, 224.06891629, -0.04062942, 110.30393684, -0.01183482}},
    {u"haumea", BodyLook::Ice, 0xD8D6D2,
     {285.1, 0, -10.6, 0, 0, 2206.70},
     {43.13, 0, 0.195, 0, 28.21, 0,
      192.2, 127.1, 0.9, 0, 121.9, 0}},
    {u"makemake", BodyLook::Ice, 0xC79A78,
     {280.0, 0, 38.0, 0, 0, 378.50},
     {45.56, 0, 0.161, 0, 28.98, 0,
      155.4, 117.06, 14.4, 0, 79.6, 0}},
    {u"eris", BodyLook::Ice, 0xDDDCDA,
     {280.0, 0, 25.0, 0, 0, 22.805},
     {67.86, 0, 0.436, 0, 44.04, 0,
      20.2, 64.4, 187.55, 0, 35.95, 0}},
}};
// clang-format on

UnitVector Cross(const UnitVector& a, const UnitVector& b)
{
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}

/// Direction from the body to the Sun in the equator of J2000.
UnitVector SunDirection(const OrbitElements& orbit, double centuries)
{
    const double axis = orbit.Axis + orbit.AxisRate * centuries;
    const double eccentricity = std::clamp(orbit.Eccentricity + orbit.EccentricityRate * centuries, 0.0, 0.9);
    const double inclination = (orbit.Inclination + orbit.InclinationRate * centuries) * RadiansPerDegree;
    const double longitude = orbit.MeanLongitude + orbit.MeanLongitudeRate * centuries;
    const double perihelion = orbit.Perihelion + orbit.PerihelionRate * centuries;
    const double node = orbit.Node + orbit.NodeRate * centuries;
    const double argument = (perihelion - node) * RadiansPerDegree;
    const double meanAnomaly = EngineBodies::FullTurn(longitude - perihelion) * RadiansPerDegree;
    double anomaly = meanAnomaly;
    constexpr int Steps = 10; // Newton's method is at home long before, for every eccentricity of the table
    for (int i = 0; i < Steps; ++i)
        anomaly -=
            (anomaly - eccentricity * std::sin(anomaly) - meanAnomaly) / (1.0 - eccentricity * std::cos(anomaly));
    const double along = axis * (std::cos(anomaly) - eccentricity);
    const double across = axis * std::sqrt(1.0 - eccentricity * eccentricity) * std::sin(anomaly);
    const double u = along * std::cos(argument) - across * std::sin(argument);
    const double v = along * std::sin(argument) + across * std::cos(argument);
    const double nodeCosine = std::cos(node * RadiansPerDegree);
    const double nodeSine = std::sin(node * RadiansPerDegree);
    const double x = u * nodeCosine - v * nodeSine * std::cos(inclination);
    const double y = u * nodeSine + v * nodeCosine * std::cos(inclination);
    const double z = v * std::sin(inclination);
    const double tilt = Obliquity * RadiansPerDegree;
    const double distance = std::hypot(x, y, z);
    return {-x / distance, (z * std::sin(tilt) - y * std::cos(tilt)) / distance,
            (-y * std::sin(tilt) - z * std::cos(tilt)) / distance};
}

/// The Moon's rotation follows the swing of its orbit: the greatest terms of pole and meridian.
void AddLunarSwing(double days, double& rightAscension, double& declination, double& meridian)
{
    const double e1 = (125.045 - 0.0529921 * days) * RadiansPerDegree;
    const double e2 = (250.089 - 0.1059842 * days) * RadiansPerDegree;
    const double e3 = (260.008 + 13.0120009 * days) * RadiansPerDegree;
    const double e4 = (176.625 + 13.3407154 * days) * RadiansPerDegree;
    rightAscension += -3.8787 * std::sin(e1) - 0.1204 * std::sin(e2) + 0.0700 * std::sin(e3) - 0.0172 * std::sin(e4);
    declination += 1.5419 * std::cos(e1) + 0.0239 * std::cos(e2) - 0.0278 * std::cos(e3) + 0.0068 * std::cos(e4);
    meridian += 3.5610 * std::sin(e1) + 0.1208 * std::sin(e2) - 0.0642 * std::sin(e3) + 0.0158 * std::sin(e4);
}
} // namespace

const EngineBody& EngineBodies::Of(int body)
{
    return Bodies[static_cast<std::size_t>(BodyTable::Valid(body))];
}

GeoPoint EngineBodies::SubsolarPoint(int body, double julianDay)
{
    if (body == BodyTable::Sun || !std::isfinite(julianDay))
        return {};
    const double days = julianDay + DynamicalTimeLead - J2000;
    const double centuries = days / DaysPerCentury;
    const RotationElements& rotation = Of(body).Rotation;
    double rightAscension = rotation.RightAscension + rotation.RightAscensionRate * centuries;
    double declination = rotation.Declination + rotation.DeclinationRate * centuries;
    double meridian = rotation.Meridian + rotation.MeridianRate * days;
    if (body == BodyTable::Moon)
        AddLunarSwing(days, rightAscension, declination, meridian);

    const UnitVector pole = ToVector({rightAscension, declination});
    const UnitVector node = ToVector({rightAscension + 90.0, 0.0});
    const UnitVector sun = SunDirection(Of(body).Orbit, centuries);
    const double angle = std::atan2(Dot(sun, Cross(pole, node)), Dot(sun, node)) / RadiansPerDegree;
    return {FullTurn(angle - meridian), std::asin(std::clamp(Dot(sun, pole), -1.0, 1.0)) / RadiansPerDegree};
}

bool EngineBodies::CountsEast(int body)
{
    return BodyTable::Of(body).Longitudes != BodyTable::Longitude::West;
}

double EngineBodies::ToEast(int body, double longitude)
{
    return FullTurn(CountsEast(body) ? longitude : -longitude);
}

double EngineBodies::FromEast(int body, double east)
{
    return ToEast(body, east);
}

double EngineBodies::FullTurn(double degrees)
{
    const double rest = std::fmod(degrees, 360.0);
    if (!std::isfinite(rest))
        return 0.0;
    const double turned = rest < 0.0 ? rest + 360.0 : rest;
    return turned >= 360.0 ? 0.0 : turned; // a tiny negative rest rounds up to the whole turn
}
