#pragma once

/// Comparison of coordinates as the host displays them.
class CCommonCoordFormat
{
public:
    /// Whether two angles in degrees point the same way to within 0.036 arc-seconds; whole turns do not count.
    [[nodiscard]] static int IsEqualDeg(double a, double b);

    /// Whether two altitudes in metres agree to within 0.75 m.
    [[nodiscard]] static int IsEqualAlt(double a, double b);
};

/// Brings an angle in degrees into one turn, 0 <= result < 360; 0 for an angle that is not finite.
[[nodiscard]] double degmal(double degrees);
