#pragma once

#include <QByteArray>
#include <QString>

/// A place as the list file shows it.
struct ListPlace
{
    QString Name;
    double Longitude = 0.0; ///< degrees, east positive
    double Latitude = 0.0;  ///< degrees, north positive
    int Altitude = 0;       ///< metres
    double TimeZone = 0.0;  ///< hours east of UTC, standard time
    bool IsAutoAltitude = false;
    int Kind = 0; ///< index of the globe map's landmark layer
};

/// Builds the bytes of a list file: code page 932, CR LF.
class CListWriter
{
public:
    void Comment(const QString& text);
    void OpenFolder(const QString& name);
    void CloseFolder();
    void Place(const ListPlace& place);

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
