#include "controls/core/GlobeMapCalls.h"

#include "host/control/ControlArguments.h"
#include "host/control/ControlNumbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>

using namespace ControlArguments;

namespace
{
std::optional<GeoPoint> Point(const QVariantList& arguments)
{
    if (arguments.size() != 2)
        return std::nullopt;
    const auto longitude = FiniteNumber(arguments[0]);
    const auto latitude = FiniteNumber(arguments[1]);
    if (!longitude || !latitude)
        return std::nullopt;
    return GeoPoint{WrapLongitude(*longitude), std::clamp(*latitude, -90.0, 90.0)};
}

std::optional<double> OneNumber(const QVariantList& arguments)
{
    return arguments.size() == 1 ? FiniteNumber(arguments[0]) : std::nullopt;
}

std::optional<quint64> Whole(const QVariantList& arguments)
{
    if (arguments.size() != 1 || !IsWholeNumber(arguments[0]))
        return std::nullopt;
    return arguments[0].toULongLong();
}

void GiveCenter(const IGlobeMapCalls& map, const QVariantList& arguments)
{
    if (arguments.size() != 2 || !arguments[0].canConvert<double*>() || !arguments[1].canConvert<double*>())
        return;
    auto* longitude = arguments[0].value<double*>();
    auto* latitude = arguments[1].value<double*>();
    if (!longitude || !latitude)
        return;
    *longitude = map.CalledCenter().Longitude;
    *latitude = map.CalledCenter().Latitude;
}

void TakeFeatures(IGlobeMapCalls& map, quintptr address)
{
    if (address == 0)
        return;
    std::array<qint32, LandmarkKind::Count> flags{};
    std::memcpy(flags.data(), std::bit_cast<const void*>(address), sizeof(flags));
    std::bitset<LandmarkKind::Count> kinds;
    for (std::size_t kind = 0; kind < flags.size(); ++kind)
        kinds[kind] = flags[kind] != 0;
    map.SetFeatures(kinds);
}

/// Calls the function with the argument when there is one of the right form.
template <typename Argument, typename Function>
QVariant With(const std::optional<Argument>& argument, const Function& function)
{
    if (argument)
        function(*argument);
    return {};
}
} // namespace

QVariant GlobeMapCalls::Invoke(IGlobeMapCalls& map, int method, const QVariantList& arguments)
{
    namespace Method = ControlNumber::GlobeMap;
    switch (method) {
    case Method::SetCenter:
        return With(Point(arguments), [&map](const GeoPoint& point) { map.SetCenter(point); });
    case Method::GetCenter:
        GiveCenter(map, arguments);
        return {};
    case Method::SetObsPosition:
        return With(Point(arguments), [&map](const GeoPoint& point) { map.SetObsPosition(point); });
    case Method::Redraw:
        if (arguments.isEmpty())
            map.Redraw();
        return {};
    case Method::SetZoom:
        return With(OneNumber(arguments), [&map](double zoom) { map.SetZoom(std::clamp(zoom, 0.0, 1.0)); });
    case Method::Switch12:
        return With(Switch(arguments), [&map](bool on) { map.ShowNames(on); });
    case Method::Switch18:
        return With(Switch(arguments), [&map](bool on) { map.ShowCoasts(on); });
    case Method::Switch29:
        return With(Switch(arguments), [&map](bool on) { map.ShowGraticule(on); });
    case Method::SetLandmarkFile:
        return With(Text(arguments), [&map](const QString& path) { map.SetLandmarkFile(path); });
    case Method::SetLandmarkFileExists:
        return With(Switch(arguments), [&map](bool exists) { map.SetLandmarkFileExists(exists); });
    case Method::ReloadUserPlaces:
        if (Switch(arguments).value_or(false))
            map.ReloadUserPlaces();
        return {};
    case Method::FeatureCount:
        return arguments.isEmpty() ? QVariant(LandmarkKind::Count) : QVariant();
    case Method::FeatureName:
        if (arguments.size() != 1 || !IsWholeNumber(arguments[0]))
            return {};
        return LandmarkKind::Name(arguments[0].toInt());
    case Method::SetFeatureFlags:
        return With(Whole(arguments), [&map](quint64 value) { TakeFeatures(map, static_cast<quintptr>(value)); });
    case Method::SetEclipsePath:
        return With(Text(arguments), [&map](const QString& path) { map.SetEclipsePath(path); });
    case Method::SetBesselElementApply:
        return With(Switch(arguments), [&map](bool on) { map.SetEclipseLimits(on); });
    case Method::SetEclipsePathColor:
        return With(Whole(arguments), [&map](quint64 value) { map.SetEclipseColor(static_cast<quint32>(value)); });
    default:
        return {};
    }
}
