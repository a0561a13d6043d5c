#pragma once

#include "city/core/CoordinateBlock.h"

#include <QString>

#include <variant>

/// The rules of the boxes in which the user types the position of a place. The city list and the place editor take
/// the same values but say and correct different things; the differences are on purpose and stand side by side in
/// the tables. The site dialog has rules of its own.
namespace PlaceEntryRules
{
using Field = std::variant<int CoordinateBlock::*, double CoordinateBlock::*>;

/// The boxes, by the names of their handlers, in the order of the tables.
enum class Box
{
    Long1,
    Long2,
    Long3,
    Lat1,
    Lat2,
    Lat3,
    Alt,
    TzHour,
    TzMin
};
inline constexpr int BoxCount = 9;

/// Whose boxes they are.
enum class Owner
{
    CityList,
    Editor
};

/// What one dialog says and does about a value outside the range of its box.
struct Correction
{
    const char16_t* Message;
    double Low;  ///< what a value too low becomes
    double High; ///< what a value too high becomes
};

/// Rules of one box.
struct BoxRule
{
    Field Value;
    double Low;        ///< lowest value taken
    double High;       ///< highest value taken unless HighExcluded
    bool HighExcluded; ///< the value must stay below High
    double Step;       ///< of the spin button
    double SpinHigh;   ///< where the spin button stops
    Correction CityList;
    Correction Editor;
};

[[nodiscard]] const BoxRule& Rule(Box box);

/// What came of a check.
struct Finding
{
    const char16_t* Message = nullptr; ///< to be shown; null when there is nothing to say
    bool Changed = false;              ///< the block was corrected and is to be written
};

/// Tests the value of a box after each keystroke and corrects it in the block.
[[nodiscard]] Finding Check(CoordinateBlock& block, Box box, Owner owner);

/// Steps a value by the sign of the delta (negative: up, zero: not at all), then brings it into its range. Nothing is
/// carried into other values.
void Spin(CoordinateBlock& block, Box box, int delta, Owner owner);

/// The place editor's last check: a line for each value that is not acceptable, each ending with a line feed.
[[nodiscard]] QString FinalComplaints(const CoordinateBlock& block);
} // namespace PlaceEntryRules
