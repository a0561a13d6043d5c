#include "obs/core/SiteModel.h"

#include "host/observer/BodyTable.h"
#include "host/observer/CommonCoordFormat.h"
#include "host/observer/KPDateObs.h"
#include "host/text/Number.h"
#include "obs/core/EngineLines.h"

#include <utility>

using namespace SiteLocationFormat;

CSiteModel::CSiteModel(Ports ports) : BodyIndex(BodyTable::Earth), m_ports(std::move(ports)) {}

EntryRules::Entered CSiteModel::Entered()
{
    return {Fields, Fields.AltitudeValue, BodyIndex, IsSmall()};
}

bool CSiteModel::IsSmall() const
{
    return DateObs && DateObs->IsSmallObject(BodyIndex) != 0;
}

bool CSiteModel::HasTerrainAltitude() const
{
    return !LandscapeIndexFile.isEmpty() && Fields.AltitudeMode == 0;
}

double CSiteModel::EditToLng() const
{
    return JoinLongitude(Fields, BodyIndex);
}

double CSiteModel::EditToLat() const
{
    return JoinLatitude(Fields);
}

double CSiteModel::EditToTz() const
{
    return ShowsOffset && DateObs ? DateObs->GetUserTz() : JoinTimeZone(Fields);
}

double CSiteModel::Query(const char16_t* line) const
{
    return Number::LeadingDouble(m_ports.Command(QString::fromUtf16(line)));
}

void CSiteModel::Fill(double longitude, double latitude, double altitude, double timeZone, bool isAll)
{
    // Another body has other hemispheres and units, even where the numbers are the same.
    const bool isOtherBody = std::exchange(FilledBodyIndex, BodyIndex) != BodyIndex;
    SetValue(longitude, latitude, altitude, timeZone, isAll || isOtherBody ? 1 : 0);
}

void CSiteModel::SetValue(double longitude, double latitude, double altitude, double timeZone, int force)
{
    if (force != 0 || !CCommonCoordFormat::IsEqualDeg(longitude, AppliedLongitude)) {
        SplitLongitude(longitude, BodyIndex, Fields);
        m_ports.Push();
        AppliedLongitude = longitude;
    }
    if (force != 0 || !CCommonCoordFormat::IsEqualDeg(latitude, AppliedLatitude)) {
        SplitLatitude(latitude, Fields);
        m_ports.Push();
        AppliedLatitude = latitude;
    }
    if (force != 0 || !CCommonCoordFormat::IsEqualAlt(altitude, AppliedAltitude)) {
        Fields.AltitudeValue = DisplayFromMetres(altitude, IsSmall());
        m_ports.Push();
        AppliedAltitude = altitude;
    }
    if (force == 0 && timeZone == AppliedTimeZone)
        return;
    if (timeZone != NoTimeZone) {
        SplitTimeZone(timeZone, Fields);
        ShowsOffset = false;
    }
    m_ports.Push();
    AppliedTimeZone = timeZone;
}

void CSiteModel::ShowOffset(double hours, bool isUserZone)
{
    SplitTimeZone(hours, Fields);
    ShowsOffset = !isUserZone;
}

void CSiteModel::ApplyPosition()
{
    MoveCurrentPos(EditToLng(), EditToLat());
}

void CSiteModel::ApplyAll()
{
    MoveCurrentPos(EditToLng(), EditToLat(), MetresFromDisplay(Fields.AltitudeValue, IsSmall()), EditToTz());
}

void CSiteModel::ChangeTz()
{
    AppliedTimeZone = JoinTimeZone(Fields);
    if (!DateObs)
        return;
    DateObs->SetUserTz(AppliedTimeZone);
    DateObs->UpdateDateDisp(CKPDateObs::TimeZoneChanged);
}

void CSiteModel::MoveCurrentPos(double longitude, double latitude)
{
    m_ports.Command(EngineLines::MoveTo(longitude, latitude));
    m_ports.Command(EngineLines::CenterAtFine(longitude, latitude));
    // The engine's answer counts as display units too, exactly like a typed value.
    const double shown = HasTerrainAltitude() ? Query(EngineLines::QueryAltitude) : Fields.AltitudeValue;
    const double altitude = MetresFromDisplay(shown, IsSmall());
    AppliedLongitude = longitude;
    AppliedLatitude = latitude;
    AppliedAltitude = Fields.AltitudeValue; // in display units, unlike everywhere else: kept so on purpose
    AppliedTimeZone = JoinTimeZone(Fields);
    if (DateObs)
        DateObs->UpdateObsByUI(longitude, latitude, altitude);
}

void CSiteModel::MoveCurrentPos(double longitude, double latitude, double altitude, double timeZone)
{
    m_ports.Command(EngineLines::MoveTo(longitude, latitude, altitude));
    m_ports.Command(EngineLines::CenterAt(longitude, latitude));
    AppliedLongitude = longitude;
    AppliedLatitude = latitude;
    AppliedAltitude = altitude;
    if (DateObs)
        DateObs->UpdateObsByUI(longitude, latitude, altitude, timeZone);
}

void CSiteModel::TakePickedPlace(double longitude, double latitude, double altitude)
{
    if (!DateObs)
        return;
    const double previousLongitude = PositiveLongitude(DateObs->GetLongitude());
    const double previousLatitude = DateObs->GetLatitude();
    const double picked = PositiveLongitude(longitude);
    if (CCommonCoordFormat::IsEqualDeg(picked, previousLongitude) &&
        CCommonCoordFormat::IsEqualDeg(latitude, previousLatitude))
        return;
    m_ports.Command(EngineLines::CenterAt(picked, latitude));
    ExpectRefill(previousLongitude, previousLatitude);
    DateObs->UpdateObsByUI(picked, latitude, altitude);
}

/// The fields do not hold what is coming: with the observer's previous values as the applied ones the next fill sees
/// the change.
void CSiteModel::ExpectRefill(double previousLongitude, double previousLatitude)
{
    AppliedLongitude = previousLongitude;
    AppliedLatitude = previousLatitude;
    AppliedAltitude = DateObs->GetHeight();
    AppliedTimeZone = DateObs->GetUserTz();
}
