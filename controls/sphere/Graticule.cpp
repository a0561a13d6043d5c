#include "controls/sphere/Graticule.h"

#include "controls/core/Angle.h"
#include "controls/sphere/MapFurniture.h"
#include "host/text/Number.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{
constexpr std::array<double, 18> Spacings = {30,        15,        10,        5,         2,          1,
                                             0.5,       1.0 / 3,   1.0 / 6,   1.0 / 12,  1.0 / 30,   1.0 / 60,
                                             1.0 / 120, 1.0 / 180, 1.0 / 360, 1.0 / 720, 1.0 / 1800, 1.0 / 3600};

// Nearer to a pole only every 30th or 90th meridian is drawn: the others would run together.
constexpr double CrowdedLatitude = 80;
constexpr int MostMeridians = 400;

// The part of a line that is on the near side and not far outside the area, as runs of connected points.
class CLineDrawer
{
public:
    CLineDrawer(QPainter& painter, const CSphereView& view, QSizeF size, const QColor& ground)
        : m_painter(painter), m_view(view), m_ground(ground),
          m_area(QRectF(QPointF(0, 0), size).adjusted(-Margin, -Margin, Margin, Margin))
    {
    }

    void Add(const GeoPoint& point)
    {
        const CSphereView::Projection projection = m_view.Project(ToVector(point));
        if (projection.Depth < 0 || !m_area.contains(projection.Screen)) {
            Finish();
            return;
        }
        m_run.append(projection.Screen);
    }

    void Finish()
    {
        if (m_run.size() > 1 && m_ground.isValid()) {
            const QPen line = m_painter.pen();
            m_painter.setPen(QPen(m_ground, 3));
            m_painter.drawPolyline(m_run);
            m_painter.setPen(line);
        }
        if (m_run.size() > 1)
            m_painter.drawPolyline(m_run);
        m_run.clear();
    }

private:
    static constexpr double Margin = 32; // pixels, longer than the way between two points

    QPainter& m_painter;
    const CSphereView& m_view;
    QColor m_ground;
    QRectF m_area;
    QPolygonF m_run;
};

struct Range
{
    double First = 0;
    double Last = 0;
    double Spacing = 1; // degrees from line to line
};

QString DegreeText(double degrees, double spacing, bool isLongitude, const GraticuleStyle& style)
{
    const bool isNegative = degrees < 0;
    double absolute = std::abs(degrees);
    const char* hemisphere = "";
    if (isLongitude && style.HasFullTurn) {
        absolute = isNegative == style.CountsWest || degrees == 0 ? absolute : 360 - absolute;
        hemisphere = style.CountsWest ? "W" : "E";
    } else if (isLongitude)
        hemisphere = isNegative ? "W" : "E";
    else
        hemisphere = isNegative ? "S" : "N";
    if (absolute == 0 || (isLongitude && absolute == 180))
        hemisphere = "";
    const int minutes = static_cast<int>(std::lround(absolute * 60));
    if (spacing >= 1)
        return Number::Format("%d\u00B0%s", minutes / 60, hemisphere);
    if (spacing >= 1.0 / 60)
        return Number::Format("%d\u00B0%02d\u2032%s", minutes / 60, minutes % 60, hemisphere);
    const int seconds = static_cast<int>(std::lround(absolute * 3600));
    return Number::Format("%d\u00B0%02d\u2032%02d\u2033%s", seconds / 3600, seconds / 60 % 60, seconds % 60,
                          hemisphere);
}

DrawnItems DrawLabels(QPainter& painter, const CSphereView& view, QSizeF size, const GraticuleStyle& style,
                      const Range& longitudes, const Range& latitudes)
{
    DrawnItems drawn;
    const QFontMetricsF metrics(painter.font());
    const double inset = 4;
    const auto write = [&](QPointF line, QPointF corner, const QString& text) {
        const QRectF box(corner, QSizeF(metrics.horizontalAdvance(text), metrics.height()));
        MapFurniture::DrawOutlined(painter, corner, text);
        drawn.push_back({QString::fromUtf16(DrawnLayer::Graticule), text, line, box});
    };
    painter.setPen(style.Label);
    for (int index = static_cast<int>(std::ceil(latitudes.First / latitudes.Spacing));
         index * latitudes.Spacing <= latitudes.Last; ++index) {
        // The line meets the left edge near the longitude that lies there at the height of its own middle point.
        const auto middle = view.ToScreen(view.Center().Longitude, index * latitudes.Spacing);
        if (!middle)
            continue;
        double y = middle->y();
        for (int step = 0; step < 3; ++step) {
            const auto edge = view.FromScreen(QPointF(inset, y));
            const auto moved = edge ? view.ToScreen(edge->Longitude, index * latitudes.Spacing) : std::nullopt;
            if (!moved)
                break;
            y = moved->y();
        }
        if (y < metrics.height() + inset + style.TopMargin || y > size.height() - 2 * metrics.height())
            continue;
        write({inset, y}, {inset, y - metrics.height() - 1},
              DegreeText(index * latitudes.Spacing, latitudes.Spacing, false, style));
    }
    const auto meetsBottom = [&](double longitude) {
        double x = view.CenterPixel().x();
        for (int step = 0; step < 4; ++step) {
            const auto edge = view.FromScreen(QPointF(x, size.height() - inset));
            const auto moved = edge ? view.ToScreen(longitude, edge->Latitude) : std::nullopt;
            if (!moved)
                break;
            x = moved->x();
        }
        return x;
    };
    // Labels that would all but touch give way: only every second or third meridian, and so on, has one then.
    const double middle = std::round(view.Center().Longitude / longitudes.Spacing) * longitudes.Spacing;
    const double pitch = std::abs(meetsBottom(middle + longitudes.Spacing) - meetsBottom(middle));
    const double room =
        metrics.height() + metrics.horizontalAdvance(DegreeText(middle, longitudes.Spacing, true, style));
    const int stride = std::clamp(static_cast<int>(std::ceil(room / std::max(pitch, 1.0))), 1, MostMeridians);
    for (int index = static_cast<int>(std::ceil(longitudes.First / longitudes.Spacing));
         index * longitudes.Spacing <= longitudes.Last; ++index) {
        if (index % stride != 0)
            continue;
        const double x = meetsBottom(index * longitudes.Spacing);
        const QString text = DegreeText(WrapLongitude(index * longitudes.Spacing), longitudes.Spacing, true, style);
        const double width = metrics.horizontalAdvance(text);
        if (x < 3 * metrics.height() || x + width > size.width() - inset)
            continue;
        write({x, size.height() - inset}, {x + 3, size.height() - inset - metrics.height()}, text);
    }
    return drawn;
}
} // namespace

double GraticuleSpacing(const CSphereView& view, double minimumSpacing)
{
    double spacing = Spacings.front();
    for (const double candidate : Spacings) {
        if (candidate * RadiansPerDegree * view.Radius() >= minimumSpacing)
            spacing = candidate;
    }
    return spacing;
}

bool HasGraticuleLabels(const CSphereView& view, QSizeF size)
{
    return view.Radius() * 0.98 > std::hypot(size.width(), size.height()) / 2;
}

DrawnItems DrawGraticule(QPainter& painter, const CSphereView& view, QSizeF size, const GraticuleStyle& style)
{
    const double spacing = GraticuleSpacing(view, style.MinimumSpacing);
    const double reach = view.VisibleAngle(size);
    const GeoPoint center = view.Center();
    const Range latitudes = {std::max(-90 + spacing, center.Latitude - reach),
                             std::min(90 - spacing, center.Latitude + reach), spacing};
    Range longitudes = {-180 + spacing, 180, spacing};
    const double ratio = std::sin(reach * RadiansPerDegree) / std::cos(center.Latitude * RadiansPerDegree);
    if (std::abs(center.Latitude) + reach < 90 && ratio < 1) {
        const double width = std::asin(ratio) / RadiansPerDegree;
        longitudes = {center.Longitude - width, center.Longitude + width, spacing};
    }
    // Around a pole a view shows every longitude, however small it is.
    for (std::size_t index = Spacings.size(); index-- > 0;) {
        if ((longitudes.Last - longitudes.First) / longitudes.Spacing > MostMeridians)
            longitudes.Spacing = std::max(longitudes.Spacing, Spacings[index]);
    }
    // About eight pixels from point to point, on the visible part only.
    const double step = std::clamp(8 / view.Radius() / RadiansPerDegree, 1e-5, 3.0);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    CLineDrawer drawer(painter, view, size, style.Ground);
    const auto choosePen = [&](bool isMain) { painter.setPen(QPen(isMain ? style.Equator : style.Line, 1)); };
    const double firstLatitude = std::max(-90.0, center.Latitude - reach);
    const double lastLatitude = std::min(90.0, center.Latitude + reach);
    for (int index = static_cast<int>(std::ceil(latitudes.First / spacing)); index * spacing <= latitudes.Last;
         ++index) {
        choosePen(index == 0);
        const double narrowing = std::cos(index * spacing * RadiansPerDegree);
        const double along = std::min(step / std::max(narrowing, 1e-9), 3.0);
        const int count = static_cast<int>(std::ceil((longitudes.Last - longitudes.First + spacing) / along));
        for (int point = 0; point <= count; ++point)
            drawer.Add({longitudes.First - spacing + point * along, index * spacing});
        drawer.Finish();
    }
    for (int index = static_cast<int>(std::ceil(longitudes.First / longitudes.Spacing));
         index * longitudes.Spacing <= longitudes.Last; ++index) {
        const double longitude = index * longitudes.Spacing;
        const double turned = std::abs(WrapLongitude(longitude));
        choosePen(turned < 1e-9 || turned > 180 - 1e-9);
        const bool reachesPole = std::abs(std::remainder(longitude, longitudes.Spacing < 5 ? 30.0 : 90.0)) < 1e-9;
        const double limit = reachesPole ? 90.0 : CrowdedLatitude;
        const double first = std::max(firstLatitude, -limit);
        const double last = std::min(lastLatitude, limit);
        for (int point = 0; first + point * step < last; ++point)
            drawer.Add({longitude, first + point * step});
        if (last > first)
            drawer.Add({longitude, last});
        drawer.Finish();
    }
    DrawnItems labels;
    if (style.Label.isValid() && HasGraticuleLabels(view, size))
        labels = DrawLabels(painter, view, size, style, longitudes, latitudes);
    painter.restore();
    return labels;
}
