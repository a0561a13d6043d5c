#pragma once

#include <QString>

/// The bodies of the Solar System on whose surface the observer can stand. The index is also the body number of the
/// host's observer object.
namespace BodyTable
{
inline constexpr int Count = 15;
inline constexpr int Moon = 1;
inline constexpr int Earth = 4;

/// The index itself, or the Earth's when it lies outside the table.
[[nodiscard]] constexpr int Valid(int body)
{
    return body >= 0 && body < Count ? body : Earth;
}

/// Japanese name of a body; the Earth's for an index outside the table.
[[nodiscard]] QString Label(int body);

/// Path of a body in the engine's object tree, also its location constructor; the Earth's for an index outside.
[[nodiscard]] QString EngineName(int body);
} // namespace BodyTable
