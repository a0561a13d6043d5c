#pragma once

#include "tools/TopoMap.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// Writes the files of data/, each whole or not at all. Throws std::runtime_error when that fails.
namespace LineWriter
{
void WriteBytes(const QString& path, const QByteArray& bytes);

/// The outlines' format: "KOL1", the count of lines, then for each line the count of its points and the points
/// (longitude, latitude in millionths of a degree), all 32-bit little-endian.
void WriteLines(const QString& path, const std::vector<MapLine>& lines);
} // namespace LineWriter
