#include "planetarium/Screenshots.h"

#include "host/dialog/CommandIds.h"
#include "host/dialog/DlgCommand.h"
#include "host/dialog/Help.h"
#include "obs/ControlIds.h"
#include "obs/core/BodyTable.h"
#include "planetarium/MainWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QSaveFile>
#include <QSlider>
#include <QTextBrowser>
#include <QTextStream>
#include <QTimer>

#include <functional>

using namespace Qt::StringLiterals;

namespace
{
constexpr int SettleMilliseconds = 150;

/// Lets the windows lay themselves out and paint.
void Settle()
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < SettleMilliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

class CCamera
{
public:
    explicit CCamera(const QString& folder) : m_folder(folder) {}

    void Shoot(QWidget& window, const QString& name)
    {
        Settle();
        Note(name, window.grab().save(m_folder.filePath(name)));
    }

    void Write(const QString& name, const QString& text)
    {
        QSaveFile file(m_folder.filePath(name));
        const bool isOpen = file.open(QIODevice::WriteOnly);
        if (isOpen)
            file.write(text.toUtf8() + '\n');
        Note(name, isOpen && file.commit());
    }

    [[nodiscard]] bool AllWritten() const { return m_allWritten; }

private:
    void Note(const QString& name, bool written)
    {
        QTextStream(stdout) << (written ? "wrote " : "cannot write ") << m_folder.filePath(name) << '\n';
        m_allWritten = m_allWritten && written;
    }

    QDir m_folder;
    bool m_allWritten = true;
};

void Click(QWidget& widget, const QPointF& at)
{
    const QPointF global = widget.mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &release);
}

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
    Click(target, QPointF(target.width() * (0.5 + right), target.height() * (0.5 + down)));
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

/// Takes the picture of the next message box and presses its first button, from inside the box's own loop.
void AnswerNextBox(CCamera& camera, const QString& picture)
{
    QTimer::singleShot(0, qApp, [&camera, picture] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        camera.Shoot(*box, picture);
        box->defaultButton()->click();
    });
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

/// What the engines and the map are told while the action runs.
void Record(CCamera& camera, CMainWindow& window, const QString& name, const std::function<void()>& action)
{
    window.ClearLog();
    action();
    Settle();
    camera.Write(u"transcript-"_s + name + u".txt"_s, window.LogText());
}

void ShootEarth(CCamera& camera, CMainWindow& window)
{
    CHost& host = window.Host();
    CDlgObs& dialog = host.SiteDialog();
    Record(camera, window, u"opening"_s, [&host] { host.OpenSiteDialog(); });
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
    Record(camera, window, u"click"_s, [&dialog] {
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
    Record(camera, window, u"typed-degree"_s, [&dialog] { Type(dialog, ObsId::EditLngDeg, u"9"_s); });
    Record(camera, window, u"corrected-degree"_s, [&] {
        AnswerNextBox(camera, u"box-latitude.png"_s);
        Type(dialog, ObsId::EditLatDeg, u"91"_s);
    });
    Record(camera, window, u"hemisphere"_s, [&dialog] { Press(dialog, ObsId::RadioSouth); });
    Record(camera, window, u"zone-minus"_s, [&dialog] { Press(dialog, ObsId::RadioTzMinus); });
    Record(camera, window, u"reset"_s, [&dialog] { Press(dialog, ObsId::ButtonReset); });
    AnswerNextBox(camera, u"box-initial-place.png"_s);
    Press(dialog, ObsId::ButtonSetInit);
}

/// The user guide as the dialog's help button opens it.
void ShootGuide(CCamera& camera, CDlgObs& dialog)
{
    Help::Show(&dialog, dialog.TemplateNumber());
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* guide = qobject_cast<QTextBrowser*>(window)) {
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
    ShootBodies(camera, window.Host());
    window.Host().SiteDialog().Show(0);
    ShootConsole(camera, window);
    return camera.AllWritten();
}
