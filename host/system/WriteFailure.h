#pragma once

#include <QString>

/// Why a file could not be written.
namespace WriteFailure
{
enum class Cause
{
    None, ///< it was written
    NoFolder,
    IsNoFile, ///< a folder or a device stands in its place
    NotPermitted,
    ReadOnlyDrive,
    Full,
    Other
};

/// Looks for the cause after a failed attempt to write so many bytes to the path; never None.
[[nodiscard]] Cause Diagnose(const QString& path, qint64 bytes);
} // namespace WriteFailure
