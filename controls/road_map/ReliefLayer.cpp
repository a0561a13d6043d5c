#include "controls/road_map/ReliefLayer.h"

#include "host/text/Number.h"

#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr int LongestSide = 4096;
constexpr int Flat = 128;
constexpr int Step = 4; // pixels of the area to a sample; between them colours run smoothly
// Metres a pixel between which the relief fades.
constexpr double Gone = 60;
constexpr double Full = 450;
constexpr double Darkest = 0.62; // how much black lies on the deepest shadow
constexpr double Brightest = 0.26;

/// Where the samples of the area lie: exact at a few of them, in between as a plane would have it.
class CSampleGrid
{
public:
    CSampleGrid(const CSphereView& view, int columns, int rows) : m_width((columns - 1) / Stride + 2)
    {
        for (int row = 0; row <= (rows - 1) / Stride + 1; ++row) {
            for (int column = 0; column < m_width; ++column)
                m_points.push_back(view.FromScreen(QPointF(column, row) * Stride * Step).value_or(Nowhere));
        }
    }

    /// Calls `take` with each sample of a row: its column and its place.
    template <typename Taker> void ForRow(int row, int columns, const Taker& take) const
    {
        const auto upper = m_points.begin() + static_cast<std::ptrdiff_t>(row / Stride) * m_width;
        const double down = (row % Stride) / static_cast<double>(Stride);
        const auto between = [](double a, double b, double share) { return a + (b - a) * share; };
        const auto at = [&](int knot) {
            const GeoPoint& above = upper[knot];
            const GeoPoint& below = upper[knot + m_width];
            return GeoPoint{between(above.Longitude, below.Longitude, down),
                            between(above.Latitude, below.Latitude, down)};
        };
        for (int knot = 0; knot * Stride < columns; ++knot) {
            const GeoPoint left = at(knot);
            const GeoPoint right = at(knot + 1);
            for (int column = knot * Stride; column < std::min(columns, (knot + 1) * Stride); ++column) {
                const double share = (column - knot * Stride) / static_cast<double>(Stride);
                take(column, between(left.Longitude, right.Longitude, share),
                     between(left.Latitude, right.Latitude, share));
            }
        }
    }

    [[nodiscard]] const std::vector<GeoPoint>& Points() const { return m_points; }

private:
    static constexpr int Stride = 8;                      // samples from one exact one to the next
    static constexpr GeoPoint Nowhere = {1000.0, 1000.0}; // beside the disc

    int m_width;
    std::vector<GeoPoint> m_points;
};
} // namespace

bool CReliefLayer::Load(const QString& path)
{
    m_shade = {};
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > LongestSide || size.height() > LongestSide)
        return false;
    const QImage picture = reader.read();
    const QStringList box = picture.text(u"box"_s).split(u' ');
    if (picture.isNull() || box.size() != 4)
        return false;
    m_west = Number::LeadingDouble(box[0]);
    m_south = Number::LeadingDouble(box[1]);
    m_east = Number::LeadingDouble(box[2]);
    m_north = Number::LeadingDouble(box[3]);
    if (!(m_east > m_west && m_north > m_south))
        return false;
    m_shade = picture.convertToFormat(QImage::Format_Grayscale8);
    return true;
}

/// 0 to 255, between the middles of four cells; flat outside.
int CReliefLayer::LevelAt(double longitude, double latitude) const
{
    const double x = (longitude - m_west) / (m_east - m_west) * m_shade.width() - 0.5;
    const double y = (m_north - latitude) / (m_north - m_south) * m_shade.height() - 0.5;
    if (!(x >= 0 && y >= 0 && x < m_shade.width() - 1 && y < m_shade.height() - 1))
        return Flat;
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const double right = x - left;
    const double down = y - top;
    const uchar* upper = m_shade.constScanLine(top) + left;
    const uchar* lower = m_shade.constScanLine(top + 1) + left;
    const double shade =
        (upper[0] * (1 - right) + upper[1] * right) * (1 - down) + (lower[0] * (1 - right) + lower[1] * right) * down;
    return static_cast<int>(shade);
}

void CReliefLayer::Draw(QPainter& painter, const CSphereView& view, QSizeF size, double metersPerPixel,
                        const QColor& ground) const
{
    const double share = std::clamp((metersPerPixel - Gone) / (Full - Gone), 0.0, 1.0);
    const int columns = static_cast<int>(size.width()) / Step + 2;
    const int rows = static_cast<int>(size.height()) / Step + 2;
    const CSampleGrid grid(view, columns, rows);
    const bool isInSight = std::any_of(grid.Points().begin(), grid.Points().end(), [this](const GeoPoint& point) {
        return point.Longitude > m_west && point.Longitude < m_east && point.Latitude > m_south &&
               point.Latitude < m_north;
    });
    if (m_shade.isNull() || share <= 0 || !isInSight) {
        painter.fillRect(QRectF(QPointF(0, 0), size), ground);
        return;
    }
    std::array<QRgb, 256> colors{};
    for (std::size_t level = 0; level < colors.size(); ++level) {
        const double shade = (static_cast<double>(level) - Flat) / static_cast<double>(Flat) * share;
        const auto shaded = [shade](int part) {
            return static_cast<int>(
                std::lround(shade < 0 ? part * (1 + shade * Darkest) : part + (255 - part) * shade * Brightest));
        };
        colors.at(level) = qRgb(shaded(ground.red()), shaded(ground.green()), shaded(ground.blue()));
    }
    QImage layer(columns, rows, QImage::Format_RGB32);
    for (int row = 0; row < rows; ++row) {
        auto* line = reinterpret_cast<QRgb*>(layer.scanLine(row));
        grid.ForRow(row, columns, [&](int column, double longitude, double latitude) {
            line[column] = colors.at(static_cast<std::size_t>(LevelAt(longitude, latitude)));
        });
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    // A sample stands for the middle of its square.
    painter.drawImage(QRectF(-Step / 2.0, -Step / 2.0, columns * Step, rows * Step), layer);
    painter.restore();
}
