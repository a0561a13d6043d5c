#pragma once

#include "tools/GeoNames.h"
#include "tools/JapanNames.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// Makes the road map's table of addresses: the municipalities of the shipped place list, and the towns that GeoNames
/// knows the position of and the postal-code dictionary confirms to be in a municipality nearby.
class CAddressMaker
{
public:
    /// `packages` is where fetch_sources unpacked, `list` the shipped place list. Throws std::runtime_error when a
    /// source is missing or broken.
    CAddressMaker(const QString& packages, const QString& list);

    /// The bytes of the table.
    [[nodiscard]] QByteArray Table() const;

private:
    struct Municipality
    {
        QString Prefecture;
        QString Name;
        int Rank = 0; ///< 0 capitals and ordinance-designated cities, 1 cities, 2 others
        double Longitude = 0.0;
        double Latitude = 0.0;
    };

    void ReadList(const QString& path);
    [[nodiscard]] std::vector<const Municipality*> Around(const GeoPlace& place) const;
    [[nodiscard]] QByteArray TownLine(const GeoPlace& place) const;

    CJapanNames m_japan;
    std::vector<GeoPlace> m_places;
    std::vector<Municipality> m_municipalities;
};
