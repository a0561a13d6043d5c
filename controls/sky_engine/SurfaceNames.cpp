#include "controls/sky_engine/SurfaceNames.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace
{
constexpr qsizetype MaximumShown = 60;
constexpr double LeastDepth =
    0.25; ///< nearer to the edge of the disc a name could not be distinguished from its neighbours
constexpr double LeadlineLength = 14.0;
constexpr double Halo = 3.0;
constexpr qsizetype MaximumLabels = 1000;
const QColor NameColor(238, 232, 214);
const QColor HaloColor(8, 10, 14, 230);
} // namespace

void CSurfaceNames::Load(const QString& file)
{
    m_features = SurfaceFeature::Read(file);
    m_labels.clear();
}

const QImage& CSurfaceNames::Label(qsizetype feature, const QFont& font, double ratio)
{
    if (m_labelFont != font || m_labelRatio != ratio || m_labels.size() > MaximumLabels) {
        m_labels.clear();
        m_labelFont = font;
        m_labelRatio = ratio;
    }
    QImage& label = m_labels[feature];
    if (!label.isNull())
        return label;
    const QString& name = m_features[feature].Name;
    const QFontMetricsF metrics(font);
    const QSizeF size(metrics.horizontalAdvance(name) + 2.0 * Halo, metrics.height() + 2.0 * Halo);
    label = QImage((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    label.setDevicePixelRatio(ratio);
    label.fill(Qt::transparent);
    QPainterPath text;
    text.addText(Halo, Halo + metrics.ascent(), font, name);
    QPainter painter(&label);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(text, QPen(HaloColor, 1.5 * Halo, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setPen(NameColor);
    painter.setFont(font);
    painter.drawText(QPointF(Halo, Halo + metrics.ascent()), name);
    return label;
}

DrawnItems CSurfaceNames::Draw(QPainter& painter, const CSphereView& view, QSizeF size, const QRectF& clear,
                               bool hasLeadlines)
{
    const QFont font = painter.font();
    const double ratio = painter.device()->devicePixelRatioF();
    const QFontMetricsF metrics(font);
    const QRectF area(QPointF(0.0, 0.0), size);
    QList<QRectF> taken;
    DrawnItems drawn;
    for (qsizetype i = 0; i < m_features.size() && taken.size() < MaximumShown; ++i) {
        const auto [point, depth] = view.Project(m_features[i].Direction);
        if (depth < LeastDepth || !area.contains(point))
            continue;
        QRectF box(0.0, 0.0, metrics.horizontalAdvance(m_features[i].Name), metrics.height());
        if (hasLeadlines)
            box.moveBottomLeft(point + QPointF(LeadlineLength, -LeadlineLength / 2.0));
        else
            box.moveCenter(point);
        if (box.intersects(clear))
            box.moveTop(clear.bottom());
        const QRectF reserved = box.adjusted(-10.0, -5.0, 10.0, 5.0);
        const auto touches = [&reserved](const QRectF& other) { return other.intersects(reserved); };
        if (!area.contains(box) || std::any_of(taken.cbegin(), taken.cend(), touches))
            continue;
        taken.append(reserved);
        if (hasLeadlines) {
            painter.setPen(QPen(NameColor, 1.0));
            painter.drawLine(point, box.bottomLeft() - QPointF(2.0, metrics.descent()));
            painter.drawEllipse(point, 1.5, 1.5);
        }
        painter.drawImage((box.topLeft() - QPointF(Halo, Halo)).toPoint(), Label(i, font, ratio));
        drawn.push_back({QString::fromUtf16(DrawnLayer::Surface), m_features[i].Name, point, box});
    }
    return drawn;
}
