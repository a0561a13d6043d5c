#include "controls/globe_map/GlobeMap.h"

#include "controls/sphere/MapFurniture.h"
#include "host/control/ControlArguments.h"
#include "host/control/ControlNumbers.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;
using namespace ControlArguments;

namespace
{
// Zoom 0 to 1 goes to the view angle by this power: the near half of the range is the finer one.
constexpr double ZoomPower = 2.668378;

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

} // namespace

CGlobeMap::CGlobeMap(QWidget* parent, QString dataFolder) : CMapWidget(parent), m_painter(std::move(dataFolder))
{
    hide();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    grabGesture(Qt::PinchGesture);
    setAccessibleName(u"地球の地図"_s);
    setAccessibleDescription(
        u"矢印キーで地図を回し、Enter キーまたはスペースキーで中央の地点を選びます。"
        u"＋・－キーと Page Up・Page Down キーで拡大・縮小し、Home キーで観測地を中央に戻します。"_s);
    std::bitset<LandmarkKind::Count> kinds;
    m_painter.Landmarks().SetKinds(kinds.set());
    CGlobeMap::ApplyFont();
}

CGlobeMap::~CGlobeMap() = default;

QVariant CGlobeMap::Invoke(int method, const QVariantList& arguments)
{
    namespace Method = ControlNumber::GlobeMap;
    switch (method) {
    case Method::SetCenter:
        return SetCenter(arguments);
    case Method::GetCenter:
        return GetCenter(arguments);
    case Method::SetObsPosition:
        return SetObsPosition(arguments);
    case Method::Redraw:
        if (arguments.isEmpty())
            MarkChanged();
        return {};
    case Method::SetZoom:
        return SetZoom(arguments);
    case Method::Switch12:
        m_scene.IsNamesVisible = Switch(arguments).value_or(m_scene.IsNamesVisible);
        return {};
    case Method::Switch18:
        m_scene.IsCoastVisible = Switch(arguments).value_or(m_scene.IsCoastVisible);
        return {};
    case Method::Switch29:
        m_scene.IsGraticuleVisible = Switch(arguments).value_or(m_scene.IsGraticuleVisible);
        return {};
    case Method::SetLandmarkFile:
        if (const auto path = Text(arguments)) {
            m_landmarkFile = *path;
            m_isLandmarkFileThere = false;
        }
        return {};
    case Method::SetLandmarkFileExists:
        if (const auto isThere = Switch(arguments)) {
            m_isLandmarkFileThere = *isThere;
            ReadLandmarks();
        }
        return {};
    case Method::ReloadUserPlaces:
        if (Switch(arguments).value_or(false))
            ReadLandmarks();
        return {};
    case Method::FeatureCount:
        return arguments.isEmpty() ? QVariant(LandmarkKind::Count) : QVariant();
    case Method::FeatureName:
        if (arguments.size() != 1 || !IsWholeNumber(arguments[0]))
            return {};
        return LandmarkKind::Name(arguments[0].toInt());
    case Method::SetFeatureFlags:
        return SetFeatureFlags(arguments);
    case Method::SetEclipsePath:
        if (const auto path = Text(arguments))
            m_scene.Eclipse = CEclipsePath::Parse(*path);
        return {};
    case Method::SetBesselElementApply:
        m_scene.HasEclipseLimits = Switch(arguments).value_or(m_scene.HasEclipseLimits);
        return {};
    case Method::SetEclipsePathColor:
        return SetEclipsePathColor(arguments);
    default:
        return {};
    }
}

void CGlobeMap::SetControlProperty(int, const QVariant&) {}

QVariant CGlobeMap::SetCenter(const QVariantList& arguments)
{
    if (const auto point = Point(arguments))
        PlaceCenter(*point); // drawn by the next Redraw
    return {};
}

QVariant CGlobeMap::GetCenter(const QVariantList& arguments)
{
    if (arguments.size() != 2 || !arguments[0].canConvert<double*>() || !arguments[1].canConvert<double*>())
        return {};
    auto* longitude = arguments[0].value<double*>();
    auto* latitude = arguments[1].value<double*>();
    if (!longitude || !latitude)
        return {};
    *longitude = Center().Longitude;
    *latitude = Center().Latitude;
    return {};
}

QVariant CGlobeMap::SetObsPosition(const QVariantList& arguments)
{
    if (const auto point = Point(arguments))
        m_scene.Observer = *point;
    return {};
}

QVariant CGlobeMap::SetZoom(const QVariantList& arguments)
{
    const auto zoom = arguments.size() == 1 ? FiniteNumber(arguments[0]) : std::nullopt;
    if (zoom)
        m_viewAngle =
            std::pow(1 - std::clamp(*zoom, 0.0, 1.0), ZoomPower) * (WidestAngle - NarrowestAngle) + NarrowestAngle;
    return {};
}

QVariant CGlobeMap::SetFeatureFlags(const QVariantList& arguments)
{
    if (arguments.size() != 1 || !IsWholeNumber(arguments[0]))
        return {};
    const auto address = static_cast<quintptr>(arguments[0].toULongLong());
    if (address == 0)
        return {};
    std::array<qint32, LandmarkKind::Count> flags{};
    std::memcpy(flags.data(), std::bit_cast<const void*>(address), sizeof(flags));
    std::bitset<LandmarkKind::Count> kinds;
    for (std::size_t kind = 0; kind < flags.size(); ++kind)
        kinds[kind] = flags[kind] != 0;
    m_painter.Landmarks().SetKinds(kinds);
    return {};
}

QVariant CGlobeMap::SetEclipsePathColor(const QVariantList& arguments)
{
    if (arguments.size() != 1 || !IsWholeNumber(arguments[0]))
        return {};
    const auto color = static_cast<quint32>(arguments[0].toULongLong());
    m_scene.EclipseColor = QColor(static_cast<int>(color & 255), static_cast<int>((color >> 8) & 255),
                                  static_cast<int>((color >> 16) & 255));
    return {};
}

void CGlobeMap::ReadLandmarks()
{
    m_painter.Landmarks().SetPlaces(m_isLandmarkFileThere ? LandmarkList::Read(m_landmarkFile)
                                                          : std::vector<Landmark>());
}

CSphereView CGlobeMap::View() const
{
    return CSphereView::ForAngle(Center(), m_viewAngle, size());
}

void CGlobeMap::PaintMap(QImage& picture)
{
    m_scene.ReadOut = ReadOutPlace();
    m_painter.Paint(picture, View(), m_viewAngle, m_scene, IsDragging());
}

void CGlobeMap::ApplyFont()
{
    m_painter.Landmarks().SetFont(MapFurniture::NameFont(font()));
}
