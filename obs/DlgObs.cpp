#include "obs/DlgObs.h"

#include "city/core/PlaceDocument.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/ThemedControls.h"
#include "host/dialog/WaitCursor.h"
#include "host/observer/BodyTable.h"
#include "host/observer/KPDateObs.h"
#include "host/system/CommonFile.h"
#include "obs/ControlIds.h"
#include "obs/SiteEntry.h"
#include "obs/SiteMaps.h"
#include "obs/core/EngineLines.h"
#include "obs/core/SiteModel.h"
#include "res/StringTable.h"

#include <QPaintEvent>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace
{
constexpr int RoomForMap = 90; // pixels more than the map's least width, which makes it square
} // namespace

CDlgObs::CDlgObs(QWidget* parent, const QString& dataFolder, int dialogTag)
    : CKivDialog(ObsId::Template, StringTable::Load(StringTable::SectionObs), parent),
      Model(std::make_unique<CSiteModel>(CSiteModel::Ports{
          [this](const QString& line) { return Maps->Engine().Command(line); }, [this] { UpdateData(false); }})),
      Maps(std::make_unique<CSiteMaps>(*this, *Model)),
      Entry(std::make_unique<CSiteEntry>(*this, *Model, [this] { UpdateStatus(); })), DataFolder(dataFolder),
      DialogTag(dialogTag)
{
}

CDlgObs::~CDlgObs() = default;

void CDlgObs::SetKPDateObs(CKPDateObs* dateObs)
{
    Model->DateObs = dateObs;
}

CCorKiv& CDlgObs::EngineOfDialog()
{
    return Maps->Engine();
}

CCorKivMap& CDlgObs::MapOfDialog()
{
    return Maps->Globe();
}

CKivDialog::MessageMap CDlgObs::GetMessageMap()
{
    using namespace ObsId;
    MessageMap map{
        OnSelChange(ComboPlanet, &CDlgObs::OnSelchangePlanet), OnClicked(ButtonSetInit, &CDlgObs::OnObsBtnSetInit),
        OnClicked(ButtonReset, &CDlgObs::OnBnClickedObsBtnReset), OnClicked(ButtonCity, &CDlgObs::OnObsBtnCity),
        OnClicked(ButtonCommand, &CDlgObs::OnBnClickedObsBtnCmd)};
    for (int layer = 0; layer < ObsSettings::LayerCount; ++layer)
        map.push_back(OnClicked(CheckFeatureFirst + layer, &CDlgObs::OnObsChkFeature));
    for (const MessageMap& part : {Entry->Messages(), Maps->Messages()})
        map.insert(map.end(), part.begin(), part.end());
    return map;
}

CKivDialog::EventSinkMap CDlgObs::GetEventSinkMap()
{
    return Maps->Events();
}

void CDlgObs::DoDataExchange(CDataExchange* exchange)
{
    CKivDialog::DoDataExchange(exchange);
    Entry->Exchange(exchange);
    for (size_t layer = 0; layer < LayerFlags.size(); ++layer)
        DDX_Check(exchange, ObsId::CheckFeatureFirst + static_cast<int>(layer), LayerFlags[layer]);
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
    resize(sizeHint() + QSize(RoomForMap, 0));
    Maps->Place();
    if (!Maps->CreateEmbeddedEngine() || !Maps->CreateGlobeMap()) {
        KeepStoredSettings();
        return 0;
    }
    if (QWidget* planet = Item(ObsId::ComboPlanet))
        planet->setFocus();
    SetUpLandmarks();
    LayerFlags = ObsSettings::ReadLayers(RegistrySection());
    SetFeatureVisible();
    Maps->SetSlider(ObsSettings::ReadViewAngle(RegistrySection()));
    Init();
    return 1;
}

/// Without a map nothing uses the stored settings; they are saved as they were when the window is closed.
void CDlgObs::KeepStoredSettings()
{
    LayerFlags = ObsSettings::ReadLayers(RegistrySection());
    Maps->KeepSlider(ObsSettings::ReadViewAngle(RegistrySection()));
    Model->Fields.AltitudeMode = ObsSettings::ReadAutoAltitude(RegistrySection()) ? 0 : 1;
    UpdateData(false);
}

void CDlgObs::AttachControls()
{
    constexpr quint32 light = 0xC4C4C4;
    constexpr quint32 grey = 0x6B6B6B;
    for (const int id : {ObsId::ButtonCity, ObsId::ButtonSetInit, ObsId::ButtonReset}) {
        if (auto* button = Item<CKivButton>(id))
            button->SetColors(light, grey, light);
    }
    Maps->AttachSlider();
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
    Maps->SetLandmarks(listPath, exists);
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

int CDlgObs::DoModeless(CCorKiv* hostEngine, const QString& terrainIndexPath)
{
    SetHostEngine(hostEngine);
    if (!terrainIndexPath.isEmpty())
        Model->LandscapeIndexFile = terrainIndexPath;
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
    CloseAndSave(true);
    CKivDialog::OnOK();
}

void CDlgObs::OnCancel()
{
    OnOK();
}

void CDlgObs::OnClose()
{
    CloseAndSave(false);
    CKivDialog::OnClose();
}

/// Notifies the host that the dialog closes, after saving its settings or without.
void CDlgObs::CloseAndSave(bool saves)
{
    if (saves)
        SaveReg();
    HostWindow::Send(HostWindow::Main(), HostWindow::MessageObsClosed);
    HostWindow::Post(parentWidget(), HostWindow::MessageDialogClosed, 0, TemplateNumber());
}

void CDlgObs::paintEvent(QPaintEvent* event)
{
    CKivDialog::paintEvent(event);
    Maps->OnPaint(event->rect());
}

void CDlgObs::wheelEvent(QWheelEvent* event)
{
    Maps->OnWheel(*event);
    CKivDialog::wheelEvent(event);
}

void CDlgObs::resizeEvent(QResizeEvent* event)
{
    CKivDialog::resizeEvent(event);
    Maps->Place();
}

void CDlgObs::showEvent(QShowEvent* event)
{
    CKivDialog::showEvent(event);
    Maps->Place();
}
