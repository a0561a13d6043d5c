#pragma once

#include <QString>

#include <array>

/// What the observation-site dialog keeps between runs, and the application's initial place.
namespace ObsSettings
{
inline constexpr int LayerCount = 8;
using Layers = std::array<int, LayerCount>; ///< 0 or 1 each, in the order of the check boxes

[[nodiscard]] Layers ReadLayers(const QString& section);
[[nodiscard]] int ReadViewAngle(const QString& section); ///< slider position as stored, whatever it is
[[nodiscard]] bool ReadAutoAltitude(const QString& section);
[[nodiscard]] int ReadEngineVariant();
/// Writes the layers, the slider position and the altitude choice, in this order.
void Save(const QString& section, const Layers& layers, int viewAngle, bool isAltitudeAutomatic);

/// A part of the application's initial place as the engine takes it: the value's name and the stored text.
struct Statement
{
    QString Name;
    QString Value;
};
[[nodiscard]] Statement ReadInitialLocation();
[[nodiscard]] Statement ReadInitialTimeZone();
/// Degrees, metres and hours.
void SaveInitialPlace(double longitude, double latitude, double altitude, double timeZone);
} // namespace ObsSettings
