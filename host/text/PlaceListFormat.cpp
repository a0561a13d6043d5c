#include "host/text/PlaceListFormat.h"

#include "host/text/CodePage932.h"
#include "host/text/Number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace
{
constexpr std::size_t FieldCount = 8;
constexpr char LineEnd[] = "\r\n";

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
} // namespace

void PlaceListFormat::AppendFolder(QByteArray& lines, int level, const QString& name)
{
    lines.append(level, FolderMark);
    lines.append(CodePage932::Encode(name)).append(LineEnd);
}

void PlaceListFormat::AppendClose(QByteArray& lines)
{
    lines.append(CloseMark).append(LineEnd);
}

void PlaceListFormat::AppendPlace(QByteArray& lines, const QString& name, const PlaceValues& place)
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
    lines.append(LineEnd);
}

qsizetype PlaceListFormat::CountMarks(QByteArrayView line)
{
    return std::find_if(line.begin(), line.end(), [](char c) { return c != FolderMark; }) - line.begin();
}

bool PlaceListFormat::ParsePlace(QByteArrayView line, PlaceValues& place)
{
    // Fields lose the blanks around them, except the last of the line, which does not count when it is empty. What
    // follows the eighth is not used.
    std::array<QByteArrayView, FieldCount> fields;
    for (std::size_t index = 0; index < FieldCount; ++index) {
        const qsizetype comma = line.indexOf(',');
        if (comma < 0 && (index + 1 < FieldCount || line.isEmpty()))
            return false;
        fields[index] = comma < 0 ? line : Trimmed(line.first(comma));
        line = line.sliced(comma + 1);
    }
    place.Name = DecodeName(CodePage932::CompletePrefix(fields[0])).trimmed();
    place.Longitude = Coordinate(fields[1], 'W');
    place.Latitude = Coordinate(fields[2], 'S');
    place.Altitude = Number::LeadingInt(fields[3]);
    place.TimeZone = Number::LeadingDouble(fields[4]);
    place.IsAutoAltitude = Number::LeadingInt(fields[5]) == 1 ? 1 : 0;
    place.IsUserEdited = Number::LeadingInt(fields[6]);
    place.Kind = Number::LeadingInt(fields[7]);
    return true;
}

bool PlaceListFormat::BeginsWithMark(QStringView text)
{
    return text.startsWith(QLatin1Char(FolderMark)) || text.startsWith(QLatin1Char(CloseMark));
}

QString PlaceListFormat::DecodeName(QByteArrayView bytes)
{
    return CodePage932::Decode(bytes).replace(QChar::ReplacementCharacter, u'?');
}
