#pragma once

#include <array>
#include <optional>
#include <vector>

/// A place on the Earth in degrees, east and north positive.
struct GroundPoint
{
    double Longitude = 0.0;
    double Latitude = 0.0; ///< geodetic
};

using Vector3 = std::array<double, 3>;

/// The path of the umbra of one solar eclipse over the Earth's ellipsoid, from libnova's Sun (VSOP87) and Moon
/// (ELP 2000-82B). Times are Julian days of Universal Time; the height of the ground is not regarded.
class CUmbraPath
{
public:
    /// `deltaT` is Terrestrial Time less Universal Time in seconds.
    explicit CUmbraPath(double deltaT) : m_deltaT(deltaT) {}

    /// Where the axis of the shadow meets the ground; nothing while it misses the Earth.
    [[nodiscard]] std::optional<GroundPoint> Central(double day) const;

    /// The points of the northern and southern limit that the umbra touches at this moment.
    struct Limits
    {
        std::optional<GroundPoint> North;
        std::optional<GroundPoint> South;
    };
    [[nodiscard]] Limits LimitsAt(double day) const;

    /// The distance of the shadow's axis from the Earth's centre, in equatorial radii.
    [[nodiscard]] double AxisDistance(double day) const;

    /// How deep in the umbra (negative: outside) a place is, in kilometres on a plane across the axis.
    [[nodiscard]] double DepthInUmbra(const GroundPoint& place, double day) const;

    /// Kilometres on the ground between two places, good for a few hundred.
    [[nodiscard]] static double Distance(const GroundPoint& a, const GroundPoint& b);

private:
    /// The shadow in kilometres, in a frame that turns with the Earth.
    struct Shadow
    {
        Vector3 Moon{};         ///< its centre
        Vector3 Axis{};         ///< unit vector from the Sun through the Moon
        double ConeTangent = 0; ///< of half the angle of the umbra's cone
        double ConeApex = 0;    ///< distance of the cone's apex behind the Moon
    };
    [[nodiscard]] Shadow ShadowAt(double day) const;
    [[nodiscard]] static double Depth(const Shadow& shadow, const Vector3& point);

    double m_deltaT;
};
