#include "controls/sphere/LandmarkLayer.h"

#include "controls/core/Angle.h"
#include "controls/sphere/MapFurniture.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int MarkSize = 9;     // of a mark's picture, its outline included
constexpr int KeptNames = 1200; // pictures of names
constexpr double Halo = 1.5;
constexpr double MarkerReach = 13; // of the observer's marker from its middle
constexpr double MarkerGap = 5;    // of a name beside it; less would touch the grid cells that the marker takes
constexpr double BeneathReach = 5; // a place so near to the marker's middle is the observer's own
// Nearer to the edge of the disc than this, names would pile up on one another.
constexpr double EdgeDepth = 0.16;

enum class MarkShape
{
    Ring,
    Square,
    Dot,
    Dome,
    Triangle,
    Diamond,
    Tower,
    Cross,
};

struct KindLook
{
    MarkShape Shape = MarkShape::Dot;
    QRgb Color = 0;
    double NameAngle = 180; // names are written up to this view angle, in degrees
    double MarkAngle = 180; // the same for marks
};

constexpr std::array<KindLook, LandmarkKind::Count> Looks = {{
    {MarkShape::Ring, 0xFFFFD166, 180, 180},
    {MarkShape::Square, 0xFFC9D6E2, 40, 110},
    {MarkShape::Dot, 0xFFFFFFFF, 180, 180},
    {MarkShape::Dome, 0xFF8FE3FF, 130, 180},
    {MarkShape::Triangle, 0xFFE6B78A, 100, 180},
    {MarkShape::Diamond, 0xFF9BE3A0, 130, 180},
    {MarkShape::Tower, 0xFFF2A6C8, 60, 180},
    {MarkShape::Cross, 0xFFB9B3E6, 60, 180},
}};

QPainterPath ShapePath(MarkShape shape)
{
    QPainterPath path;
    switch (shape) {
    case MarkShape::Ring:
        path.addEllipse(QPointF(0, 0), 2.8, 2.8);
        path.addEllipse(QPointF(0, 0), 1.2, 1.2);
        break;
    case MarkShape::Square:
        path.addRect(-1.7, -1.7, 3.4, 3.4);
        break;
    case MarkShape::Dot:
        path.addEllipse(QPointF(0, 0), 2.1, 2.1);
        break;
    case MarkShape::Dome:
        path.moveTo(-2.8, 2.2);
        path.arcTo(QRectF(-2.8, -2.6, 5.6, 5.6), 180, -180);
        path.lineTo(2.8, 2.2);
        path.closeSubpath();
        break;
    case MarkShape::Triangle:
        path.addPolygon(QPolygonF({QPointF(0, -3), QPointF(3, 2.4), QPointF(-3, 2.4), QPointF(0, -3)}));
        break;
    case MarkShape::Diamond:
        path.addPolygon(QPolygonF({QPointF(0, -3), QPointF(3, 0), QPointF(0, 3), QPointF(-3, 0), QPointF(0, -3)}));
        break;
    case MarkShape::Tower:
        path.addRect(-1.2, -3, 2.4, 6);
        break;
    case MarkShape::Cross:
        path.addRect(-2.6, -0.8, 5.2, 1.6);
        path.addRect(-0.8, -2.6, 1.6, 5.2);
        path.setFillRule(Qt::WindingFill);
        break;
    }
    return path;
}
} // namespace

CLandmarkLayer::CLandmarkLayer() : m_names(KeptNames) {}

void CLandmarkLayer::SetPlaces(std::vector<Landmark> places)
{
    m_places = std::move(places);
    m_widths.assign(m_places.size(), 0);
    m_names.clear();
}

void CLandmarkLayer::SetFont(const QFont& font)
{
    m_font = font;
    m_height = QFontMetricsF(font).height();
    m_widths.assign(m_places.size(), 0);
    m_names.clear();
}

const QImage& CLandmarkLayer::Mark(int kind, double scale)
{
    QImage& image = m_marks[static_cast<std::size_t>(kind)];
    if (!image.isNull())
        return image;
    const int side = static_cast<int>(std::ceil(MarkSize * scale));
    image = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    const KindLook& look = Looks[static_cast<std::size_t>(kind)];
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(MarkSize / 2.0, MarkSize / 2.0);
    const QPainterPath path = ShapePath(look.Shape);
    painter.strokePath(path, QPen(QColor(8, 12, 20, 210), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.fillPath(path, QColor::fromRgba(look.Color));
    return image;
}

double CLandmarkLayer::NameWidth(std::size_t place)
{
    float& width = m_widths[place];
    if (width <= 0)
        width = static_cast<float>(QFontMetricsF(m_font).horizontalAdvance(m_places[place].Name));
    return static_cast<double>(width);
}

QImage CLandmarkLayer::NameImage(std::size_t place, double scale)
{
    if (const QImage* kept = m_names.object(place))
        return *kept;
    const QFontMetricsF metrics(m_font);
    const QSizeF size(NameWidth(place) + 2 * Halo, metrics.height() + 2 * Halo);
    QImage image((size * scale).toSize() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setFont(m_font);
        QColor color = QColor::fromRgba(Looks[static_cast<std::size_t>(m_places[place].Kind)].Color);
        painter.setPen(color.lighter(106));
        MapFurniture::DrawOutlined(painter, {Halo, Halo}, m_places[place].Name);
    }
    m_names.insert(place, new QImage(image)); // owned by the cache
    return image;
}

/// The named place nearest to the marker's middle, of those that it covers.
std::optional<std::size_t> CLandmarkLayer::PlaceBeneath(const CSphereView& view, double viewAngle, double lowest,
                                                        QPointF marker) const
{
    std::optional<std::size_t> nearest;
    double reach = BeneathReach;
    for (std::size_t index = 0; index < m_places.size(); ++index) {
        const Landmark& place = m_places[index];
        const auto kind = static_cast<std::size_t>(place.Kind);
        if (!m_kinds[kind] || viewAngle > std::min(Looks[kind].NameAngle, place.WidestAngle) ||
            Dot(place.Direction, view.Viewer()) < lowest)
            continue;
        const double distance = (view.Project(place.Direction).Screen - marker).manhattanLength();
        if (distance < reach) {
            reach = distance;
            nearest = index;
        }
    }
    return nearest;
}

void CLandmarkLayer::Draw(QPainter& painter, const CSphereView& view, QSize size, double viewAngle,
                          const QList<QRectF>& keptFree, std::optional<QPointF> marker)
{
    const double scale = painter.device()->devicePixelRatioF();
    if (scale != m_scale) {
        m_scale = scale;
        m_names.clear();
        m_marks.fill(QImage());
    }
    const double horizon = std::cos(view.VisibleAngle(size) * RadiansPerDegree);
    const double lowest = std::max(horizon - 0.001, EdgeDepth);
    // Farther away marks and names keep a wider distance, so that the ground stays to be seen.
    const double markMargin = viewAngle > 60 ? 7 : viewAngle > 20 ? 4 : 1;
    const double nameMargin = viewAngle > 60 ? 9 : 2;
    auto namesLeft = static_cast<int>(size.width() * size.height() / (viewAngle > 60 ? 4200 : 1800));

    CScreenGrid grid(size);
    for (const QRectF& rectangle : keptFree)
        grid.Block(rectangle);
    const QRectF markerBox =
        marker ? QRectF(*marker - QPointF(MarkerReach, MarkerReach), QSizeF(2 * MarkerReach, 2 * MarkerReach))
               : QRectF();
    if (marker)
        grid.Block(markerBox);
    std::vector<Shown> shown;
    const auto beneath = marker ? PlaceBeneath(view, viewAngle, lowest, *marker) : std::nullopt;
    const QRectF area(QPointF(0, 0), size);
    for (std::size_t index = 0; index < m_places.size(); ++index) {
        const Landmark& place = m_places[index];
        const auto kind = static_cast<std::size_t>(place.Kind);
        if (!m_kinds[kind] || viewAngle > std::min(Looks[kind].MarkAngle, place.WidestAngle) ||
            Dot(place.Direction, view.Viewer()) < lowest)
            continue;
        const QPointF screen = view.Project(place.Direction).Screen;
        const double half = MarkSize / 2.0 - 1;
        const QRectF box(screen.x() - half, screen.y() - half, 2 * half, 2 * half);
        // The marker stands for the mark of the place beneath it, and only the nearest is named there. Others that it
        // covers in part are named beside it, too.
        const bool isBesideMarker = markerBox.intersects(box);
        const bool isBeneathMarker = marker && (screen - *marker).manhattanLength() < BeneathReach;
        if (!area.contains(box) || (isBeneathMarker ? index != beneath : !isBesideMarker && !grid.IsFree(box)))
            continue;
        // The more important place takes its name's room before lesser marks are set.
        const bool hasName = m_isNamesVisible && namesLeft > 0 && viewAngle <= Looks[kind].NameAngle;
        const auto corner = !hasName         ? std::nullopt
                            : isBesideMarker ? FindNameCorner(grid, index, *marker, MarkerReach + MarkerGap, nameMargin,
                                                              isBeneathMarker ? QPointF() : screen - *marker)
                                             : FindNameCorner(grid, index, screen, MarkSize / 2.0 + 1, nameMargin);
        if (corner)
            --namesLeft;
        if (isBesideMarker) {
            if (corner)
                shown.push_back({index, screen, corner, !isBeneathMarker});
            continue;
        }
        if (!corner && !grid.IsFree(box.adjusted(-markMargin, -markMargin, markMargin, markMargin)))
            continue;
        grid.Block(box);
        shown.push_back({index, screen, corner, true});
    }
    m_drawn.clear();
    for (const Shown& mark : shown) {
        const Landmark& place = m_places[mark.Place];
        const QRectF text =
            mark.NameCorner ? QRectF(*mark.NameCorner, QSizeF(NameWidth(mark.Place), m_height)) : QRectF();
        m_drawn.push_back({LandmarkKind::Name(place.Kind), place.Name, mark.Screen, text});
        if (!mark.HasMark)
            continue;
        const QPointF corner = mark.Screen - QPointF(MarkSize / 2.0, MarkSize / 2.0);
        painter.drawImage(corner, Mark(place.Kind, scale));
    }
    for (const Shown& mark : shown) {
        if (!mark.NameCorner)
            continue;
        // On whole pixels, so that the letters stay crisp.
        const QPointF corner = *mark.NameCorner - QPointF(Halo, Halo);
        painter.drawImage(QPointF(std::round(corner.x() * scale) / scale, std::round(corner.y() * scale) / scale),
                          NameImage(mark.Place, scale));
    }
}

std::optional<QPointF> CLandmarkLayer::FindNameCorner(CScreenGrid& grid, std::size_t place, QPointF mark, double gap,
                                                      double margin, QPointF towards)
{
    const double width = NameWidth(place);
    const double middle = mark.y() - m_height / 2;
    struct Side
    {
        QPointF Corner;
        QPointF Direction;
    };
    std::array<Side, 4> sides = {{{{mark.x() + gap, middle}, {1, 0}},
                                  {{mark.x() - gap - width, middle}, {-1, 0}},
                                  {{mark.x() - width / 2, mark.y() - gap - m_height + 2}, {0, -1}},
                                  {{mark.x() - width / 2, mark.y() + gap - 2}, {0, 1}}}};
    std::stable_sort(sides.begin(), sides.end(), [towards](const Side& a, const Side& b) {
        return QPointF::dotProduct(a.Direction, towards) > QPointF::dotProduct(b.Direction, towards);
    });
    const double farthest = -0.5 * std::hypot(towards.x(), towards.y());
    for (const auto& [corner, direction] : sides) {
        if (QPointF::dotProduct(direction, towards) < farthest)
            break; // across the marker a name would seem to be another place's
        const QRectF text = QRectF(corner, QSizeF(width, m_height)).adjusted(0, 2, 0, -2);
        if (!grid.IsFree(text))
            continue;
        grid.Block(text.adjusted(-margin, -margin / 2, margin, margin / 2));
        return corner;
    }
    return std::nullopt;
}
