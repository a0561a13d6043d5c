#include "controls/globe_map/EclipseLayer.h"

#include "controls/core/Angle.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace
{
// Two points farther apart are not of one line; nearer ones are joined along the great circle.
constexpr double LargestGap = 40 * RadiansPerDegree;
constexpr double SmallestStep = 1.5 * RadiansPerDegree;

using Line = EclipsePath::Line;

double AngleBetween(const UnitVector& a, const UnitVector& b)
{
    return std::acos(std::clamp(Dot(a, b), -1.0, 1.0));
}

// A point of the straight line between two directions, back on the sphere.
UnitVector Between(const UnitVector& a, const UnitVector& b, double share)
{
    const UnitVector mixed{a.X + (b.X - a.X) * share, a.Y + (b.Y - a.Y) * share, a.Z + (b.Z - a.Z) * share};
    const double length = std::sqrt(Dot(mixed, mixed));
    return length < 1e-9 ? a : UnitVector{mixed.X / length, mixed.Y / length, mixed.Z / length};
}

void DrawLine(QPainter& painter, const CSphereView& view, const Line& line)
{
    QPolygonF run;
    const auto finish = [&] {
        if (run.size() > 1)
            painter.drawPolyline(run);
        run.clear();
    };
    const auto add = [&](const UnitVector& point) {
        const CSphereView::Projection projection = view.Project(point);
        if (projection.Depth < 0)
            finish();
        else if (run.isEmpty() || (run.last() - projection.Screen).manhattanLength() >= 1)
            run.append(projection.Screen);
    };
    for (std::size_t index = 0; index < line.size(); ++index) {
        if (index > 0) {
            const double gap = AngleBetween(line[index - 1], line[index]);
            const int steps = gap > LargestGap ? 0 : static_cast<int>(gap / SmallestStep);
            if (gap > LargestGap)
                finish();
            for (int step = 1; step <= steps; ++step)
                add(Between(line[index - 1], line[index], static_cast<double>(step) / (steps + 1)));
        }
        add(line[index]);
    }
    finish();
}

// The point at a share (0 to 1) of the way through a line's points.
UnitVector PointAt(const Line& line, double share)
{
    const double place = share * static_cast<double>(line.size() - 1);
    const auto index = std::min(static_cast<std::size_t>(place), line.size() - 2);
    return Between(line[index], line[index + 1], place - static_cast<double>(index));
}

void FillBand(QPainter& painter, const CSphereView& view, const Line& north, const Line& south)
{
    if (north.size() < 2 || south.size() < 2)
        return;
    const int steps = static_cast<int>(std::clamp<std::size_t>(std::max(north.size(), south.size()) * 2, 200, 1500));
    QPolygonF upper;
    QPolygonF lower;
    const auto finish = [&] {
        std::reverse(lower.begin(), lower.end());
        if (upper.size() > 1)
            painter.drawPolygon(upper + lower);
        upper.clear();
        lower.clear();
    };
    UnitVector lastNorth = north.front();
    for (int step = 0; step <= steps; ++step) {
        const double share = static_cast<double>(step) / steps;
        const UnitVector directionNorth = PointAt(north, share);
        const CSphereView::Projection a = view.Project(directionNorth);
        const CSphereView::Projection b = view.Project(PointAt(south, share));
        const bool isApart = AngleBetween(lastNorth, directionNorth) > LargestGap;
        lastNorth = directionNorth;
        if (a.Depth < 0 || b.Depth < 0 || isApart) {
            finish();
            continue;
        }
        upper.append(a.Screen);
        lower.append(b.Screen);
    }
    finish();
}
} // namespace

void EclipseLayer::Draw(QPainter& painter, const CSphereView& view, const EclipsePath& path, const QColor& color,
                        bool hasLimits)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (hasLimits) {
        QColor band = color;
        band.setAlpha(64);
        painter.setPen(Qt::NoPen);
        painter.setBrush(band);
        FillBand(painter, view, path.North, path.South);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(color, 1));
        DrawLine(painter, view, path.North);
        DrawLine(painter, view, path.South);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 120), 4, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    DrawLine(painter, view, path.Central);
    painter.setPen(QPen(color, 2, hasLimits ? Qt::SolidLine : Qt::DashLine, Qt::FlatCap, Qt::RoundJoin));
    DrawLine(painter, view, path.Central);
    painter.restore();
}
