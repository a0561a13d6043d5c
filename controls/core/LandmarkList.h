#pragma once

#include "controls/core/GeoPoint.h"

#include <QByteArrayView>
#include <QString>

#include <array>
#include <vector>

/// The kinds of places, which are also the layers of the map, in the order of the flags that switch them.
namespace LandmarkKind
{
inline constexpr int Count = 8;
inline constexpr int Other = 7;

/// Name of a kind; empty outside 0 to 7.
[[nodiscard]] QString Name(int kind);
} // namespace LandmarkKind

/// A named place of the list.
struct Landmark
{
    QString Name;
    GeoPoint Position; ///< longitude -180 to 180
    UnitVector Direction;
    int Kind = LandmarkKind::Other;
    double Importance = 0;    ///< smaller comes first when there is not room for all
    double WidestAngle = 180; ///< degrees of view up to which it is shown at all
};

namespace LandmarkList
{
/// The places of a list file's bytes (code page 932), the most important first. Folder, close and comment lines and
/// lines that are no place are left out; at most 20000 places are kept.
[[nodiscard]] std::vector<Landmark> Parse(QByteArrayView bytes);

/// The places of a list file; none when it cannot be read or is larger than 16 MiB.
[[nodiscard]] std::vector<Landmark> Read(const QString& path);
} // namespace LandmarkList
