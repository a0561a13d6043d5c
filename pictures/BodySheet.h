#pragma once

#include <QImage>

class QString;

namespace BodySheet
{
/// All bodies in one picture, each whole and from nearer, with names and grid, as the engine draws them over that data
/// folder.
[[nodiscard]] QImage Draw(const QString& dataFolder);
} // namespace BodySheet
