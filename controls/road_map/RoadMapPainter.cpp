#include "controls/road_map/RoadMapPainter.h"

#include "controls/core/Angle.h"
#include "controls/road_map/ScaleBar.h"
#include "controls/sphere/Graticule.h"
#include "controls/sphere/LineDrawing.h"
#include "controls/sphere/MapFurniture.h"

#include <QFontMetricsF>
#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
const QColor Sea(13, 27, 47);
const QColor Land(40, 51, 50);
const QColor Shallows(70, 130, 180, 38); // along the coast
const QColor CoastColor(142, 176, 204, 190);
const QColor BorderColor(255, 226, 170, 170);
const QColor PrefectureColor(214, 196, 160, 120);
const QColor RiverColor(86, 128, 168, 120);
const QColor WayColor(96, 214, 232, 230);

constexpr double LongestBar = 130;         // pixels
constexpr double SurroundingsReach = 0.35; // degrees to the nearest municipal office that is named
constexpr double SurroundingsAngle = 0.6;  // degrees of view from which the area has too many of them
constexpr double PrefectureAngle = 0.12;   // from nearer, the borders' own inaccuracy would show
constexpr double RiverAngle = 4;
constexpr double WidePixel = 600; // metres a pixel from which the thinner coast will do
constexpr double Margin = 6;
// What the finer coast covers; its edge is a line of its own, which must stay out of sight.
constexpr double NearWest = 122.2;
constexpr double NearEast = 153.8;
constexpr double NearSouth = 20.2;
constexpr double NearNorth = 45.8;

/// On which sides of the area a point lies outside.
std::bitset<4> SidesOf(QPointF point, const QRectF& area)
{
    std::bitset<4> sides;
    sides[0] = point.x() < area.left();
    sides[1] = point.x() > area.right();
    sides[2] = point.y() < area.top();
    sides[3] = point.y() > area.bottom();
    return sides;
}
} // namespace

CRoadMapPainter::CRoadMapPainter(QString dataFolder) : m_dataFolder(std::move(dataFolder))
{
    std::bitset<LandmarkKind::Count> kinds;
    m_places.SetKinds(kinds.set());
}

void CRoadMapPainter::LoadOnce()
{
    if (std::exchange(m_isLoaded, true))
        return;
    m_coast.Load(m_dataFolder + u"earth/coast10.kol"_s);
    m_borders.Load(m_dataFolder + u"earth/borders10.kol"_s);
    m_nearCoast.Load(m_dataFolder + u"roadmap/coast.kol"_s);
    m_wideCoast.Load(m_dataFolder + u"roadmap/coastwide.kol"_s);
    m_relief.Load(m_dataFolder + u"roadmap/relief.png"_s);
    m_rivers.Load(m_dataFolder + u"roadmap/rivers.kol"_s);
    m_prefectures.Load(m_dataFolder + u"roadmap/prefectures.kol"_s);
    m_data.Load(m_dataFolder + u"roadmap/"_s);
    ShowPlaces();
}

const CRoadMapData& CRoadMapPainter::Data()
{
    LoadOnce();
    return m_data;
}

void CRoadMapPainter::ShowPlaces()
{
    std::vector<Landmark> places = m_markPlaces;
    const std::vector<Landmark> shipped = m_data.Landmarks();
    places.insert(places.end(), shipped.begin(), shipped.end());
    m_places.SetPlaces(std::move(places));
}

void CRoadMapPainter::SetMarks(const RoadMapMarks& marks)
{
    LoadOnce();
    m_markPlaces.clear();
    for (const RoadMapMark& mark : marks.Points)
        m_markPlaces.push_back({mark.Name, mark.Position, ToVector(mark.Position), 0, -1, 180});
    m_ways.clear();
    for (const std::vector<GeoPoint>& way : marks.Ways) {
        std::vector<UnitVector>& directions = m_ways.emplace_back();
        directions.reserve(way.size());
        for (const GeoPoint& point : way)
            directions.push_back(ToVector(point));
    }
    ShowPlaces();
}

void CRoadMapPainter::SetFonts(const QFont& names, const QFont& small)
{
    m_places.SetFont(names);
    m_smallFont = small;
}

/// Whether the finer coast covers all that the view shows.
bool CRoadMapPainter::IsNear(const RoadMapScene& scene, QSizeF size) const
{
    if (m_nearCoast.IsEmpty())
        return false;
    const auto isCovered = [&scene](QPointF pixel) {
        const auto point = scene.View.FromScreen(pixel);
        return point && point->Longitude > NearWest && point->Longitude < NearEast && point->Latitude > NearSouth &&
               point->Latitude < NearNorth;
    };
    const double right = size.width();
    const double bottom = size.height();
    // The middles of the sides as well: a parallel bulges towards the pole between the corners.
    const std::array<QPointF, 8> rim = {QPointF(0, 0),          QPointF(right, 0),         QPointF(0, bottom),
                                        QPointF(right, bottom), QPointF(right / 2, 0),     QPointF(right / 2, bottom),
                                        QPointF(0, bottom / 2), QPointF(right, bottom / 2)};
    return std::all_of(rim.begin(), rim.end(), isCovered);
}

void CRoadMapPainter::PaintGround(QImage& picture, const RoadMapScene& scene, QSizeF size) const
{
    QPainter painter(&picture);
    const CSphereView& view = scene.View;
    const QRectF area(QPointF(0, 0), size);
    const QRectF whole = area.adjusted(-1, -1, 1, 1);
    const bool isNear = IsNear(scene, size);
    const bool isWide = scene.MetersPerPixel > WidePixel && !m_wideCoast.IsEmpty();
    const CLineSet& coast = !isNear ? m_coast : isWide ? m_wideCoast : m_nearCoast;
    if (coast.IsEmpty())
        painter.fillRect(whole, Sea);
    else {
        m_relief.Draw(painter, view, size, scene.MetersPerPixel, Land);
        QPainterPath sea = LineDrawing::Inside(coast, view, size);
        sea.addRect(whole);
        // Hard edges: ten times as quick, and the coastline drawn on them is smooth.
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.fillPath(sea, Sea);
        painter.setRenderHint(QPainter::Antialiasing);
        if (view.VisibleAngle(size) < RiverAngle) {
            painter.setPen(QPen(RiverColor, 0));
            LineDrawing::Draw(painter, m_rivers, view, size, 1);
        }
        painter.setPen(QPen(CoastColor, 0));
        LineDrawing::Draw(painter, coast, view, size, 1);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(BorderColor, 0));
    LineDrawing::Draw(painter, m_borders, view, size, 1);
    if (view.VisibleAngle(size) > PrefectureAngle) {
        painter.setPen(QPen(PrefectureColor, 0));
        LineDrawing::Draw(painter, m_prefectures, view, size, 1);
    }
}

/// The parts of a way in sight, points nearer than a pixel and a half to the one before left out.
std::vector<QPolygonF> CRoadMapPainter::RunsInSight(const std::vector<UnitVector>& way, const CSphereView& view,
                                                    const QRectF& area)
{
    std::vector<QPolygonF> runs;
    QPolygonF run;
    QPointF last;
    bool hasLast = false;
    const auto finish = [&] {
        if (run.size() > 1)
            runs.push_back(run);
        run.clear();
    };
    for (const UnitVector& direction : way) {
        const CSphereView::Projection place = view.Project(direction);
        if (place.Depth <= 0) {
            finish();
            hasLast = false;
            continue;
        }
        const bool isApart = hasLast && (SidesOf(last, area) & SidesOf(place.Screen, area)).any();
        if (hasLast && !isApart && run.isEmpty())
            run.append(last);
        if (isApart)
            finish();
        else if (hasLast && (place.Screen - run.last()).manhattanLength() > 1.5)
            run.append(place.Screen);
        last = place.Screen;
        hasLast = true;
    }
    finish();
    return runs;
}

/// Draws the ways broad, but a tangle that nobody could follow thin, plain and with fewer of its points: lines cost
/// time by their length. They are drawn one by one, as a long one that crosses itself often takes time without end.
void CRoadMapPainter::PaintWays(QPainter& painter, const RoadMapScene& scene, QSizeF size) const
{
    constexpr double longestBroad = 20'000; // pixels of all lines
    constexpr double longestSmooth = 80'000;
    constexpr qsizetype mostPoints = 3000;
    const QRectF area = QRectF(QPointF(0, 0), size).adjusted(-20, -20, 20, 20);
    std::vector<QPolygonF> runs;
    qsizetype count = 0;
    for (const std::vector<UnitVector>& way : m_ways) {
        for (QPolygonF& run : RunsInSight(way, scene.View, area)) {
            count += run.size();
            runs.push_back(std::move(run));
        }
    }
    const qsizetype stride = 1 + count / mostPoints;
    QList<QLineF> lines;
    double length = 0;
    for (const QPolygonF& run : runs) {
        QPointF from = run.front();
        for (qsizetype i = 1; i < run.size(); ++i) {
            if (i % stride != 0 && i + 1 < run.size())
                continue;
            lines.append({from, run.at(i)});
            length += std::min((run.at(i) - from).manhattanLength(), area.width() + area.height()); // what can be seen
            from = run.at(i);
        }
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, length <= longestSmooth);
    painter.setPen(QPen(WayColor, length <= longestBroad ? 2 : 0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLines(lines);
    painter.restore();
}

/// The municipality around the middle, while the view is so near that its name need not be in sight.
QString CRoadMapPainter::Surroundings(const RoadMapScene& scene) const
{
    const RoadMapAddress* nearest = m_data.NearestMunicipality(scene.View.Center(), SurroundingsReach);
    return nearest ? nearest->Address + u"付近"_s : QString();
}

void CRoadMapPainter::Paint(QImage& picture, const RoadMapScene& scene)
{
    LoadOnce();
    const QSizeF size = picture.deviceIndependentSize();
    PaintGround(picture, scene, size);
    GraticuleStyle style;
    style.Line = QColor(255, 255, 255, 26);
    style.Equator = QColor(255, 255, 255, 44);
    style.Label = QColor(255, 255, 255, 130);
    style.MinimumSpacing = 150;
    m_drawn = DrawGraticule(picture, m_smallFont, scene.View, style);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(m_smallFont);
    PaintWays(painter, scene, size);

    const double lineHeight = QFontMetricsF(m_smallFont).height();
    const ScaleBar bar = ScaleBar::For(scene.MetersPerPixel, LongestBar);
    // On the right, above the labels of the meridians and clear of those of the parallels.
    const QSizeF barSize = bar.Size(painter, scene.Denominator);
    const QPointF barCorner(size.width() - barSize.width() - Margin, size.height() - lineHeight - 2 * Margin);
    const QRectF barPlace(barCorner - QPointF(0, barSize.height()), barSize);
    const double angle = std::min(size.width(), size.height()) / scene.View.Radius() * DegreesPerRadian;
    const QString surroundings = angle < SurroundingsAngle ? Surroundings(scene) : QString();
    // In the middle of the upper edge, clear of the labels on the left; a window too narrow for it does without.
    const double width = QFontMetricsF(m_smallFont).horizontalAdvance(surroundings) + 10;
    QRectF surroundingsPlace((size.width() - width) / 2, Margin, width, lineHeight + 6);
    if (surroundings.isEmpty() || surroundingsPlace.intersects(scene.ReadOut) || surroundingsPlace.left() < Margin)
        surroundingsPlace = QRectF();
    const QRectF labels(0, size.height() - lineHeight - Margin, size.width(), lineHeight + Margin);
    const auto site = scene.Site ? scene.View.ToScreen(scene.Site->Longitude, scene.Site->Latitude) : std::nullopt;
    m_places.Draw(painter, scene.View, size.toSize(), angle, {scene.ReadOut, barPlace, surroundingsPlace, labels},
                  site);
    m_drawn.insert(m_drawn.end(), m_places.Drawn().begin(), m_places.Drawn().end());
    if (site) {
        MapFurniture::DrawObserver(painter, *site);
        m_drawn.push_back({QString::fromUtf16(DrawnLayer::Observer), QString(), *site, QRectF()});
    }
    painter.setFont(m_smallFont);
    bar.Draw(painter, barCorner, scene.Denominator);
    if (!surroundingsPlace.isEmpty())
        MapFurniture::DrawPlate(painter, surroundingsPlace, surroundings);
}
