#include "planetarium/SavedState.h"

#include "host/observer/KPDateObs.h"
#include "host/system/Registry.h"
#include "host/text/Number.h"

#include <QStringList>

#include <array>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
const QString Section = u"Planetarium"_s;
const QString AltitudeModeName = u"AutoAltitude"_s;
constexpr double WidestZone = 15.0; // hours

QString Read(const QString& section, const QString& name)
{
    QString value;
    CRegistry::Read(section, name, QString(), &value);
    return value;
}

int ReadInteger(const QString& name, int absent)
{
    int value = absent;
    CRegistry::Read(Section, name, absent, &value, CRegistry::Count);
    return value;
}

/// Writes only what is new; the file then stays as it is while nothing changes.
void Keep(const QString& name, const QString& value)
{
    if (Read(Section, name) != value)
        CRegistry::Write(Section, name, value);
}

QString SiteName(int body)
{
    return u"Site"_s + QString::number(body);
}

struct Site
{
    double Longitude, Latitude, Altitude;
};

/// "139.7, 35.7, 39": degrees and metres; none when a number is missing or out of its range.
std::optional<Site> ReadSite(const QString& text)
{
    constexpr int parts = 3;
    constexpr double highest = 999999.0 * 1000.0; // metres, the highest that can be typed
    const QStringList texts = text.split(u',');
    std::array<double, parts> numbers{};
    for (int i = 0; i < parts; ++i) {
        const std::optional<double> number = Number::FindLeadingDouble(texts.value(i));
        if (!number)
            return std::nullopt;
        numbers[static_cast<size_t>(i)] = *number;
    }
    if (std::fabs(numbers[0]) > 360.0 || std::fabs(numbers[1]) > 90.0 || std::fabs(numbers[2]) > highest)
        return std::nullopt;
    return Site{numbers[0], numbers[1], numbers[2]};
}

void RestoreZone(CKPDateObs& observer, const QString& text)
{
    const std::optional<double> zone = Number::FindLeadingDouble(text);
    if (zone && std::fabs(*zone) <= WidestZone)
        observer.SetUserTz(*zone);
}

void RestoreInitialPlace(CKPDateObs& observer)
{
    const QString stored = Read(u"Default"_s, u"location"_s); // "location(139.7, 35.7, 39)"
    const auto site = ReadSite(stored.section(u'(', 1, 1).section(u')', 0, 0));
    if (!site)
        return;
    observer.UpdateObsByUI(site->Longitude, site->Latitude, site->Altitude);
    RestoreZone(observer, Read(u"Default"_s, u"time.timezone"_s));
}
} // namespace

void SavedState::RestoreObserver(CKPDateObs& observer)
{
    const int body = ReadInteger(u"Body"_s, -1);
    if (body < 0 || body >= BodyTable::Count) {
        RestoreInitialPlace(observer);
        return;
    }
    for (int each = 0; each < BodyTable::Count; ++each) {
        if (const auto site = ReadSite(Read(Section, SiteName(each)))) {
            observer.UpdateLocationObjectByUI(each, 1);
            observer.UpdateObsByUI(site->Longitude, site->Latitude, site->Altitude);
        }
    }
    observer.UpdateLocationObjectByUI(body, 1);
    RestoreZone(observer, Read(Section, u"TimeZone"_s));
    const int system = ReadInteger(u"TimeSystem"_s, 0);
    if (system >= static_cast<int>(TimeSystem::Zone) && system <= static_cast<int>(TimeSystem::LocalMean))
        observer.SetTimeSys(system);
}

void SavedState::SaveObserver(const CKPDateObs& observer)
{
    for (int body = 0; body < BodyTable::Count; ++body) {
        Keep(SiteName(body), Number::Format("%.8f, %.8f, %.3f", observer.GetLongitude(body), observer.GetLatitude(body),
                                            observer.GetHeight(body)));
    }
    Keep(u"TimeZone"_s, Number::Format("%f", observer.GetUserTz()));
    Keep(u"TimeSystem"_s, QString::number(observer.GetTimeSys()));
    Keep(u"Body"_s, QString::number(observer.GetBody()));
}

std::optional<bool> SavedState::AltitudeMode()
{
    const int mode = ReadInteger(AltitudeModeName, -1);
    return mode == 0 || mode == 1 ? std::optional(mode == 1) : std::nullopt;
}

void SavedState::SaveAltitudeMode(bool isAutomatic)
{
    Keep(AltitudeModeName, QString::number(int{isAutomatic}));
}
