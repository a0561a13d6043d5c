#pragma once

#include "controls/core/EngineBody.h"
#include "controls/core/PropertyTree.h"
#include "controls/core/Statement.h"
#include "controls/core/TerrainModel.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <optional>

/// A time as the engine's constructor gives it, universal time.
struct EngineTime
{
    int Year = 2000;
    int Month = 1;
    int Day = 1;
    int Hour = 12;
    int Minute = 0;
    int Second = 0;

    [[nodiscard]] double JulianDay() const;
};

/// What a sky engine knows, driven by its command language; draws nothing.
///
/// Longitudes are held as they were given. "Location(...)" as a constructor means the Earth, since that is what the
/// engine itself answers there; on another body it answers that body's path. While automatic altitude is on, a place
/// on the Earth answers the terrain's altitude; an altitude assigned by itself holds until the next move. Where no
/// terrain is known the altitude that was last given stands.
class CEngineState
{
public:
    /// Runs a line and returns the answer to its last query, empty without one. A line with a statement that is
    /// malformed, names what there is not or has a value of the wrong form changes nothing: all are read before the
    /// first is run. Its answer says what is wrong, in Japanese, and reads as no number.
    QString Command(QStringView line);

    /// Assigns a property as a statement would, but with any text as its value; false when it was refused.
    bool Assign(QStringView path, QStringView value);

    /// The answer to a query of the path.
    [[nodiscard]] QString Query(QStringView path);

    /// Moves the observer on the present body.
    void MoveTo(double longitude, double latitude);

    [[nodiscard]] int Body() const { return m_body; }
    [[nodiscard]] double Longitude() const { return m_longitude; }
    [[nodiscard]] double Latitude() const { return m_latitude; }
    [[nodiscard]] double Altitude(); ///< metres
    [[nodiscard]] const EngineTime& Time() const { return m_time; }
    [[nodiscard]] const CPropertyTree& Properties() const { return m_properties; }

    /// Whether "Show Sky" came since the last call.
    [[nodiscard]] bool TakeShowRequest();

private:
    struct Special;
    /// What a statement does once the whole line is read.
    using Step = std::function<void()>;
    static const Special Specials[];
    [[nodiscard]] static const Special* FindSpecial(QStringView path);

    // What an assignment does; empty when the value is refused.
    [[nodiscard]] Step Assignment(QStringView path, QStringView value);
    [[nodiscard]] Step SetLocation(QStringView value);
    [[nodiscard]] Step SetLongitude(QStringView value);
    [[nodiscard]] Step SetLatitude(QStringView value);
    [[nodiscard]] Step SetAltitude(QStringView value);
    [[nodiscard]] Step SetAutomatic(QStringView value);
    [[nodiscard]] Step SetIndexFile(QStringView value);
    [[nodiscard]] Step SetTime(QStringView value);

    /// What a statement does, into the answer if it asks; empty when it is refused.
    [[nodiscard]] Step Read(const Statement& statement, QString& answer);
    /// Why a statement is refused.
    [[nodiscard]] QString Complaint(const Statement& statement) const;
    [[nodiscard]] bool Knows(QStringView path) const;

    [[nodiscard]] QString LocationText();
    [[nodiscard]] QString LongitudeText();
    [[nodiscard]] QString LatitudeText();
    [[nodiscard]] QString AltitudeText();
    [[nodiscard]] QString AutomaticText();
    [[nodiscard]] QString LandscapeText();
    [[nodiscard]] QString IndexFileText();
    [[nodiscard]] QString TimeText();

    [[nodiscard]] bool TakesTerrain() const;

    CPropertyTree m_properties;
    CTerrainModel m_terrain;
    QString m_indexFile;
    int m_body = BodyTable::Earth;
    double m_longitude = 139.691772;
    double m_latitude = 35.689236;
    double m_ownAltitude = 39.0; ///< the altitude last given
    bool m_isAutomatic = false;
    bool m_isAltitudeAssigned = false; ///< given by itself since the last move
    EngineTime m_time;
    bool m_showRequested = false;
    /// The terrain's answer for the present place; reading it anew at each query would touch the disk.
    std::optional<double> m_terrainAltitude;
    bool m_isTerrainRead = false;
};
