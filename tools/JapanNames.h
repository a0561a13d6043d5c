#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// The municipalities of Japan (cities, towns, villages and wards) by prefecture, as the postal-code dictionary names
/// them.
class CJapanNames
{
public:
    /// Reads the EUC-JP postal-code dictionary. Throws std::runtime_error when it cannot be read.
    explicit CJapanNames(const QString& dictionaryPath);

    /// The official name ("鎌倉市") of the municipality that `name` ("鎌倉", "鎌倉市") stands for in the prefecture
    /// ("神奈川県"); empty when there is none.
    [[nodiscard]] QString Official(const QString& prefecture, const QString& name) const;

    /// How the municipality is written in an address, with its district ("河東郡音更町"); empty when there is none.
    [[nodiscard]] QString InAddress(const QString& prefecture, const QString& municipality) const;

    /// The address of a town of the municipality, without the prefecture ("札幌市北区麻生町"); empty when there is
    /// none, or more than one that ends alike.
    [[nodiscard]] QString TownAddress(const QString& prefecture, const QString& municipality,
                                      const QString& town) const;

    [[nodiscard]] qsizetype Count() const;

private:
    void AddPrefecture(const QString& prefecture, QStringList addresses);

    QHash<QString, QHash<QString, QString>>
        m_municipalities;                    // by prefecture and name, as they are written in addresses
    QHash<QString, QStringList> m_addresses; // by prefecture, sorted
};
