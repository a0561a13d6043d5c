#include "host/observer/KPDateObs.h"

#include <QTimeZone>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double SecondsPerHour = 3600.0;
constexpr double DegreesPerHour = 15.0;
constexpr double UnixEpochJulianDay = 2440587.5;
constexpr double SecondsPerDay = 86400.0;
constexpr double NewMoonJulianDay = 2451550.09766; // mean new moon of 2000-01-06
constexpr double SynodicMonth = 29.530588861;

double JulianDay(const QDateTime& instant)
{
    return UnixEpochJulianDay + static_cast<double>(instant.toMSecsSinceEpoch()) / (1000.0 * SecondsPerDay);
}

bool IsBody(int body)
{
    return body >= 0 && body < BodyTable::Count;
}
} // namespace

CKPDateObs::CKPDateObs() : m_instant(QDateTime::currentDateTimeUtc())
{
    m_locations[Earth] = {35.689236, 139.691772, 39.0};
}

tagADATE CKPDateObs::GetADate() const
{
    const QDateTime local = m_instant.addMSecs(std::llround(GetTz() * SecondsPerHour * 1000.0));
    return {local.date().year(), local.date().month(), local.date().day(),
            static_cast<double>(local.time().msecsSinceStartOfDay()) / 1000.0, JulianDay(m_instant)};
}

double CKPDateObs::GetMoonAge() const
{
    const double cycles = (JulianDay(m_instant) - NewMoonJulianDay) / SynodicMonth;
    return (cycles - std::floor(cycles)) * SynodicMonth;
}

void CKPDateObs::GetUT(int* year, int* month, int* day, int* hour, int* minute, int* second, int /*flag*/) const
{
    *year = m_instant.date().year();
    *month = m_instant.date().month();
    *day = m_instant.date().day();
    *hour = m_instant.time().hour();
    *minute = m_instant.time().minute();
    *second = m_instant.time().second();
}

void CKPDateObs::SetUT(const QDateTime& instant)
{
    if (!instant.isValid())
        return;
    m_instant = instant.toUTC();
    Tell(Change::Time);
}

void CKPDateObs::UpdateDateDisp(unsigned long /*what*/)
{
    Tell(Change::DateDisplay);
}

double CKPDateObs::GetTz() const
{
    switch (static_cast<TimeSystem>(m_timeSystem)) {
    case TimeSystem::Zone:
        return m_userTz;
    case TimeSystem::LocalMean:
        return GetLMTTz(GetLongitude());
    case TimeSystem::Universal:
        break;
    }
    return 0.0;
}

void CKPDateObs::SetUserTz(double hours)
{
    if (std::isfinite(hours))
        m_userTz = hours;
}

double CKPDateObs::GetLMTTz(double longitude) const
{
    return std::remainder(longitude, 360.0) / DegreesPerHour;
}

double CKPDateObs::GetLongitude(int body) const
{
    return IsBody(body) ? m_locations[static_cast<size_t>(body)].Longitude : 0.0;
}

double CKPDateObs::GetLatitude(int body) const
{
    return IsBody(body) ? m_locations[static_cast<size_t>(body)].Latitude : 0.0;
}

double CKPDateObs::GetHeight(int body) const
{
    return IsBody(body) ? m_locations[static_cast<size_t>(body)].Height : 0.0;
}

void CKPDateObs::SetLocation(double longitude, double latitude, double altitude)
{
    Triple& place = m_locations[static_cast<size_t>(m_body)];
    if (std::isfinite(longitude))
        place.Longitude = std::fabs(longitude) <= 360.0 ? longitude : std::fmod(longitude, 360.0);
    if (std::isfinite(latitude))
        place.Latitude = std::clamp(latitude, -90.0, 90.0);
    if (std::isfinite(altitude) && altitude != AltitudeLeftToHost)
        place.Height = altitude;
}

void CKPDateObs::UpdateObsByUI(double longitude, double latitude, double altitude)
{
    SetLocation(longitude, latitude, altitude);
    Tell(Change::Location);
}

void CKPDateObs::UpdateObsByUI(double longitude, double latitude, double altitude, double timeZone)
{
    SetLocation(longitude, latitude, altitude);
    SetUserTz(timeZone);
    Tell(Change::Location);
}

void CKPDateObs::UpdateLocationObjectByUI(int body, int /*flag*/)
{
    m_body = IsBody(body) ? body : Earth;
    Tell(Change::Body);
}

int CKPDateObs::IsSmallObject(int body) const
{
    return IsBody(body) && BodyTable::Of(body).HasSurface ? 1 : 0;
}

void CKPDateObs::Tell(Change change) const
{
    if (m_listener)
        m_listener(change);
}
