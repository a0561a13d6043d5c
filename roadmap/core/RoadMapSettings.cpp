#include "roadmap/core/RoadMapSettings.h"

#include "host/system/Registry.h"
#include "roadmap/core/ScaleTable.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr int DefaultWait = 1000; // milliseconds
const QString WaitName = u"CreateWait"_s;
const QString ZoomName = u"ZoomAngle"_s;
const QString TextName = u"SearchChar"_s;
const QString RuleName = u"Rule"_s;

int Read(const QString& section, const QString& name, int defaultValue)
{
    int value = defaultValue;
    CRegistry::Read(section, name, defaultValue, &value, CRegistry::Count);
    return value;
}
} // namespace

int RoadMapSettings::ReadCreateWait(const QString& section)
{
    return std::clamp(Read(section, WaitName, DefaultWait), 0, LongestWait);
}

int RoadMapSettings::ReadZoomIndex(const QString& section)
{
    return ScaleTable::ClampIndex(Read(section, ZoomName, ScaleTable::DefaultIndex));
}

void RoadMapSettings::SaveZoom(const QString& section, int sliderPosition)
{
    // Deliberately one more than shown: each reopening is one scale wider, and a stored 330 comes back as it was.
    CRegistry::Write(section, ZoomName, sliderPosition + 1, CRegistry::Count);
}

RoadMapSettings::Search RoadMapSettings::ReadSearch(const QString& section)
{
    Search search;
    CRegistry::Read(section, TextName, QString(), &search.Text);
    search.Rule = Read(section, RuleName, 0);
    return search;
}

void RoadMapSettings::SaveSearch(const QString& section, const Search& search)
{
    CRegistry::Write(section, TextName, search.Text);
    CRegistry::Write(section, RuleName, search.Rule, CRegistry::Count);
}
