#include "roadmap/core/SitePosition.h"

#include "host/control/ControlNumbers.h"
#include "host/text/Number.h"

#include <algorithm>
#include <cmath>

namespace
{
using ControlNumber::RoadMap::MillisecondsPerDegree;
constexpr double SixtyParts = 60.0;
constexpr double LargestAngle = 999'999'999.0; // an int holds its degrees

SiteAngle Split(double angle, const char* positive, const char* negative)
{
    const double magnitude = std::isfinite(angle) ? std::min(std::fabs(angle), LargestAngle) : 0.0;
    SiteAngle split;
    split.Label = angle < 0.0 ? negative : positive;
    split.Degrees = static_cast<int>(magnitude);
    const double minutes = (magnitude - split.Degrees) * SixtyParts;
    split.Minutes = static_cast<int>(minutes);
    split.Seconds = (minutes - split.Minutes) * SixtyParts;
    return split;
}

/// Takes the number before the next comma and leaves the text after it; none when the comma is missing or first.
std::optional<double> TakeNumber(QStringView& text)
{
    const qsizetype comma = text.indexOf(u',');
    if (comma <= 0)
        return std::nullopt;
    const double number = Number::LeadingDouble(text.left(comma));
    text = text.mid(comma + 1);
    return number;
}
} // namespace

bool SitePosition::IsFinite() const
{
    return std::isfinite(Longitude) && std::isfinite(Latitude);
}

double SitePosition::X() const
{
    return Longitude * MillisecondsPerDegree;
}

double SitePosition::Y() const
{
    return Latitude * MillisecondsPerDegree;
}

SitePosition SitePosition::FromMilliseconds(double x, double y)
{
    return {x / MillisecondsPerDegree, y / MillisecondsPerDegree};
}

std::optional<SitePosition> SitePosition::FromEngineAnswer(const QString& answer)
{
    const qsizetype bracket = answer.indexOf(u'(');
    if (bracket <= 0)
        return std::nullopt;
    QStringView rest = QStringView(answer).mid(bracket + 1);
    const std::optional<double> longitude = TakeNumber(rest);
    const std::optional<double> latitude = longitude ? TakeNumber(rest) : std::nullopt;
    if (!latitude)
        return std::nullopt;
    return SitePosition{*longitude, *latitude};
}

QString SitePosition::ClickLine() const
{
    return Number::Format("Location = Location(%f, %f, *); show sky", Longitude, Latitude);
}

QString SitePosition::ResultLine() const
{
    return Number::Format("Location = Location(%f, %f, *); Show Sky", Longitude, Latitude);
}

SiteAngles ConvHMS(const SitePosition& position)
{
    return {Split(position.Longitude, "東経", "西経"), Split(position.Latitude, "北緯", "南緯")};
}

QString SiteText(const SitePosition& position)
{
    const auto [lng, lat] = ConvHMS(position);
    return Number::Format("%s： %03d 度 %02d 分 %5.2f 秒 %s： %02d 度 %02d 分 %5.2f 秒", lng.Label, lng.Degrees,
                          lng.Minutes, lng.Seconds, lat.Label, lat.Degrees, lat.Minutes, lat.Seconds);
}
