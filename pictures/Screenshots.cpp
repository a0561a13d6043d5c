#include "pictures/Screenshots.h"

#include "host/control_window/CorKivMap.h"
#include "host/dialog/CommandIds.h"
#include "host/dialog/DlgCommand.h"
#include "host/observer/BodyTable.h"
#include "host/system/HostContext.h"
#include "obs/ControlIds.h"
#include "obs/core/ObsSettings.h"
#include "pictures/Camera.h"
#include "pictures/CityPictures.h"
#include "pictures/RoadMapPictures.h"
#include "planetarium/GuideWindow.h"
#include "planetarium/MainWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{
void SetSlider(const CDlgObs& dialog, int position)
{
    if (auto* slider = dialog.Item<QSlider>(ObsId::SliderMagnification))
        slider->setValue(position);
}

void ClickLayers(const CDlgObs& dialog, int first, int last)
{
    for (int layer = first; layer <= last; ++layer) {
        if (auto* box = dialog.Item<QAbstractButton>(ObsId::CheckFeatureFirst + layer))
            box->click();
    }
}

/// The middle of the control that a map window holds, moved by a share of its size.
void ClickMap(CControlWindow& map, double right, double down)
{
    QWidget& target = *map.Control()->Window();
    CCamera::Click(target, QPointF(target.width() * (0.5 + right), target.height() * (0.5 + down)));
}

/// Types over the text of a box, key by key, as a person does.
void Type(const CDlgObs& dialog, int id, const QString& text)
{
    auto* edit = dialog.Item<QLineEdit>(id);
    if (!edit)
        return;
    edit->setFocus();
    edit->selectAll();
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(edit, &press);
    }
}

void Press(const CDlgObs& dialog, int id)
{
    if (auto* button = dialog.Item<QAbstractButton>(id))
        button->click();
}

/// Answers the boxes that nobody waits for, so that a picture run never stands still.
void AnswerEveryBox(QTimer& timer)
{
    constexpr int patience = 2000; // milliseconds
    timer.callOnTimeout([seen = QPointer<QMessageBox>()]() mutable {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || seen != box) {
            seen = box; // its turn comes when it still stands there the next time
            return;
        }
        QTextStream(stdout) << "answered: " << box->text() << '\n';
        box->defaultButton()->click();
    });
    timer.start(patience);
}

void ShootEarth(CCamera& camera, CMainWindow& window)
{
    CHost& host = window.Host();
    CDlgObs& dialog = host.SiteDialog();
    camera.Record(window, u"opening"_s, [&host] { host.OpenSiteDialog(); });
    SetSlider(dialog, 200);
    camera.Shoot(window, u"planetarium.png"_s);
    camera.Shoot(dialog, u"site-earth-wide.png"_s);

    SetSlider(dialog, 64);
    camera.Shoot(dialog, u"site-earth-japan.png"_s);
    ClickLayers(dialog, 3, ObsSettings::LayerCount - 1);
    SetSlider(dialog, 48);
    camera.Shoot(dialog, u"site-earth-japan-layers.png"_s);
    ClickLayers(dialog, 3, ObsSettings::LayerCount - 1);

    SetSlider(dialog, 110);
    camera.Record(window, u"click"_s, [&dialog] {
        if (dialog.MapOfDialog().IsCreated())
            ClickMap(dialog.MapOfDialog(), -0.15, -0.12);
    });
    camera.Shoot(dialog, u"site-earth-clicked.png"_s);

    SetSlider(dialog, 130);
    host.MoveObserver(139.691772, 35.689236, 39.0);
    host.ShowEclipse(true);
    camera.Shoot(dialog, u"site-earth-eclipse.png"_s);
    host.ShowEclipse(false);
}

/// Entries that a person makes in the fields, and the boxes that answer them.
void RecordEntries(CCamera& camera, CMainWindow& window)
{
    CDlgObs& dialog = window.Host().SiteDialog();
    SetSlider(dialog, 150);
    camera.Record(window, u"typed-degree"_s, [&dialog] { Type(dialog, ObsId::EditLngDeg, u"9"_s); });
    camera.Record(window, u"corrected-degree"_s, [&] {
        camera.AnswerNextBox(u"box-latitude.png"_s);
        Type(dialog, ObsId::EditLatDeg, u"91"_s);
    });
    camera.Record(window, u"hemisphere"_s, [&dialog] { Press(dialog, ObsId::RadioSouth); });
    camera.Record(window, u"zone-minus"_s, [&dialog] { Press(dialog, ObsId::RadioTzMinus); });
    camera.Record(window, u"reset"_s, [&dialog] { Press(dialog, ObsId::ButtonReset); });
    camera.AnswerNextBox(u"box-initial-place.png"_s);
    Press(dialog, ObsId::ButtonSetInit);
}

/// The user guide as the dialog's help button opens it.
void ShootGuide(CCamera& camera, CDlgObs& dialog)
{
    CHostContext::Current().ShowHelp(&dialog, dialog.TemplateNumber());
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* guide = qobject_cast<CGuideWindow*>(window)) {
            camera.Shoot(*guide, u"guide.png"_s);
            guide->close();
        }
    }
}

void ShootBodies(CCamera& camera, CHost& host)
{
    struct Body
    {
        int Index;
        const char16_t* Picture;
    };
    SetSlider(host.SiteDialog(), 200);
    for (const Body& body : {Body{BodyTable::Moon, u"site-moon.png"}, Body{0, u"site-sun.png"},
                             Body{6, u"site-jupiter.png"}, Body{5, u"site-mars.png"}}) {
        host.SetBody(body.Index);
        camera.Shoot(host.SiteDialog(), QString::fromUtf16(body.Picture));
    }
    host.SetBody(BodyTable::Earth);
}

/// The command window with an answer of the engine; it is driven from inside its own modal loop.
void ShootConsole(CCamera& camera, CMainWindow& window)
{
    CDlgCommand console(&window.Host().Engine(), &window);
    QTimer::singleShot(0, &console, [&] {
        if (auto* command = console.Item<QComboBox>(CommandId::ComboCommand))
            command->setEditText(u"? Location"_s);
        console.accept();
        camera.Shoot(console, u"console.png"_s);
        console.reject();
    });
    console.DoModal();
}
} // namespace

bool CScreenshots::Take(CMainWindow& window, const QString& folder)
{
    if (!QDir().mkpath(folder))
        return false;
    CCamera camera(folder);
    QTimer boxes;
    AnswerEveryBox(boxes);
    window.Host().SetInstant(QDateTime(QDate(2026, 11, 22), QTime(3, 0), Qt::UTC));
    ShootEarth(camera, window);
    RecordEntries(camera, window);
    ShootGuide(camera, window.Host().SiteDialog());
    CityPictures::Take(camera, window);
    ShootBodies(camera, window.Host());
    window.Host().SiteDialog().Show(0);
    ShootConsole(camera, window);
    RoadMapPictures::Take(camera, window);
    return camera.AllWritten();
}
