#pragma once

#include "module/kivobs_export.h"

#include <QString>

#include <vector>

/// The command lines that the module sends to a sky engine. The precision, the letter case and the blanks of each
/// line are part of the protocol.
namespace EngineLines
{
inline constexpr char16_t ShowSky[] = u"Show Sky";
inline constexpr char16_t AutoGetAltitude[] = u"Solar.Planet.Earth.Landscape.AutoGetAltitude";
inline constexpr char16_t QueryLongitude[] = u"? Location.Longitude";
inline constexpr char16_t QueryLatitude[] = u"? Location.Latitude";
inline constexpr char16_t QueryAltitude[] = u"? Location.Altitude";
inline constexpr char16_t QueryCenterLongitude[] = u"? View.PlanetaryGlobe.Center.Longitude";
inline constexpr char16_t QueryCenterLatitude[] = u"? View.PlanetaryGlobe.Center.Latitude";
inline constexpr char16_t QueryEclipseVisible[] = u"? Solar.Planet.Earth.SolarEclipse.Path.Visible";
inline constexpr char16_t QueryEclipseData[] = u"? Solar.Planet.Earth.SolarEclipse.Path.Data";
inline constexpr char16_t QueryEclipseColor[] = u"? Solar.Planet.Earth.SolarEclipse.Path.Color";
inline constexpr char16_t QueryBesselApply[] = u"? Solar.Planet.Earth.BesselElement.Apply";

/// The lines that set up the embedded engine, in their order. The terrain index line is left out for an empty path;
/// the path must have no blanks.
[[nodiscard]] KIVOBS_EXPORT std::vector<QString> SetUp(const QString& terrainIndexPath);

/// Longitude and latitude in degrees, altitude in metres, throughout.
[[nodiscard]] KIVOBS_EXPORT QString PlaceOnBody(int body, double longitude, double latitude, double altitude);
[[nodiscard]] QString MoveTo(double longitude, double latitude);
[[nodiscard]] QString MoveToAndShow(double longitude, double latitude);
[[nodiscard]] QString MoveTo(double longitude, double latitude, double altitude);
[[nodiscard]] QString SetAltitudeAndShow(double altitude);
/// Moves without drawing, so that the terrain's altitude can be asked for; and back again.
[[nodiscard]] QString MoveToAndCalculate(double longitude, double latitude);
[[nodiscard]] QString MoveBackTo(double longitude, double latitude, double altitude);
[[nodiscard]] KIVOBS_EXPORT QString CenterAt(double longitude, double latitude); ///< six decimals
[[nodiscard]] QString CenterAtFine(double longitude, double latitude);           ///< eight decimals
[[nodiscard]] QString CenterLongitude(double longitude);
[[nodiscard]] QString CenterLatitude(double latitude);
/// View angle in degrees; the border lines show when the flag is set.
[[nodiscard]] QString ViewAngle(double degrees, bool isBorderlineVisible);
[[nodiscard]] KIVOBS_EXPORT QString UniversalTime(int year, int month, int day, int hour, int minute, int second);
/// A stored value handed over as it stands.
[[nodiscard]] QString Assign(const QString& name, const QString& value);
[[nodiscard]] QString AssignAndShow(const QString& name, const QString& value);
} // namespace EngineLines
