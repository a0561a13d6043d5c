#include "roadmap/DlgMapple.h"

#include "host/control/ControlArguments.h"
#include "host/control/ControlNumbers.h"
#include "host/dialog/HeldKey.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/ThemedControls.h"
#include "host/dialog/WaitCursor.h"
#include "host/observer/KPDateObs.h"
#include "host/system/CommonFile.h"
#include "host/system/CurrentDirectory.h"
#include "res/StringTable.h"
#include "roadmap/ControlIds.h"
#include "roadmap/DlgMappleFind.h"
#include "roadmap/core/MappleDataCheck.h"
#include "roadmap/core/RoadMapSettings.h"

#include <QKeyEvent>
#include <QLayout>
#include <QPointer>
#include <QResizeEvent>
#include <QScopeGuard>
#include <QThread>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{
SitePosition ObserversSite(const CKPDateObs& observer)
{
    return {observer.GetLongitude(CKPDateObs::Earth), observer.GetLatitude(CKPDateObs::Earth)};
}

/// The status of a search's end; an end without one counts as cancelled.
long Status(const QVariantList& arguments)
{
    constexpr long cancelled = -1;
    const auto number = ControlArguments::FiniteNumber(arguments.value(0));
    return number && std::trunc(*number) == *number && std::fabs(*number) <= std::numeric_limits<qint32>::max()
               ? static_cast<long>(*number)
               : cancelled;
}
} // namespace

CDlgMapple::CDlgMapple(QWidget* parent)
    : CKivDialog(MappleId::Template, StringTable::Load(StringTable::SectionMapple), parent)
{
}

CDlgMapple::~CDlgMapple()
{
    DestroyWindow();
    DeleteMappleAndFind();
}

CKivDialog::MessageMap CDlgMapple::GetMessageMap()
{
    using namespace MappleId;
    return {
        OnEndScroll(SliderZoom, &CDlgMapple::OnVScroll),
        OnClicked(ButtonCenter, &CDlgMapple::OnBnClickedCenter),
        OnClicked(ButtonFind, &CDlgMapple::OnBnClickedFind),
        OnClicked(ButtonRead, &CDlgMapple::OnBnClickedRead),
    };
}

CKivDialog::EventSinkMap CDlgMapple::GetEventSinkMap()
{
    using namespace ControlNumber::RoadMap;
    return {
        {MappleId::Map, EventMouseUp,
         [this](const QVariantList& a) {
             const auto latitude = ControlArguments::FiniteNumber(a.value(0));
             const auto longitude = ControlArguments::FiniteNumber(a.value(1));
             if (latitude && longitude)
                 OnMouseUpMap(*latitude, *longitude);
         }},
        {MappleId::Map, EventLandMarkEnd, [this](const QVariantList& a) { OnFindLandMarkResult(Status(a)); }},
        {MappleId::Map, EventAddressKeyEnd, [this](const QVariantList& a) { OnFindAddressKeyResult(Status(a)); }},
    };
}

int CDlgMapple::Create(CCorKiv* hostEngine)
{
    const CWaitCursor wait;
    if (!CKivDialog::Create(hostEngine))
        return 0;
    AttachControls();
    if (QWidget* read = Item(MappleId::ButtonRead))
        read->setVisible(ReadFile != 0);
    PlaceMap();
    const QPointer<CDlgMapple> self(this); // the host may end the dialog while a box says why there is no map
    const bool isSetUp = SetUp();
    if (self && !isSetUp)
        DestroyWindow();
    if (!self || !IsWindow())
        return 0;
    show();
    raise();
    activateWindow();
    return 1;
}

/// The part of the creation that runs in the module's folder, where the map finds what it is made of.
bool CDlgMapple::SetUp()
{
    CCurrentDirectory directory;
    directory.SwitchTo(CCommonFile::GetModulePath());
    if (CMappleDataCheck::CheckMappleDataInstalled() == 1 && !CreateMap())
        return false;
    // Asleep, not in an event loop: nothing may reach a dialog that is half made.
    QThread::msleep(static_cast<unsigned long>(RoadMapSettings::ReadCreateWait(RegistrySection())));
    if (MapCreated)
        CreateFind();
    else
        EnableItem(MappleId::ButtonFind, false);
    SetUpZoom();
    if (MapCreated) {
        MapCtrl.SetScale(ScaleTable::Denominator(ZoomIndex));
        PlaceMark();
    }
    return true;
}

void CDlgMapple::AttachControls()
{
    ZoomSlider = Item<CKivSlider>(MappleId::SliderZoom);
    CatchKeys();
}

/// The map fills what the other controls leave, with a margin like the one below the help button.
void CDlgMapple::PlaceMap()
{
    const QWidget* const help = Item(MappleId::ButtonHelp);
    QWidget* const site = Item(MappleId::TextSite);
    if (!help || !site || !ZoomSlider)
        return;
    // Room for the longest text, so that the window does not grow once there is one.
    site->setMinimumWidth(site->fontMetrics().horizontalAdvance(SiteText({-179.9999, -89.9999})));
    adjustSize();
    QWidget* const content = site->parentWidget()->parentWidget();
    for (QWidget* panel : {static_cast<QWidget*>(this), content, ZoomSlider->parentWidget(), site->parentWidget()}) {
        if (panel->layout())
            panel->layout()->activate(); // before the first showing nothing has its place yet
    }
    const auto corner = [this](const QWidget* item) { return item->mapTo(this, QPoint()); };
    const int margin = height() - (corner(help).y() + help->height());
    MapRect.setCoords(margin, margin, corner(ZoomSlider).x() - 2, corner(site).y() - margin - 1);
    CreatedSize = size();
}

bool CDlgMapple::CreateMap()
{
    const QWidget* const placeholder = Item(MappleId::MapPlaceholder);
    if (!placeholder || !MapCtrl.Create(placeholder->parentWidget(), MapRect, MappleId::Map)) {
        MapCreated = 0;
        MessageBox(u"Can't Create CorMpp"_s);
        return false;
    }
    MapCreated = 1;
    MapCtrl.setWindowTitle(u"Mapple"_s);
    MapCtrl.lower(); // under the other controls, which stay usable when it covers the whole window
    MapCtrl.show();
    ConnectEvents(MapCtrl);
    QWidget* const map = MapCtrl.Control()->Window();
    map->setAccessibleName(u"道路地図"_s);
    // Enter, which a map may take elsewhere, closes this window.
    map->setAccessibleDescription(u"矢印キーで地図を動かし、スペースキーで中央の地点を観測地にします。"
                                  u"Home キーで観測地を中央に戻します。"_s);
    setTabOrder(map, ZoomSlider); // as the eye goes
    map->setFocus();
    return true;
}

void CDlgMapple::CreateFind()
{
    FindDlg = std::make_unique<CDlgMappleFind>(*this);
    FindDlg->SetMapCtrl(&MapCtrl);
    FindCreated = FindDlg->Create(HostEngine());
}

void CDlgMapple::SetUpZoom()
{
    ZoomIndex = RoadMapSettings::ReadZoomIndex(RegistrySection());
    SetUpDone = true;
    if (!ZoomSlider)
        return;
    WithoutNotices([this] {
        ZoomSlider->setRange(0, ScaleTable::SliderMax);
        ZoomSlider->setTickInterval(ScaleTable::TickStep);
        ZoomSlider->setPageStep(ScaleTable::TickStep);
        ZoomSlider->setValue(ZoomIndex);
    });
}

std::optional<SitePosition> CDlgMapple::FindSite() const
{
    if (ObsData)
        return ObserversSite(*ObsData);
    return HostEngine() ? SitePosition::FromEngineAnswer(HostEngine()->Command(u"? Location"_s)) : std::nullopt;
}

void CDlgMapple::PlaceMark()
{
    const std::optional<SitePosition> site = FindSite();
    if (!site)
        return;
    UpdateSelectPosDisplay(site->Latitude, site->Longitude);
    MapCtrl.SetPosition(true, site->X(), site->Y());
    MapCtrl.CenterMark();
}

void CDlgMapple::UpdateSelectPosDisplay(double latitude, double longitude)
{
    SetItemText(MappleId::TextSite, SiteText({longitude, latitude}));
}

void CDlgMapple::UpdateSelectPosition()
{
    if (!IsWindow() || !ObsData)
        return;
    const SitePosition site = ObserversSite(*ObsData);
    UpdateSelectPosDisplay(site.Latitude, site.Longitude);
    MapCtrl.SetPosition(true, site.X(), site.Y());
}

void CDlgMapple::OnMouseUpMap(double latitude, double longitude)
{
    const SitePosition site{longitude, latitude};
    TakePickedSite(site, site.ClickLine());
}

long CDlgMapple::OnFindSelectPos(unsigned /*parameter*/, const double* position)
{
    if (position) {
        const SitePosition site = SitePosition::FromMilliseconds(position[0], position[1]);
        TakePickedSite(site, site.ResultLine());
    }
    return 0;
}

/// Shows the site and makes it the observer's. What is no place at all changes nothing.
void CDlgMapple::TakePickedSite(const SitePosition& site, const QString& engineLine)
{
    if (!IsWindow() || !site.IsFinite())
        return;
    UpdateSelectPosDisplay(site.Latitude, site.Longitude);
    // The host may close the dialog as soon as it hears of the change, or throw.
    const auto endOfPicking = qScopeGuard([self = QPointer<CDlgMapple>(this)] {
        if (self)
            self->Picking = false;
    });
    Picking = true;
    if (CKPDateObs* const observer = ObsData) {
        observer->UpdateLocationObjectByUI(CKPDateObs::Earth, 1);
        observer->UpdateObsByUI(site.Longitude, site.Latitude, CKPDateObs::AltitudeLeftToHost);
    } else if (HostEngine()) {
        HostEngine()->Command(engineLine);
    }
}

void CDlgMapple::OnFindLandMarkResult(long status)
{
    if (FindCreated)
        FindDlg->OnLandMarkResult(status);
}

void CDlgMapple::OnFindAddressKeyResult(long status)
{
    if (FindCreated)
        FindDlg->OnAddressKeyResult(status);
}

void CDlgMapple::OnVScroll()
{
    const CWaitCursor wait;
    ZoomIndex = ScaleTable::ClampIndex(ZoomSlider->value());
    MapCtrl.SetScale(ScaleTable::Denominator(ZoomIndex));
}

void CDlgMapple::OnBnClickedCenter()
{
    if (MapCreated)
        MapCtrl.CenterMark();
}

void CDlgMapple::OnBnClickedFind()
{
    if (!MapCreated || !FindCreated)
        return;
    FindDlg->setVisible(!FindDlg->isVisible());
    if (FindDlg->isVisible())
        FindDlg->activateWindow();
}

void CDlgMapple::OnBnClickedRead()
{
    if (!MapCreated)
        return;
    const QPointer<CDlgMapple> self(this); // the host may end the dialog while the user chooses
    const QString path = IPrompts::Current().OpenFile(this);
    if (self && !path.isEmpty())
        MapCtrl.OpenFile(path);
}

void CDlgMapple::OnOK()
{
    OnClose();
}

void CDlgMapple::OnCancel()
{
    OnClose();
}

void CDlgMapple::OnClose()
{
    DestroyWindow();
}

void CDlgMapple::OnDestroy()
{
    if (SetUpDone && ZoomSlider)
        RoadMapSettings::SaveZoom(RegistrySection(), ZoomSlider->value());
    SetUpDone = false;
    ZoomSlider = nullptr;
    DeleteMappleAndFind();
    CKivDialog::OnDestroy();
}

void CDlgMapple::DeleteMappleAndFind()
{
    FindCreated = 0;
    FindDlg.reset();
    MapCreated = 0;
    MapCtrl.DestroyControl();
}

bool CDlgMapple::PreTranslateMessage(QKeyEvent& key)
{
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        if (!IsHeldEndKey(key))
            OnClose(); // whatever control has the focus
        return true;
    default:
        return CKivDialog::PreTranslateMessage(key);
    }
}

bool CDlgMapple::event(QEvent* event)
{
    const auto* message = event->type() == CHostMessage::EventType() ? static_cast<CHostMessage*>(event) : nullptr;
    if (!message || message->Number != MappleId::MessageFindSelectPos)
        return CKivDialog::event(event);
    OnFindSelectPos(message->First.toUInt(), message->Second.value<double*>());
    return true;
}

void CDlgMapple::resizeEvent(QResizeEvent* event)
{
    CKivDialog::resizeEvent(event);
    // The first showing reports the size of the creation once more.
    if (MapCreated && (event->size() != CreatedSize || MapCtrl.geometry() != MapRect))
        MapCtrl.setGeometry(QRect(QPoint(), event->size()));
}

/// Not the themed base's: its wheel is the business of other dialogs.
void CDlgMapple::wheelEvent(QWheelEvent* event)
{
    QWidget::wheelEvent(event);
}
