#include "obs/core/EntryRules.h"

#include <algorithm>
#include <array>
#include <variant>

namespace
{
using EntryRules::Box;
using EntryRules::Entered;
using EntryRules::Policy;

constexpr int Pole = 90;
constexpr int HalfTurn = 180;
constexpr int FullTurn = 360;
constexpr double LastSecond = 59.9;
constexpr double HighestAltitude = 999999;
constexpr double HighestWhole = 1.0e9; // keeps a typed value inside an int

/// What is the same for all: the value, its range, the step of its spin button and where that stops.
struct Rule
{
    std::variant<int CoordinateFields::*, double CoordinateFields::*, std::monostate> Field; ///< none: the altitude
    double Low;
    double High; ///< highest value taken, or the first one that is not
    bool HighExcluded;
    double Step;
    double SpinHigh;
};
constexpr std::array<Rule, EntryRules::BoxCount> Rules{{
    {&CoordinateFields::LongitudeDegrees, 0, HalfTurn, false, 1, HalfTurn},
    {&CoordinateFields::LongitudeMinutes, 0, 59, false, 1, 59},
    {&CoordinateFields::LongitudeSeconds, 0, 60, true, 0.1, LastSecond},
    {&CoordinateFields::LatitudeDegrees, 0, Pole, false, 1, Pole},
    {&CoordinateFields::LatitudeMinutes, 0, 59, false, 1, 59},
    {&CoordinateFields::LatitudeSeconds, 0, 60, true, 0.1, LastSecond},
    {std::monostate(), -9999, HighestAltitude, false, 1, HighestAltitude},
    {&CoordinateFields::TimeZoneHours, 0, 14, false, 1, 14},
    {&CoordinateFields::TimeZoneMinutes, 0, 59, false, 1, 59},
}};

/// What a dialog says about a value below or above, and what such a value becomes.
struct Correction
{
    const char16_t* Below;
    const char16_t* Above;
    double Low;
    double High;
};

constexpr char16_t LngDegText[] = u"経度の度には 0 から 180 までの値を入力してください。";
constexpr char16_t LngMinText[] = u"経度の分には 0 から 59 までの値を入力してください。";
constexpr char16_t LngSecText[] = u"経度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char16_t LatDegText[] = u"緯度の度には 0 から 90 までの値を入力してください。";
constexpr char16_t LatMinText[] = u"緯度の分には 0 から 59 までの値を入力してください。";
constexpr char16_t LatSecText[] = u"緯度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char16_t ListLatMinText[] = u"緯度の分には 0 から 59 の値を入力してください。";
constexpr char16_t ListLatSecText[] = u"緯度の秒には 0 から 59.9 の値を入力してください。";
constexpr char16_t AltText[] = u"標高には -9999 から 999999 までの値を入力してください。";
constexpr char16_t HourText[] = u"タイムゾーンの時には 0 から 14 までの値を入力してください。";
constexpr char16_t ListHourText[] = u"タイムゾーンの時には 0 から14 までの値を入力してください。";
constexpr char16_t MinText[] = u"タイムゾーンの分には 0 から 59 までの値を入力してください。";

// On purpose: the site dialog's upper messages of latitude minutes and seconds name the longitude, as both of the
// editor's do; the city list leaves a word out there, and a blank in its text for time-zone hours. The site dialog
// makes its messages for longitude degrees and the altitude from the range of the body.
constexpr std::array<std::array<Correction, EntryRules::BoxCount>, 3> Corrections{{
    {{{nullptr, nullptr, 0, HalfTurn},
      {LngMinText, LngMinText, 0, 59},
      {LngSecText, LngSecText, 0, LastSecond},
      {LatDegText, LatDegText, 0, Pole},
      {LatMinText, LngMinText, 0, 59},
      {LatSecText, LngSecText, 0, LastSecond},
      {nullptr, nullptr, -9999, HighestAltitude},
      {HourText, HourText, 0, 14},
      {MinText, MinText, 0, 59}}},
    {{{LngDegText, LngDegText, 0, 0},
      {LngMinText, LngMinText, 0, 0},
      {LngSecText, LngSecText, 0, 0},
      {LatDegText, LatDegText, 0, Pole},
      {ListLatMinText, ListLatMinText, 0, 59},
      {ListLatSecText, ListLatSecText, 0, LastSecond},
      {AltText, AltText, -9999, HighestAltitude},
      {ListHourText, ListHourText, 0, 0},
      {MinText, MinText, 0, 0}}},
    {{{LngDegText, LngDegText, 0, 0},
      {LngMinText, LngMinText, 0, 0},
      {LngSecText, LngSecText, 0, 0},
      {LatDegText, LatDegText, 0, 0},
      {LngMinText, LngMinText, 0, 0},
      {LngSecText, LngSecText, 0, 0},
      {AltText, AltText, -9999, HighestAltitude},
      {HourText, HourText, 0, 0},
      {MinText, MinText, 0, 0}}},
}};

const Rule& RuleOf(Box box)
{
    return Rules[static_cast<size_t>(box)];
}

/// The lowest value of a box: altitudes in kilometres begin at 0.
double LowOf(const Entered& entered, Box box)
{
    return box == Box::Alt && !entered.IsSmall ? 0.0 : RuleOf(box).Low;
}

/// The highest: degrees of longitude go to 360 where the user chooses no hemisphere.
double HighOf(const Entered& entered, Box box)
{
    const bool isWhole = box == Box::LngDeg && !SiteLocationFormat::HasHemisphereChoice(entered.Body);
    return isWhole ? FullTurn : RuleOf(box).High;
}

bool HasPoleRule(Policy policy)
{
    return policy != Policy::Editor;
}

void ClearBelowDegrees(CoordinateFields& fields)
{
    fields.LatitudeMinutes = 0;
    fields.LatitudeSeconds = 0.0;
}

/// Round the globe: the far side of the hemisphere where there is one, a full turn elsewhere.
void GoRound(CoordinateFields& fields, int body)
{
    int& degrees = fields.LongitudeDegrees;
    if (!SiteLocationFormat::HasHemisphereChoice(body)) {
        if (degrees > FullTurn)
            degrees -= FullTurn;
        else if (degrees < 0)
            degrees += FullTurn;
        degrees = std::clamp(degrees, 0, FullTurn);
        return;
    }
    if (degrees > HalfTurn)
        degrees = FullTurn - degrees;
    else if (degrees < 0)
        degrees = -degrees;
    else
        return;
    degrees = std::clamp(degrees, 0, HalfTurn);
    fields.LongitudeHemisphere = fields.LongitudeHemisphere == 0 ? 1 : 0;
}
} // namespace

double EntryRules::Get(const Entered& entered, Box box)
{
    const auto& field = RuleOf(box).Field;
    if (const auto* whole = std::get_if<int CoordinateFields::*>(&field))
        return entered.Fields.**whole;
    if (const auto* broken = std::get_if<double CoordinateFields::*>(&field))
        return entered.Fields.**broken;
    return entered.Altitude;
}

void EntryRules::Set(const Entered& entered, Box box, double value)
{
    const auto& field = RuleOf(box).Field;
    if (const auto* whole = std::get_if<int CoordinateFields::*>(&field))
        entered.Fields.** whole = static_cast<int>(std::clamp(value, -HighestWhole, HighestWhole));
    else if (const auto* broken = std::get_if<double CoordinateFields::*>(&field))
        entered.Fields.** broken = value;
    else
        entered.Altitude = value;
}

EntryRules::Finding EntryRules::Check(const Entered& entered, Box box, Policy policy)
{
    const double value = Get(entered, box);
    const Correction& correction = Corrections[static_cast<size_t>(policy)][static_cast<size_t>(box)];
    Finding finding;
    finding.Low = LowOf(entered, box);
    finding.High = HighOf(entered, box);
    const bool isBelow = value < finding.Low;
    const bool isAbove = RuleOf(box).HighExcluded ? value >= finding.High : value > finding.High;
    finding.IsOutside = isBelow || isAbove;
    if (!finding.IsOutside)
        return finding;
    finding.Message = isBelow ? correction.Below : correction.Above;
    // A range that depends on the body is corrected to its own ends.
    const bool isOfBody = !finding.Message;
    finding.Becomes = isBelow ? (isOfBody ? finding.Low : correction.Low) : (isOfBody ? finding.High : correction.High);
    finding.ClearsBelow = box == Box::LatDeg && isBelow && HasPoleRule(policy);
    return finding;
}

void EntryRules::Correct(const Entered& entered, Box box, const Finding& finding)
{
    if (!finding.IsOutside)
        return;
    Set(entered, box, finding.Becomes);
    if (finding.ClearsBelow)
        ClearBelowDegrees(entered.Fields);
}

bool EntryRules::ClearBeyondPole(CoordinateFields& fields, Policy policy)
{
    if (fields.LatitudeDegrees != Pole || !HasPoleRule(policy))
        return false;
    ClearBelowDegrees(fields);
    return true;
}

void EntryRules::Spin(const Entered& entered, Box box, int delta, Policy policy)
{
    const Rule& rule = RuleOf(box);
    if ((box == Box::LatMin || box == Box::LatSec) && entered.Fields.LatitudeDegrees == Pole && HasPoleRule(policy)) {
        Set(entered, box, 0.0);
        return;
    }
    const double direction = delta < 0 ? 1.0 : (delta > 0 ? -1.0 : 0.0);
    const double stepped = Get(entered, box) + direction * rule.Step;
    if (box == Box::LngDeg && policy == Policy::SiteDialog) {
        Set(entered, box, stepped);
        GoRound(entered.Fields, entered.Body);
        return;
    }
    // Comparing this way round makes a negative zero a plain one.
    const double low = LowOf(entered, box);
    Set(entered, box, stepped > low ? std::min(stepped, rule.SpinHigh) : low);
    if (box == Box::LatDeg && HasPoleRule(policy) && (stepped < low || stepped >= rule.SpinHigh))
        ClearBelowDegrees(entered.Fields);
}
