#pragma once

#include "controls/core/SphereView.h"
#include "controls/core/SurfaceFeatures.h"
#include "controls/sphere/DrawnItems.h"

#include <QFont>
#include <QHash>
#include <QImage>
#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>

class QPainter;

/// The named features of a body's surface, largest first.
class CSurfaceNames
{
public:
    /// Takes the features of a file.
    void Load(const QString& file);

    /// Writes the names of the features on the near side, larger ones first, leaving out those that would touch
    /// another name. Small features come in as the view gets closer. With leader lines a name stands beside its
    /// feature, without them on it, or just below where it would cover the area to keep clear (which may be null).
    /// Returns what was written.
    DrawnItems Draw(QPainter& painter, const CSphereView& view, QSizeF size, const QRectF& clear, bool hasLeadlines);

private:
    [[nodiscard]] const QImage& Label(qsizetype feature, const QFont& font, double ratio);

    QList<SurfaceFeature> m_features;
    /// The names as they are drawn, for they cost more than all the rest of a globe.
    QHash<qsizetype, QImage> m_labels;
    QFont m_labelFont;
    double m_labelRatio = 0.0;
};
