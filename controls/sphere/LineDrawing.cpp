#include "controls/sphere/LineDrawing.h"

#include "controls/sphere/LineMask.h"

#include <QPainter>
#include <QPolygonF>

void LineDrawing::Add(CLineMask& mask, const CLineSet& lines, const CSphereView& view, QSizeF size, double tolerance)
{
    lines.Trace(view, size, tolerance, [&mask](const CLineSet::Run& run) { mask.Add(run, 0); });
}

void LineDrawing::Draw(QPainter& painter, const CLineSet& lines, const CSphereView& view, QSizeF size, double tolerance)
{
    lines.Trace(view, size, tolerance, [&painter](const CLineSet::Run& run) {
        painter.drawPolyline(run.constData(), static_cast<int>(run.size()));
    });
}

QPainterPath LineDrawing::Inside(const CLineSet& lines, const CSphereView& view, QSizeF size)
{
    QPainterPath inside;
    inside.setFillRule(Qt::OddEvenFill);
    for (const CLineSet::Run& outline : lines.Inside(view, size)) {
        inside.addPolygon(outline);
        inside.closeSubpath();
    }
    return inside;
}
