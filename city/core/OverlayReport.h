#pragma once

#include "city/core/OverlayJson.h"

#include <QStringList>

/// What an overlay does, in words: one line for each item that it adds, changes or deletes, in the order of replay.
namespace OverlayReport
{
[[nodiscard]] QStringList Lines(const picojson::value& overlay);
} // namespace OverlayReport
