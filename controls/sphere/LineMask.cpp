#include "controls/sphere/LineMask.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{
constexpr int Full = 255;

/// The colour over a pixel by a share of 0 to 256.
quint32 Over(quint32 pixel, quint32 color, quint32 share)
{
    constexpr quint32 two = 0x00FF00FF;
    const quint32 rest = 256 - share;
    const quint32 redBlue = ((pixel & two) * rest + (color & two) * share) >> 8 & two;
    const quint32 green = ((pixel >> 8 & two) * rest + (color >> 8 & two) * share) & 0x0000FF00;
    return 0xFF000000 | redBlue | green;
}
} // namespace

CLineMask::CLineMask(QSize pixels, double ratio)
    : m_width(std::max(0, pixels.width())), m_height(std::max(0, pixels.height())), m_ratio(ratio),
      m_cover(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height))
{
}

void CLineMask::Add(std::span<const QPointF> points, double width)
{
    const double broad = std::max(1.0, width * m_ratio);
    for (std::size_t index = 1; index < points.size(); ++index)
        AddPart(points[index - 1] * m_ratio, points[index] * m_ratio, broad);
}

/// Goes along the axis that the part follows more closely, pixel by pixel, and covers what lies across within half the
/// width.
void CLineMask::AddPart(QPointF from, QPointF to, double width)
{
    const bool isSteep = std::abs(to.y() - from.y()) > std::abs(to.x() - from.x());
    if (isSteep) {
        from = from.transposed();
        to = to.transposed();
    }
    if (to.x() < from.x())
        std::swap(from, to);
    const double length = to.x() - from.x();
    const double slope = length > 0 ? (to.y() - from.y()) / length : 0;
    const double reach = width / 2 * std::sqrt(1 + slope * slope);
    const int columns = isSteep ? m_height : m_width;
    const int rows = isSteep ? m_width : m_height;
    const std::ptrdiff_t columnStep = isSteep ? m_width : 1;
    const std::ptrdiff_t rowStep = isSteep ? 1 : m_width;
    // Half a pixel more at both ends closes the joints.
    const auto first = static_cast<int>(std::clamp(std::floor(from.x()), 0.0, static_cast<double>(columns)));
    const auto end = static_cast<int>(std::clamp(std::ceil(to.x()), 0.0, static_cast<double>(columns)));
    for (int column = first; column < end; ++column) {
        const double middle = from.y() + (column + 0.5 - from.x()) * slope;
        if (!(middle > -reach && middle < rows + reach))
            continue;
        const double low = std::max(0.0, middle - reach);
        const double high = std::min(static_cast<double>(rows), middle + reach);
        quint8* cover = m_cover.data() + column * columnStep;
        for (int row = static_cast<int>(low); row < high; ++row) {
            const double share = std::min(high, row + 1.0) - std::max(low, static_cast<double>(row));
            quint8& here = cover[row * rowStep];
            here = std::max(here, static_cast<quint8>(share * Full));
        }
    }
}

void CLineMask::Draw(QImage& picture, const QColor& color)
{
    const quint32 rgb = color.rgb();
    const auto alpha = static_cast<quint32>(color.alpha());
    uchar* const pixels = picture.bits();
    for (int row = 0; row < m_height; ++row) {
        quint8* cover = m_cover.data() + static_cast<std::ptrdiff_t>(row) * m_width;
        auto* line = reinterpret_cast<quint32*>(pixels + row * picture.bytesPerLine());
        for (int column = 0; column < m_width; ++column) {
            quint64 eight = 0;
            if (column + 8 <= m_width && (std::memcpy(&eight, cover + column, sizeof(eight)), eight == 0)) {
                column += 7;
                continue;
            }
            if (cover[column] == 0)
                continue;
            line[column] = Over(line[column], rgb, cover[column] * alpha * 257 >> 16);
            cover[column] = 0;
        }
    }
}
