#pragma once

#include <QColor>

class QLineEdit;

/// Colours that can be read on one another, whatever palette the host has.
namespace Contrast
{
/// What the text of a dialog has at least; the ratio of a pair is from 1 (none) to 21 (black and white).
inline constexpr double Readable = 4.5;

/// The contrast of a colour, blended over the ground where it is not opaque.
[[nodiscard]] double Ratio(const QColor& color, const QColor& ground);

/// The ground where the text can be read on it with something to spare; else the ground's hue, as dark or as bright as
/// that needs.
[[nodiscard]] QColor GroundFor(const QColor& text, const QColor& ground);

/// The colour half-way between ink and ground, for lines that are not to stand out.
[[nodiscard]] QColor Halfway(const QColor& ink, const QColor& ground);

/// From now on the box's placeholder text can be read on its ground, also after a change of the palette.
void KeepPlaceholderReadable(QLineEdit& box);
} // namespace Contrast
