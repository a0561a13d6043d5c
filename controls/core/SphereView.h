#pragma once

#include "controls/core/GeoPoint.h"

#include <QPointF>
#include <QSizeF>

#include <optional>

/// How a sphere is seen from far away: which point faces the viewer, how large the disc is and where it lies. North
/// is up. A value; cheap to copy.
class CSphereView
{
public:
    /// A point on the screen and how near it is to the viewer: depth 1 in the middle of the disc, 0 on its edge,
    /// negative on the far side.
    struct Projection
    {
        QPointF Screen;
        double Depth = 0;
    };

    CSphereView() : CSphereView(GeoPoint{}, 1, {}) {}

    /// Centre in degrees (the latitude is limited to -90 to 90, what is not finite counts as 0), radius in pixels (at
    /// least 1), position of the disc's middle in pixels.
    CSphereView(const GeoPoint& center, double radius, QPointF centerPixel);

    /// The view that fills a widget of that size. Angle 180 shows the whole disc with a small margin; a smaller angle
    /// (down to 0.1 degrees) shows that many degrees of the surface across the smaller side.
    [[nodiscard]] static CSphereView ForAngle(const GeoPoint& center, double angle, QSizeF size);

    /// The same view with every length multiplied, for example by a device pixel ratio.
    [[nodiscard]] CSphereView Scaled(double factor) const;

    /// Whether a picture of the other view serves for this one: everything lies within a small part of a pixel.
    [[nodiscard]] bool LooksLike(const CSphereView& other) const;

    /// Longitude -180 to 180.
    [[nodiscard]] GeoPoint Center() const { return m_center; }
    [[nodiscard]] double Radius() const { return m_radius; }
    [[nodiscard]] QPointF CenterPixel() const { return m_centerPixel; }

    /// The directions of screen right, screen up and the viewer.
    [[nodiscard]] const UnitVector& East() const { return m_east; }
    [[nodiscard]] const UnitVector& North() const { return m_north; }
    [[nodiscard]] const UnitVector& Viewer() const { return m_viewer; }

    /// Where a direction lies, whichever side it is on.
    [[nodiscard]] Projection Project(const UnitVector& direction) const
    {
        return {QPointF(m_centerPixel.x() + m_radius * Dot(direction, m_east),
                        m_centerPixel.y() - m_radius * Dot(direction, m_north)),
                Dot(direction, m_viewer)};
    }

    /// Pixels of a point of the sphere; empty when it is on the far side or not finite.
    [[nodiscard]] std::optional<QPointF> ToScreen(double longitude, double latitude) const;

    /// The point of the sphere under a pixel, longitude -180 to 180; empty beside the disc.
    [[nodiscard]] std::optional<GeoPoint> FromScreen(QPointF pixel) const;

    /// Degrees from the centre to the farthest point that an area of that size (from the origin) can show, 0 to 90.
    [[nodiscard]] double VisibleAngle(QSizeF size) const;

private:
    GeoPoint m_center;
    double m_radius;
    QPointF m_centerPixel;
    UnitVector m_east;
    UnitVector m_north;
    UnitVector m_viewer;
};
