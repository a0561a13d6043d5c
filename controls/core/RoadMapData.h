#pragma once

#include "controls/core/LandmarkList.h"
#include "host/control/RoadMapResults.h"

#include <QByteArrayView>
#include <QString>

#include <vector>

/// A municipality, or a part of one, with its office or its middle.
struct RoadMapAddress
{
    QString Address; ///< in full: prefecture, district, municipality, town
    QString Name;    ///< what the map writes
    QString Folded;  ///< what a search looks at
    GeoPoint Position;
    int Rank = 0;       ///< 0 capitals and designated cities, 1 cities, 2 towns and villages, 3 parts of them
    int Population = 0; ///< 0 when it is not known
};

/// A place that people look for.
struct RoadMapFacility
{
    QString Name;
    QString Address;
    QString LargeCategory;
    QString MiddleCategory;
    QString SmallCategory;
    QString FoldedName; ///< what a search looks at first
    QString Folded;     ///< what it looks at besides
    GeoPoint Position;
};

/// The tables of the road map: addresses and facilities, and the search in them. UTF-8 text, a line a row, fields
/// parted by commas, lines that begin with "#" are comments; a row that is not as it should be is left out.
class CRoadMapData
{
public:
    /// Reads "addresses.csv" and "facilities.csv" of the folder (ends with a separator). What is missing or larger
    /// than 8 MiB counts as empty.
    void Load(const QString& folder);

    /// Rows of address, name, rank, population, latitude, longitude; they take the place of those there were.
    void ParseAddresses(QByteArrayView bytes);
    /// Rows of name, address, large, middle and small category, latitude, longitude.
    void ParseFacilities(QByteArrayView bytes);

    [[nodiscard]] bool IsEmpty() const { return m_addresses.empty() && m_facilities.empty(); }

    /// The addresses that hold every word of the text, wherever; full and half width and large and small letters
    /// are alike, any blanks part words. Nothing for a text without words.
    [[nodiscard]] std::vector<CRoadMapResult> FindAddresses(const QString& text) const;

    /// The facilities whose name, categories and address hold every word; those whose name alone does come first.
    [[nodiscard]] std::vector<CRoadMapResult> FindFacilities(const QString& text) const;

    /// Both as places to draw, the most important first.
    [[nodiscard]] std::vector<Landmark> Landmarks() const;

    /// The municipality whose office is nearest to the point, null when none is within so many degrees.
    [[nodiscard]] const RoadMapAddress* NearestMunicipality(const GeoPoint& point, double reach) const;

private:
    std::vector<RoadMapAddress> m_addresses;
    std::vector<RoadMapFacility> m_facilities;
};
