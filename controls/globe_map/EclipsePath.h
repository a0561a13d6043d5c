#pragma once

#include "controls/core/SphereView.h"

#include <QColor>
#include <QStringView>

#include <vector>

class QPainter;

/// The path of a solar eclipse on the Earth: the central line and the limits of totality or annularity. The text form
/// is described in docs/eclipse-path.md.
class CEclipsePath
{
public:
    /// Takes the lines out of a text; what is not understood is left out. At most 3000 points of a line are kept.
    [[nodiscard]] static CEclipsePath Parse(QStringView text);

    [[nodiscard]] bool IsEmpty() const { return m_central.empty() && m_north.empty() && m_south.empty(); }

    /// Draws the central line in the colour; with the limits also the two limits and the band between them, else the
    /// central line alone, dashed.
    void Draw(QPainter& painter, const CSphereView& view, const QColor& color, bool hasLimits) const;

private:
    std::vector<UnitVector> m_central;
    std::vector<UnitVector> m_north;
    std::vector<UnitVector> m_south;
};
