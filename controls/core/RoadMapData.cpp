#include "controls/core/RoadMapData.h"

#include "controls/core/Angle.h"
#include "host/control/ControlNumbers.h"
#include "host/text/Number.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 LargestFile = 8LL << 20;
constexpr std::size_t MostRows = 50000;
constexpr qsizetype LongestField = 120;
constexpr int LowestRank = 3;

/// Letters as a search compares them: of one width and case, and without the two spellings of a small "ke".
QString Fold(const QString& text)
{
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded().replace(u'ヶ', u'ケ');
}

QByteArray ReadTable(const QString& path)
{
    QFile file(path);
    // Asked for before opening: what is no plain file could keep its reader waiting for ever.
    if (!QFileInfo(file).isFile() || file.size() > LargestFile || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

/// Calls `take` with the fields of each row that has so many; none of them is too long.
template <std::size_t Count, typename Taker> void ForEachRow(QByteArrayView bytes, const Taker& take)
{
    while (!bytes.isEmpty()) {
        const qsizetype end = bytes.indexOf('\n');
        const QByteArrayView line = (end < 0 ? bytes : bytes.first(end)).trimmed();
        bytes = end < 0 ? QByteArrayView() : bytes.sliced(end + 1);
        if (line.isEmpty() || line.startsWith('#') || line.size() > static_cast<qsizetype>(Count) * 4 * LongestField)
            continue;
        const QStringList fields = QString::fromUtf8(line).split(u',');
        if (fields.size() != static_cast<qsizetype>(Count))
            continue;
        const bool isShort = std::all_of(fields.begin(), fields.end(),
                                         [](const QString& field) { return field.size() <= LongestField; });
        if (isShort && !take(fields))
            return;
    }
}

std::optional<GeoPoint> PositionOf(const QString& latitude, const QString& longitude)
{
    const auto north = Number::FindLeadingDouble(latitude);
    const auto east = Number::FindLeadingDouble(longitude);
    if (!north || !east || std::abs(*north) > 90 || std::abs(*east) > 360)
        return std::nullopt;
    return GeoPoint{WrapLongitude(*east), *north};
}

/// The prefecture that an address begins with.
QString PrefectureOf(const QString& address)
{
    for (qsizetype index = 2; index < std::min<qsizetype>(4, address.size()); ++index) {
        if (u"都道府県"_s.contains(address[index]))
            return address.left(index + 1);
    }
    return {};
}

/// The words of a search, folded, each once.
QStringList Words(const QString& text)
{
    static const QRegularExpression blanks(u"\\s+"_s, QRegularExpression::UseUnicodePropertiesOption);
    QStringList words = Fold(text).split(blanks, Qt::SkipEmptyParts);
    words.removeDuplicates();
    return words;
}

bool HasAll(const QString& text, const QStringList& words)
{
    return std::all_of(words.begin(), words.end(), [&text](const QString& word) { return text.contains(word); });
}

double Milliseconds(double degrees)
{
    return degrees * ControlNumber::RoadMap::MillisecondsPerDegree;
}

// How a kind of facility is drawn: its layer, its weight beside others, and the widest view that shows it.
struct FacilityLook
{
    const char16_t* Category; // middle or small
    int Kind;
    double Importance;
    double WidestAngle;
};
constexpr std::array<FacilityLook, 12> FacilityLooks = {{
    {u"公開天文台", 3, 2.4, 2.6},
    {u"天文台", 3, 1.2, 6},
    {u"宇宙機関", 6, 2.6, 2.2},
    {u"プラネタリウム", 3, 3.2, 1.2},
    {u"科学館・博物館", 6, 3.4, 1.2},
    {u"星空の名所", 0, 2.2, 4},
    {u"山岳", 4, 2.0, 5},
    {u"湖沼", 5, 2.1, 5},
    {u"高原・湿原", 5, 2.8, 2.5},
    {u"岬・島", 5, 2.3, 6},
    {u"建造物", 6, 3.0, 0.8},
    {u"史跡", 6, 3.3, 0.8},
}};

FacilityLook LookOf(const RoadMapFacility& facility)
{
    for (const FacilityLook& look : FacilityLooks) {
        const QStringView category = look.Category;
        if (facility.MiddleCategory == category || facility.SmallCategory == category)
            return look;
    }
    return {u"", LandmarkKind::Other, 4, 1};
}

// The same for the ranks of addresses; among those of a rank the larger one is the weightier.
constexpr double LargestPopulation = 7; // as a power of ten
constexpr int UnknownPopulation = 3000;
constexpr double PopulationWeight = 0.5;
struct RankLook
{
    int Kind;
    double Importance;
    double WidestAngle;
};
constexpr std::array<RankLook, 4> RankLooks = {{{2, 0, 20}, {1, 1.4, 1.6}, {1, 3.6, 1.0}, {1, 6, 0.4}}};

Landmark MakeLandmark(const QString& name, const GeoPoint& position, int kind, double importance, double widestAngle)
{
    return {name, position, ToVector(position), kind, importance, widestAngle};
}
} // namespace

void CRoadMapData::Load(const QString& folder)
{
    ParseAddresses(ReadTable(folder + u"addresses.csv"_s));
    ParseFacilities(ReadTable(folder + u"facilities.csv"_s));
}

void CRoadMapData::ParseAddresses(QByteArrayView bytes)
{
    m_addresses.clear();
    ForEachRow<6>(bytes, [this](const QStringList& fields) {
        const auto position = PositionOf(fields[4], fields[5]);
        const int rank = Number::LeadingInt(fields[2]);
        if (!position || fields[0].isEmpty() || rank < 0 || rank > LowestRank)
            return true;
        // The name of a village is known without its district, too.
        const QString folded = Fold(fields[0] + u'\n' + PrefectureOf(fields[0]) + fields[1]);
        m_addresses.push_back({fields[0], fields[1], folded, *position, rank, Number::LeadingInt(fields[3])});
        return m_addresses.size() < MostRows;
    });
}

void CRoadMapData::ParseFacilities(QByteArrayView bytes)
{
    m_facilities.clear();
    ForEachRow<7>(bytes, [this](const QStringList& fields) {
        const auto position = PositionOf(fields[5], fields[6]);
        if (!position || fields[0].isEmpty())
            return true;
        m_facilities.push_back({fields[0], fields[1], fields[2], fields[3], fields[4], Fold(fields[0]),
                                Fold(fields.mid(0, 5).join(u'\n')), *position});
        return m_facilities.size() < MostRows;
    });
}

std::vector<CRoadMapResult> CRoadMapData::FindAddresses(const QString& text) const
{
    std::vector<CRoadMapResult> results;
    const QStringList words = Words(text);
    if (words.isEmpty())
        return results;
    for (const RoadMapAddress& address : m_addresses) {
        if (!HasAll(address.Folded, words))
            continue;
        CRoadMapResult& result = results.emplace_back();
        result.X = Milliseconds(address.Position.Longitude);
        result.Y = Milliseconds(address.Position.Latitude);
        result.Address = address.Address;
    }
    return results;
}

std::vector<CRoadMapResult> CRoadMapData::FindFacilities(const QString& text) const
{
    std::vector<CRoadMapResult> results;
    const QStringList words = Words(text);
    if (words.isEmpty())
        return results;
    std::vector<CRoadMapResult> others;
    for (const RoadMapFacility& facility : m_facilities) {
        if (!HasAll(facility.Folded, words))
            continue;
        (HasAll(facility.FoldedName, words) ? results : others)
            .push_back({Milliseconds(facility.Position.Longitude), Milliseconds(facility.Position.Latitude),
                        facility.Name, facility.Address, facility.LargeCategory, facility.MiddleCategory,
                        facility.SmallCategory});
    }
    results.insert(results.end(), others.begin(), others.end());
    return results;
}

std::vector<Landmark> CRoadMapData::Landmarks() const
{
    std::vector<Landmark> places;
    places.reserve(m_addresses.size() + m_facilities.size());
    for (const RoadMapAddress& address : m_addresses) {
        const RankLook& look = RankLooks.at(static_cast<std::size_t>(address.Rank));
        const double smallness = LargestPopulation - std::log10(std::max(address.Population, UnknownPopulation));
        places.push_back(MakeLandmark(address.Name, address.Position, look.Kind,
                                      look.Importance + PopulationWeight * smallness, look.WidestAngle));
    }
    for (const RoadMapFacility& facility : m_facilities) {
        const FacilityLook look = LookOf(facility);
        places.push_back(MakeLandmark(facility.Name, facility.Position, look.Kind, look.Importance, look.WidestAngle));
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const Landmark& a, const Landmark& b) { return a.Importance < b.Importance; });
    return places;
}

const RoadMapAddress* CRoadMapData::NearestMunicipality(const GeoPoint& point, double reach) const
{
    const double narrowing = std::cos(point.Latitude * RadiansPerDegree);
    const RoadMapAddress* nearest = nullptr;
    double least = reach;
    for (const RoadMapAddress& address : m_addresses) {
        if (address.Rank == LowestRank)
            continue;
        const double distance = std::hypot(WrapLongitude(address.Position.Longitude - point.Longitude) * narrowing,
                                           address.Position.Latitude - point.Latitude);
        if (distance < least) {
            least = distance;
            nearest = &address;
        }
    }
    return nearest;
}
