#include "controls/core/RoadMapCalls.h"

#include "host/control/ControlArguments.h"
#include "host/control/ControlNumbers.h"

#include <algorithm>
#include <optional>

using namespace ControlArguments;
namespace Call = ControlNumber::RoadMap;

namespace
{
void TakePosition(IRoadMapCalls& map, const QVariantList& arguments)
{
    if (arguments.size() != 3)
        return;
    const auto isMark = Switch({arguments[0]});
    const auto east = FiniteNumber(arguments[1]);
    const auto north = FiniteNumber(arguments[2]);
    if (!isMark || !east || !north)
        return;
    const GeoPoint position{WrapLongitude(*east / Call::MillisecondsPerDegree),
                            std::clamp(*north / Call::MillisecondsPerDegree, -90.0, 90.0)};
    if (*isMark)
        map.MarkPosition(position);
    else
        map.ShowPosition(position);
}

bool StartSearch(IRoadMapCalls& map, const QVariantList& arguments)
{
    if (arguments.size() != 2)
        return false;
    const auto isFacility = Switch({arguments[0]});
    const auto text = Text({arguments[1]});
    return isFacility && text && map.Search(*isFacility, *text);
}

void TakeScale(IRoadMapCalls& map, const QVariantList& arguments)
{
    const auto denominator = arguments.size() == 1 ? FiniteNumber(arguments[0]) : std::nullopt;
    if (denominator && *denominator > 0)
        map.SetScale(*denominator);
}
} // namespace

QVariant RoadMapCalls::Invoke(IRoadMapCalls& map, int method, const QVariantList& arguments)
{
    switch (method) {
    case Call::SetPosition:
        TakePosition(map, arguments);
        return {};
    case Call::Search:
        return StartSearch(map, arguments);
    case Call::GetSearchResult:
        return QVariant::fromValue<qint64>(map.SearchResult());
    case Call::SetScale:
        TakeScale(map, arguments);
        return {};
    case Call::CenterMark:
        map.CenterMark();
        return {};
    case Call::OpenFile:
        if (const auto path = Text(arguments))
            map.OpenFile(*path);
        return {};
    default:
        return {};
    }
}
