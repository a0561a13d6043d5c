#include "controls/core/Angle.h"
#include "controls/globe_map/GlobeMap.h"
#include "host/control/ControlNumbers.h"
#include "host/control/GlobeZoom.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QNativeGestureEvent>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double KeyZoomFactor = 1.25;
constexpr double KeyTurnShare = 0.08; // of the view angle
// Nearer to a pole the longitude under the pointer changes too wildly to follow it.
constexpr double WildLatitude = 75;
} // namespace

bool CGlobeMap::event(QEvent* event)
{
    if (event->type() == QEvent::Gesture && OnGesture(*static_cast<QGestureEvent*>(event)))
        return true;
    if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            ZoomBy(1 + gesture->value());
            return true;
        }
    }
    return CMapWidget::event(event);
}

bool CGlobeMap::OnGesture(const QGestureEvent& event)
{
    const auto* pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
    if (!pinch)
        return false;
    // The fingers' way must not turn the globe, nor their lifting pick a point.
    ForgetPress();
    if (pinch->changeFlags() & QPinchGesture::ScaleFactorChanged)
        ZoomBy(pinch->scaleFactor());
    return true;
}

void CGlobeMap::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        return TurnByKey(-1, 0);
    case Qt::Key_Right:
        return TurnByKey(1, 0);
    case Qt::Key_Up:
        return TurnByKey(0, 1);
    case Qt::Key_Down:
        return TurnByKey(0, -1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Semicolon: // the key of "+" on a Japanese keyboard
    case Qt::Key_PageUp:
        return ZoomBy(KeyZoomFactor);
    case Qt::Key_Minus:
    case Qt::Key_PageDown:
        return ZoomBy(1 / KeyZoomFactor);
    case Qt::Key_Home:
        if (m_scene.Observer)
            MoveCenter(*m_scene.Observer);
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

void CGlobeMap::Drag(QPoint from, QPoint to)
{
    const CSphereView view = View();
    const auto grabbed = view.FromScreen(from);
    const auto under = view.FromScreen(to);
    const double edge = view.Radius() * 0.9;
    const QPointF way = QPointF(to) - view.CenterPixel();
    const bool isFirm = grabbed && under && std::hypot(way.x(), way.y()) < edge &&
                        std::abs(grabbed->Latitude) < WildLatitude && std::abs(under->Latitude) < WildLatitude;
    if (isFirm) {
        MoveCenter({Center().Longitude + WrapLongitude(grabbed->Longitude - under->Longitude),
                    Center().Latitude + grabbed->Latitude - under->Latitude});
        return;
    }
    const QPointF step = QPointF(from - to) / view.Radius() * DegreesPerRadian;
    const double narrowing = std::max(0.3, std::cos(Center().Latitude / DegreesPerRadian));
    MoveCenter({Center().Longitude + step.x() / narrowing, Center().Latitude - step.y()});
}

void CGlobeMap::TurnByKey(double right, double up)
{
    const double step = std::min(m_viewAngle * KeyTurnShare, 10.0);
    const double narrowing = std::max(0.2, std::cos(Center().Latitude / DegreesPerRadian));
    MoveCenter({Center().Longitude + right * step / narrowing, Center().Latitude + up * step});
}

void CGlobeMap::ZoomBy(double factor)
{
    if (!std::isfinite(factor) || factor <= 0)
        return;
    const double angle = std::clamp(m_viewAngle / factor, GlobeZoom::NarrowestAngle, GlobeZoom::WidestAngle);
    if (angle == m_viewAngle)
        return;
    m_viewAngle = angle;
    MarkChanged();
    RaiseEvent(ControlNumber::GlobeMap::EventMagnification, {GlobeZoom::WidestAngle / angle});
}

void CGlobeMap::Pick(const GeoPoint& point)
{
    RaiseEvent(ControlNumber::GlobeMap::EventObsPosition, {point.Longitude, point.Latitude});
}
