#pragma once

#include "obs/core/SiteLocation.h"

#include <array>
#include <variant>

/// The rules of the boxes in which the user types a location: what each box takes, what it says otherwise, how it
/// corrects, and what follows. The boxes differ on purpose; the differences stand in the tables.
namespace EntryRules
{
using Field = std::variant<int SiteFields::*, double SiteFields::*>;

/// Numbers of the boxes, in the order of the tables.
enum class Box
{
    LngDeg,
    LngMin,
    LngSec,
    LatDeg,
    LatMin,
    LatSec,
    TzHour,
    TzMin
};
inline constexpr int BoxCount = 8;

/// What follows a value that was accepted or corrected.
enum class Apply
{
    Location,
    TimeZone
};

/// Rules of one edit box.
struct EditRule
{
    Field Value;
    double Low;                   ///< lowest value taken, and the correction of a lower one
    double High;                  ///< highest value taken unless HighExcluded
    bool HighExcluded;            ///< the value must stay below High
    double HighCorrection;        ///< what a value too high becomes
    const char16_t* BelowMessage; ///< null: made from the bounds of the body
    const char16_t* AboveMessage;
    bool AppliesAfterCorrection;
    bool WaitsForDigit; ///< an empty text or one that ends with "." is still being typed
    bool KeepsCaret;
    Apply Then;
};

/// Rules of one spin button.
struct SpinRule
{
    double Step;
    double Low;
    double High;
};

[[nodiscard]] const EditRule& Edit(Box box);
[[nodiscard]] const SpinRule& Spin(Box box);

[[nodiscard]] double Get(const SiteFields& fields, const Field& field);
void Set(SiteFields& fields, const Field& field, double value);

/// Highest degrees of longitude on a body: 180 where the user chooses a hemisphere, else 360.
[[nodiscard]] int LongitudeBound(int body);

/// Bounds of an altitude in display units.
inline constexpr double AltitudeHigh = 999999.0;
[[nodiscard]] constexpr double AltitudeLow(bool isSmall)
{
    return isSmall ? -9999.0 : 0.0;
}

/// Steps a value by the sign of the delta (negative: up), then brings it into its range. Longitude degrees go round
/// the globe and flip the hemisphere where there is one; latitude degrees at the poles clear minutes and seconds.
void SpinBox(SiteFields& fields, Box box, int delta, int body);
void SpinAltitude(SiteFields& fields, int delta, bool isSmall);

/// At 90 degrees of latitude there are no minutes and seconds; true when the fields stand there.
bool ClearBeyondPole(SiteFields& fields);
} // namespace EntryRules
