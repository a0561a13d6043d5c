#pragma once

#include <QStringView>

#include <optional>

/// The bodies of the Solar System on whose surface the observer can stand. The index is the body number of the observer
/// object. An index outside the table counts as the Earth's.
namespace BodyTable
{
inline constexpr int Count = 15;
inline constexpr int Sun = 0;
inline constexpr int Moon = 1;
inline constexpr int Earth = 4;

/// The index itself, or the Earth's when it lies outside the table.
[[nodiscard]] constexpr int Valid(int body)
{
    return body >= 0 && body < Count ? body : Earth;
}

/// How longitudes on a body are counted.
enum class Longitude
{
    EastOrWest, ///< 0 to 180 degrees in the hemisphere that the user chooses, east positive
    East,       ///< 0 to 360 degrees to the east
    West        ///< 0 to 360 degrees to the west, the planetographic way
};

struct Body
{
    const char16_t* Label;      ///< Japanese name
    const char16_t* EngineName; ///< path in the engine's object tree, also the body's location constructor
    Longitude Longitudes;
    bool HasSurface; ///< altitudes are in metres above it; without one in kilometres
};

[[nodiscard]] const Body& Of(int body);

/// Japanese name and engine path of a body.
[[nodiscard]] QString Label(int body);
[[nodiscard]] QString EngineName(int body);

/// The body with this engine path, letter case ignored; nothing when there is none.
[[nodiscard]] std::optional<int> Find(QStringView engineName);
} // namespace BodyTable
