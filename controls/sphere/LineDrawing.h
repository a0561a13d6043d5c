#pragma once

#include "controls/core/LineSet.h"

#include <QPainterPath>

class CLineMask;
class QPainter;

/// Lines of a globe on a picture.
namespace LineDrawing
{
/// Adds what an area of that size (from the origin) shows to the mask, in lines of one device pixel.
void Add(CLineMask& mask, const CLineSet& lines, const CSphereView& view, QSizeF size, double tolerance);

/// Draws what an area of that size (from the origin) shows with the painter's pen; the tolerance in pixels as in
/// CLineSet::Trace.
void Draw(QPainter& painter, const CLineSet& lines, const CSphereView& view, QSizeF size, double tolerance);

/// The area inside the lines, as CLineSet::Inside has it.
[[nodiscard]] QPainterPath Inside(const CLineSet& lines, const CSphereView& view, QSizeF size);
} // namespace LineDrawing
