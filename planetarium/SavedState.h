#pragma once

#include <optional>

class CKPDateObs;

/// Where the observer was left, from one run to the next, in a section of its own of the settings. Stored values may
/// hold anything; what makes no sense is left out.
namespace SavedState
{
/// Puts the observer where the last run left it: the place on each body, the body, zone and time system. In a first run
/// that is the initial place, when one is saved; else the observer stays as it is.
void RestoreObserver(CKPDateObs& observer);
/// Writes what is new.
void SaveObserver(const CKPDateObs& observer);

/// Whether the altitude on the Earth came from the terrain; nothing when no run has stored it.
[[nodiscard]] std::optional<bool> AltitudeMode();
void SaveAltitudeMode(bool isAutomatic);
} // namespace SavedState
