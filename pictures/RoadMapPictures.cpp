#include "pictures/RoadMapPictures.h"

#include "host/system/HostContext.h"
#include "host/system/Registry.h"
#include "pictures/Camera.h"
#include "planetarium/MainWindow.h"
#include "roadmap/ControlIds.h"
#include "roadmap/DlgMappleFind.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLineEdit>
#include <QSlider>

using namespace Qt::StringLiterals;

namespace
{
void Press(const CKivDialog& dialog, int id)
{
    if (auto* button = dialog.Item<QAbstractButton>(id))
        button->click();
}

/// A point of the map, given as shares of its size from the upper left corner.
void ClickMap(CDlgMapple& dialog, double right, double down)
{
    if (!dialog.MapOfDialog().IsCreated())
        return;
    QWidget& map = *dialog.MapOfDialog().Control()->Window();
    CCamera::Click(map, QPointF(map.width() * right, map.height() * down));
}

void Zoom(const CDlgMapple& dialog, int position)
{
    if (auto* slider = dialog.Item<QSlider>(MappleId::SliderZoom))
        slider->setValue(position);
}

void Search(const CDlgMappleFind& find, int rule, const QString& text)
{
    Press(find, rule);
    if (auto* edit = find.Item<QLineEdit>(MappleFindId::EditSearchChar))
        edit->setText(text);
    Press(find, MappleFindId::ButtonSearch);
}

void ShootSearch(CCamera& camera, CMainWindow& window, CDlgMapple& dialog)
{
    Press(dialog, MappleId::ButtonFind);
    const CDlgMappleFind* const find = dialog.FindOfDialog();
    if (!find)
        return;
    auto& picture = *dialog.FindOfDialog();
    CCamera::Settle(); // it takes the focus
    camera.Record(window, u"road-map-search"_s, [&] { Search(*find, MappleFindId::RadioLandMark, u"天文台"_s); });
    camera.Shoot(picture, u"road-map-search-facility.png"_s);
    camera.Record(window, u"road-map-result"_s, [&] { Press(*find, MappleFindId::ButtonSetObs); });
    camera.Shoot(dialog, u"road-map-result.png"_s);
    Search(*find, MappleFindId::RadioAddressKey, u"三鷹"_s);
    camera.Shoot(picture, u"road-map-search-address.png"_s);
    Search(*find, MappleFindId::RadioLandMark, u"海底都市"_s);
    camera.AnswerNextBox(u"box-no-facility.png"_s); // the search ends, and its box comes up, from the event loop
    camera.Shoot(picture, u"road-map-search-none.png"_s);
    Press(dialog, MappleId::ButtonFind);
}

void ShootWithObserver(CCamera& camera, CMainWindow& window)
{
    constexpr int wide = 290;
    constexpr int town = 130;
    constexpr int firstZoom = 80;
    CHost& host = window.Host();
    host.MoveObserver(139.538, 35.675, 60.0);
    const auto setFirstZoom = [] {
        CRegistry::Write(u"Dialog\\Mapple"_s, u"ZoomAngle"_s, firstZoom, CRegistry::Count);
    };
    setFirstZoom();
    camera.Record(window, u"road-map-three-openings"_s, [&host] { // each one step wider than the one before
        for (int opening = 0; opening < 3; ++opening) {
            host.OpenRoadMap(true);
            host.CloseRoadMap();
        }
    });
    setFirstZoom();
    camera.Record(window, u"road-map-opening"_s, [&host] { host.OpenRoadMap(true); });
    CDlgMapple& dialog = *host.RoadMap();
    camera.Shoot(dialog, u"road-map.png"_s);
    Zoom(dialog, town);
    camera.Record(window, u"road-map-click"_s, [&dialog] { ClickMap(dialog, 0.6, 0.4); });
    camera.Shoot(dialog, u"road-map-clicked.png"_s);
    Zoom(dialog, wide);
    camera.Shoot(dialog, u"road-map-wide.png"_s);
    ShootSearch(camera, window, dialog);
    dialog.resize(dialog.size() + QSize(240, 120));
    camera.Shoot(dialog, u"road-map-resized.png"_s);
    camera.Record(window, u"road-map-closing"_s, [&dialog] { Press(dialog, MappleId::ButtonClose); });
}

void ShootAlone(CCamera& camera, CMainWindow& window)
{
    CHost& host = window.Host();
    camera.Record(window, u"road-map-opening-engine"_s, [&host] { host.OpenRoadMap(false); });
    CDlgMapple& dialog = *host.RoadMap();
    camera.Record(window, u"road-map-click-engine"_s, [&dialog] { ClickMap(dialog, 0.4, 0.6); });
    host.CloseRoadMap();
}

/// A machine on which the map's data are not installed; comes last.
void ShootWithoutData(CCamera& camera, QWidget& window)
{
    const CHostContext empty({u"/dev/null"_s, u"/dev/null"_s, QString()});
    CDlgMapple dialog(&window);
    dialog.Create(nullptr);
    camera.Shoot(dialog, u"road-map-no-data.png"_s);
}
} // namespace

void RoadMapPictures::Take(CCamera& camera, CMainWindow& window)
{
    CRegistry::Write(u"Dialog\\Mapple"_s, u"CreateWait"_s, 0, CRegistry::Count);
    if (!CHost::HasRoadMap())
        return;
    ShootWithObserver(camera, window);
    ShootAlone(camera, window);
    ShootWithoutData(camera, window);
}
