#include "city/core/PlaceRecord.h"

#include "host/text/CodePage932.h"
#include "host/text/Number.h"

#include <array>
#include <utility>

namespace
{
constexpr size_t DataFieldCount = 7;
}

void CCityList::SetValues(const PlaceValues& other)
{
    QString name = std::move(Name);
    PlaceValues::operator=(other);
    Name = std::move(name);
}

QString PlaceData::Format(const PlaceValues& place)
{
    return Number::Format("%11.7f,%10.7f,%.0f,%05.2f,%2d,%2d,%2d", place.Longitude, place.Latitude, place.Altitude,
                          place.TimeZone, place.IsAutoAltitude == 1 ? 1 : 0, place.IsUserEdited, place.Kind);
}

void PlaceData::Parse(const QString& data, PlaceValues& place)
{
    const QByteArray bytes = CodePage932::Encode(data);
    QByteArrayView rest(bytes);
    std::array<QByteArrayView, DataFieldCount> fields;
    for (QByteArrayView& field : fields) {
        const qsizetype comma = rest.indexOf(',');
        field = comma < 0 ? rest : rest.first(comma);
        if (field.isEmpty())
            break;
        rest = comma < 0 ? QByteArrayView() : rest.sliced(comma + 1);
    }
    place.Longitude = Number::LeadingDouble(fields[0]);
    place.Latitude = Number::LeadingDouble(fields[1]);
    place.Altitude = Number::LeadingDouble(fields[2]);
    place.TimeZone = Number::LeadingDouble(fields[3]);
    place.IsAutoAltitude = Number::LeadingInt(fields[4]);
    place.IsUserEdited = Number::LeadingInt(fields[5]);
    place.Kind = Number::LeadingInt(fields[6]);
}
