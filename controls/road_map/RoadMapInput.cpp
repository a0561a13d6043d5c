#include "controls/road_map/RoadMap.h"
#include "host/control/ControlNumbers.h"

#include <QKeyEvent>

namespace
{
constexpr double KeyShare = 0.125; // of the map's sides
} // namespace

/// Moves the map under the window so that what lies so many pixels from the middle comes there.
void CRoadMap::Shift(QPointF pixels)
{
    const CSphereView view = View();
    if (const auto center = view.FromScreen(view.CenterPixel() + pixels))
        MoveCenter(*center);
}

void CRoadMap::Pick(const GeoPoint& point)
{
    m_site = point;
    MarkChanged();
    RaiseEvent(ControlNumber::RoadMap::EventMouseUp, {point.Latitude, point.Longitude});
}

void CRoadMap::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        return Shift({-OpenSize().width() * KeyShare, 0});
    case Qt::Key_Right:
        return Shift({OpenSize().width() * KeyShare, 0});
    case Qt::Key_Up:
        return Shift({0, -OpenSize().height() * KeyShare});
    case Qt::Key_Down:
        return Shift({0, OpenSize().height() * KeyShare});
    case Qt::Key_Home:
        if (m_site)
            MoveCenter(*m_site);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            Pick(Center());
        return;
    default:
        CMapWidget::keyPressEvent(event);
    }
}
