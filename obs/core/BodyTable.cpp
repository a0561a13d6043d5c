#include "obs/core/BodyTable.h"

#include <array>

namespace
{
struct Body
{
    const char16_t* Label;
    const char16_t* EngineName;
};

constexpr std::array<Body, BodyTable::Count> Bodies{{
    {u"太陽", u"Solar.Sun"},
    {u"月", u"Solar.Planet.Earth.Satellite.Moon"},
    {u"水星", u"Solar.Planet.Mercury"},
    {u"金星", u"Solar.Planet.Venus"},
    {u"地球", u"Solar.Planet.Earth"},
    {u"火星", u"Solar.Planet.Mars"},
    {u"木星", u"Solar.Planet.Jupiter"},
    {u"土星", u"Solar.Planet.Saturn"},
    {u"天王星", u"Solar.Planet.Uranus"},
    {u"海王星", u"Solar.Planet.Neptune"},
    {u"ケレス", u"Solar.Dwarfplanet.Ceres"},
    {u"冥王星", u"Solar.Dwarfplanet.Pluto"},
    {u"ハウメア", u"Solar.Dwarfplanet.Haumea"},
    {u"マケマケ", u"Solar.Dwarfplanet.MakeMake"},
    {u"エリス", u"Solar.Dwarfplanet.Eris"},
}};

const Body& Row(int body)
{
    return Bodies[static_cast<size_t>(BodyTable::Valid(body))];
}
} // namespace

QString BodyTable::Label(int body)
{
    return QString::fromUtf16(Row(body).Label);
}

QString BodyTable::EngineName(int body)
{
    return QString::fromUtf16(Row(body).EngineName);
}
