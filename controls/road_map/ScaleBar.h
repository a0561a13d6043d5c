#pragma once

#include <QRectF>
#include <QString>

class QPainter;

/// The bar that shows how long a distance on the map is.
struct ScaleBar
{
    double Meters = 0;
    double Pixels = 0;
    QString Text; ///< "500 m", "20 km"

    /// The longest of 1, 2 or 5 times a power of ten that stays within so many pixels.
    [[nodiscard]] static ScaleBar For(double metersPerPixel, double longest);

    /// The room of the bar and the scale beneath it, from the origin.
    [[nodiscard]] QSizeF Size(const QPainter& painter, int denominator) const;

    /// Draws the bar, its distance and the scale (1:n) with the corner at the bottom left, in the painter's font.
    void Draw(QPainter& painter, QPointF bottomLeft, int denominator) const;
};
