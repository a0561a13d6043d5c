#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

/// A populated place of the GeoNames table.
struct GeoPlace
{
    QString Id;
    QStringList AlternateNames; ///< in any language, untagged
    double Latitude = 0.0;      ///< degrees
    double Longitude = 0.0;     ///< degrees
    QString Feature;            ///< feature code, PPLC is a capital of a country
    QString Country;            ///< ISO 3166-1 alpha-2
    QString Division;           ///< first-level division, code within the country
    qint64 Population = 0;      ///< 0 when unknown
    int Altitude = 0;           ///< metres, from the height model
    QString ZoneName;           ///< name in the time-zone database
};

/// Reading what GeoNames gives: the table of places and the translations by place or division.
namespace GeoNames
{
/// All places of the tab-separated table. Throws std::runtime_error when it cannot be read.
[[nodiscard]] std::vector<GeoPlace> ReadPlaces(const QString& path);

/// Translations of a compiled gettext catalogue: keys are place ids ("1850147"), countries ("JP") and divisions
/// ("JP.40"). Throws std::runtime_error when the file is not a catalogue.
[[nodiscard]] QHash<QString, QString> ReadCatalogue(const QString& path);
} // namespace GeoNames
