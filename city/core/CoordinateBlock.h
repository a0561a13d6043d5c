#pragma once

#include "obs/core/SiteLocation.h"

#include <QString>

/// The position of a place as the city list and the place editor show it: twelve values.
struct CoordinateBlock : CoordinateFields
{
    double Altitude = 0.0; ///< metres

    bool operator==(const CoordinateBlock&) const = default;
};

/// Between the block and the decimal values of a place: degrees, east and north positive, and hours east of UTC.
namespace PlaceCoordinates
{
/// Fill the values of one quantity. Unlike the site dialog's, the minutes of a time zone are not rounded, on purpose:
/// an offset whose fraction is not exact in binary can lose a minute.
void SplitLongitude(double longitude, CoordinateBlock& block);
void SplitLatitude(double latitude, CoordinateBlock& block);
void SplitTimeZone(double timeZone, CoordinateBlock& block);

[[nodiscard]] double ComposeLongitude(const CoordinateBlock& block);
[[nodiscard]] double ComposeLatitude(const CoordinateBlock& block);
[[nodiscard]] double ComposeTimeZone(const CoordinateBlock& block);

/// Whether two blocks stand at the same point of the globe; altitude and time zone do not count.
[[nodiscard]] bool IsSamePosition(const CoordinateBlock& one, const CoordinateBlock& other);

/// The place editor's last check: a line for each value that is not acceptable, each ending with a line feed.
[[nodiscard]] QString FinalComplaints(const CoordinateBlock& block);

/// The question before the block becomes the application's initial place.
[[nodiscard]] QString InitialPlaceText(const CoordinateBlock& block);
} // namespace PlaceCoordinates
