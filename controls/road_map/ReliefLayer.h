#pragma once

#include "controls/core/SphereView.h"

#include <QColor>
#include <QImage>
#include <QString>

class QPainter;

/// Light and shadow of the mountains, drawn as the land.
class CReliefLayer
{
public:
    /// Takes a grey picture, 128 where the ground is flat, whose text "box" names west, south, east and north in
    /// degrees. False, and nothing is drawn, when there is none such or it has more than 4096 pixels to a side.
    bool Load(const QString& path);

    /// Fills an area of that size (from the origin) with the colour of the ground, darker and lighter where it slopes.
    /// From near the slopes fade away: their cells are of kilometres.
    void Draw(QPainter& painter, const CSphereView& view, QSizeF size, double metersPerPixel,
              const QColor& ground) const;

private:
    [[nodiscard]] int LevelAt(double longitude, double latitude) const;

    QImage m_shade;
    double m_west = 0;
    double m_south = 0;
    double m_east = 0;
    double m_north = 0;
};
