#pragma once

#include "host/text/PlaceListFormat.h"

/// Builds the bytes of a list file: code page 932, CR LF.
class CListWriter
{
public:
    void Comment(const QString& text);
    void OpenFolder(const QString& name);
    void CloseFolder();
    void Place(const PlaceValues& place);

    [[nodiscard]] const QByteArray& Bytes() const { return m_bytes; }
    [[nodiscard]] int PlaceCount() const { return m_placeCount; }
    [[nodiscard]] int FolderCount() const { return m_folderCount; }

    /// Whether the name survives the list file: in the code page, short enough, nothing that a reader would take for
    /// something else.
    [[nodiscard]] static bool IsName(const QString& name);

private:
    QByteArray m_bytes;
    int m_depth = 0;
    int m_placeCount = 0;
    int m_folderCount = 0;
};
