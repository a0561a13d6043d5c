#include "obs/core/ObsSettings.h"

#include "host/system/Registry.h"
#include "host/text/Number.h"

using namespace Qt::StringLiterals;

namespace
{
struct Layer
{
    const char16_t* Name;
    int Default;
};

// "FeatureCutcherry" is the name under which the setting has always been stored.
constexpr std::array<Layer, ObsSettings::LayerCount> LayerValues{{
    {u"FeatureObs", 1},
    {u"FeatureCutcherry", 1},
    {u"FeatureCity", 1},
    {u"FeatureAstro", 0},
    {u"FeatureMount", 0},
    {u"FeatureNaturalTerrain", 0},
    {u"FeatureBuilding", 0},
    {u"FeatureOther", 0},
}};

constexpr int DefaultEngineVariant = 5;

int ReadInteger(const QString& section, const QString& name, int defaultValue, int kind)
{
    int value = defaultValue;
    CRegistry::Read(section, name, defaultValue, &value, kind);
    return value;
}

QString ReadText(const QString& section, const QString& name, const QString& defaultValue)
{
    QString value;
    CRegistry::Read(section, name, defaultValue, &value);
    return value;
}

const QString ViewAngleName = u"ViewAngle"_s;
const QString AutoAltitudeName = u"AutoAltitude"_s;
const QString DefaultSection = u"Default"_s;
const QString LocationName = u"location"_s;
const QString TimeZoneName = u"time.timezone"_s;
} // namespace

ObsSettings::Layers ObsSettings::ReadLayers(const QString& section)
{
    Layers layers{};
    for (size_t i = 0; i < layers.size(); ++i) {
        const QString name = QString::fromUtf16(LayerValues[i].Name);
        layers[i] = ReadInteger(section, name, LayerValues[i].Default, CRegistry::Flag) != 0 ? 1 : 0;
    }
    return layers;
}

int ObsSettings::ReadViewAngle(const QString& section)
{
    return ReadInteger(section, ViewAngleName, 0, CRegistry::Count);
}

bool ObsSettings::ReadAutoAltitude(const QString& section)
{
    return ReadInteger(section, AutoAltitudeName, 1, CRegistry::Flag) != 0;
}

int ObsSettings::ReadEngineVariant()
{
    return ReadInteger(u"General"_s, u"CorKiv"_s, DefaultEngineVariant, CRegistry::Count);
}

void ObsSettings::Save(const QString& section, const Layers& layers, int viewAngle, bool isAltitudeAutomatic)
{
    for (size_t i = 0; i < layers.size(); ++i)
        CRegistry::Write(section, QString::fromUtf16(LayerValues[i].Name), layers[i], CRegistry::Flag);
    CRegistry::Write(section, ViewAngleName, viewAngle, CRegistry::Count);
    CRegistry::Write(section, AutoAltitudeName, isAltitudeAutomatic ? 1 : 0, CRegistry::Flag);
}

ObsSettings::Statement ObsSettings::ReadInitialLocation()
{
    return {LocationName, ReadText(DefaultSection, LocationName, u"location(139.691772, 35.689236, 39.000000)"_s)};
}

ObsSettings::Statement ObsSettings::ReadInitialTimeZone()
{
    return {TimeZoneName, ReadText(DefaultSection, TimeZoneName, u"9.000000"_s)};
}

void ObsSettings::SaveInitialPlace(double longitude, double latitude, double altitude, double timeZone)
{
    CRegistry::Write(DefaultSection, LocationName,
                     Number::Format("location(%f, %f, %f)", longitude, latitude, altitude));
    CRegistry::Write(DefaultSection, TimeZoneName, Number::Format("%f", timeZone));
}
