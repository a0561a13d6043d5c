#include "controls/road_map/RoadMap.h"
#include "host/control/ControlNumbers.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <utility>

namespace
{
constexpr double KeyShare = 0.125; // of the map's sides
} // namespace

void CRoadMap::MoveCenter(const GeoPoint& center)
{
    m_center = {WrapLongitude(center.Longitude), std::clamp(center.Latitude, -90.0, 90.0)};
    MarkChanged();
}

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

void CRoadMap::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_press = Press{event->position().toPoint(), event->position().toPoint(), false};
    else
        QWidget::mousePressEvent(event);
}

void CRoadMap::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    m_pointer = event->position();
    if (m_press && event->buttons().testFlag(Qt::LeftButton)) {
        if (!m_press->IsDrag && (at - m_press->At).manhattanLength() >= QApplication::startDragDistance()) {
            m_press->IsDrag = true;
            setCursor(Qt::ClosedHandCursor);
        }
        if (m_press->IsDrag)
            Shift(QPointF(std::exchange(m_press->Last, at) - at));
    }
    update();
}

void CRoadMap::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_press) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const bool wasDrag = std::exchange(m_press, std::nullopt)->IsDrag;
    setCursor(Qt::CrossCursor);
    if (wasDrag)
        return;
    if (const auto point = View().FromScreen(event->position()))
        Pick(*point);
}

void CRoadMap::leaveEvent(QEvent* event)
{
    m_pointer.reset();
    update();
    QWidget::leaveEvent(event);
}

void CRoadMap::focusInEvent(QFocusEvent* event)
{
    update();
    QWidget::focusInEvent(event);
}

void CRoadMap::focusOutEvent(QFocusEvent* event)
{
    update();
    QWidget::focusOutEvent(event);
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
            Pick(m_center);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}
