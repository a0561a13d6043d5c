#pragma once

#include "controls/core/GeoPoint.h"

#include <QFont>
#include <QRectF>
#include <QString>

class QColor;
class QPainter;

/// What every map of the Earth has: the observer's marker, the read-out of a position, the frame of the focus.
namespace MapFurniture
{
/// The font of names: the window's own, with Japanese letters in the Japanese forms behind it.
[[nodiscard]] QFont NameFont(const QFont& windowFont);
/// The font of read-outs and scales.
[[nodiscard]] QFont SmallFont(const QFont& windowFont);

/// The observer's marker: a ring with a cross, 13 pixels to each side.
void DrawObserver(QPainter& painter, QPointF place);

/// A light text with the painter's pen, its first letter's upper left corner there, and a dark outline that keeps it
/// readable on any ground.
void DrawOutlined(QPainter& painter, QPointF corner, const QString& text);

/// A short text on a dark plate.
void DrawPlate(QPainter& painter, const QRectF& place, const QString& text);

/// Where the read-out stands in an area of that size: at the top, on the right.
[[nodiscard]] QRectF ReadOutPlace(const QFont& smallFont, QSizeF area, const QString& longestText);

/// A longitude and a latitude in degrees and minutes, with `hasSeconds` to the second; west and south are negative.
[[nodiscard]] QString LongitudeText(double longitude, bool hasSeconds);
[[nodiscard]] QString LatitudeText(double latitude, bool hasSeconds);
/// Both, side by side.
[[nodiscard]] QString PositionText(const GeoPoint& point, bool hasSeconds);

/// The frame of an area that has the focus, and the cross in its middle, which the keyboard picks.
void DrawFocus(QPainter& painter, const QRectF& area, const QColor& color);
} // namespace MapFurniture
