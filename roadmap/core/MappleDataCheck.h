#pragma once

#include "module/kivobs_export.h"

#include <QString>

#include <optional>
#include <vector>

/// An installed version of the road map's data.
struct tagMappleCheck
{
    int Major = 0; ///< 10 or more
    int Minor = 0;
    int Revision = 0;
    QString Path;
    int Exists = 0; ///< 1 when something is at the path, else 0

    /// The version in a key's name, without path. None when there is none or one below 10.
    [[nodiscard]] static std::optional<tagMappleCheck> FromKeyName(QStringView name);

    /// What versions are ordered by; wraps around.
    [[nodiscard]] quint32 SortKey() const;

    /// The index of the newest version, the first of those alike; the array must not be empty.
    [[nodiscard]] static std::size_t Newest(const std::vector<tagMappleCheck>& versions);
};

/// Whether the road map's data are there. Only looks; shows nothing.
class KIVOBS_EXPORT CMappleDataCheck
{
public:
    /// 1 when at least one installed version of the data exists on disk, else 0.
    [[nodiscard]] static int CheckMappleDataInstalled();
};
