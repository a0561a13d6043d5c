#pragma once

#include "obs/core/SiteLocation.h"

#include <QString>

/// The question before the fields become the application's initial place.
[[nodiscard]] QString InitialPlaceText(const SiteFields& fields);
