#include "controls/core/LandmarkList.h"

#include "host/text/PlaceListFormat.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 LargestFile = 16LL << 20;
constexpr std::size_t MostPlaces = 20000;

// How far a kind stands back behind the cities: a place further down the list of a weightier kind is shown with the
// first ones of a lighter kind.
constexpr std::array<double, LandmarkKind::Count> KindWeight = {0.5, 6, 0, 3, 3.5, 4, 5, 6.5};

// How much a folder's length counts beside a place's rank in it.
constexpr double FolderWeight = 0.5;

std::optional<Landmark> ParseLine(QByteArrayView line)
{
    PlaceValues values;
    if (!PlaceListFormat::ParsePlace(line, values) || values.Name.isEmpty() || std::abs(values.Longitude) > 360 ||
        std::abs(values.Latitude) > 90)
        return std::nullopt;
    Landmark place;
    place.Name = values.Name;
    place.Position = {WrapLongitude(values.Longitude), values.Latitude};
    place.Direction = ToVector(place.Position);
    place.Kind = values.Kind >= 0 && values.Kind < LandmarkKind::Count ? values.Kind : LandmarkKind::Other;
    return place;
}
} // namespace

QString LandmarkKind::Name(int kind)
{
    static const std::array<QString, Count> Names = {u"観測地"_s, u"市区町村"_s, u"都市"_s,   u"天文台"_s,
                                                     u"山岳"_s,   u"自然地形"_s, u"建造物"_s, u"その他"_s};
    return kind >= 0 && kind < Count ? Names[static_cast<std::size_t>(kind)] : QString();
}

std::vector<Landmark> LandmarkList::Parse(QByteArrayView bytes)
{
    std::vector<Landmark> places;
    std::array<int, LandmarkKind::Count> seen{};
    std::size_t folderStart = 0;
    // Large lands have long lists: their greatest places come before those of small ones.
    const auto closeFolder = [&] {
        const double weight = FolderWeight * std::log2(1.0 + static_cast<double>(places.size() - folderStart));
        for (; folderStart < places.size(); ++folderStart)
            places[folderStart].Importance -= weight;
        seen = {};
    };
    while (!bytes.isEmpty() && places.size() < MostPlaces) {
        const qsizetype end = bytes.indexOf('\n');
        const QByteArrayView line = (end < 0 ? bytes : bytes.first(end)).trimmed();
        bytes = end < 0 ? QByteArrayView() : bytes.sliced(end + 1);
        // Folders list their places from the greatest down, so a place counts by its rank in its own folder.
        if (!line.isEmpty() && line.front() == PlaceListFormat::FolderMark)
            closeFolder();
        if (line.isEmpty() || line.front() == PlaceListFormat::CloseMark || line.front() == PlaceListFormat::FolderMark)
            continue;
        std::optional<Landmark> place = ParseLine(line);
        if (!place)
            continue;
        const auto kind = static_cast<std::size_t>(place->Kind);
        place->Importance = KindWeight[kind] + std::log2(1.0 + seen[kind]++);
        places.push_back(std::move(*place));
    }
    closeFolder();
    std::stable_sort(places.begin(), places.end(),
                     [](const Landmark& a, const Landmark& b) { return a.Importance < b.Importance; });
    return places;
}

std::vector<Landmark> LandmarkList::Read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestFile)
        return {};
    return Parse(file.read(LargestFile));
}
