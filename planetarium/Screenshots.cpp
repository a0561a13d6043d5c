#include "planetarium/Screenshots.h"

#include "host/dialog/CommandIds.h"
#include "host/dialog/DlgCommand.h"
#include "obs/core/BodyTable.h"
#include "planetarium/MainWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QSaveFile>
#include <QSlider>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Slider = 7001; // numbers of the dialog's template
constexpr int FirstLayer = 7070;
constexpr int LayerCount = 8;
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
    if (auto* slider = dialog.Item<QSlider>(Slider))
        slider->setValue(position);
}

void ClickLayers(const CDlgObs& dialog, int first, int last)
{
    for (int layer = first; layer <= last; ++layer) {
        if (auto* box = dialog.Item<QAbstractButton>(FirstLayer + layer))
            box->click();
    }
}

/// The middle of the control that a map window holds, moved by a share of its size.
void ClickMap(CControlWindow& map, double right, double down)
{
    QWidget& target = *map.Control()->Window();
    Click(target, QPointF(target.width() * (0.5 + right), target.height() * (0.5 + down)));
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
    CHost& host = window.Host();
    CDlgObs& dialog = host.SiteDialog();

    host.SetInstant(QDateTime(QDate(2026, 11, 22), QTime(3, 0), Qt::UTC));
    window.ClearLog();
    host.OpenSiteDialog();
    SetSlider(dialog, 200);
    Settle();
    camera.Write(u"transcript-opening.txt"_s, window.LogText());
    camera.Shoot(window, u"planetarium.png"_s);
    camera.Shoot(dialog, u"site-earth-wide.png"_s);

    SetSlider(dialog, 64);
    camera.Shoot(dialog, u"site-earth-japan.png"_s);
    ClickLayers(dialog, 3, LayerCount - 1);
    SetSlider(dialog, 48);
    camera.Shoot(dialog, u"site-earth-japan-layers.png"_s);
    ClickLayers(dialog, 3, LayerCount - 1);

    SetSlider(dialog, 110);
    window.ClearLog();
    if (dialog.MapOfDialog().IsCreated())
        ClickMap(dialog.MapOfDialog(), -0.15, -0.12);
    camera.Shoot(dialog, u"site-earth-clicked.png"_s);
    camera.Write(u"transcript-click.txt"_s, window.LogText());

    SetSlider(dialog, 130);
    host.MoveObserver(139.691772, 35.689236, 39.0);
    host.ShowEclipse(true);
    camera.Shoot(dialog, u"site-earth-eclipse.png"_s);
    host.ShowEclipse(false);

    SetSlider(dialog, 200);
    const auto shootBody = [&](int body, const QString& name) {
        host.SetBody(body);
        camera.Shoot(dialog, name);
    };
    constexpr int sun = 0;
    constexpr int mars = 5;
    constexpr int jupiter = 6;
    shootBody(BodyTable::Moon, u"site-moon.png"_s);
    shootBody(mars, u"site-mars.png"_s);
    shootBody(jupiter, u"site-jupiter.png"_s);
    shootBody(sun, u"site-sun.png"_s);
    host.SetBody(BodyTable::Earth);
    dialog.Show(0);
    ShootConsole(camera, window);
    return camera.AllWritten();
}
