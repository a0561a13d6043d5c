#pragma once

#include "controls/core/GeoPoint.h"

#include <QStringView>

#include <vector>

/// The path of a solar eclipse on the Earth: the central line and the limits of totality or annularity. The text form
/// is described in docs/eclipse-path.md.
struct EclipsePath
{
    using Line = std::vector<UnitVector>;

    Line Central;
    Line North;
    Line South;

    /// Takes the lines out of a text; what is not understood is left out. At most 3000 points of a line are kept.
    [[nodiscard]] static EclipsePath Parse(QStringView text);
};
