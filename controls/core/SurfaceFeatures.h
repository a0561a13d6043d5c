#pragma once

#include "controls/core/GeoPoint.h"

#include <QList>
#include <QString>

/// A named feature of a body's surface.
struct SurfaceFeature
{
    QString Name;
    UnitVector Direction;
    double Size = 0.0; ///< km

    /// Reads "name,longitude (degrees east),latitude,size (km)" lines in UTF-8, largest feature first. Lines of another
    /// form are left out with a warning; a missing file has none.
    [[nodiscard]] static QList<SurfaceFeature> Read(const QString& file);
};
