#pragma once

#include <QString>

/// File helpers of the host.
class CCommonFile
{
public:
    /// Whether the path names an existing file (a folder is none).
    [[nodiscard]] static bool DoesFileExist(const QString& path);

    /// The folder of the module and what is shipped with it, ending with a separator, as the host's context has it.
    [[nodiscard]] static QString GetModulePath();

    /// Whether the first file was changed later than the second. A missing first file is never newer; an existing
    /// one is newer than a missing second.
    [[nodiscard]] static bool IsFileNewerThan(const QString& first, const QString& second);

    /// A path without blanks for the same file, with its neighbours beside it: the path itself when it has none, else
    /// one through links in a folder of the user's. Empty when there is no such path of less than 260 characters.
    [[nodiscard]] static QString GetShortPath(const QString& path);
};
