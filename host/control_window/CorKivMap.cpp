#include "host/control_window/CorKivMap.h"

#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"

namespace Call = ControlNumber::GlobeMap;

bool CCorKivMap::Create(QWidget* parent, const QRect& rect, int controlId)
{
    return CreateControl(QString::fromUtf16(ControlClass::GlobeMap), parent, rect, controlId);
}

void CCorKivMap::SetCenter(double longitude, double latitude)
{
    Invoke(Call::SetCenter, {longitude, latitude});
}

void CCorKivMap::GetCenter(double* longitude, double* latitude)
{
    Invoke(Call::GetCenter, {QVariant::fromValue(longitude), QVariant::fromValue(latitude)});
}

void CCorKivMap::SetObsPosition(double longitude, double latitude)
{
    Invoke(Call::SetObsPosition, {longitude, latitude});
}

void CCorKivMap::Redraw()
{
    Invoke(Call::Redraw, {});
}

void CCorKivMap::SetZoom(double zoom)
{
    Invoke(Call::SetZoom, {zoom});
}

void CCorKivMap::SetSwitch(int method, bool on)
{
    Invoke(method, {on});
}

void CCorKivMap::SetLandmarkFileExists(bool exists)
{
    Invoke(Call::SetLandmarkFileExists, {exists});
}

void CCorKivMap::SetLandmarkFile(const QString& path)
{
    Invoke(Call::SetLandmarkFile, {path});
}

int CCorKivMap::FeatureCount()
{
    return Invoke(Call::FeatureCount, {}).toInt();
}

void CCorKivMap::SetFeatureFlags(const int* flags)
{
    Invoke(Call::SetFeatureFlags, {QVariant::fromValue(static_cast<quint64>(reinterpret_cast<quintptr>(flags)))});
}

QString CCorKivMap::FeatureName(int kind)
{
    return Invoke(Call::FeatureName, {kind}).toString();
}

void CCorKivMap::ReloadUserPlaces(bool reload)
{
    Invoke(Call::ReloadUserPlaces, {reload});
}

void CCorKivMap::SetEclipsePath(const QString& path)
{
    Invoke(Call::SetEclipsePath, {path});
}

void CCorKivMap::SetBesselElementApply(bool apply)
{
    Invoke(Call::SetBesselElementApply, {apply});
}

void CCorKivMap::SetEclipsePathColor(quint32 color)
{
    Invoke(Call::SetEclipsePathColor, {color});
}
