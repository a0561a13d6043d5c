#pragma once

#include "controls/core/SphereView.h"
#include "controls/sphere/DrawnItems.h"

#include <QColor>
#include <QSizeF>

class QFont;
class QImage;

/// The look of the lines of equal longitude and latitude.
struct GraticuleStyle
{
    QColor Line = QColor(255, 255, 255, 46);
    QColor Equator = QColor(255, 255, 255, 80); ///< also the meridians of 0 and 180 degrees
    QColor Label = QColor(255, 255, 255, 150);  ///< invalid: no labels
    QColor Ground;                              ///< beneath each line, invalid: none
    double MinimumSpacing = 72;                 ///< pixels between two lines in the middle of the disc
    double TopMargin = 0;                       ///< pixels at the upper edge that stay free of labels
    bool HasFullTurn = false;                   ///< longitudes 0 to 360 instead of east and west
    bool CountsWest = false;                    ///< with a full turn: counted to the west
};

/// Degrees between two lines: from 30 down to 1/3600 (a second of arc), the closest that leaves the minimum spacing.
[[nodiscard]] double GraticuleSpacing(const CSphereView& view, double minimumSpacing);

/// Whether the disc fills an area of that size: then the degrees are written at the area's left and lower edges.
[[nodiscard]] bool HasGraticuleLabels(const CSphereView& view, QSizeF size);

/// Draws the lines that an opaque picture (32 bits; its device pixel ratio counts, the view is in units of the screen)
/// shows, and at its left and lower edges their degrees when the disc fills it. Returns the degrees that were written,
/// each with the place where its line meets the edge.
DrawnItems DrawGraticule(QImage& picture, const QFont& font, const CSphereView& view, const GraticuleStyle& style = {});
