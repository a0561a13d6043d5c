// What the dialog shows of the observer: location, body, eclipse path, landmark layers, initial values, time, status.

#include "host/dialog/DlgCommand.h"
#include "host/dialog/ThemedControls.h"
#include "host/observer/BodyTable.h"
#include "host/observer/KPDateObs.h"
#include "host/text/Number.h"
#include "obs/ControlIds.h"
#include "obs/DlgObs.h"
#include "obs/SiteEntry.h"
#include "obs/SiteMaps.h"
#include "obs/core/EclipseColor.h"
#include "obs/core/EngineLines.h"
#include "obs/core/InitialPlaceText.h"
#include "obs/core/SiteModel.h"

using namespace Qt::StringLiterals;

namespace
{
bool IsTrue(const QString& answer)
{
    return answer.compare(u"TRUE"_s, Qt::CaseInsensitive) == 0;
}

int SelectedBody(const CKivDialog& dialog)
{
    const auto* combo = dialog.Item<CKivComboBox>(ObsId::ComboPlanet);
    return combo ? BodyTable::Valid(combo->currentIndex()) : BodyTable::Earth;
}

void SelectBody(CKivDialog& dialog, int body)
{
    dialog.WithoutNotices([&dialog, body] {
        if (auto* combo = dialog.Item<CKivComboBox>(ObsId::ComboPlanet))
            combo->setCurrentIndex(body);
    });
}
} // namespace

void CDlgObs::Init()
{
    WithoutNotices([this] {
        auto* combo = Item<CKivComboBox>(ObsId::ComboPlanet);
        if (!combo)
            return;
        combo->clear();
        for (int body = 0; body < BodyTable::Count; ++body)
            combo->addItem(BodyTable::Label(body));
    });
    RedrawEclipsePath();
    InitLocation(1);
}

void CDlgObs::InitLocation(int first)
{
    const CKPDateObs* observer = Model->DateObs;
    if (!IsWindow() || !observer)
        return;
    const int body = Model->BodyIndex = BodyTable::Valid(observer->GetBody());
    if (first != 0 || LastBodyIndex != body)
        SelectBody(*this, body);
    LastBodyIndex = body;
    Maps->ShowMapOfBody();

    const double longitude = SiteLocationFormat::PositiveLongitude(observer->GetLongitude());
    const double latitude = observer->GetLatitude();
    double height = observer->GetHeight();
    const double timeZone = observer->GetUserTz();
    if (body == BodyTable::Earth)
        Maps->PutObserver(longitude, latitude);
    Maps->Engine().Command(EngineLines::PlaceOnBody(body, longitude, latitude, height));
    Maps->SetCenterOfProjection(longitude, latitude);
    ReadAltitudeMode(first, height);
    UpdateItem(ObsId::RadioAltAuto, false);
    Model->Fill(longitude, latitude, height, timeZone, first != 0);
    UpdateStatus();
}

/// Finds out whether the altitude is automatic; a refill then takes the height from the terrain.
void CDlgObs::ReadAltitudeMode(int first, double& height)
{
    const QString autoGet = QString::fromUtf16(EngineLines::AutoGetAltitude);
    int& mode = Model->Fields.AltitudeMode;
    if (first == 0) {
        mode = IsIt(autoGet, u"TRUE"_s) ? 0 : 1;
        if (mode == 0) {
            height = Model->Query(EngineLines::QueryAltitude);
            if (HostEngine())
                HostEngine()->Command(EngineLines::SetAltitudeAndShow(height));
        }
    } else if (Model->LandscapeIndexFile.isEmpty()) {
        DoitBool(autoGet, 0);
        mode = 1;
    } else {
        const bool isAutomatic = ObsSettings::ReadAutoAltitude(RegistrySection());
        DoitBool(autoGet, isAutomatic ? 1 : 0);
        mode = isAutomatic ? 0 : 1;
    }
}

void CDlgObs::OnSelchangePlanet()
{
    Model->BodyIndex = SelectedBody(*this);
    UpdateStatus();
    LastBodyIndex = Model->BodyIndex;
    if (Model->DateObs)
        Model->DateObs->UpdateLocationObjectByUI(Model->BodyIndex, 1);
}

void CDlgObs::RedrawEclipsePath()
{
    CCorKivMap& map = Maps->Globe();
    if (!map.IsCreated())
        return;
    const auto ask = [this](const char16_t* query) {
        return HostEngine() ? HostEngine()->Command(QString::fromUtf16(query)) : QString();
    };
    if (IsTrue(ask(EngineLines::QueryEclipseVisible))) {
        EclipsePathData = ask(EngineLines::QueryEclipseData);
        map.SetEclipsePath(EclipsePathData);
    } else
        map.SetEclipsePath(QString());
    map.SetEclipsePathColor(ParseEclipseColor(ask(EngineLines::QueryEclipseColor)));
    map.SetBesselElementApply(IsTrue(ask(EngineLines::QueryBesselApply)));
    Maps->Repaint();
}

void CDlgObs::OnObsChkFeature()
{
    UpdateData();
    SetFeatureVisible();
    Maps->Repaint();
}

void CDlgObs::SetFeatureVisible()
{
    Maps->SetFeatureVisible(LayerFlags);
}

void CDlgObs::SaveReg()
{
    ObsSettings::Save(RegistrySection(), LayerFlags, Maps->Slider(), Model->Fields.AltitudeMode == 0);
}

void CDlgObs::OnObsBtnSetInit()
{
    const SiteFields& fields = Model->Fields;
    if (MessageBox(InitialPlaceText(fields), IPrompts::Icon::Information, IPrompts::Buttons::OkCancel) !=
        IPrompts::Answer::Ok)
        return;
    // As the fields stand: on the Earth, the only body where the button is enabled, the altitude is in metres.
    SaveDefault(SiteLocationFormat::JoinLongitude(fields, BodyTable::Earth), SiteLocationFormat::JoinLatitude(fields),
                fields.AltitudeValue, SiteLocationFormat::JoinTimeZone(fields));
}

void CDlgObs::SaveDefault(double longitude, double latitude, double altitude, double timeZone)
{
    ObsSettings::SaveInitialPlace(longitude, latitude, altitude, timeZone);
}

void CDlgObs::OnBnClickedObsBtnReset()
{
    const auto tellEngine = [this](const QString& line) {
        if (HostEngine())
            HostEngine()->Command(line);
    };
    CKPDateObs* observer = Model->DateObs;
    Model->BodyIndex = BodyTable::Earth;
    SelectBody(*this, Model->BodyIndex);
    UpdateStatus();
    LastBodyIndex = Model->BodyIndex;
    if (observer)
        observer->UpdateLocationObjectByUI(Model->BodyIndex, 1);
    const ObsSettings::Statement location = ObsSettings::ReadInitialLocation();
    tellEngine(EngineLines::Assign(location.Name, location.Value));
    const ObsSettings::Statement zone = ObsSettings::ReadInitialTimeZone();
    const double hours = Number::LeadingDouble(zone.Value);
    Model->SetAppliedTimeZone(hours);
    if (observer)
        observer->SetUserTz(hours);
    tellEngine(EngineLines::AssignAndShow(zone.Name, zone.Value));
    if (observer)
        observer->UpdateDateDisp(CKPDateObs::TimeZoneChanged);
    UpdateTimeSys();
}

void CDlgObs::OnBnClickedObsBtnCmd()
{
    CDlgCommand console(&Maps->Engine(), this);
    console.DoModal();
}

void CDlgObs::UpdateStatus()
{
    using namespace ObsId;
    const CKPDateObs* observer = Model->DateObs;
    const int body = SelectedBody(*this);
    const bool isEarth = body == BodyTable::Earth;
    const bool isUserZone = observer && observer->GetTimeSys() == static_cast<int>(TimeSystem::Zone);
    const auto enable = [this](std::initializer_list<int> ids, bool on) {
        for (const int id : ids)
            EnableItem(id, on);
    };
    enable({RadioEast, RadioWest}, SiteLocationFormat::HasHemisphereChoice(body));
    enable({GroupTz, ButtonSetInit, ButtonCity, GroupFeature}, isEarth);
    enable({RadioTzPlus, RadioTzMinus, EditTzHour, SpinTzHour, LabelTzHour, EditTzMin, SpinTzMin, LabelTzMin},
           isEarth && isUserZone);
    for (int layer = 0; layer < ObsSettings::LayerCount; ++layer)
        EnableItem(CheckFeatureFirst + layer, isEarth);
    enable({RadioAltAuto, RadioAltManual}, !Entry->IsTerrainMissing());
    enable({EditAlt, SpinAlt}, Model->Fields.AltitudeMode != 0);
    SetItemText(LabelAltUnit, observer && observer->IsSmallObject(body) != 0 ? u"m"_s : u"km"_s);
}

void CDlgObs::UpdateTimeSys()
{
    const CKPDateObs* observer = Model->DateObs;
    if (!observer)
        return;
    const auto system = static_cast<TimeSystem>(observer->GetTimeSys());
    const double offset = system == TimeSystem::Zone        ? observer->GetUserTz()
                          : system == TimeSystem::LocalMean ? observer->GetLMTTz(observer->GetLongitude())
                                                            : 0.0;
    Model->ShowOffset(offset, system == TimeSystem::Zone);
    UpdateData(false);
    UpdateStatus();
}

void CDlgObs::SetKPDateObsToCorMap()
{
    if (!Model->DateObs || !Maps->Engine().IsCreated())
        return;
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    Model->DateObs->GetUT(&year, &month, &day, &hour, &minute, &second, 0);
    Maps->Engine().Command(EngineLines::UniversalTime(year, month, day, hour, minute, second));
}
