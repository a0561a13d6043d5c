// Body, eclipse path, landmark layers, initial values, time and status.

#include "host/dialog/DlgCommand.h"
#include "host/dialog/ThemedControls.h"
#include "host/observer/BodyTable.h"
#include "host/observer/KPDateObs.h"
#include "host/text/Number.h"
#include "obs/ControlIds.h"
#include "obs/DlgObs.h"
#include "obs/core/EclipseColor.h"
#include "obs/core/EngineLines.h"
#include "obs/core/InitialPlaceText.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr unsigned long TimeZoneChanged = 2; // what the host's date display is told

bool IsTrue(const QString& answer)
{
    return answer.compare(u"TRUE"_s, Qt::CaseInsensitive) == 0;
}
} // namespace

int CDlgObs::SelectedBody() const
{
    const auto* combo = Item<CKivComboBox>(ObsId::ComboPlanet);
    return combo ? BodyTable::Valid(combo->currentIndex()) : BodyTable::Earth;
}

void CDlgObs::SelectBody(int body)
{
    WithoutNotices([this, body] {
        if (auto* combo = Item<CKivComboBox>(ObsId::ComboPlanet))
            combo->setCurrentIndex(body);
    });
}

void CDlgObs::OnSelchangePlanet()
{
    BodyIndex = SelectedBody();
    UpdateStatus();
    LastBodyIndex = BodyIndex;
    if (DateObs)
        DateObs->UpdateLocationObjectByUI(BodyIndex, 1);
}

void CDlgObs::RedrawEclipsePath()
{
    if (!GlobeMap.IsCreated())
        return;
    const auto ask = [this](const char16_t* query) {
        return HostEngine() ? HostEngine()->Command(QString::fromUtf16(query)) : QString();
    };
    if (IsTrue(ask(EngineLines::QueryEclipseVisible))) {
        EclipsePathData = ask(EngineLines::QueryEclipseData);
        GlobeMap.SetEclipsePath(EclipsePathData);
    } else
        GlobeMap.SetEclipsePath(QString());
    GlobeMap.SetEclipsePathColor(ParseEclipseColor(ask(EngineLines::QueryEclipseColor)));
    GlobeMap.SetBesselElementApply(IsTrue(ask(EngineLines::QueryBesselApply)));
    GlobeMap.Redraw();
    GlobeMap.RepaintNow();
}

void CDlgObs::OnObsChkFeature()
{
    UpdateData();
    SetFeatureVisible();
    GlobeMap.Redraw();
    GlobeMap.RepaintNow();
}

void CDlgObs::SetFeatureVisible()
{
    // Eight flags whatever the map reports; a map with more layers finds zeros behind them.
    const int slots = std::clamp(GlobeMap.FeatureCount(), ObsSettings::LayerCount, 0xFFFF);
    std::vector<int> flags(static_cast<size_t>(slots), 0);
    std::copy(LayerFlags.begin(), LayerFlags.end(), flags.begin());
    GlobeMap.SetFeatureFlags(flags.data());
}

void CDlgObs::SaveReg()
{
    // Without a map the settings were never read: what is stored must stand.
    if (GlobeMap.IsCreated())
        ObsSettings::Save(RegistrySection(), LayerFlags, SliderPosition, Fields.AltitudeMode == 0);
}

void CDlgObs::OnObsBtnSetInit()
{
    if (MessageBox(InitialPlaceText(Fields), IPrompts::Icon::Information, IPrompts::Buttons::OkCancel) !=
        IPrompts::Answer::Ok)
        return;
    // As the fields stand: on the Earth, the only body where the button is enabled, the altitude is in metres.
    SaveDefault(SiteLocationFormat::JoinLongitude(Fields, BodyTable::Earth), SiteLocationFormat::JoinLatitude(Fields),
                Fields.AltitudeValue, SiteLocationFormat::JoinTimeZone(Fields));
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
    BodyIndex = BodyTable::Earth;
    SelectBody(BodyIndex);
    UpdateStatus();
    LastBodyIndex = BodyIndex;
    if (DateObs)
        DateObs->UpdateLocationObjectByUI(BodyIndex, 1);
    const ObsSettings::InitialPlace place = ObsSettings::ReadInitialPlace();
    tellEngine(EngineLines::Assign(place.LocationName, place.Location));
    AppliedTimeZone = Number::LeadingDouble(place.TimeZone);
    if (DateObs)
        DateObs->SetUserTz(AppliedTimeZone);
    tellEngine(EngineLines::AssignAndShow(place.TimeZoneName, place.TimeZone));
    if (DateObs)
        DateObs->UpdateDateDisp(TimeZoneChanged);
    UpdateTimeSys();
}

void CDlgObs::OnBnClickedObsBtnCmd()
{
    CDlgCommand console(&EmbeddedEngine, this);
    console.DoModal();
}

void CDlgObs::UpdateStatus()
{
    using namespace ObsId;
    const int body = SelectedBody();
    const bool isEarth = body == BodyTable::Earth;
    const bool isUserZone = DateObs && DateObs->GetTimeSys() == static_cast<int>(TimeSystem::Zone);
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
    enable({RadioAltAuto, RadioAltManual}, TerrainMissing == 0);
    enable({EditAlt, SpinAlt}, Fields.AltitudeMode != 0);
    SetItemText(LabelAltUnit, DateObs && DateObs->IsSmallObject(body) != 0 ? u"m"_s : u"km"_s);
}

void CDlgObs::UpdateTimeSys()
{
    if (!DateObs)
        return;
    double offset = 0.0;
    switch (static_cast<TimeSystem>(DateObs->GetTimeSys())) {
    case TimeSystem::Zone:
        offset = DateObs->GetUserTz();
        break;
    case TimeSystem::LocalMean:
        offset = DateObs->GetLMTTz(DateObs->GetLongitude());
        break;
    case TimeSystem::Universal:
        break;
    }
    SiteLocationFormat::SplitTimeZone(offset, Fields);
    ShowsOffset = DateObs->GetTimeSys() != static_cast<int>(TimeSystem::Zone);
    UpdateData(false);
    UpdateStatus();
}

void CDlgObs::SetKPDateObsToCorMap()
{
    if (!DateObs || !EmbeddedEngine.IsCreated())
        return;
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    DateObs->GetUT(&year, &month, &day, &hour, &minute, &second, 0);
    EmbeddedEngine.Command(EngineLines::UniversalTime(year, month, day, hour, minute, second));
}
