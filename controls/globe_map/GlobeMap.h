#pragma once

#include "controls/globe_map/EclipsePath.h"
#include "controls/globe_map/GlobePainter.h"
#include "host/control/Control.h"

#include <QImage>
#include <QWidget>

#include <array>
#include <optional>

class QGestureEvent;

/// The globe map: the Earth with its places, the observer's marker and the path of an eclipse. Turned by dragging and
/// by the arrow keys; a click or the Enter key picks a point (event 8), the + and - keys and two fingers zoom (event
/// 9). The wheel is left to the window around it. The display options: 12 the names of places, 18 coastlines and
/// borders, 29 the lines of longitude and latitude; all are on until switched off.
class CGlobeMap : public QWidget, public IControl
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

    /// The point in the middle, longitude -180 to 180.
    [[nodiscard]] GeoPoint Center() const { return m_center; }

    /// Degrees of the surface across the smaller side, 2 to 180.
    [[nodiscard]] double ViewAngle() const { return m_viewAngle; }

    [[nodiscard]] QSize sizeHint() const override { return {480, 480}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 120}; }

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    // Limits of the view angle, in degrees.
    static constexpr double NarrowestAngle = 2;
    static constexpr double WidestAngle = 180;

    struct Press
    {
        QPoint At;
        QPoint Last;
        bool IsDrag = false;
    };

    // One numbered method each; wrong arguments are ignored.
    QVariant SetCenter(const QVariantList& arguments);
    QVariant GetCenter(const QVariantList& arguments);
    QVariant SetObsPosition(const QVariantList& arguments);
    QVariant SetZoom(const QVariantList& arguments);
    QVariant SetFeatureFlags(const QVariantList& arguments);
    QVariant SetEclipsePathColor(const QVariantList& arguments);
    void ReadLandmarks();

    void ApplyFont();

    [[nodiscard]] CSphereView View() const;
    void MoveCenter(double longitude, double latitude);
    void Drag(QPoint from, QPoint to);
    void TurnByKey(double right, double up);
    void ZoomBy(double factor);
    void Pick(QPointF pixel);
    bool OnGesture(const QGestureEvent& event);
    void MarkChanged();
    [[nodiscard]] QRectF ReadOutPlace() const;

    CGlobePainter m_painter;
    GeoPoint m_center{139.69, 35.69};
    double m_viewAngle = 180;
    GlobeScene m_scene;
    QString m_landmarkFile;
    bool m_isLandmarkFileThere = false;
    QImage m_picture;
    bool m_isChanged = true;
    std::optional<Press> m_press;
    std::optional<QPointF> m_pointer;
};
