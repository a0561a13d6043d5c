#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>

#include <span>
#include <vector>

/// Smooth lines over a picture, gathered before they are drawn: where lines cross, a translucent colour lies there
/// once. Many times as quick as a painter's lines broader than a pixel.
class CLineMask
{
public:
    /// For pictures of that size; points and widths are multiplied by the ratio.
    CLineMask(QSize pixels, double ratio);

    /// Adds the line through these points. Widths of less than a device pixel count as one.
    void Add(std::span<const QPointF> points, double width);

    /// Draws what was added onto an opaque picture (32 bits) of the mask's size, and forgets it.
    void Draw(QImage& picture, const QColor& color);

private:
    void AddPart(QPointF from, QPointF to, double width);

    int m_width;
    int m_height;
    double m_ratio;
    std::vector<quint8> m_cover; ///< 0 to 255 for each pixel, row by row
};
