#include "controls/core/PropertyTree.h"

#include "controls/core/Statement.h"
#include "host/text/Number.h"

using namespace Qt::StringLiterals;

struct CPropertyTree::Known
{
    const char16_t* Path;
    Form Kind;
    const char16_t* Value;
};

const CPropertyTree::Known CPropertyTree::KnownProperties[] = {
    {u"Operation.MoveView", Form::Boolean, u"FALSE"},
    {u"Solar.Moon.Brightness", Form::Number, u"1.0"},
    {u"Solar.Moon.Surface.Name.Leadline.Visible", Form::Boolean, u"TRUE"},
    {u"Solar.Moon.Surface.Name.Visible", Form::Boolean, u"FALSE"},
    {u"Solar.Planet.Disk.Grid.Visible", Form::Boolean, u"FALSE"},
    {u"Solar.Planet.Earth.BesselElement.Apply", Form::Boolean, u"FALSE"},
    {u"Solar.Planet.Earth.Borderline.Visible", Form::Boolean, u"FALSE"},
    {u"Solar.Planet.Earth.Satellite.Moon.Disk.Grid.Visible", Form::Boolean, u"FALSE"},
    {u"Solar.Planet.Earth.SolarEclipse.Path.Color", Form::Any, u"RGB(255, 128, 0)"},
    {u"Solar.Planet.Earth.SolarEclipse.Path.Data", Form::Any, u""},
    {u"Solar.Planet.Earth.SolarEclipse.Path.Visible", Form::Boolean, u"FALSE"},
    {u"Solar.Planet.Surface.Name.Leadline.Visible", Form::Boolean, u"TRUE"},
    {u"Solar.Planet.Surface.Name.Visible", Form::Boolean, u"FALSE"},
    {u"Solar.Sun.Disk.Grid.Visible", Form::Boolean, u"FALSE"},
    {u"System.Loop", Form::Boolean, u"FALSE"},
    {u"Time.TimeZone", Form::Number, u"9.000000"},
    {u"View.Angle", Form::Number, u"180"},
    {u"View.Device", Form::Number, u"0"},
    {u"View.PlanetaryGlobe.Center.Latitude", Form::Number, u"0.000000"},
    {u"View.PlanetaryGlobe.Center.Longitude", Form::Number, u"0.000000"},
    {u"View.Projection", Form::Name, u"Horizontal"},
};

CPropertyTree::CPropertyTree()
{
    for (const Known& known : KnownProperties)
        m_properties.insert(QString::fromUtf16(known.Path).toLower(), {QString::fromUtf16(known.Value), known.Kind});
}

bool CPropertyTree::HasForm(Form form, QStringView value)
{
    switch (form) {
    case Form::Boolean:
        return value.compare(u"TRUE", Qt::CaseInsensitive) == 0 || value.compare(u"FALSE", Qt::CaseInsensitive) == 0;
    case Form::Number:
        return StatementReader::ReadNumber(value).has_value();
    case Form::Name:
        return StatementReader::IsPath(value);
    case Form::Any:
        break;
    }
    return true;
}

bool CPropertyTree::Knows(QStringView path) const
{
    return m_properties.contains(path.toString().toLower());
}

bool CPropertyTree::Accepts(QStringView path, QStringView value) const
{
    const auto property = m_properties.constFind(path.toString().toLower());
    return property != m_properties.cend() && value.size() <= MaximumValueLength && HasForm(property->Kind, value);
}

void CPropertyTree::Assign(QStringView path, QStringView value)
{
    const auto property = m_properties.find(path.toString().toLower());
    if (property == m_properties.end())
        return;
    const bool isSwitch = property->Kind == Form::Boolean;
    property->Value = isSwitch ? value.toString().toUpper() : value.toString();
}

QString CPropertyTree::Value(QStringView path) const
{
    return m_properties.value(path.toString().toLower()).Value;
}

bool CPropertyTree::IsTrue(QStringView path) const
{
    return Value(path) == u"TRUE";
}

double CPropertyTree::NumberOf(QStringView path) const
{
    return Number::LeadingDouble(Value(path));
}
