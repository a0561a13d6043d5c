#include "controls/sphere/MapWidget.h"

#include "controls/sphere/MapFurniture.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

CMapWidget::CMapWidget(QWidget* parent) : QWidget(parent)
{
    MapAccessible::Install();
}

QString CMapWidget::SpokenCenter() const
{
    return MapFurniture::PositionText(m_center, HasSeconds());
}

bool CMapWidget::event(QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        return MapAccessible::TellAfterKey(*this, [this, event] { return QWidget::event(event); });
    return QWidget::event(event);
}

void CMapWidget::PlaceCenter(const GeoPoint& center)
{
    m_center = {WrapLongitude(center.Longitude), std::clamp(center.Latitude, -90.0, 90.0)};
}

void CMapWidget::MoveCenter(const GeoPoint& center)
{
    PlaceCenter(center);
    MarkChanged();
}

void CMapWidget::MarkChanged()
{
    m_isChanged = true;
    update();
}

void CMapWidget::ForgetPress()
{
    const bool wasDrag = IsDragging();
    m_press.reset();
    if (!wasDrag)
        return;
    setCursor(Qt::CrossCursor);
    MarkChanged(); // in full quality again
}

QRectF CMapWidget::ReadOutPlace() const
{
    return MapFurniture::ReadOutPlace(MapFurniture::SmallFont(font()), OpenSize(),
                                      MapFurniture::PositionText({-179.99, -89.99}, HasSeconds()));
}

void CMapWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) {
        ApplyFont();
        MarkChanged();
    }
    QWidget::changeEvent(event);
}

void CMapWidget::resizeEvent(QResizeEvent* event)
{
    MarkChanged();
    QWidget::resizeEvent(event);
}

void CMapWidget::paintEvent(QPaintEvent*)
{
    const double scale = devicePixelRatioF();
    const QSize open = OpenSize();
    const QSize pixels = (QSizeF(open) * scale).toSize();
    if (pixels.isEmpty())
        return;
    if (m_picture.size() != pixels) {
        m_picture = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        m_isChanged = true;
    }
    m_picture.setDevicePixelRatio(scale);
    if (std::exchange(m_isChanged, false)) {
        PaintMap(m_picture);
        ++m_drawnCount;
    }

    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), m_picture);
    if (hasFocus())
        MapFurniture::DrawFocus(painter, QRect(QPoint(), open), palette().color(QPalette::Highlight).lighter(130));
    std::optional<GeoPoint> named;
    if (m_pointer)
        named = View().FromScreen(*m_pointer);
    else if (hasFocus())
        named = m_center;
    if (named) {
        painter.setFont(MapFurniture::SmallFont(font()));
        MapFurniture::DrawPlate(painter, ReadOutPlace(), MapFurniture::PositionText(*named, HasSeconds()));
    }
}

void CMapWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_press = Press{event->position().toPoint(), event->position().toPoint(), false};
    else
        QWidget::mousePressEvent(event);
}

void CMapWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    m_pointer = event->position();
    if (m_press && event->buttons().testFlag(Qt::LeftButton)) {
        if (!m_press->IsDrag && (at - m_press->At).manhattanLength() >= QApplication::startDragDistance()) {
            m_press->IsDrag = true;
            setCursor(Qt::ClosedHandCursor);
        }
        if (m_press->IsDrag)
            Drag(std::exchange(m_press->Last, at), at);
    }
    update();
}

void CMapWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_press) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    if (std::exchange(m_press, std::nullopt)->IsDrag) {
        setCursor(Qt::CrossCursor);
        MarkChanged(); // in full quality again
        return;
    }
    if (const auto point = View().FromScreen(event->position()))
        Pick(*point);
}

void CMapWidget::leaveEvent(QEvent* event)
{
    m_pointer.reset();
    update();
    QWidget::leaveEvent(event);
}

void CMapWidget::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_picture = QImage();
        ReleasePictures();
    }
    QWidget::hideEvent(event);
}

void CMapWidget::focusInEvent(QFocusEvent* event)
{
    MapAccessible::Introduce(*this);
    update();
    QWidget::focusInEvent(event);
}

void CMapWidget::focusOutEvent(QFocusEvent* event)
{
    update();
    QWidget::focusOutEvent(event);
}
