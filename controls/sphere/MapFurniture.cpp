#include "controls/sphere/MapFurniture.h"

#include "host/text/FontFamilies.h"
#include "host/text/Number.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr std::array<QPointF, 4> Directions = {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)};

QString AngleText(double degrees, bool hasSeconds, const char* positive, const char* negative)
{
    const char* hemisphere = degrees < 0 ? negative : positive;
    if (hasSeconds) {
        const auto seconds = static_cast<int>(std::lround(std::abs(degrees) * 3600));
        return Number::Format("%s %d°%02d′%02d″", hemisphere, seconds / 3600, seconds / 60 % 60, seconds % 60);
    }
    const auto minutes = static_cast<int>(std::lround(std::abs(degrees) * 60));
    return Number::Format("%s %d°%02d′", hemisphere, minutes / 60, minutes % 60);
}
} // namespace

QFont MapFurniture::NameFont(const QFont& windowFont)
{
    QFont font = windowFont;
    font.setFamilies(QStringList(font.family()) + JapaneseFontFamilies());
    font.setPixelSize(std::clamp(QFontInfo(windowFont).pixelSize() - 1, 11, 22));
    return font;
}

QFont MapFurniture::SmallFont(const QFont& windowFont)
{
    QFont font = windowFont;
    font.setPixelSize(std::max(10, QFontInfo(windowFont).pixelSize() - 2));
    return font;
}

void MapFurniture::DrawObserver(QPainter& painter, QPointF place)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const auto draw = [&](const QPen& pen) {
        painter.setPen(pen);
        painter.drawEllipse(place, 8, 8);
        for (const QPointF& direction : Directions)
            painter.drawLine(place + direction * 4, place + direction * 13);
    };
    // Dark beneath bright: one of the two stands out on any ground.
    draw(QPen(QColor(10, 8, 6, 200), 4.5, Qt::SolidLine, Qt::RoundCap));
    draw(QPen(QColor(255, 92, 72), 2, Qt::SolidLine, Qt::RoundCap));
    painter.setPen(QPen(QColor(10, 8, 6, 200), 1));
    painter.setBrush(Qt::white);
    painter.drawEllipse(place, 2, 2);
    painter.restore();
}

void MapFurniture::DrawOutlined(QPainter& painter, QPointF corner, const QString& text)
{
    const QPen pen = painter.pen();
    const QPointF base = corner + QPointF(0, QFontMetricsF(painter.font()).ascent());
    painter.setPen(QColor(6, 10, 18, 120));
    for (const QPointF offset : {QPointF(-1, -1), QPointF(1, -1), QPointF(-1, 1), QPointF(1, 1), QPointF(0, -1),
                                 QPointF(0, 1), QPointF(-1, 0), QPointF(1, 0)})
        painter.drawText(base + offset, text);
    painter.setPen(pen);
    painter.drawText(base, text);
}

void MapFurniture::DrawPlate(QPainter& painter, const QRectF& place, const QString& text)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(8, 12, 20, 200));
    painter.drawRoundedRect(place, 4, 4);
    painter.setPen(QColor(222, 230, 240));
    painter.drawText(place, Qt::AlignCenter, text);
}

QRectF MapFurniture::ReadOutPlace(const QFont& smallFont, QSizeF area, const QString& longestText)
{
    const QFontMetricsF metrics(smallFont);
    const QSizeF box(metrics.horizontalAdvance(longestText) + 10, metrics.height() + 6);
    return {QPointF(area.width() - box.width() - 6, 6), box};
}

QString MapFurniture::LongitudeText(double longitude, bool hasSeconds)
{
    return AngleText(longitude, hasSeconds, "東経", "西経");
}

QString MapFurniture::LatitudeText(double latitude, bool hasSeconds)
{
    return AngleText(latitude, hasSeconds, "北緯", "南緯");
}

QString MapFurniture::PositionText(const GeoPoint& point, bool hasSeconds)
{
    return LongitudeText(point.Longitude, hasSeconds) + u"  "_s + LatitudeText(point.Latitude, hasSeconds);
}

void MapFurniture::DrawFocus(QPainter& painter, const QRectF& area, const QColor& color)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF middle = area.center();
    painter.setPen(QPen(QColor(255, 255, 255, 170), 1));
    for (const QPointF& direction : Directions)
        painter.drawLine(middle + direction * 3, middle + direction * 7);
    painter.setPen(QPen(color, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(1, 1, -1, -1), 3, 3);
}
