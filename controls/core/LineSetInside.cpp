#include "controls/core/Angle.h"
#include "controls/core/LineSet.h"

#include <QRectF>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace
{
// Points nearer to the last one are left out of the area's outline, in pixels.
constexpr double Tolerance = 0.8;
constexpr double FarthestPixel = 24000;

// Flattens the whole sphere around the view's centre: as the view does on the near side, and beyond its edge ever
// farther outwards, so that outlines stay whole. Nothing goes farther than the limit.
class CFlattener
{
public:
    CFlattener(const CSphereView& view, double limit)
        : m_view(view), m_limit(limit), m_nearSquare(limit / view.Radius() * (limit / view.Radius()))
    {
    }

    [[nodiscard]] QPointF operator()(const UnitVector& direction) const
    {
        const double x = Dot(direction, m_view.East());
        const double y = Dot(direction, m_view.North());
        const double square = x * x + y * y;
        const bool isNear = Dot(direction, m_view.Viewer()) >= 0;
        if (isNear && square <= m_nearSquare)
            return m_view.CenterPixel() + QPointF(x * m_view.Radius(), -y * m_view.Radius());
        const double length = std::sqrt(square);
        if (length < 1e-12)
            return m_view.CenterPixel();
        const double outward = isNear ? length : 2 - length;
        const double pixels = std::min(outward * m_view.Radius(), m_limit) / length;
        return m_view.CenterPixel() + QPointF(x * pixels, -y * pixels);
    }

private:
    const CSphereView& m_view;
    double m_limit;
    double m_nearSquare; // of what the limit does not touch
};

// The point of the area that is farthest from all corners of the outlines, among a few.
QPointF ClearPoint(const QList<CLineSet::Run>& outlines, QSizeF size)
{
    constexpr int Steps = 3;
    QPointF best;
    double bestDistance = -1;
    for (int index = 0; index < Steps * Steps; ++index) {
        const int column = index % Steps;
        const int row = index / Steps;
        const QPointF point((column + 0.5) * size.width() / Steps, (row + 0.5) * size.height() / Steps);
        double nearest = std::numeric_limits<double>::max();
        for (const CLineSet::Run& outline : outlines) {
            for (const QPointF& corner : outline)
                nearest = std::min(nearest, (corner - point).manhattanLength());
        }
        if (nearest > bestDistance) {
            bestDistance = nearest;
            best = point;
        }
    }
    return best;
}

/// Whether a ray from the point to the right meets the closed outline an odd number of times.
bool IsWithin(const CLineSet::Run& outline, QPointF point)
{
    bool isWithin = false;
    QPointF from = outline.last();
    for (const QPointF& to : outline) {
        if ((from.y() > point.y()) != (to.y() > point.y()) &&
            point.x() < from.x() + (to.x() - from.x()) * (point.y() - from.y()) / (to.y() - from.y()))
            isWithin = !isWithin;
        from = to;
    }
    return isWithin;
}
} // namespace

std::size_t CLineSet::LineEnd(std::size_t firstPiece) const
{
    std::size_t end = firstPiece + 1;
    while (end < m_pieces.size() && !m_pieces[end].BeginsLine)
        ++end;
    return end;
}

// Counts how often the meridian from the place up to the north pole meets a line.
bool CLineSet::IsInside(const GeoPoint& place) const
{
    const double longitude = place.Longitude * RadiansPerDegree;
    const UnitVector across{-std::sin(longitude), std::cos(longitude), 0};
    const UnitVector along{std::cos(longitude), std::sin(longitude), 0};
    const double slope = std::tan(std::clamp(place.Latitude, -89.999, 89.999) * RadiansPerDegree);
    bool isInside = false;
    const auto vector = [this](std::size_t index) {
        const Point& point = m_points[index];
        return UnitVector{static_cast<double>(point.X), static_cast<double>(point.Y), static_cast<double>(point.Z)};
    };
    const auto cross = [&](const UnitVector& from, const UnitVector& to) {
        const double first = Dot(from, across);
        const double second = Dot(to, across);
        if ((first < 0) == (second < 0))
            return;
        const double share = first / (first - second);
        const double outward = Dot(from, along) + (Dot(to, along) - Dot(from, along)) * share;
        const double height = from.Z + (to.Z - from.Z) * share;
        if (outward > 0 && height > slope * outward)
            isInside = !isInside;
    };
    for (std::size_t line = 0; line < m_pieces.size();) {
        const std::size_t end = LineEnd(line);
        cross(vector(m_pieces[end - 1].First + m_pieces[end - 1].Count - 1), vector(m_pieces[line].First));
        for (; line < end; ++line) {
            const Piece& piece = m_pieces[line];
            if (piece.CapAngle < 1 && std::abs(Dot(piece.Middle, across)) > piece.CapSine + 1e-6)
                continue;
            for (std::size_t index = piece.First; index + 1 < piece.First + piece.Count; ++index)
                cross(vector(index), vector(index + 1));
        }
    }
    return isInside;
}

QList<CLineSet::Run> CLineSet::Inside(const CSphereView& view, QSizeF size) const
{
    const CSight sight(view, size);
    // Far enough that a long stretch between two points out of sight keeps its course across the area.
    const CFlattener flatten(view, std::max(4 * std::hypot(size.width(), size.height()), FarthestPixel));
    const auto isSeen = [&](const Piece& piece) { return sight.Has(piece); };
    QList<Run> outlines;
    for (std::size_t line = 0; line < m_pieces.size();) {
        const std::size_t begin = line;
        line = LineEnd(line);
        const auto first = m_pieces.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto last = m_pieces.begin() + static_cast<std::ptrdiff_t>(line);
        // Neither what is out of sight nor islands too small to see.
        if ((line == begin + 1 && first->CapAngle * view.Radius() < Tolerance / 2) || std::none_of(first, last, isSeen))
            continue;
        Run outline;
        for (auto piece = first; piece != last; ++piece) {
            // Of a piece out of sight one point is enough to lead the outline around.
            const std::size_t count = isSeen(*piece) ? piece->Count : 1;
            for (std::size_t index = piece->First; index < piece->First + count; ++index) {
                const Point& point = m_points[index];
                const QPointF at =
                    flatten({static_cast<double>(point.X), static_cast<double>(point.Y), static_cast<double>(point.Z)});
                if (outline.isEmpty() || (at - outline.last()).manhattanLength() >= Tolerance)
                    outline.append(at);
            }
        }
        if (outline.size() > 2)
            outlines.append(outline);
    }

    // Lines wholly out of sight may still surround the area: one point decides.
    const QPointF clear = ClearPoint(outlines, size);
    const auto place = view.FromScreen(clear);
    bool isInside = place && IsInside(*place);
    for (const Run& outline : outlines)
        isInside ^= IsWithin(outline, clear);
    if (isInside) {
        const QRectF all = QRectF(QPointF(0, 0), size).adjusted(-8, -8, 8, 8);
        outlines.append({all.topLeft(), all.topRight(), all.bottomRight(), all.bottomLeft()});
    }
    return outlines;
}
