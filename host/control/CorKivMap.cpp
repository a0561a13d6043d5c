#include "host/control/CorKivMap.h"

#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"

namespace Number = ControlNumber::GlobeMap;

bool CCorKivMap::Create(QWidget* parent, const QRect& rect, int controlId)
{
    return CreateControl(QString::fromUtf16(ControlClass::GlobeMap), parent, rect, controlId);
}

void CCorKivMap::SetCenter(double longitude, double latitude)
{
    Invoke(Number::SetCenter, {longitude, latitude});
}

void CCorKivMap::GetCenter(double* longitude, double* latitude)
{
    Invoke(Number::GetCenter, {QVariant::fromValue(longitude), QVariant::fromValue(latitude)});
}

void CCorKivMap::SetObsPosition(double longitude, double latitude)
{
    Invoke(Number::SetObsPosition, {longitude, latitude});
}

void CCorKivMap::Redraw()
{
    Invoke(Number::Redraw, {});
}

void CCorKivMap::SetZoom(double zoom)
{
    Invoke(Number::SetZoom, {zoom});
}

void CCorKivMap::SetSwitch(int method, bool on)
{
    Invoke(method, {on});
}

void CCorKivMap::SetLandmarkFileExists(bool exists)
{
    Invoke(Number::SetLandmarkFileExists, {exists});
}

void CCorKivMap::SetLandmarkFile(const QString& path)
{
    Invoke(Number::SetLandmarkFile, {path});
}

int CCorKivMap::FeatureCount()
{
    return Invoke(Number::FeatureCount, {}).toInt();
}

void CCorKivMap::SetFeatureFlags(const int* flags)
{
    Invoke(Number::SetFeatureFlags, {QVariant::fromValue(static_cast<quint64>(reinterpret_cast<quintptr>(flags)))});
}

QString CCorKivMap::FeatureName(int kind)
{
    return Invoke(Number::FeatureName, {kind}).toString();
}

void CCorKivMap::ReloadUserPlaces(bool reload)
{
    Invoke(Number::ReloadUserPlaces, {reload});
}

void CCorKivMap::SetEclipsePath(const QString& path)
{
    Invoke(Number::SetEclipsePath, {path});
}

void CCorKivMap::SetBesselElementApply(bool apply)
{
    Invoke(Number::SetBesselElementApply, {apply});
}

void CCorKivMap::SetEclipsePathColor(quint32 color)
{
    Invoke(Number::SetEclipsePathColor, {color});
}
