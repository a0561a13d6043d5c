#include "obs/core/EngineLines.h"

#include "host/observer/BodyTable.h"
#include "host/text/Number.h"

using namespace Qt::StringLiterals;

std::vector<QString> EngineLines::SetUp(const QString& terrainIndexPath)
{
    constexpr int Device = 3;
    std::vector<QString> lines{
        Number::Format("View.Device = %d", Device),
        u"Operation.MoveView = TRUE"_s,
        u"System.Loop = FALSE"_s,
        u"View.Projection = PlanetaryGlobe"_s,
        u"View.Angle = 180"_s,
        u"Solar.Planet.Surface.Name.Visible = TRUE"_s,
        u"Solar.Planet.Surface.Name.Leadline.Visible = FALSE"_s,
        u"Solar.Moon.Surface.Name.Visible = TRUE"_s,
        u"Solar.Moon.Surface.Name.Leadline.Visible = FALSE"_s,
        u"Solar.Moon.Brightness = 0.6"_s,
        u"Solar.Sun.Disk.Grid.Visible = TRUE"_s,
        u"Solar.Planet.Disk.Grid.Visible = TRUE"_s,
        u"Solar.Planet.Earth.Satellite.Moon.Disk.Grid.Visible = TRUE"_s,
        u"Solar.Planet.Earth.Borderline.Visible = FALSE"_s,
    };
    if (!terrainIndexPath.isEmpty())
        lines.push_back(u"Solar.Planet.Earth.Landscape.IndexFile = \""_s + terrainIndexPath + u'"');
    lines.push_back(u"Location.Altitude.AutoGet = TRUE"_s);
    return lines;
}

QString EngineLines::PlaceOnBody(int body, double longitude, double latitude, double altitude)
{
    const QByteArray name = BodyTable::EngineName(body).toUtf8();
    return Number::Format("Location = %s(%.8f, %.8f, %.1f); Show Sky", name.constData(), longitude, latitude, altitude);
}

QString EngineLines::MoveTo(double longitude, double latitude)
{
    return Number::Format("Location.Longitude = %.8f; Location.Latitude = %.8f", longitude, latitude);
}

QString EngineLines::MoveToAndShow(double longitude, double latitude)
{
    return Number::Format("Location.Longitude = %.8f; Location.Latitude = %.8f; show sky", longitude, latitude);
}

QString EngineLines::MoveTo(double longitude, double latitude, double altitude)
{
    // The two blanks are part of the line.
    return Number::Format("Location.Longitude = %.8f; Location.Latitude = %.8f;  Location.Altitude = %.8f", longitude,
                          latitude, altitude);
}

QString EngineLines::SetAltitudeAndShow(double altitude)
{
    return Number::Format("Location.Altitude = %f; show sky", altitude);
}

QString EngineLines::MoveToAndCalculate(double longitude, double latitude)
{
    return Number::Format("Location.Longitude = %f; Location.Latitude = %f; Calc Stellar", longitude, latitude);
}

QString EngineLines::MoveBackTo(double longitude, double latitude, double altitude)
{
    return Number::Format("Location.Longitude = %f; Location.Latitude = %f; Location.Altitude = %f", longitude,
                          latitude, altitude);
}

QString EngineLines::CenterAt(double longitude, double latitude)
{
    return Number::Format(
        "View.PlanetaryGlobe.Center.Longitude = %f; View.PlanetaryGlobe.Center.Latitude = %f; Show Sky", longitude,
        latitude);
}

QString EngineLines::CenterAtFine(double longitude, double latitude)
{
    return Number::Format(
        "View.PlanetaryGlobe.Center.Longitude = %.8f; View.PlanetaryGlobe.Center.Latitude = %.8f; Show Sky", longitude,
        latitude);
}

QString EngineLines::CenterLongitude(double longitude)
{
    return Number::Format("View.PlanetaryGlobe.Center.Longitude = %f; Show Sky", longitude);
}

QString EngineLines::CenterLatitude(double latitude)
{
    return Number::Format("View.PlanetaryGlobe.Center.Latitude = %f; Show Sky", latitude);
}

QString EngineLines::ViewAngle(double degrees, bool isBorderlineVisible)
{
    return Number::Format("View.Angle = %f; Solar.Planet.Earth.Borderline.Visible = %s; Show Sky", degrees,
                          isBorderlineVisible ? "TRUE" : "FALSE");
}

QString EngineLines::UniversalTime(int year, int month, int day, int hour, int minute, int second)
{
    return Number::Format("Time = UT(%d, %d, %d, %d, %d, %d); Show Sky", year, month, day, hour, minute, second);
}

QString EngineLines::Assign(const QString& name, const QString& value)
{
    return name + u" = "_s + value;
}

QString EngineLines::AssignAndShow(const QString& name, const QString& value)
{
    return Assign(name, value) + u"; Show Sky"_s;
}
