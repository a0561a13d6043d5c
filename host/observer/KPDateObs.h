#pragma once

#include "host/observer/BodyTable.h"

#include <QDateTime>

#include <array>
#include <functional>

/// The current instant in the calendar of the time system: five 64-bit values.
struct tagADATE
{
    qint64 Year = 0;
    qint64 Month = 0;
    qint64 Day = 0;
    double DaySeconds = 0.0; ///< seconds since midnight
    double JulianDay = 0.0;  ///< of the same instant, universal time
};

/// How the host counts its time.
enum class TimeSystem : int
{
    Zone = 0,
    Universal = 1,
    LocalMean = 2
};

/// The host's shared date-and-observer object: where the observer stands on each body, and when.
///
/// The object owns the observer's location. Whatever changes it goes through the Update methods, which then notify the
/// one listener; the host answers by updating its sky and its dialogs.
class CKPDateObs
{
public:
    static constexpr int Earth = BodyTable::Earth;
    /// Handed to UpdateObsByUI in place of an altitude that the host is to find itself.
    static constexpr double AltitudeLeftToHost = -10000000.0;

    enum class Change
    {
        Location,
        Body,
        DateDisplay,
        Time
    };
    using Listener = std::function<void(Change)>;

    CKPDateObs();

    /// Is notified after a change; one listener, none when empty.
    void SetListener(Listener listener) { m_listener = std::move(listener); }

    // Date and time
    [[nodiscard]] tagADATE GetADate() const;
    [[nodiscard]] double GetMoonAge() const; ///< days since the mean new moon
    /// The instant in universal time; the flag is not used.
    void GetUT(int* year, int* month, int* day, int* hour, int* minute, int* second, int flag) const;
    void SetUT(const QDateTime& instant); ///< an invalid instant is ignored
    [[nodiscard]] QDateTime GetInstant() const { return m_instant; }
    static constexpr unsigned long TimeZoneChanged = 2;
    /// Tells the host to refresh its date display, and what has changed.
    void UpdateDateDisp(unsigned long what);
    [[nodiscard]] int IsTimeLocked() const { return m_timeLocked; }
    void SetTimeLocked(int locked) { m_timeLocked = locked; }

    // Time system and zone
    [[nodiscard]] double GetTz() const; ///< offset in force by the time system, hours east of UT
    [[nodiscard]] int GetTimeSys() const { return m_timeSystem; }
    void SetTimeSys(int system) { m_timeSystem = system; }
    [[nodiscard]] double GetUserTz() const { return m_userTz; } ///< hours east of UT
    void SetUserTz(double hours);                               ///< a value that is not finite is ignored
    [[nodiscard]] double GetLMTTz(double longitude) const;      ///< local mean time, hours; longitude in degrees

    // Location; degrees (longitude may be negative) and metres
    [[nodiscard]] int GetBody() const { return m_body; }
    [[nodiscard]] double GetLongitude() const { return GetLongitude(m_body); }
    [[nodiscard]] double GetLatitude() const { return GetLatitude(m_body); }
    [[nodiscard]] double GetHeight() const { return GetHeight(m_body); }
    [[nodiscard]] double GetLongitude(int body) const; ///< 0 for a body outside the table, as the next two
    [[nodiscard]] double GetLatitude(int body) const;
    [[nodiscard]] double GetHeight(int body) const;
    [[nodiscard]] double GetMag() const { return m_magnification; }

    /// Makes this the observer's location on the current body. A value that is not finite keeps the present one,
    /// a latitude beyond a pole becomes the pole, and AltitudeLeftToHost keeps the altitude.
    void UpdateObsByUI(double longitude, double latitude, double altitude);
    /// The same, and sets the user time zone, in hours, in every time system.
    void UpdateObsByUI(double longitude, double latitude, double altitude, double timeZone);
    /// Makes the body the current one; an index outside the table counts as the Earth. The flag is not used.
    void UpdateLocationObjectByUI(int body, int flag);
    /// Non-zero when altitudes on this body are given in metres: the bodies with a solid surface.
    [[nodiscard]] int IsSmallObject(int body) const;

private:
    struct Triple
    {
        double Latitude = 0.0;
        double Longitude = 0.0;
        double Height = 0.0;
    };

    void SetLocation(double longitude, double latitude, double altitude);
    void Tell(Change change) const;

    QDateTime m_instant;
    int m_body = Earth;
    std::array<Triple, BodyTable::Count> m_locations;
    int m_timeSystem = static_cast<int>(TimeSystem::Zone);
    double m_userTz = 9.0;
    double m_magnification = 1.0;
    int m_timeLocked = 0;
    Listener m_listener;
};
