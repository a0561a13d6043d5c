#pragma once

#include <QImage>
#include <QString>

#include <cstddef>

namespace BodyTexture
{
/// The body's surface, longitude -180 to 180 east, latitude 90 to -90: "<data folder>/<body>/relief.jpg" when it can be
/// read, else a made-up one of the body's colour: cloud bands, rock, ice or the Sun's grain.
[[nodiscard]] QImage Load(int body, const QString& dataFolder);
} // namespace BodyTexture
