#include "controls/core/EclipsePath.h"

#include "host/text/Number.h"

#include <cmath>
#include <optional>

namespace
{
constexpr std::size_t MostPoints = 3000;
constexpr qsizetype LongestNumber = 32;

std::optional<double> NumberOf(QStringView text, double limit)
{
    const QStringView head = text.trimmed().left(LongestNumber);
    const std::optional<double> value = Number::FindLeadingDouble(head);
    if (!value || std::abs(*value) > limit)
        return std::nullopt;
    return value;
}

EclipsePath::Line ParseLine(QStringView text)
{
    EclipsePath::Line line;
    while (!text.isEmpty() && line.size() < MostPoints) {
        const qsizetype comma = text.indexOf(u',');
        const QStringView pair = (comma < 0 ? text : text.left(comma)).trimmed();
        text = comma < 0 ? QStringView() : text.sliced(comma + 1);
        const qsizetype blank = pair.indexOf(u' ');
        if (blank < 0)
            continue;
        const auto longitude = NumberOf(pair.left(blank), 360);
        const auto latitude = NumberOf(pair.sliced(blank + 1), 90);
        if (longitude && latitude)
            line.push_back(ToVector({*longitude, *latitude}));
    }
    return line;
}

} // namespace

EclipsePath EclipsePath::Parse(QStringView text)
{
    EclipsePath path;
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf(u';');
        const QStringView part = end < 0 ? text : text.left(end);
        text = end < 0 ? QStringView() : text.sliced(end + 1);
        const qsizetype equals = part.indexOf(u'=');
        if (equals < 0)
            continue;
        const QStringView name = part.left(equals).trimmed();
        Line* line = name.compare(u"central", Qt::CaseInsensitive) == 0 ? &path.Central
                     : name.compare(u"north", Qt::CaseInsensitive) == 0 ? &path.North
                     : name.compare(u"south", Qt::CaseInsensitive) == 0 ? &path.South
                                                                        : nullptr;
        if (line)
            *line = ParseLine(part.sliced(equals + 1));
    }
    return path;
}
