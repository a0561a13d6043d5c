#pragma once

#include "host/observer/BodyTable.h"
#include "obs/core/SiteLocation.h"

/// The rules of the boxes in which a location is typed: what each box takes, what is said otherwise, what a value
/// becomes and what a spin button does. The site dialog, the city list and the place editor take the same values but
/// say and correct different things, on purpose; each is a policy over the one table.
namespace EntryRules
{
/// Numbers of the boxes, in the order of the tables.
enum class Box
{
    LngDeg,
    LngMin,
    LngSec,
    LatDeg,
    LatMin,
    LatSec,
    Alt,
    TzHour,
    TzMin
};
inline constexpr int BoxCount = 9;

enum class Policy
{
    SiteDialog,
    CityList,
    Editor
};

/// What is being typed, and on which body: the altitude is in the body's display units.
struct Entered
{
    CoordinateFields& Fields;
    double& Altitude;
    int Body = BodyTable::Earth;
    bool IsSmall = true; ///< altitudes are in metres, and may be negative
};

/// A value outside the range of its box.
struct Finding
{
    bool IsOutside = false;
    const char16_t* Message = nullptr; ///< null: made from the range by the dialog
    double Low = 0.0;                  ///< the range of the box
    double High = 0.0;
    double Becomes = 0.0;
    bool ClearsBelow = false; ///< minutes and seconds become 0 with it
};

/// Tests the value of a box.
[[nodiscard]] Finding Check(const Entered& entered, Box box, Policy policy);
/// Puts the nearest value that is taken in the place of the one that was found.
void Correct(const Entered& entered, Box box, const Finding& finding);

/// At 90 degrees of latitude there are no minutes and seconds, except in the place editor: true when they were cleared.
bool ClearBeyondPole(CoordinateFields& fields, Policy policy);

/// Steps a value by the sign of the delta (negative: up, zero: not at all), then brings it into its range; nothing is
/// carried. In the site dialog longitude degrees go round the globe and flip the hemisphere where there is one.
void Spin(const Entered& entered, Box box, int delta, Policy policy);

/// Whether a box of the site dialog belongs to the time zone, whose change is applied by itself.
[[nodiscard]] constexpr bool IsTimeZone(Box box)
{
    return box == Box::TzHour || box == Box::TzMin;
}
/// Site dialog: an empty text, or one that ends with ".", is still being typed.
[[nodiscard]] constexpr bool WaitsForDigit(Box box)
{
    return box == Box::LngSec || box == Box::LatSec;
}
/// Site dialog: the caret is put back after the change.
[[nodiscard]] constexpr bool KeepsCaret(Box box)
{
    return box == Box::LngMin || box == Box::LngSec || box == Box::LatMin || box == Box::LatSec;
}
/// Site dialog: a corrected latitude is applied, any other value is not.
[[nodiscard]] constexpr bool AppliesAfterCorrection(Box box)
{
    return box == Box::LatDeg || box == Box::LatMin || box == Box::LatSec;
}
/// The value of a box as a number.
[[nodiscard]] double Get(const Entered& entered, Box box);
/// Sets it; a box of whole numbers drops what comes behind the point.
void Set(const Entered& entered, Box box, double value);
} // namespace EntryRules
