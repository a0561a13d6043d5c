#pragma once

#include <QImage>

#include <functional>

/// Fills the holes that a camera or a sounding ship left in a map of a globe.
namespace PictureGaps
{
/// Says of a pixel, by its column, row and colour, whether it belongs to a set.
using Test = std::function<bool(int, int, QRgb)>;

/// Replaces the pixels of `isGap` by a smooth blend of the nearest pixels of `isSource`, the others stay as they are.
/// The picture is of 32 bits; a picture without any source stays as it is.
void Fill(QImage& picture, const Test& isGap, const Test& isSource);
} // namespace PictureGaps
