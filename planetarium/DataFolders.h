#pragma once

#include "host/system/HostContext.h"

#include <QString>

/// Where the program finds what it ships and where the user's files go; folders end with a separator.
struct DataFolders
{
    QString Shipped;      ///< place list, pictures, outlines, terrain
    QString User;         ///< the user's place files
    QString TerrainIndex; ///< terrain index file, empty for none

    /// The shipped folder beside the program or above it, the user's folder in the usual place of the system.
    [[nodiscard]] static DataFolders Default();

    /// Takes another shipped folder, with the terrain index in it when there is one.
    void UseShipped(const QString& folder);

    /// The files of the host's context: the settings (empty: in their usual place), and what lies in these folders.
    [[nodiscard]] CHostContext::CFiles HostFiles(const QString& settings = {}) const;

    /// Copies the shipped place list into the user's folder when it is newer than the copy there, and puts a copy dated
    /// long ago in the place of a missing user list, which the site dialog then brings up to date. Returns the file
    /// that could not be written, empty when all went well; it is left as it was, and the module then uses the shipped
    /// list.
    QString InstallPlaceList() const;

    /// Records in the host context's store of components that the road map is installed: its control in this program,
    /// its data in the shipped folder. Returns the file that could not be written, empty when
    /// all went well; without it there is no road map.
    QString InstallRoadMap() const;
};
