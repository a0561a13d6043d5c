#pragma once

#include <QString>

/// The standard offset (no daylight saving) of a zone of the system's time-zone database in 2026, hours east of UTC.
/// Throws std::runtime_error for a name that the database lacks.
[[nodiscard]] double StandardOffset(const QString& zoneName);
