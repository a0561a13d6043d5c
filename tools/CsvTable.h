#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// Small UTF-8 tables of comma-separated fields without quoting; lines beginning with "#" are comments.
namespace CsvTable
{
/// One entry per line, fields with surrounding blanks removed; every line must have `columns` fields.
/// Throws std::runtime_error naming the file (and line) when it cannot be read or a line has another count.
[[nodiscard]] std::vector<QStringList> Read(const QString& path, qsizetype columns);
} // namespace CsvTable
