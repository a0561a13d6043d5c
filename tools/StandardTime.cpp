#include "tools/StandardTime.h"

#include <QDateTime>
#include <QHash>
#include <QTimeZone>

#include <algorithm>
#include <stdexcept>

double StandardOffset(const QString& zoneName)
{
    static QHash<QString, double> known;
    if (const auto found = known.constFind(zoneName); found != known.cend()) {
        return *found;
    }
    const QTimeZone zone(zoneName.toUtf8());
    if (!zone.isValid()) {
        throw std::runtime_error("unknown time zone " + zoneName.toStdString());
    }
    // Not standardTimeOffset: Ireland's winter time is a negative daylight saving in the database.
    const QTime noon(12, 0);
    const int january = zone.offsetFromUtc(QDateTime(QDate(2026, 1, 15), noon, Qt::UTC));
    const int july = zone.offsetFromUtc(QDateTime(QDate(2026, 7, 15), noon, Qt::UTC));
    const double hours = std::min(january, july) / 3600.0;
    known.insert(zoneName, hours);
    return hours;
}
