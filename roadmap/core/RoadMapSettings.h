#pragma once

#include <QString>

/// What the road-map dialogs keep between runs.
namespace RoadMapSettings
{
inline constexpr int LongestWait = 10'000; ///< milliseconds

/// The pause after the map's creation in milliseconds, 0 to LongestWait.
[[nodiscard]] int ReadCreateWait(const QString& section);

/// An index into the table of scales, always inside it.
[[nodiscard]] int ReadZoomIndex(const QString& section);
void SaveZoom(const QString& section, int sliderPosition);

struct Search
{
    QString Text;
    int Rule = 0; ///< 0 address keyword, 1 facility; as stored, whatever it is
};
[[nodiscard]] Search ReadSearch(const QString& section);
void SaveSearch(const QString& section, const Search& search);
} // namespace RoadMapSettings
