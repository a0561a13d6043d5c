#pragma once

#include "tools/GeoNames.h"
#include "tools/HeightMap.h"
#include "tools/JapanNames.h"
#include "tools/ListWriter.h"

#include <QHash>
#include <QMap>
#include <QString>

#include <map>
#include <vector>

/// Makes the shipped place list from GeoNames, the postal-code dictionary and the hand-made tables of tools/sources.
class CPlaceListMaker
{
public:
    /// `packages` is where fetch_sources unpacked, `tables` the folder of the hand-made tables.
    CPlaceListMaker(const QString& packages, const QString& tables);

    /// The bytes of a list of at most `limit` places: all of Japan and the hand-made tables, then the capitals and the
    /// most populous places of the world. Throws std::runtime_error when a source is missing or broken.
    [[nodiscard]] CListWriter Make(int limit);

private:
    struct Candidate
    {
        PlaceValues Place;
        QString Division; ///< Japanese name of the first-level division, may be empty
        qint64 Population = 0;
        int Rank = 0; ///< order in the folder before population counts
        QString Id;
    };
    using Folder = std::vector<Candidate>;

    void CollectJapan();
    void CollectWorld(int limit);
    void CollectTables();
    [[nodiscard]] QString ForeignName(const GeoPlace& place) const;
    [[nodiscard]] Candidate MakeCandidate(const GeoPlace& place, const QString& name, int kind) const;
    static void Sort(Folder& folder);
    static void SeparateNames(Folder& folder);
    static void WriteFolder(CListWriter& writer, const QString& name, const Folder& folder);
    void WriteCountry(CListWriter& writer, const QString& code, const QString& name) const;

    QString m_tables;
    std::vector<GeoPlace> m_places;
    QHash<QString, QString> m_names;
    CJapanNames m_japan;
    CHeightMap m_heights;
    std::map<QString, Folder> m_prefectures;                                            // by Japanese name
    std::map<QString, Folder> m_countries;                                              // by country code
    std::vector<std::pair<QString, std::vector<std::pair<QString, Folder>>>> m_special; // folder, its groups
};
