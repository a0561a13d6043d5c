#pragma once

#include "controls/core/GeoPoint.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// A named point that the user brought along.
struct RoadMapMark
{
    QString Name; ///< may be empty
    GeoPoint Position;
};

/// The user's marks: points, and ways from point to point.
struct RoadMapMarks
{
    std::vector<RoadMapMark> Points;
    std::vector<std::vector<GeoPoint>> Ways;

    [[nodiscard]] bool IsEmpty() const { return Points.empty() && Ways.empty(); }
};

/// Reading a file of marks: GPX, as hand-held receivers and most map programs write it. Waypoints ("wpt" with "lat",
/// "lon" and a "name" within) become points, routes ("rtept") and track segments ("trkpt") become ways; everything
/// else is passed over, and so are points that are nowhere on the Earth.
namespace MarksFile
{
/// At most 5000 points and 50000 points of ways are taken; of a damaged text, what comes before the damage.
[[nodiscard]] RoadMapMarks Parse(const QByteArray& bytes);

/// What came of a file: marks, or why there are none, in a sentence for the user.
struct CResult
{
    RoadMapMarks Marks;
    QString Failure; ///< empty when there is a mark
};

/// The marks of a file. None when it cannot be read, is larger than 16 MiB or holds no mark.
[[nodiscard]] CResult Read(const QString& path);
} // namespace MarksFile
