#pragma once

#include "controls/core/EclipsePath.h"
#include "controls/core/SphereView.h"

class QColor;
class QPainter;

/// The path of an eclipse on the globe.
namespace EclipseLayer
{
/// Draws the central line in the colour; with the limits also the two limits and the band between them, else the
/// central line alone, dashed.
void Draw(QPainter& painter, const CSphereView& view, const EclipsePath& path, const QColor& color, bool hasLimits);
} // namespace EclipseLayer
