#include "tools/GeoNames.h"

#include "host/text/Number.h"

#include <QFile>
#include <QtEndian>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
QByteArray ReadWhole(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return file.readAll();
}
} // namespace

std::vector<GeoPlace> GeoNames::ReadPlaces(const QString& path)
{
    enum Column
    {
        Id = 0,
        Alternates = 3,
        Latitude = 4,
        Longitude = 5,
        Feature = 7,
        Country = 8,
        Division = 10,
        Population = 14,
        HeightModel = 16,
        Zone = 17,
        ColumnCount = 19
    };
    std::vector<GeoPlace> places;
    const QByteArray table = ReadWhole(path);
    for (const QByteArray& line : table.split('\n')) {
        const QStringList fields = QString::fromUtf8(line).split(u'\t');
        if (fields.size() < ColumnCount) {
            continue;
        }
        GeoPlace place;
        place.Id = fields[Id];
        place.AlternateNames = fields[Alternates].split(u',', Qt::SkipEmptyParts);
        place.Latitude = Number::LeadingDouble(fields[Latitude]);
        place.Longitude = Number::LeadingDouble(fields[Longitude]);
        place.Feature = fields[Feature];
        place.Country = fields[Country];
        place.Division = fields[Division];
        place.Population = fields[Population].toLongLong();
        place.Altitude = Number::LeadingInt(fields[HeightModel]);
        place.ZoneName = fields[Zone];
        places.push_back(std::move(place));
    }
    return places;
}

QHash<QString, QString> GeoNames::ReadCatalogue(const QString& path)
{
    constexpr quint32 Magic = 0x950412de;
    constexpr qint64 HeaderSize = 20;
    constexpr qint64 EntrySize = 8;
    const QByteArray bytes = ReadWhole(path);
    const auto word = [&bytes](qint64 offset) {
        if (offset < 0 || offset + 4 > bytes.size()) {
            throw std::runtime_error("broken catalogue");
        }
        return qFromLittleEndian<quint32>(bytes.constData() + offset);
    };
    if (bytes.size() < HeaderSize || word(0) != Magic) {
        throw std::runtime_error(path.toStdString() + " is not a little-endian catalogue");
    }
    const auto text = [&bytes, &word](qint64 entry) {
        const qint64 length = word(entry);
        const qint64 start = word(entry + 4);
        if (start + length > bytes.size()) {
            throw std::runtime_error("broken catalogue");
        }
        return QString::fromUtf8(bytes.constData() + start, length);
    };
    QHash<QString, QString> names;
    const qint64 count = word(8);
    const qint64 originals = word(12);
    const qint64 translations = word(16);
    for (qint64 index = 0; index < count; ++index) {
        names.insert(text(originals + index * EntrySize), text(translations + index * EntrySize));
    }
    return names;
}
