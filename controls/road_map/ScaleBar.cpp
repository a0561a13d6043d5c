#include "controls/road_map/ScaleBar.h"

#include "host/text/Number.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr double Padding = 7;
constexpr double TickHeight = 5;

/// 1:8,000 with commas between the thousands.
QString ScaleText(int denominator)
{
    QString digits = Number::Format("%d", denominator);
    for (qsizetype index = digits.size() - 3; index > 0; index -= 3)
        digits.insert(index, u',');
    return u"1:"_s + digits;
}
} // namespace

ScaleBar ScaleBar::For(double metersPerPixel, double longest)
{
    const double most = std::max(metersPerPixel * longest, 1e-3);
    const double power = std::pow(10, std::floor(std::log10(most) + 1e-9));
    const double step = most >= power * 5 ? 5 : most >= power * 2 ? 2 : 1;
    ScaleBar bar;
    bar.Meters = step * power;
    bar.Pixels = bar.Meters / metersPerPixel;
    bar.Text = bar.Meters >= 1000 ? Number::Format("%.0f km", bar.Meters / 1000) : Number::Format("%g m", bar.Meters);
    return bar;
}

QSizeF ScaleBar::Size(const QPainter& painter, int denominator) const
{
    const QFontMetricsF metrics(painter.font());
    const double text = metrics.horizontalAdvance(Text) + 16 + metrics.horizontalAdvance(ScaleText(denominator));
    return {std::max(Pixels, text) + 2 * Padding, metrics.height() + TickHeight + 2 * Padding};
}

void ScaleBar::Draw(QPainter& painter, QPointF bottomLeft, int denominator) const
{
    const QSizeF size = Size(painter, denominator);
    const QRectF plate(bottomLeft - QPointF(0, size.height()), size);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(8, 12, 20, 200));
    painter.drawRoundedRect(plate, 4, 4);
    const QRectF inner = plate.adjusted(Padding, Padding - 2, -Padding, -Padding);
    painter.setPen(QColor(222, 230, 240));
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignTop, Text);
    painter.setPen(QColor(160, 174, 192));
    painter.drawText(inner, Qt::AlignRight | Qt::AlignTop, ScaleText(denominator));
    painter.setPen(QPen(QColor(222, 230, 240), 1.5));
    const QPointF left = inner.bottomLeft();
    const QPointF right = left + QPointF(Pixels, 0);
    const QPointF tick(0, -TickHeight);
    painter.drawPolyline(QPolygonF({left + tick, left, right, right + tick}));
    painter.restore();
}
