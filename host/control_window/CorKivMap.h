#pragma once

#include "host/control_window/ControlWindow.h"

/// The globe-map control, which draws the Earth. Every call does nothing, or returns 0 or empty, while the control
/// does not exist. Degrees throughout, longitude first.
class CCorKivMap : public CControlWindow
{
    Q_OBJECT

public:
    using CControlWindow::CControlWindow;

    /// Creates the host's one globe-map class as a hidden child.
    [[nodiscard]] bool Create(QWidget* parent, const QRect& rect, int controlId);

    void SetCenter(double longitude, double latitude);
    void GetCenter(double* longitude, double* latitude); ///< leaves the values alone when the map does not answer
    void SetObsPosition(double longitude, double latitude);
    void Redraw();
    void SetZoom(double zoom); ///< 0.0 to 1.0
    void SetSwitch(int method, bool on);
    void SetLandmarkFileExists(bool exists);
    void SetLandmarkFile(const QString& path);
    [[nodiscard]] int FeatureCount();
    void SetFeatureFlags(const int* flags); ///< FeatureCount flags; read before the call returns
    [[nodiscard]] QString FeatureName(int kind);
    void ReloadUserPlaces(bool reload);
    void SetEclipsePath(const QString& path);
    void SetBesselElementApply(bool apply);
    void SetEclipsePathColor(quint32 color); ///< 0x00BBGGRR
};
