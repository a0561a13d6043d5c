#pragma once

#include "controls/core/GlobeMapCalls.h"
#include "controls/globe_map/GlobePainter.h"
#include "controls/sphere/MapWidget.h"
#include "host/control/Control.h"

class QGestureEvent;

/// The globe map: the Earth with its places, the observer's marker and the path of an eclipse. Turned by dragging and
/// by the arrow keys; a click or the Enter key picks a point (event 8), the + and - keys and two fingers zoom (event
/// 9). The wheel is left to the window around it. The display options: 12 the names of places, 18 coastlines and
/// borders, 29 the lines of longitude and latitude; all are on until switched off.
class CGlobeMap : public CMapWidget, public IControl, private IGlobeMapCalls
{
    Q_OBJECT

public:
    /// A hidden child of the parent. The data folder holds "earth/relief.jpg", "earth/coast.kol" and their like; what
    /// is missing there is left out or drawn plainly.
    CGlobeMap(QWidget* parent, QString dataFolder);
    ~CGlobeMap() override;

    [[nodiscard]] QWidget* Window() override { return this; }
    QVariant Invoke(int method, const QVariantList& arguments) override;
    void SetControlProperty(int property, const QVariant& value) override;

    /// Degrees of the surface across the smaller side, 2 to 180.
    [[nodiscard]] double ViewAngle() const { return m_viewAngle; }

    [[nodiscard]] DrawnItems Drawn() const override { return m_painter.Drawn(); }
    [[nodiscard]] QSize sizeHint() const override { return {480, 480}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 120}; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    [[nodiscard]] CSphereView View() const override;
    void PaintMap(QImage& picture) override;
    void ReleasePictures() override { m_painter.Release(); }
    void ApplyFont() override;
    void Drag(QPoint from, QPoint to) override;
    void Pick(const GeoPoint& point) override;

private:
    void SetCenter(const GeoPoint& center) override { PlaceCenter(center); }
    [[nodiscard]] GeoPoint CalledCenter() const override { return Center(); }
    void SetObsPosition(const GeoPoint& position) override { m_scene.Observer = position; }
    void Redraw() override { MarkChanged(); }
    void SetZoom(double zoom) override;
    void ShowNames(bool on) override { m_scene.IsNamesVisible = on; }
    void ShowCoasts(bool on) override { m_scene.IsCoastVisible = on; }
    void ShowGraticule(bool on) override { m_scene.IsGraticuleVisible = on; }
    void SetLandmarkFile(const QString& path) override;
    void SetLandmarkFileExists(bool exists) override;
    void ReloadUserPlaces() override;
    void SetFeatures(const std::bitset<LandmarkKind::Count>& kinds) override { m_painter.Landmarks().SetKinds(kinds); }
    void SetEclipsePath(const QString& path) override { m_scene.Eclipse = EclipsePath::Parse(path); }
    void SetEclipseLimits(bool on) override { m_scene.HasEclipseLimits = on; }
    void SetEclipseColor(quint32 color) override;

    void TurnByKey(double right, double up);
    void ZoomBy(double factor);
    bool OnGesture(const QGestureEvent& event);

    CGlobePainter m_painter;
    double m_viewAngle = 180;
    GlobeScene m_scene;
    QString m_landmarkFile;
    bool m_isLandmarkFileThere = false;
};
