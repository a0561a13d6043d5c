#pragma once

#include "host/control_window/CorKiv.h"
#include "host/control_window/CorKivMap.h"
#include "host/dialog/KivDialog.h"
#include "host/dialog/WheelNotch.h"
#include "obs/core/Magnification.h"
#include "obs/core/ObsSettings.h"

#include <QRect>

class CKivSlider;
class CSiteModel;
class QWheelEvent;

/// The left-hand side of the site dialog: the map of the Earth and the globe of every other body, of which one shows,
/// and the slider of their magnification. Clicks, touches, the wheel and what the maps report come in here.
class CSiteMaps
{
public:
    /// Dialog and model outlive this.
    CSiteMaps(CKivDialog& dialog, CSiteModel& model);

    [[nodiscard]] CKivDialog::MessageMap Messages();
    [[nodiscard]] CKivDialog::EventSinkMap Events();

    // Setting up, in this order
    void AttachSlider();
    void Place();
    /// False, after a message, when the control cannot be made.
    [[nodiscard]] bool CreateEmbeddedEngine();
    [[nodiscard]] bool CreateGlobeMap();
    void SetLandmarks(const QString& listPath, bool exists);
    void SetFeatureVisible(const ObsSettings::Layers& layers);
    void SetSlider(int position);
    void KeepSlider(int position); ///< without a map to show it

    /// Shows the map of the model's body and hides the other.
    void ShowMapOfBody();
    /// Puts the middle and the marker of the Earth's map there, and paints it at once.
    void PutObserver(double longitude, double latitude);
    void SetCenterOfProjection(double longitude, double latitude);
    /// Draws the Earth's map anew, at once.
    void Repaint();

    [[nodiscard]] CCorKiv& Engine() { return EmbeddedEngine; }
    [[nodiscard]] CCorKivMap& Globe() { return GlobeMap; }
    [[nodiscard]] int Slider() const { return SliderPosition; }

    /// A turn of the wheel anywhere in the dialog.
    void OnWheel(const QWheelEvent& event);
    /// After the base's painting of a part of the dialog.
    void OnPaint(const QRect& part);

private:
    void OnVScroll();
    void UpdateViewAngle();
    void SliderValToVal();
    void MoveSlider();
    void SendViewAngle();
    void OnMouseWheel(int direction, Qt::KeyboardModifiers modifiers);
    void TurnGlobeMap(int direction, Qt::KeyboardModifiers modifiers);
    void TurnEmbeddedGlobe(int direction, Qt::KeyboardModifiers modifiers);
    void OnMapMouseUp();
    void OnTouch(const QVariantList& arguments);
    void OnSetObsPosition(double longitude, double latitude);
    void OnSetMag(double magnification);
    [[nodiscard]] bool IsObserverOnEarth() const;

    CKivDialog& m_dialog;
    CSiteModel& m_model;
    CCorKiv EmbeddedEngine; ///< draws every body but the Earth
    CCorKivMap GlobeMap;    ///< draws the Earth
    QRect MapRect;          ///< where both sit, in dialog coordinates
    double MapZoom = 1.0;
    double ViewDegrees = 180.0;
    CKivSlider* MagnificationSlider = nullptr; ///< a child of the dialog
    int SliderPosition = Magnification::SliderMax;
    CWheelNotch Wheel; ///< over the map
};
