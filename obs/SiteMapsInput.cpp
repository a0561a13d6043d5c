// What comes in from the maps, the slider and the wheel.

#include "host/control/ControlNumbers.h"
#include "host/dialog/ThemedControls.h"
#include "host/observer/BodyTable.h"
#include "host/observer/CommonCoordFormat.h"
#include "host/observer/KPDateObs.h"
#include "obs/SiteMaps.h"
#include "obs/core/EngineLines.h"
#include "obs/core/SiteModel.h"

#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double PoleLatitude = 90.0;
} // namespace

void CSiteMaps::OnVScroll()
{
    m_dialog.UpdateData();
    UpdateViewAngle();
}

void CSiteMaps::UpdateViewAngle()
{
    if (MagnificationSlider)
        SliderPosition = MagnificationSlider->value();
    SliderValToVal();
    SendViewAngle();
    GlobeMap.SetZoom(MapZoom);
    Repaint();
}

void CSiteMaps::SliderValToVal()
{
    const Magnification::View view = Magnification::SliderValToVal(SliderPosition);
    ViewDegrees = view.Degrees;
    MapZoom = view.Zoom;
}

void CSiteMaps::MoveSlider()
{
    m_dialog.WithoutNotices([this] {
        if (MagnificationSlider)
            MagnificationSlider->setValue(SliderPosition);
    });
}

bool CSiteMaps::IsObserverOnEarth() const
{
    return !m_model.DateObs || m_model.DateObs->GetBody() == BodyTable::Earth;
}

void CSiteMaps::SendViewAngle()
{
    EmbeddedEngine.Command(
        EngineLines::ViewAngle(ViewDegrees, IsObserverOnEarth() && ViewDegrees < Magnification::BorderlineAngle));
}

void CSiteMaps::OnWheel(const QWheelEvent& event)
{
    // With Alt the toolkit reports the wheel sideways.
    const QPoint delta = event.angleDelta();
    const int turned = (event.modifiers() & Qt::AltModifier) != 0 && delta.y() == 0 ? delta.x() : delta.y();
    if (!m_dialog.IsWindow() || turned == 0 || !MapRect.contains(event.position().toPoint()))
        return;
    if (const int direction = Wheel.Take(turned); direction != 0)
        OnMouseWheel(direction, event.modifiers());
}

void CSiteMaps::OnMouseWheel(int direction, Qt::KeyboardModifiers modifiers)
{
    if (IsObserverOnEarth())
        TurnGlobeMap(direction, modifiers);
    else
        TurnEmbeddedGlobe(direction, modifiers);
}

void CSiteMaps::TurnGlobeMap(int direction, Qt::KeyboardModifiers modifiers)
{
    if ((modifiers & (Qt::ControlModifier | Qt::ShiftModifier)) != 0) {
        double longitude = 0.0;
        double latitude = 0.0;
        GlobeMap.GetCenter(&longitude, &latitude);
        if ((modifiers & Qt::ControlModifier) != 0)
            latitude = std::clamp(latitude + direction, -PoleLatitude, PoleLatitude);
        else
            longitude = degmal(longitude + direction);
        GlobeMap.SetCenter(longitude, latitude);
    } else {
        // No view-angle line here: the embedded engine is not on screen.
        SliderPosition = Magnification::AfterWheel(SliderPosition, direction);
        SliderValToVal();
        GlobeMap.SetZoom(MapZoom);
        MoveSlider();
    }
    Repaint();
}

void CSiteMaps::TurnEmbeddedGlobe(int direction, Qt::KeyboardModifiers modifiers)
{
    if ((modifiers & Qt::ControlModifier) != 0) {
        const double latitude = m_model.Query(EngineLines::QueryCenterLatitude) + direction;
        EmbeddedEngine.Command(EngineLines::CenterLatitude(std::clamp(latitude, -PoleLatitude, PoleLatitude)));
    } else if ((modifiers & Qt::ShiftModifier) != 0) {
        const double longitude = m_model.Query(EngineLines::QueryCenterLongitude) + direction;
        EmbeddedEngine.Command(EngineLines::CenterLongitude(degmal(longitude)));
    } else {
        SliderPosition = Magnification::AfterWheel(SliderPosition, direction);
        SliderValToVal();
        SendViewAngle();
        MoveSlider();
    }
}

/// The engine has moved its own location to the clicked point by now; the dialog takes it over.
void CSiteMaps::OnMapMouseUp()
{
    const double longitude = m_model.Query(EngineLines::QueryLongitude);
    const double latitude = m_model.Query(EngineLines::QueryLatitude);
    const double altitude = m_model.Query(EngineLines::QueryAltitude);
    m_model.TakePickedPlace(longitude, latitude, altitude);
}

void CSiteMaps::OnTouch(const QVariantList& arguments)
{
    using namespace ControlNumber::Engine;
    const auto* touch = arguments.value(1).value<TouchInput*>();
    if (arguments.value(0).toUInt() == TouchKindInput && touch && (touch->Flags & TouchFlagUp) != 0 &&
        arguments.value(2).toInt() == 1)
        OnMapMouseUp();
}

void CSiteMaps::OnSetObsPosition(double longitude, double latitude)
{
    if (!std::isfinite(longitude) || !std::isfinite(latitude))
        return;
    EmbeddedEngine.Command(EngineLines::MoveToAndShow(longitude, latitude));
    // Handed on without a change of units, as the box or the terrain gives it.
    const double altitude =
        m_model.HasTerrainAltitude() ? m_model.Query(EngineLines::QueryAltitude) : m_model.Fields.AltitudeValue;
    m_model.TakePickedPlace(longitude, latitude, altitude);
}

void CSiteMaps::OnSetMag(double magnification)
{
    const double degrees = 180.0 / magnification;
    if (!std::isfinite(magnification) || magnification <= 0.0 || !std::isfinite(degrees))
        return;
    MapZoom = magnification;
    ViewDegrees = degrees;
    SendViewAngle();
    Repaint();
    SliderPosition = Magnification::SliderOfMagnification(ViewDegrees);
    MoveSlider();
}

void CSiteMaps::OnPaint(const QRect& part)
{
    // A blinking caret or a moving slider paints its own small part only; the globe is no part of that.
    if (m_model.BodyIndex != BodyTable::Earth && part.intersects(MapRect))
        EmbeddedEngine.Command(QString::fromUtf16(EngineLines::ShowSky));
}
