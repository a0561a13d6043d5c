#pragma once

#include "controls/sphere/SphereView.h"

#include <QFont>
#include <QList>
#include <QSizeF>
#include <QString>

class QPainter;

/// The named features of a body's surface, largest first.
class CSurfaceNames
{
public:
    /// Reads "name,longitude (degrees east),latitude,size (km)" lines in UTF-8; lines of another form are left out, a
    /// missing file has none.
    void Load(const QString& file);

    /// Writes the names of the features on the near side, larger ones first, leaving out those that would touch
    /// another name. Small features come in as the view gets closer. With leader lines a name stands beside its
    /// feature, without them on it.
    void Draw(QPainter& painter, const CSphereView& view, QSizeF size, const QFont& font, bool hasLeadlines) const;

private:
    struct Feature
    {
        QString Name;
        UnitVector Direction;
        double Size = 0.0; ///< km
    };
    QList<Feature> m_features;
};
