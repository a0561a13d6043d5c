#include "host/observer/CommonCoordFormat.h"

#include <cmath>

namespace
{
constexpr double FullTurn = 360.0;
constexpr double EqualDegrees = 1.0e-5; // well below the displayed tenth of an arc-second
// Below the displayed metre, but above its rounding: a shown altitude equals the terrain's that it was rounded from,
// so that fields are not filled anew under the user's hand.
constexpr double EqualMetres = 0.75;
} // namespace

int CCommonCoordFormat::IsEqualDeg(double a, double b)
{
    return std::fabs(std::remainder(a - b, FullTurn)) < EqualDegrees ? 1 : 0;
}

int CCommonCoordFormat::IsEqualAlt(double a, double b)
{
    return std::fabs(a - b) < EqualMetres ? 1 : 0;
}

double degmal(double degrees)
{
    if (!std::isfinite(degrees))
        return 0.0;
    double turned = std::fmod(degrees, FullTurn);
    if (turned < 0.0)
        turned += FullTurn;
    return turned < FullTurn ? turned : 0.0; // a tiny negative angle rounds up to a full turn
}
