#include "obs/core/EntryRules.h"

#include <algorithm>
#include <array>

namespace
{
using EntryRules::Apply;
using EntryRules::EditRule;
using EntryRules::SpinRule;

constexpr char16_t LngMinText[] = u"経度の分には 0 から 59 までの値を入力してください。";
constexpr char16_t LngSecText[] = u"経度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char16_t LatDegText[] = u"緯度の度には 0 から 90 までの値を入力してください。";
constexpr char16_t LatMinText[] = u"緯度の分には 0 から 59 までの値を入力してください。";
constexpr char16_t LatSecText[] = u"緯度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char16_t TzHourText[] = u"タイムゾーンの時には 0 から 14 までの値を入力してください。";
constexpr char16_t TzMinText[] = u"タイムゾーンの分には 0 から 59 までの値を入力してください。";

// The upper messages of latitude minutes and seconds name the longitude, on purpose. Latitude is applied after a
// correction, longitude is not.
constexpr std::array<EditRule, EntryRules::BoxCount> EditRules{{
    // value, low, high, high excluded, high correction, below, above, applies corrected, waits, caret, then
    {&SiteFields::LongitudeDegrees, 0, 180, false, 180, nullptr, nullptr, false, false, false, Apply::Location},
    {&SiteFields::LongitudeMinutes, 0, 59, false, 59, LngMinText, LngMinText, false, false, true, Apply::Location},
    {&SiteFields::LongitudeSeconds, 0, 60, true, 59.9, LngSecText, LngSecText, false, true, true, Apply::Location},
    {&SiteFields::LatitudeDegrees, 0, 90, false, 90, LatDegText, LatDegText, true, false, false, Apply::Location},
    {&SiteFields::LatitudeMinutes, 0, 59, false, 59, LatMinText, LngMinText, true, false, true, Apply::Location},
    {&SiteFields::LatitudeSeconds, 0, 60, true, 59.9, LatSecText, LngSecText, true, true, true, Apply::Location},
    {&SiteFields::TimeZoneHours, 0, 14, false, 14, TzHourText, TzHourText, false, false, false, Apply::TimeZone},
    {&SiteFields::TimeZoneMinutes, 0, 59, false, 59, TzMinText, TzMinText, false, false, false, Apply::TimeZone},
}};

constexpr std::array<SpinRule, EntryRules::BoxCount> SpinRules{{
    {1, 0, 180}, // longitude degrees go round instead
    {1, 0, 59},
    {0.1, 0, 59.9},
    {1, 0, 90},
    {1, 0, 59},
    {0.1, 0, 59.9},
    {1, 0, 14},
    {1, 0, 59},
}};

constexpr int Pole = 90;
constexpr int HalfTurn = 180;
constexpr int FullTurn = 360;
constexpr double HighestWhole = 1.0e9; // keeps a typed value inside an int

/// Round the globe: the far side of the hemisphere on the Earth and the Moon, a full turn elsewhere.
void WrapLongitudeDegrees(SiteFields& fields, int body)
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

double Stepped(double value, int delta, double step)
{
    if (delta == 0)
        return value;
    return delta < 0 ? value + step : value - step;
}
} // namespace

const EntryRules::EditRule& EntryRules::Edit(Box box)
{
    return EditRules[static_cast<size_t>(box)];
}

const EntryRules::SpinRule& EntryRules::Spin(Box box)
{
    return SpinRules[static_cast<size_t>(box)];
}

double EntryRules::Get(const SiteFields& fields, const Field& field)
{
    return std::visit([&fields](auto member) { return static_cast<double>(fields.*member); }, field);
}

void EntryRules::Set(SiteFields& fields, const Field& field, double value)
{
    if (const auto* whole = std::get_if<int SiteFields::*>(&field))
        fields.** whole = static_cast<int>(std::clamp(value, -HighestWhole, HighestWhole));
    else
        fields.*std::get<double SiteFields::*>(field) = value;
}

int EntryRules::LongitudeBound(int body)
{
    return SiteLocationFormat::HasHemisphereChoice(body) ? HalfTurn : FullTurn;
}

bool EntryRules::ClearBeyondPole(SiteFields& fields)
{
    if (fields.LatitudeDegrees != Pole)
        return false;
    fields.LatitudeMinutes = 0;
    fields.LatitudeSeconds = 0.0;
    return true;
}

void EntryRules::SpinBox(SiteFields& fields, Box box, int delta, int body)
{
    const SpinRule& rule = Spin(box);
    const Field& field = Edit(box).Value;
    const bool isBelowDegrees = box == Box::LatMin || box == Box::LatSec;
    if (isBelowDegrees && fields.LatitudeDegrees == Pole) {
        Set(fields, field, 0.0);
        return;
    }
    const double stepped = Stepped(Get(fields, field), delta, rule.Step);
    if (box == Box::LngDeg) {
        Set(fields, field, stepped);
        WrapLongitudeDegrees(fields, body);
        return;
    }
    Set(fields, field, std::clamp(stepped, rule.Low, rule.High));
    if (box == Box::LatDeg && (stepped < rule.Low || stepped >= rule.High)) {
        fields.LatitudeMinutes = 0;
        fields.LatitudeSeconds = 0.0;
    }
}

void EntryRules::SpinAltitude(SiteFields& fields, int delta, bool isSmall)
{
    fields.AltitudeValue = std::clamp(Stepped(fields.AltitudeValue, delta, 1.0), AltitudeLow(isSmall), AltitudeHigh);
}
