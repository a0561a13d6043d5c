#include "city/core/PlaceEntryRules.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
using PlaceEntryRules::Box;
using PlaceEntryRules::BoxRule;
using PlaceEntryRules::Finding;
using PlaceEntryRules::Owner;

constexpr int Pole = 90;
constexpr double LastSecond = 59.9;
constexpr double LowestAltitude = -9999;
constexpr double HighestAltitude = 999999;

constexpr char16_t LongDegText[] = u"経度の度には 0 から 180 までの値を入力してください。";
constexpr char16_t LongMinText[] = u"経度の分には 0 から 59 までの値を入力してください。";
constexpr char16_t LongSecText[] = u"経度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char16_t LatDegText[] = u"緯度の度には 0 から 90 までの値を入力してください。";
constexpr char16_t LatMinText[] = u"緯度の分には 0 から 59 の値を入力してください。";
constexpr char16_t LatSecText[] = u"緯度の秒には 0 から 59.9 の値を入力してください。";
constexpr char16_t AltText[] = u"標高には -9999 から 999999 までの値を入力してください。";
constexpr char16_t HourText[] = u"タイムゾーンの時には 0 から 14 までの値を入力してください。";
constexpr char16_t ListHourText[] = u"タイムゾーンの時には 0 から14 までの値を入力してください。";
constexpr char16_t MinText[] = u"タイムゾーンの分には 0 から 59 までの値を入力してください。";

// The editor names the longitude for latitude minutes and seconds, and the city list leaves a word out there; both on
// purpose, as is the missing blank in the city list's text for time-zone hours.
constexpr std::array<BoxRule, PlaceEntryRules::BoxCount> Rules{{
    // value, low, high, high excluded, step, spin high, {city list}, {editor}
    {&CoordinateBlock::LongitudeDegrees, 0, 180, false, 1, 180, {LongDegText, 0, 0}, {LongDegText, 0, 0}},
    {&CoordinateBlock::LongitudeMinutes, 0, 59, false, 1, 59, {LongMinText, 0, 0}, {LongMinText, 0, 0}},
    {&CoordinateBlock::LongitudeSeconds, 0, 60, true, 0.1, LastSecond, {LongSecText, 0, 0}, {LongSecText, 0, 0}},
    {&CoordinateBlock::LatitudeDegrees, 0, 90, false, 1, 90, {LatDegText, 0, 90}, {LatDegText, 0, 0}},
    {&CoordinateBlock::LatitudeMinutes, 0, 59, false, 1, 59, {LatMinText, 0, 59}, {LongMinText, 0, 0}},
    {&CoordinateBlock::LatitudeSeconds, 0, 60, true, 0.1, LastSecond, {LatSecText, 0, LastSecond}, {LongSecText, 0, 0}},
    {&CoordinateBlock::Altitude,
     LowestAltitude,
     HighestAltitude,
     false,
     1,
     HighestAltitude,
     {AltText, LowestAltitude, HighestAltitude},
     {AltText, LowestAltitude, HighestAltitude}},
    {&CoordinateBlock::TimeZoneHours, 0, 14, false, 1, 14, {ListHourText, 0, 0}, {HourText, 0, 0}},
    {&CoordinateBlock::TimeZoneMinutes, 0, 59, false, 1, 59, {MinText, 0, 0}, {MinText, 0, 0}},
}};

double Get(const CoordinateBlock& block, const PlaceEntryRules::Field& field)
{
    return std::visit([&block](auto member) { return static_cast<double>(block.*member); }, field);
}

/// The values set here lie within a box's range.
void Set(CoordinateBlock& block, const PlaceEntryRules::Field& field, double value)
{
    if (const auto* whole = std::get_if<int CoordinateBlock::*>(&field))
        block.** whole = static_cast<int>(value);
    else
        block.*std::get<double CoordinateBlock::*>(field) = value;
}

void ClearBelowDegrees(CoordinateBlock& block)
{
    block.LatitudeMinutes = 0;
    block.LatitudeSeconds = 0.0;
}

/// In the city list there are no minutes and seconds at 90 degrees of latitude.
bool IsHeldAtPole(const CoordinateBlock& block, Box box, Owner owner)
{
    return owner == Owner::CityList && (box == Box::Lat2 || box == Box::Lat3) && block.LatitudeDegrees == Pole;
}

double Unsigned(int degrees, int minutes, double seconds)
{
    return degrees + minutes / 60.0 + seconds / 3600.0;
}
} // namespace

const PlaceEntryRules::BoxRule& PlaceEntryRules::Rule(Box box)
{
    return Rules[static_cast<size_t>(box)];
}

PlaceEntryRules::Finding PlaceEntryRules::Check(CoordinateBlock& block, Box box, Owner owner)
{
    if (IsHeldAtPole(block, box, owner)) {
        ClearBelowDegrees(block);
        return {nullptr, true};
    }
    const BoxRule& rule = Rule(box);
    const Correction& correction = owner == Owner::CityList ? rule.CityList : rule.Editor;
    const double value = Get(block, rule.Value);
    const bool isBelow = value < rule.Low;
    const bool isAbove = rule.HighExcluded ? value >= rule.High : value > rule.High;
    Finding finding;
    if (isBelow || isAbove) {
        Set(block, rule.Value, isBelow ? correction.Low : correction.High);
        finding = {correction.Message, true};
    }
    if (owner == Owner::CityList && box == Box::Lat1 && (isBelow || block.LatitudeDegrees == Pole)) {
        ClearBelowDegrees(block);
        finding.Changed = true;
    }
    return finding;
}

void PlaceEntryRules::Spin(CoordinateBlock& block, Box box, int delta, Owner owner)
{
    const BoxRule& rule = Rule(box);
    if (IsHeldAtPole(block, box, owner)) {
        Set(block, rule.Value, 0.0);
        return;
    }
    const double direction = delta < 0 ? 1.0 : (delta > 0 ? -1.0 : 0.0);
    const double stepped = Get(block, rule.Value) + direction * rule.Step;
    // Comparing this way round makes a negative zero a plain one.
    Set(block, rule.Value, stepped > rule.Low ? std::min(stepped, rule.SpinHigh) : rule.Low);
    if (owner == Owner::CityList && box == Box::Lat1 && (stepped < rule.Low || stepped >= rule.SpinHigh))
        ClearBelowDegrees(block);
}

QString PlaceEntryRules::FinalComplaints(const CoordinateBlock& block)
{
    struct FinalRule
    {
        double Value;
        double Low;
        double High;
        const char16_t* Message;
    };
    const std::array rules{
        FinalRule{Unsigned(block.LongitudeDegrees, block.LongitudeMinutes, block.LongitudeSeconds), 0, 180,
                  u"経度には 0.0 から 180.0 までの値を入力してください\n"},
        FinalRule{double(block.LongitudeMinutes), 0, 59, u"経度の分には 0 から 59 までの値を入力してください\n"},
        FinalRule{block.LongitudeSeconds, 0, LastSecond, u"経度の秒には 0 から 59.9 までの値を入力してください\n"},
        FinalRule{Unsigned(block.LatitudeDegrees, block.LatitudeMinutes, block.LatitudeSeconds), 0, 90,
                  u"緯度には 0.0 から 90.0 までの値を入力してください\n"},
        FinalRule{double(block.LatitudeMinutes), 0, 59, u"緯度の分には 0 から 59 までの値を入力してください\n"},
        FinalRule{block.LatitudeSeconds, 0, LastSecond, u"緯度の秒には 0 から 59.9 までの値を入力してください\n"},
        FinalRule{block.Altitude, LowestAltitude, HighestAltitude,
                  u"標高には -9999 から 999999 までの値を入力してください\n"},
        FinalRule{block.TimeZoneHours + block.TimeZoneMinutes / 60.0, 0, 14,
                  u"タイムゾーンには 0 から 14 までの値を入力してください\n"},
        FinalRule{double(block.TimeZoneMinutes), 0, 59, u"タイムゾーンの分には 0 から 59 までの値を入力してください\n"},
    };
    QString complaints;
    for (const FinalRule& rule : rules) {
        if (rule.Value < rule.Low || rule.Value > rule.High)
            complaints += QString::fromUtf16(rule.Message);
    }
    return complaints;
}
