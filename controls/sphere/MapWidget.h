#pragma once

#include "controls/core/SphereView.h"
#include "controls/sphere/DrawnItems.h"
#include "controls/sphere/MapAccessible.h"

#include <QImage>
#include <QWidget>

#include <optional>

/// What the maps have in common: a picture that is drawn anew only after a change, dragging, a click that picks a
/// point, and a plate that names the point under the pointer or, with the focus, the one in the middle.
class CMapWidget : public QWidget, public ISpokenMap
{
    Q_OBJECT

public:
    explicit CMapWidget(QWidget* parent);

    /// The point in the middle, longitude -180 to 180.
    [[nodiscard]] GeoPoint Center() const { return m_center; }
    [[nodiscard]] QString SpokenCenter() const override;
    /// How often the picture was drawn so far; for measurements.
    [[nodiscard]] int DrawnCount() const { return m_drawnCount; }
    /// What the last picture shows, by name.
    [[nodiscard]] virtual DrawnItems Drawn() const = 0;

protected:
    [[nodiscard]] virtual CSphereView View() const = 0;
    /// The part from the upper left corner that shows the map; its middle is the map's.
    [[nodiscard]] virtual QSize OpenSize() const { return size(); }
    /// Whether a second of arc can be seen on the map.
    [[nodiscard]] virtual bool HasSeconds() const { return false; }
    virtual void PaintMap(QImage& picture) = 0;
    /// The map is no longer shown: lets go of pictures that are made again when it is.
    virtual void ReleasePictures() {}
    /// The window's font is another.
    virtual void ApplyFont() = 0;
    /// The left button draws the map along, from one pixel to another.
    virtual void Drag(QPoint from, QPoint to) = 0;
    virtual void Pick(const GeoPoint& point) = 0;

    /// Any longitude; latitudes beyond a pole mean the pole. The second leaves the picture as it is for now.
    void MoveCenter(const GeoPoint& center);
    void PlaceCenter(const GeoPoint& center);
    void MarkChanged();
    [[nodiscard]] bool IsDragging() const { return m_press && m_press->IsDrag; }
    /// Other fingers have taken over.
    void ForgetPress();
    /// Where the plate stands; whatever the map writes must keep off it.
    [[nodiscard]] QRectF ReadOutPlace() const;

    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Press
    {
        QPoint At;
        QPoint Last;
        bool IsDrag = false;
    };

    GeoPoint m_center{139.69, 35.69};
    QImage m_picture;
    bool m_isChanged = true;
    int m_drawnCount = 0;
    std::optional<Press> m_press;
    std::optional<QPointF> m_pointer;
};
