#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

/// A fault of a list file.
struct ListFault
{
    int Line = 0; ///< from 1
    QString Reason;
};

/// Checks a place list line by line: each must be what the writer makes of its values, and the values must be true of
/// the Earth.
class CListChecker
{
public:
    /// `tables` is the folder with boxes.csv, territory_boxes.csv and prefectures.csv, which say where the places of a
    /// folder may lie; an empty path leaves that unchecked. Throws std::runtime_error when one is missing.
    explicit CListChecker(const QString& tables);

    /// All faults of the bytes of a list file, in the order of lines; empty when the list is right.
    [[nodiscard]] std::vector<ListFault> Check(const QByteArray& bytes);

    /// What the last check met.
    [[nodiscard]] int PlaceCount() const { return m_placeCount; }
    [[nodiscard]] int FolderCount() const { return m_folderCount; }
    /// Hours by which the zone farthest from its longitude differs from it, and that place's name.
    [[nodiscard]] double WorstZoneDeviation() const { return m_worstZone; }
    [[nodiscard]] const QString& WorstZoneName() const { return m_worstZoneName; }

private:
    struct Box
    {
        double West = 0.0;
        double South = 0.0;
        double East = 0.0;
        double North = 0.0;
    };
    struct Folder
    {
        QString Name;
        QSet<QString> Names; ///< of its places and folders so far
    };

    void AddBoxes(const QString& name, const QStringList& numbers);
    void CheckLine(QByteArrayView line);
    void CheckFolder(QByteArrayView line);
    void CheckPlace(QByteArrayView line);
    [[nodiscard]] QString CheckName(QByteArrayView bytes);
    void CheckPosition(double longitude, double latitude);
    void CheckZone(double zone, double longitude, double latitude, const QString& name);
    void Fault(const QString& reason);

    QHash<QString, std::vector<Box>> m_boxes; // by folder name
    std::vector<ListFault> m_faults;
    std::vector<Folder> m_open; // the root first
    int m_line = 0;
    int m_placeCount = 0;
    int m_folderCount = 0;
    double m_worstZone = 0.0;
    QString m_worstZoneName;
};
