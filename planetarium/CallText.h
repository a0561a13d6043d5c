#pragma once

#include <QVariant>

/// Calls of controls as lines of the log.
namespace CallText
{
/// "SetCenter(139.700000, 35.700000)": the name that a method of the globe map or of the road map goes by.
[[nodiscard]] QString GlobeMap(int method, const QVariantList& arguments);
[[nodiscard]] QString RoadMap(int method, const QVariantList& arguments);

/// What a call answered; empty for nothing.
[[nodiscard]] QString Answer(const QVariant& result);
} // namespace CallText
