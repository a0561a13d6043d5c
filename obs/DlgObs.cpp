#include "obs/DlgObs.h"

#include "city/core/PlaceDocument.h"
#include "host/control/ControlNumbers.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/ThemedControls.h"
#include "host/dialog/WaitCursor.h"
#include "host/observer/BodyTable.h"
#include "host/observer/KPDateObs.h"
#include "host/system/CommonFile.h"
#include "obs/ControlIds.h"
#include "obs/core/EngineLines.h"
#include "res/StringTable.h"

#include <QLayout>
#include <QShowEvent>

using namespace Qt::StringLiterals;

namespace
{
constexpr int RoomForMap = 90; // pixels more than the map's least width, which makes it square
} // namespace

CDlgObs::CDlgObs(QWidget* parent, const QString& dataFolder, int dialogTag)
    : CKivDialog(ObsId::Template, StringTable::Load(StringTable::SectionObs), parent), DataFolder(dataFolder),
      DialogTag(dialogTag)
{
}

CDlgObs::~CDlgObs() = default;

CKivDialog::MessageMap CDlgObs::GetMessageMap()
{
    using namespace ObsId;
    MessageMap map{
        OnSelChange(ComboPlanet, &CDlgObs::OnSelchangePlanet), OnChange(EditLngDeg, &CDlgObs::OnChangeEdtLngDeg),
        OnChange(EditLngMin, &CDlgObs::OnChangeEdtLngMin),     OnChange(EditLngSec, &CDlgObs::OnChangeEdtLngSec),
        OnChange(EditLatDeg, &CDlgObs::OnChangeEdtLatDeg),     OnChange(EditLatMin, &CDlgObs::OnChangeEdtLatMin),
        OnChange(EditLatSec, &CDlgObs::OnChangeEdtLatSec),     OnChange(EditAlt, &CDlgObs::OnChangeEdtAlt),
        OnChange(EditTzHour, &CDlgObs::OnChangeEdtTzHour),     OnChange(EditTzMin, &CDlgObs::OnChangeEdtTzMin),
        OnDeltaPos(SpinLngDeg, &CDlgObs::OnDeltaposSpnLngDeg), OnDeltaPos(SpinLngMin, &CDlgObs::OnDeltaposSpnLngMin),
        OnDeltaPos(SpinLngSec, &CDlgObs::OnDeltaposSpnLngSec), OnDeltaPos(SpinLatDeg, &CDlgObs::OnDeltaposSpnLatDeg),
        OnDeltaPos(SpinLatMin, &CDlgObs::OnDeltaposSpnLatMin), OnDeltaPos(SpinLatSec, &CDlgObs::OnDeltaposSpnLatSec),
        OnDeltaPos(SpinAlt, &CDlgObs::OnDeltaposSpnAlt),       OnDeltaPos(SpinTzHour, &CDlgObs::OnDeltaposSpnTzHour),
        OnDeltaPos(SpinTzMin, &CDlgObs::OnDeltaposSpnTzMin),   OnClicked(RadioEast, &CDlgObs::OnRdHemisphere),
        OnClicked(RadioWest, &CDlgObs::OnRdHemisphere),        OnClicked(RadioNorth, &CDlgObs::OnRdHemisphere),
        OnClicked(RadioSouth, &CDlgObs::OnRdHemisphere),       OnClicked(RadioTzPlus, &CDlgObs::OnRdTzSign),
        OnClicked(RadioTzMinus, &CDlgObs::OnRdTzSign),         OnClicked(RadioAltAuto, &CDlgObs::OnRdAltAuto),
        OnClicked(RadioAltManual, &CDlgObs::OnRdAltManual),    OnScroll(SliderMagnification, &CDlgObs::OnVScroll),
        OnClicked(ButtonSetInit, &CDlgObs::OnObsBtnSetInit),   OnClicked(ButtonReset, &CDlgObs::OnBnClickedObsBtnReset),
        OnClicked(ButtonCity, &CDlgObs::OnObsBtnCity),         OnClicked(ButtonCommand, &CDlgObs::OnBnClickedObsBtnCmd),
    };
    for (int layer = 0; layer < ObsSettings::LayerCount; ++layer)
        map.push_back(OnClicked(CheckFeatureFirst + layer, &CDlgObs::OnObsChkFeature));
    return map;
}

CKivDialog::EventSinkMap CDlgObs::GetEventSinkMap()
{
    return {
        {ObsId::EmbeddedEngine, ControlNumber::Engine::EventMouseUp, [this](const QVariantList&) { OnMapMouseUp(); }},
        {ObsId::EmbeddedEngine, ControlNumber::Engine::EventTouch, [this](const QVariantList& a) { OnTouch(a); }},
        {ObsId::GlobeMap, ControlNumber::GlobeMap::EventObsPosition,
         [this](const QVariantList& a) { OnSetObsPosition(a.value(0).toDouble(), a.value(1).toDouble()); }},
        {ObsId::GlobeMap, ControlNumber::GlobeMap::EventMagnification,
         [this](const QVariantList& a) { OnSetMag(a.value(0).toDouble()); }},
    };
}

void CDlgObs::DoDataExchange(CDataExchange* exchange)
{
    using namespace ObsId;
    constexpr int width = 0;
    constexpr int maxChars = 7;
    CKivDialog::DoDataExchange(exchange);
    DDX_Radio(exchange, RadioEast, Fields.LongitudeHemisphere);
    DDX_Radio(exchange, RadioNorth, Fields.LatitudeHemisphere);
    DDX_Radio(exchange, RadioTzPlus, Fields.TimeZoneSign);
    DDX_Radio(exchange, RadioAltAuto, Fields.AltitudeMode);
    DDX_Int(exchange, EditLngDeg, Fields.LongitudeDegrees, width, maxChars);
    DDX_Int(exchange, EditLngMin, Fields.LongitudeMinutes, width, maxChars);
    DDX_Int(exchange, EditLatDeg, Fields.LatitudeDegrees, width, maxChars);
    DDX_Int(exchange, EditLatMin, Fields.LatitudeMinutes, width, maxChars);
    DDX_Int(exchange, EditTzHour, Fields.TimeZoneHours, width, maxChars);
    DDX_Int(exchange, EditTzMin, Fields.TimeZoneMinutes, width, maxChars);
    DDX_DoubleFmt(exchange, EditLngSec, Fields.LongitudeSeconds, "%.1f", maxChars);
    DDX_DoubleFmt(exchange, EditLatSec, Fields.LatitudeSeconds, "%.1f", maxChars);
    DDX_DoubleFmt(exchange, EditAlt, Fields.AltitudeValue, "%.0f", maxChars);
    for (size_t layer = 0; layer < LayerFlags.size(); ++layer)
        DDX_Check(exchange, CheckFeatureFirst + static_cast<int>(layer), LayerFlags[layer]);
}

bool CDlgObs::OnInitDialog()
{
    CKivDialog::OnInitDialog();
    // The template names the ends the other way round.
    SetItemText(ObsId::LabelSliderTop, u"詳細"_s);
    SetItemText(ObsId::LabelSliderBottom, u"広域"_s);
    return true;
}

int CDlgObs::Create(CCorKiv* hostEngine)
{
    const CWaitCursor wait;
    if (!CKivDialog::Create(hostEngine))
        return 0;
    AttachControls();
    SetUpSlider();
    resize(sizeHint() + QSize(RoomForMap, 0));
    PlaceMaps();
    if (!CreateEmbeddedEngine())
        return 0;
    if (!CreateGlobeMap())
        return 0;
    SetUpLandmarks();
    LayerFlags = ObsSettings::ReadLayers(RegistrySection());
    SetFeatureVisible();
    SliderPosition = Magnification::ClampSlider(ObsSettings::ReadViewAngle(RegistrySection()));
    MoveSlider();
    UpdateViewAngle();
    Init();
    return 1;
}

void CDlgObs::AttachControls()
{
    constexpr quint32 light = 0xC4C4C4;
    constexpr quint32 grey = 0x6B6B6B;
    for (const int id : {ObsId::ButtonCity, ObsId::ButtonSetInit, ObsId::ButtonReset}) {
        if (auto* button = Item<CKivButton>(id))
            button->SetColors(light, grey, light);
    }
    MagnificationSlider = Item<CKivSlider>(ObsId::SliderMagnification);
}

void CDlgObs::SetUpSlider()
{
    if (!MagnificationSlider)
        return;
    WithoutNotices([this] { MagnificationSlider->setRange(0, Magnification::SliderMax); });
    MagnificationSlider->setTickInterval(Magnification::TickStep);
    MoveSlider();
}

/// Both maps follow the place that the template keeps for them.
void CDlgObs::PlaceMaps()
{
    const QWidget* placeholder = Item(ObsId::MapPlaceholder);
    if (!placeholder)
        return;
    for (QWidget* widget : {static_cast<QWidget*>(this), placeholder->parentWidget()}) {
        if (!isVisible() && widget->layout())
            widget->layout()->activate(); // before the first showing nothing has its size yet
    }
    MapRect = QRect(placeholder->mapTo(this, QPoint()), placeholder->size());
    EmbeddedEngine.setGeometry(MapRect);
    GlobeMap.setGeometry(MapRect);
}

bool CDlgObs::CreateEmbeddedEngine()
{
    EmbeddedEngine.SetVariant(ObsSettings::ReadEngineVariant());
    if (!EmbeddedEngine.Create(EmbeddedEngine.Variant(), this, MapRect, ObsId::EmbeddedEngine)) {
        MessageBox(u"Can't create map control"_s);
        return false;
    }
    ConnectEvents(EmbeddedEngine);
    EmbeddedEngine.SetActive(true);
    const QString indexFile = LandscapeIndexFile.isEmpty() ? QString() : CCommonFile::GetShortPath(LandscapeIndexFile);
    for (const QString& line : EngineLines::SetUp(indexFile))
        EmbeddedEngine.Command(line);
    return true;
}

bool CDlgObs::CreateGlobeMap()
{
    if (!GlobeMap.Create(this, MapRect, ObsId::GlobeMap)) {
        MessageBox(u"Can't create corkivmap control"_s);
        return false;
    }
    ConnectEvents(GlobeMap);
    // The eye goes from the map over its slider to the fields.
    setTabOrder(EmbeddedEngine.Control()->Window(), GlobeMap.Control()->Window());
    setTabOrder(GlobeMap.Control()->Window(), MagnificationSlider);
    if (QWidget* planet = Item(ObsId::ComboPlanet))
        planet->setFocus();
    using namespace ControlNumber::GlobeMap;
    for (const int display : {Switch29, Switch18, Switch12})
        GlobeMap.SetSwitch(display, true);
    return true;
}

void CDlgObs::SetUpLandmarks()
{
    const CPlacePaths paths = CPlacePaths::InFolder(DataFolder);
    QString listPath = paths.UserListFilePath;
    bool exists = CCommonFile::DoesFileExist(listPath);
    if (!exists) {
        listPath = CCommonFile::GetModulePath() + QString::fromUtf16(CPlacePaths::ListName);
        exists = CCommonFile::DoesFileExist(listPath);
    }
    if (CCommonFile::IsFileNewerThan(paths.ListFilePath, paths.UserListFilePath))
        RefreshUserList();
    GlobeMap.SetLandmarkFile(listPath);
    GlobeMap.SetLandmarkFileExists(exists);
}

/// Writes the user list anew from a newer shipped list and the user's changes, without showing anything.
void CDlgObs::RefreshUserList()
{
    CPlaceDocument list;
    list.SetPaths(CPlacePaths::InFolder(DataFolder));
    list.SetProgress(HostWindow::SendListProgress);
    bool isLoaded = false;
    Guarded([&list, &isLoaded] {
        list.LoadCityList();
        isLoaded = true;
        list.LoadLocationTreeContext();
        list.RefreshUserObs();
    });
    if (!isLoaded) // the load broke off before its own report of the end
        HostWindow::SendListProgress(CPlaceList::PhaseEnd, 0);
}

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
    if (!IsWindow() || !DateObs)
        return;
    BodyIndex = BodyTable::Valid(DateObs->GetBody());
    if (first != 0 || LastBodyIndex != BodyIndex)
        SelectBody(BodyIndex);
    LastBodyIndex = BodyIndex;
    ShowMapOfBody();

    const double longitude = SiteLocationFormat::PositiveLongitude(DateObs->GetLongitude());
    const double latitude = DateObs->GetLatitude();
    double height = DateObs->GetHeight();
    const double timeZone = DateObs->GetUserTz();
    if (BodyIndex == BodyTable::Earth) {
        GlobeMap.SetCenter(longitude, latitude);
        GlobeMap.SetObsPosition(longitude, latitude);
        GlobeMap.Redraw();
        GlobeMap.RepaintNow();
    }
    EmbeddedEngine.Command(EngineLines::PlaceOnBody(BodyIndex, longitude, latitude, height));
    SetCenterOfProjection(longitude, latitude);
    ReadAltitudeMode(first, height);
    UpdateItem(ObsId::RadioAltAuto, false);
    // Another body has other hemispheres and units, even where the numbers are the same.
    const bool isOtherBody = FilledBodyIndex != BodyIndex;
    FilledBodyIndex = BodyIndex;
    SetValue(longitude, latitude, height, timeZone, first != 0 || isOtherBody ? 1 : 0);
    UpdateStatus();
}

/// The Earth is drawn by the globe map, every other body by the embedded engine.
void CDlgObs::ShowMapOfBody()
{
    const bool isEarth = BodyIndex == BodyTable::Earth;
    if (isEarth)
        GlobeMap.Redraw();
    CControlWindow& shown = isEarth ? static_cast<CControlWindow&>(GlobeMap) : EmbeddedEngine;
    CControlWindow& hidden = isEarth ? static_cast<CControlWindow&>(EmbeddedEngine) : GlobeMap;
    if (shown.isHidden() && shown.IsCreated())
        shown.show();
    hidden.hide();
}

/// Finds out whether the altitude is automatic; a refill then takes the height from the terrain.
void CDlgObs::ReadAltitudeMode(int first, double& height)
{
    const QString autoGet = QString::fromUtf16(EngineLines::AutoGetAltitude);
    if (first == 0) {
        Fields.AltitudeMode = IsIt(autoGet, u"TRUE"_s) ? 0 : 1;
        if (Fields.AltitudeMode == 0) {
            height = Query(EngineLines::QueryAltitude);
            if (HostEngine())
                HostEngine()->Command(EngineLines::SetAltitudeAndShow(height));
        }
    } else if (LandscapeIndexFile.isEmpty()) {
        DoitBool(autoGet, 0);
        Fields.AltitudeMode = 1;
    } else {
        const bool isAutomatic = ObsSettings::ReadAutoAltitude(RegistrySection());
        DoitBool(autoGet, isAutomatic ? 1 : 0);
        Fields.AltitudeMode = isAutomatic ? 0 : 1;
    }
}

int CDlgObs::DoModeless(CCorKiv* hostEngine, const QString& terrainIndexPath)
{
    SetHostEngine(hostEngine);
    if (!terrainIndexPath.isEmpty())
        LandscapeIndexFile = terrainIndexPath;
    if (!IsWindow())
        Create(hostEngine);
    else {
        SetHostEngine(hostEngine);
        Init();
    }
    if (!IsWindow())
        return 1; // an empty frame would be no use to anyone
    showNormal();
    raise();
    activateWindow();
    SetKPDateObsToCorMap();
    return 1;
}

void CDlgObs::Show(int show)
{
    if (show == 0) {
        hide();
        return;
    }
    if (!IsWindow())
        return;
    Init();
    QDialog::show();
}

void CDlgObs::OnOK()
{
    CloseAndSave();
}

void CDlgObs::OnCancel()
{
    CloseAndSave();
}

void CDlgObs::CloseAndSave()
{
    SaveReg();
    NotifyHost();
    CKivDialog::OnOK();
}

void CDlgObs::OnClose()
{
    NotifyHost();
    CKivDialog::OnClose();
}

void CDlgObs::NotifyHost()
{
    HostWindow::Send(HostWindow::Main(), HostWindow::MessageObsClosed);
    HostWindow::Post(parentWidget(), HostWindow::MessageDialogClosed, 0, TemplateNumber());
}

void CDlgObs::resizeEvent(QResizeEvent* event)
{
    CKivDialog::resizeEvent(event);
    PlaceMaps();
}

void CDlgObs::showEvent(QShowEvent* event)
{
    CKivDialog::showEvent(event);
    PlaceMaps();
}
