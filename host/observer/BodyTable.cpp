#include "host/observer/BodyTable.h"

#include <QString>

#include <array>

namespace
{
using enum BodyTable::Longitude;

// The Sun and the four giants have no surface to measure metres from.
constexpr std::array<BodyTable::Body, BodyTable::Count> Bodies{{
    {u"太陽", u"Solar.Sun", East, false},
    {u"月", u"Solar.Planet.Earth.Satellite.Moon", EastOrWest, true},
    {u"水星", u"Solar.Planet.Mercury", West, true},
    {u"金星", u"Solar.Planet.Venus", East, true},
    {u"地球", u"Solar.Planet.Earth", EastOrWest, true},
    {u"火星", u"Solar.Planet.Mars", West, true},
    {u"木星", u"Solar.Planet.Jupiter", West, false},
    {u"土星", u"Solar.Planet.Saturn", West, false},
    {u"天王星", u"Solar.Planet.Uranus", West, false},
    {u"海王星", u"Solar.Planet.Neptune", West, false},
    {u"ケレス", u"Solar.Dwarfplanet.Ceres", West, true},
    {u"冥王星", u"Solar.Dwarfplanet.Pluto", West, true},
    {u"ハウメア", u"Solar.Dwarfplanet.Haumea", West, true},
    {u"マケマケ", u"Solar.Dwarfplanet.MakeMake", West, true},
    {u"エリス", u"Solar.Dwarfplanet.Eris", West, true},
}};
} // namespace

const BodyTable::Body& BodyTable::Of(int body)
{
    return Bodies[static_cast<std::size_t>(Valid(body))];
}

QString BodyTable::Label(int body)
{
    return QString::fromUtf16(Of(body).Label);
}

QString BodyTable::EngineName(int body)
{
    return QString::fromUtf16(Of(body).EngineName);
}

std::optional<int> BodyTable::Find(QStringView engineName)
{
    for (int body = 0; body < Count; ++body) {
        if (engineName.compare(QStringView(Of(body).EngineName), Qt::CaseInsensitive) == 0)
            return body;
    }
    return std::nullopt;
}
