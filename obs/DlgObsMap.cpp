// Map interaction: slider, wheel, clicks and touches, and what the maps report.

#include "host/control/ControlNumbers.h"
#include "host/dialog/ThemedControls.h"
#include "host/observer/BodyTable.h"
#include "host/observer/CommonCoordFormat.h"
#include "host/observer/KPDateObs.h"
#include "host/text/Number.h"
#include "obs/DlgObs.h"
#include "obs/core/EngineLines.h"

#include <QPaintEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double PoleLatitude = 90.0;
} // namespace

double CDlgObs::Query(const char16_t* line)
{
    return Number::LeadingDouble(EmbeddedEngine.Command(QString::fromUtf16(line)));
}

void CDlgObs::OnVScroll()
{
    UpdateData();
    UpdateViewAngle();
}

void CDlgObs::UpdateViewAngle()
{
    if (MagnificationSlider)
        SliderPosition = MagnificationSlider->value();
    SliderValToVal();
    SendViewAngle();
    GlobeMap.SetZoom(MapZoom);
    GlobeMap.Redraw();
    GlobeMap.RepaintNow();
}

void CDlgObs::SliderValToVal()
{
    const Magnification::View view = Magnification::SliderValToVal(SliderPosition);
    ViewDegrees = view.Degrees;
    MapZoom = view.Zoom;
}

void CDlgObs::MoveSlider()
{
    WithoutNotices([this] {
        if (MagnificationSlider)
            MagnificationSlider->setValue(SliderPosition);
    });
}

void CDlgObs::SendViewAngle()
{
    const bool isEarth = !DateObs || DateObs->GetBody() == BodyTable::Earth;
    EmbeddedEngine.Command(
        EngineLines::ViewAngle(ViewDegrees, isEarth && ViewDegrees < Magnification::BorderlineAngle));
}

void CDlgObs::wheelEvent(QWheelEvent* event)
{
    // With Alt the toolkit reports the wheel sideways.
    const QPoint delta = event->angleDelta();
    const int turned = (event->modifiers() & Qt::AltModifier) != 0 && delta.y() == 0 ? delta.x() : delta.y();
    if (IsWindow() && turned != 0 && MapRect.contains(event->position().toPoint())) {
        if (const int direction = Wheel.Take(turned); direction != 0)
            OnMouseWheel(direction, event->modifiers());
    }
    CKivDialog::wheelEvent(event);
}

void CDlgObs::OnMouseWheel(int direction, Qt::KeyboardModifiers modifiers)
{
    if (!DateObs || DateObs->GetBody() == BodyTable::Earth)
        TurnGlobeMap(direction, modifiers);
    else
        TurnEmbeddedGlobe(direction, modifiers);
}

void CDlgObs::TurnGlobeMap(int direction, Qt::KeyboardModifiers modifiers)
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
    GlobeMap.Redraw();
    GlobeMap.RepaintNow();
}

void CDlgObs::TurnEmbeddedGlobe(int direction, Qt::KeyboardModifiers modifiers)
{
    if ((modifiers & Qt::ControlModifier) != 0) {
        const double latitude = Query(EngineLines::QueryCenterLatitude) + direction;
        EmbeddedEngine.Command(EngineLines::CenterLatitude(std::clamp(latitude, -PoleLatitude, PoleLatitude)));
    } else if ((modifiers & Qt::ShiftModifier) != 0) {
        const double longitude = Query(EngineLines::QueryCenterLongitude) + direction;
        EmbeddedEngine.Command(EngineLines::CenterLongitude(degmal(longitude)));
    } else {
        SliderPosition = Magnification::AfterWheel(SliderPosition, direction);
        SliderValToVal();
        SendViewAngle();
        MoveSlider();
    }
}

/// The engine has moved its own location to the clicked point by now; the dialog takes it over.
void CDlgObs::OnMapMouseUp()
{
    const double longitude = Query(EngineLines::QueryLongitude);
    const double latitude = Query(EngineLines::QueryLatitude);
    const double altitude = Query(EngineLines::QueryAltitude);
    TakePickedPlace(longitude, latitude, altitude);
}

void CDlgObs::OnTouch(const QVariantList& arguments)
{
    using namespace ControlNumber::Engine;
    const auto* touch = arguments.value(1).value<TouchInput*>();
    if (arguments.value(0).toUInt() == TouchKindInput && touch && (touch->Flags & TouchFlagUp) != 0 &&
        arguments.value(2).toInt() == 1)
        OnMapMouseUp();
}

void CDlgObs::OnSetObsPosition(double longitude, double latitude)
{
    if (!std::isfinite(longitude) || !std::isfinite(latitude))
        return;
    EmbeddedEngine.Command(EngineLines::MoveToAndShow(longitude, latitude));
    // Handed on without a change of units, as the box or the terrain gives it.
    const double altitude = HasTerrainAltitude() ? Query(EngineLines::QueryAltitude) : Fields.AltitudeValue;
    TakePickedPlace(longitude, latitude, altitude);
}

/// Makes a point picked on a map the observer's location, unless the observer stands there already.
void CDlgObs::TakePickedPlace(double longitude, double latitude, double altitude)
{
    if (!DateObs)
        return;
    const double previousLongitude = SiteLocationFormat::PositiveLongitude(DateObs->GetLongitude());
    const double previousLatitude = DateObs->GetLatitude();
    const double picked = SiteLocationFormat::PositiveLongitude(longitude);
    if (CCommonCoordFormat::IsEqualDeg(picked, previousLongitude) &&
        CCommonCoordFormat::IsEqualDeg(latitude, previousLatitude))
        return;
    EmbeddedEngine.Command(EngineLines::CenterAt(picked, latitude));
    // The previous values, so that the next SetValue sees the change and fills the fields anew.
    AppliedLongitude = previousLongitude;
    AppliedLatitude = previousLatitude;
    AppliedAltitude = DateObs->GetHeight();
    AppliedTimeZone = DateObs->GetUserTz();
    DateObs->UpdateObsByUI(picked, latitude, altitude);
}

void CDlgObs::OnSetMag(double magnification)
{
    const double degrees = 180.0 / magnification;
    if (!std::isfinite(magnification) || magnification <= 0.0 || !std::isfinite(degrees))
        return;
    MapZoom = magnification;
    ViewDegrees = degrees;
    SendViewAngle();
    GlobeMap.Redraw();
    GlobeMap.RepaintNow();
    SliderPosition = Magnification::SliderOfMagnification(ViewDegrees);
    MoveSlider();
}

void CDlgObs::SetCenterOfProjection(double longitude, double latitude)
{
    EmbeddedEngine.Command(EngineLines::CenterAt(longitude, latitude));
}

void CDlgObs::paintEvent(QPaintEvent* event)
{
    CKivDialog::paintEvent(event);
    // A blinking caret or a moving slider paints its own small part only; the globe is no part of that.
    if (BodyIndex != BodyTable::Earth && event->rect().intersects(MapRect))
        EmbeddedEngine.Command(QString::fromUtf16(EngineLines::ShowSky));
}
