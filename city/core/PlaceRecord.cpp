#include "city/core/PlaceRecord.h"

#include "host/text/CodePage932.h"
#include "host/text/Number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace
{
constexpr qsizetype ListFieldCount = 8;
constexpr size_t DataFieldCount = 7;

int WholeMetres(double altitude)
{
    if (std::isnan(altitude))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(altitude, lowest, highest));
}

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

QByteArrayView Trimmed(QByteArrayView bytes)
{
    while (!bytes.isEmpty() && IsBlank(bytes.front()))
        bytes = bytes.sliced(1);
    while (!bytes.isEmpty() && IsBlank(bytes.back()))
        bytes.chop(1);
    return bytes;
}

/// A coordinate such as "135.2500000E": the number without its last character, negated for the letter in either case.
double Coordinate(QByteArrayView field, char negativeLetter)
{
    if (field.isEmpty())
        return 0.0;
    const char letter = static_cast<char>(field.back() & ~0x20);
    const double value = Number::LeadingDouble(field.chopped(1));
    return letter == negativeLetter ? -value : value;
}

/// The pieces of a line between its commas. The last one keeps its blanks and does not count when it is empty.
std::vector<QByteArrayView> Pieces(QByteArrayView line)
{
    std::vector<QByteArrayView> pieces;
    pieces.reserve(ListFieldCount);
    for (qsizetype comma = line.indexOf(','); comma >= 0; comma = line.indexOf(',')) {
        if (pieces.size() < ListFieldCount) // what follows the eighth piece is not used
            pieces.push_back(Trimmed(line.first(comma)));
        line = line.sliced(comma + 1);
    }
    if (!line.isEmpty())
        pieces.push_back(line);
    return pieces;
}
} // namespace

void CCityList::SetValues(const CCityList& other)
{
    Longitude = other.Longitude;
    Latitude = other.Latitude;
    Altitude = other.Altitude;
    TimeZone = other.TimeZone;
    IsAutoAltitude = other.IsAutoAltitude;
    IsUserEdited = other.IsUserEdited;
    Kind = other.Kind;
}

void PlaceFormat::AppendListLine(QByteArray& lines, const QString& name, const CCityList& place)
{
    lines.append(CodePage932::Encode(name).leftJustified(NameWidth, ' ', true)).append(',');
    Number::AppendFixed(lines, std::fabs(place.Longitude), 7, 11);
    lines.append(place.Longitude >= 0 ? "E," : "W,");
    Number::AppendFixed(lines, std::fabs(place.Latitude), 7, 10);
    lines.append(place.Latitude >= 0 ? "N," : "S,");
    Number::AppendInt(lines, WholeMetres(place.Altitude), 7);
    lines.append(place.TimeZone >= 0 ? ",+" : ",-");
    Number::AppendFixed(lines, std::fabs(place.TimeZone), 2, 5, '0');
    lines.append(place.IsAutoAltitude == 1 ? ", 1," : ", 0,");
    Number::AppendInt(lines, place.IsUserEdited, 2);
    lines.append(',');
    Number::AppendInt(lines, place.Kind, 2);
    lines.append("\r\n");
}

QString PlaceFormat::DecodeName(QByteArrayView bytes)
{
    return CodePage932::Decode(bytes).replace(QChar::ReplacementCharacter, u'?');
}

bool PlaceFormat::ParseListLine(QByteArrayView line, CCityList& place)
{
    const std::vector<QByteArrayView> pieces = Pieces(line);
    if (pieces.size() < ListFieldCount)
        return false;
    place.Name = DecodeName(CodePage932::CompletePrefix(pieces[0])).trimmed();
    place.Longitude = Coordinate(pieces[1], 'W');
    place.Latitude = Coordinate(pieces[2], 'S');
    place.Altitude = Number::LeadingInt(pieces[3]);
    place.TimeZone = Number::LeadingDouble(pieces[4]);
    place.IsAutoAltitude = Number::LeadingInt(pieces[5]) == 1 ? 1 : 0;
    place.IsUserEdited = Number::LeadingInt(pieces[6]);
    place.Kind = Number::LeadingInt(pieces[7]);
    return true;
}

QString PlaceFormat::DataString(const CCityList& place)
{
    return Number::Format("%11.7f,%10.7f,%.0f,%05.2f,%2d,%2d,%2d", place.Longitude, place.Latitude, place.Altitude,
                          place.TimeZone, place.IsAutoAltitude == 1 ? 1 : 0, place.IsUserEdited, place.Kind);
}

void PlaceFormat::ParseDataString(const QString& data, CCityList& place)
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
