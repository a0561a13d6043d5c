#include "controls/globe_map/EclipsePath.h"

#include "host/text/Number.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace
{
constexpr std::size_t MostPoints = 3000;
constexpr qsizetype LongestNumber = 32;
// Two points farther apart are not of one line; nearer ones are joined along the great circle.
constexpr double LargestGap = 40 * std::numbers::pi / 180.0;
constexpr double SmallestStep = 1.5 * std::numbers::pi / 180.0;

using Line = std::vector<UnitVector>;

std::optional<double> NumberOf(QStringView text, double limit)
{
    const QStringView head = text.trimmed().left(LongestNumber);
    const std::optional<double> value = Number::FindLeadingDouble(head);
    if (!value || std::abs(*value) > limit)
        return std::nullopt;
    return value;
}

Line ParseLine(QStringView text)
{
    Line line;
    while (!text.isEmpty() && line.size() < MostPoints) {
        const qsizetype comma = text.indexOf(u',');
        const QStringView pair = (comma < 0 ? text : text.left(comma)).trimmed();
        text = comma < 0 ? QStringView() : text.sliced(comma + 1);
        const qsizetype blank = pair.indexOf(u' ');
        if (blank < 0)
            continue;
        const auto longitude = NumberOf(pair.left(blank), 360);
        const auto latitude = NumberOf(pair.sliced(blank + 1), 90);
        if (longitude && latitude)
            line.push_back(ToVector({*longitude, *latitude}));
    }
    return line;
}

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

CEclipsePath CEclipsePath::Parse(QStringView text)
{
    CEclipsePath path;
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf(u';');
        const QStringView part = end < 0 ? text : text.left(end);
        text = end < 0 ? QStringView() : text.sliced(end + 1);
        const qsizetype equals = part.indexOf(u'=');
        if (equals < 0)
            continue;
        const QStringView name = part.left(equals).trimmed();
        Line* line = name.compare(u"central", Qt::CaseInsensitive) == 0 ? &path.m_central
                     : name.compare(u"north", Qt::CaseInsensitive) == 0 ? &path.m_north
                     : name.compare(u"south", Qt::CaseInsensitive) == 0 ? &path.m_south
                                                                        : nullptr;
        if (line)
            *line = ParseLine(part.sliced(equals + 1));
    }
    return path;
}

void CEclipsePath::Draw(QPainter& painter, const CSphereView& view, const QColor& color, bool hasLimits) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (hasLimits) {
        QColor band = color;
        band.setAlpha(64);
        painter.setPen(Qt::NoPen);
        painter.setBrush(band);
        FillBand(painter, view, m_north, m_south);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(color, 1));
        DrawLine(painter, view, m_north);
        DrawLine(painter, view, m_south);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 120), 4, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    DrawLine(painter, view, m_central);
    painter.setPen(QPen(color, 2, hasLimits ? Qt::SolidLine : Qt::DashLine, Qt::FlatCap, Qt::RoundJoin));
    DrawLine(painter, view, m_central);
    painter.restore();
}
