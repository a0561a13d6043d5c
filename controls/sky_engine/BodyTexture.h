#pragma once

#include "controls/sphere/SphereTexture.h"

#include <QString>

namespace BodyTexture
{
/// The body's surface, longitude -180 to 180 east, latitude 90 to -90: "<data folder>/<body>/relief.jpg" when it can be
/// read, else a made-up one of the body's colour: cloud bands, rock, ice or the Sun's grain.
/// All that show the body share it.
[[nodiscard]] std::shared_ptr<const CSphereTexture> Load(int body, const QString& dataFolder);
} // namespace BodyTexture
