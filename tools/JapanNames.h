#pragma once

#include <QHash>
#include <QSet>
#include <QString>

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

    [[nodiscard]] qsizetype Count() const;

private:
    void AddPrefecture(const QString& prefecture, QStringList addresses);

    QHash<QString, QSet<QString>> m_municipalities;
};
