#include "controls/sky_engine/SurfaceNames.h"

#include "controls/sky_engine/Statement.h"

#include <QFile>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace
{
constexpr qint64 MaximumFileSize = 8 << 20;
constexpr qsizetype MaximumNames = 50'000;
constexpr qsizetype MaximumNameLength = 64;
constexpr qsizetype MaximumShown = 60;
constexpr double LeastDepth = 0.25; ///< nearer to the edge of the disc a name could not be told from its neighbours
constexpr double LeadlineLength = 14.0;
const QColor NameColor(238, 232, 214);
const QColor HaloColor(8, 10, 14, 190);
} // namespace

void CSurfaceNames::Load(const QString& file)
{
    m_features.clear();
    QFile source(file);
    if (!QFileInfo(file).isFile() || !source.open(QIODevice::ReadOnly))
        return;
    const QString text = QString::fromUtf8(source.read(MaximumFileSize));
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const QList<QStringView> fields = line.trimmed().split(u',');
        if (fields.size() < 4 || fields[0].trimmed().isEmpty() || m_features.size() == MaximumNames)
            continue;
        const auto longitude = StatementReader::ReadNumber(fields[1]);
        const auto latitude = StatementReader::ReadNumber(fields[2]);
        const auto size = StatementReader::ReadNumber(fields[3]);
        if (longitude && latitude && size)
            m_features.append(
                {fields[0].trimmed().left(MaximumNameLength).toString(), ToVector({*longitude, *latitude}), *size});
    }
    std::stable_sort(m_features.begin(), m_features.end(),
                     [](const Feature& a, const Feature& b) { return a.Size > b.Size; });
}

void CSurfaceNames::Draw(QPainter& painter, const CSphereView& view, QSizeF size, const QFont& font,
                         bool hasLeadlines) const
{
    const QFontMetricsF metrics(font);
    const QRectF area(QPointF(0.0, 0.0), size);
    QList<QRectF> taken;
    QPainterPath leaders;
    QPainterPath text;
    for (const Feature& feature : m_features) {
        const auto [point, depth] = view.Project(feature.Direction);
        if (depth < LeastDepth || !area.contains(point))
            continue;
        QRectF box(0.0, 0.0, metrics.horizontalAdvance(feature.Name), metrics.height());
        if (hasLeadlines)
            box.moveBottomLeft(point + QPointF(LeadlineLength, -LeadlineLength / 2.0));
        else
            box.moveCenter(point);
        const QRectF reserved = box.adjusted(-10.0, -5.0, 10.0, 5.0);
        const auto touches = [&reserved](const QRectF& other) { return other.intersects(reserved); };
        if (!area.contains(box) || std::any_of(taken.cbegin(), taken.cend(), touches))
            continue;
        taken.append(reserved);
        text.addText(box.left(), box.top() + metrics.ascent(), font, feature.Name);
        if (hasLeadlines) {
            leaders.moveTo(point);
            leaders.lineTo(box.bottomLeft() - QPointF(2.0, metrics.descent()));
            leaders.addEllipse(point, 1.5, 1.5);
        }
        if (taken.size() == MaximumShown)
            break;
    }
    painter.strokePath(leaders, QPen(NameColor, 1.0));
    painter.strokePath(text, QPen(HaloColor, 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(text, NameColor);
}
