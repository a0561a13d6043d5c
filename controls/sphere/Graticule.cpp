#include "controls/sphere/Graticule.h"

#include "controls/core/Angle.h"
#include "controls/sphere/LineMask.h"
#include "controls/sphere/MapFurniture.h"
#include "host/text/Number.h"

#include <QImage>
#include <QPainter>

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
constexpr double GroundWidth = 3;

// The part of a line that is on the near side and not far outside the area, as runs of connected points.
class CLineDrawer
{
public:
    CLineDrawer(CLineMask& mask, const CSphereView& view, QSizeF size, double width)
        : m_mask(mask), m_view(view), m_width(width),
          m_area(QRectF(QPointF(0, 0), size).adjusted(-Margin, -Margin, Margin, Margin))
    {
    }

    void Add(const GeoPoint& point)
    {
        const CSphereView::Projection projection = m_view.Project(ToVector(point));
        if (projection.Depth < EdgeDepth || !m_area.contains(projection.Screen)) {
            Finish();
            return;
        }
        m_run.push_back(projection.Screen);
    }

    void Finish()
    {
        m_mask.Add(m_run, m_width);
        m_run.clear();
    }

private:
    static constexpr double Margin = 32; // pixels, longer than the way between two points
    // Of the radius. So near to the edge a line would run along it: a tenth of a pixel is lost of all others.
    static constexpr double EdgeDepth = 0.03;

    CLineMask& m_mask;
    const CSphereView& m_view;
    double m_width;
    QRectF m_area;
    std::vector<QPointF> m_run;
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

// Which lines an area shows.
struct Net
{
    struct Kinds
    {
        bool Main;
        bool Others;
    };

    Range Longitudes;
    Range Latitudes;

    Net(const CSphereView& view, QSizeF size, double minimumSpacing);

    // Adds the lines of these kinds: the main ones are the equator and the meridians of 0 and 180 degrees.
    void Trace(CLineMask& mask, const CSphereView& view, QSizeF size, double width, Kinds kinds) const;
};

Net::Net(const CSphereView& view, QSizeF size, double minimumSpacing)
{
    const double spacing = GraticuleSpacing(view, minimumSpacing);
    const double reach = view.VisibleAngle(size);
    const GeoPoint center = view.Center();
    Latitudes = {std::max(-90 + spacing, center.Latitude - reach), std::min(90 - spacing, center.Latitude + reach),
                 spacing};
    Longitudes = {-180 + spacing, 180, spacing};
    const double ratio = std::sin(reach * RadiansPerDegree) / std::cos(center.Latitude * RadiansPerDegree);
    if (std::abs(center.Latitude) + reach < 90 && ratio < 1) {
        const double width = std::asin(ratio) / RadiansPerDegree;
        Longitudes = {center.Longitude - width, center.Longitude + width, spacing};
    }
    // Around a pole a view shows every longitude, however small it is.
    for (std::size_t index = Spacings.size(); index-- > 0;) {
        if ((Longitudes.Last - Longitudes.First) / Longitudes.Spacing > MostMeridians)
            Longitudes.Spacing = std::max(Longitudes.Spacing, Spacings[index]);
    }
}

void Net::Trace(CLineMask& mask, const CSphereView& view, QSizeF size, double width, Kinds kinds) const
{
    const double reach = view.VisibleAngle(size);
    const GeoPoint center = view.Center();
    // About eight pixels from point to point, on the visible part only.
    const double step = std::clamp(8 / view.Radius() / RadiansPerDegree, 1e-5, 3.0);
    CLineDrawer drawer(mask, view, size, width);
    const double firstLatitude = std::max(-90.0, center.Latitude - reach);
    const double lastLatitude = std::min(90.0, center.Latitude + reach);
    const double spacing = Latitudes.Spacing;
    for (int index = static_cast<int>(std::ceil(Latitudes.First / spacing)); index * spacing <= Latitudes.Last;
         ++index) {
        if (!(index == 0 ? kinds.Main : kinds.Others))
            continue;
        const double narrowing = std::cos(index * spacing * RadiansPerDegree);
        const double along = std::min(step / std::max(narrowing, 1e-9), 3.0);
        const int count = static_cast<int>(std::ceil((Longitudes.Last - Longitudes.First + spacing) / along));
        for (int point = 0; point <= count; ++point)
            drawer.Add({Longitudes.First - spacing + point * along, index * spacing});
        drawer.Finish();
    }
    for (int index = static_cast<int>(std::ceil(Longitudes.First / Longitudes.Spacing));
         index * Longitudes.Spacing <= Longitudes.Last; ++index) {
        const double longitude = index * Longitudes.Spacing;
        const double turned = std::abs(WrapLongitude(longitude));
        if (!(turned < 1e-9 || turned > 180 - 1e-9 ? kinds.Main : kinds.Others))
            continue;
        const bool reachesPole = std::abs(std::remainder(longitude, Longitudes.Spacing < 5 ? 30.0 : 90.0)) < 1e-9;
        const double limit = reachesPole ? 90.0 : CrowdedLatitude;
        const double first = std::max(firstLatitude, -limit);
        const double last = std::min(lastLatitude, limit);
        for (int point = 0; first + point * step < last; ++point)
            drawer.Add({longitude, first + point * step});
        if (last > first)
            drawer.Add({longitude, last});
        drawer.Finish();
    }
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

DrawnItems DrawGraticule(QImage& picture, const QFont& font, const CSphereView& view, const GraticuleStyle& style)
{
    const QSizeF size = picture.deviceIndependentSize();
    const Net net(view, size, style.MinimumSpacing);
    CLineMask mask(picture.size(), picture.devicePixelRatio());
    if (style.Ground.isValid()) {
        net.Trace(mask, view, size, GroundWidth, {true, true});
        mask.Draw(picture, style.Ground);
    }
    net.Trace(mask, view, size, 1, {true, false});
    mask.Draw(picture, style.Equator);
    net.Trace(mask, view, size, 1, {false, true});
    mask.Draw(picture, style.Line);
    if (!style.Label.isValid() || !HasGraticuleLabels(view, size))
        return {};
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    return DrawLabels(painter, view, size, style, net.Longitudes, net.Latitudes);
}
