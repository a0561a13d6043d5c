#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

/// Something named that a map has drawn. Lengths are those of the picture, without its device pixel ratio.
struct DrawnItem
{
    QString Layer; ///< the kind of a landmark, or one of DrawnLayer
    QString Name;
    QPointF Place; ///< of what is named
    QRectF Text;   ///< where the name is written; null for a mark without one
};

using DrawnItems = std::vector<DrawnItem>;

namespace DrawnLayer
{
inline constexpr char16_t Graticule[] = u"経緯線";
inline constexpr char16_t Surface[] = u"地形";
inline constexpr char16_t Observer[] = u"観測者";
} // namespace DrawnLayer
