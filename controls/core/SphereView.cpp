#include "controls/core/SphereView.h"

#include "controls/core/Angle.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double SmallestAngle = 0.1;
// The share of the whole disc's radius that stays free around it.
constexpr double DiscMargin = 0.045;

double FiniteOrZero(double value)
{
    return std::isfinite(value) ? value : 0.0;
}
} // namespace

CSphereView::CSphereView(const GeoPoint& center, double radius, QPointF centerPixel)
    : m_center{WrapLongitude(center.Longitude), std::clamp(FiniteOrZero(center.Latitude), -90.0, 90.0)},
      m_radius(std::isfinite(radius) ? std::max(radius, 1.0) : 1.0), m_centerPixel(centerPixel)
{
    const double longitude = m_center.Longitude / DegreesPerRadian;
    const double latitude = m_center.Latitude / DegreesPerRadian;
    m_viewer = ToVector(m_center);
    m_east = {-std::sin(longitude), std::cos(longitude), 0};
    m_north = {-std::sin(latitude) * std::cos(longitude), -std::sin(latitude) * std::sin(longitude),
               std::cos(latitude)};
}

CSphereView CSphereView::ForAngle(const GeoPoint& center, double angle, QSizeF size)
{
    const double half = std::min(size.width(), size.height()) / 2;
    const double share =
        std::sin(std::clamp(std::isfinite(angle) ? angle : 180.0, SmallestAngle, 180.0) / 2 / DegreesPerRadian);
    // The margin fades as the disc outgrows the widget, so that zooming never jumps.
    return {center, half * (1 - DiscMargin * share) / share, QPointF(size.width() / 2, size.height() / 2)};
}

CSphereView CSphereView::Scaled(double factor) const
{
    return {m_center, m_radius * factor, m_centerPixel * factor};
}

bool CSphereView::LooksLike(const CSphereView& other) const
{
    constexpr double unseen = 1.0 / 12; // pixels
    const auto turns = [&](const UnitVector& a, const UnitVector& b) {
        const UnitVector way{a.X - b.X, a.Y - b.Y, a.Z - b.Z};
        return Dot(way, way) * m_radius * m_radius > unseen * unseen;
    };
    return m_radius == other.m_radius && m_centerPixel == other.m_centerPixel && !turns(m_viewer, other.m_viewer) &&
           !turns(m_north, other.m_north) && !turns(m_east, other.m_east);
}

std::optional<QPointF> CSphereView::ToScreen(double longitude, double latitude) const
{
    if (!std::isfinite(longitude) || !std::isfinite(latitude))
        return std::nullopt;
    const Projection projection = Project(ToVector({longitude, latitude}));
    if (projection.Depth < 0)
        return std::nullopt;
    return projection.Screen;
}

std::optional<GeoPoint> CSphereView::FromScreen(QPointF pixel) const
{
    const double x = (pixel.x() - m_centerPixel.x()) / m_radius;
    const double y = (m_centerPixel.y() - pixel.y()) / m_radius;
    const double square = x * x + y * y;
    if (!(square <= 1))
        return std::nullopt;
    const double z = std::sqrt(1 - square);
    return ToGeoPoint({x * m_east.X + y * m_north.X + z * m_viewer.X, x * m_east.Y + y * m_north.Y + z * m_viewer.Y,
                       x * m_east.Z + y * m_north.Z + z * m_viewer.Z});
}

double CSphereView::VisibleAngle(QSizeF size) const
{
    const double x = std::max(std::abs(m_centerPixel.x()), std::abs(size.width() - m_centerPixel.x()));
    const double y = std::max(std::abs(m_centerPixel.y()), std::abs(size.height() - m_centerPixel.y()));
    return std::asin(std::min(1.0, std::hypot(x, y) / m_radius)) * DegreesPerRadian;
}
