// The menu: every call that the module offers, and the changes that come from outside it.

#include "host/dialog/DlgCommand.h"
#include "host/dialog/Help.h"
#include "obs/core/BodyTable.h"
#include "planetarium/MainWindow.h"

#include <QActionGroup>
#include <QDateTimeEdit>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTimeZone>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
struct Place
{
    const char16_t* Name;
    double Longitude;
    double Latitude;
    double Altitude;
};

constexpr std::array Places{
    Place{u"札幌", 141.354389, 43.062083, 17.0},          Place{u"石垣島", 124.155833, 24.340556, 7.0},
    Place{u"マウナケア", -155.474722, 19.826111, 4139.0}, Place{u"ニューヨーク", -74.006000, 40.712806, 10.0},
    Place{u"シドニー", 151.209900, -33.865143, 58.0},     Place{u"南極点", 0.0, -90.0, 2835.0},
};

constexpr qint64 SecondsPerHour = 3600;
} // namespace

void CMainWindow::BuildMenus()
{
    QMenu* file = menuBar()->addMenu(u"ファイル(&F)"_s);
    file->addAction(u"記録を消す(&C)"_s, this, &CMainWindow::ClearLog);
    file->addSeparator();
    file->addAction(u"終了(&X)"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), this, &QWidget::close);
    BuildSiteMenu();
    BuildRoadMapMenu();
    BuildTimeMenu();
    BuildEclipseMenu();
    QMenu* help = menuBar()->addMenu(u"ヘルプ(&H)"_s);
    help->addAction(u"使い方(&G)"_s, QKeySequence(Qt::Key_F1), this, [this] { Help::Show(this, 0); });
}

void CMainWindow::BuildSiteMenu()
{
    QMenu* site = menuBar()->addMenu(u"場所(&O)"_s);
    site->addAction(u"場所を開く(&O)..."_s, QKeySequence(Qt::CTRL | Qt::Key_L), this,
                    [this] { m_host->OpenSiteDialog(); });
    site->addAction(u"もう一度表示(&S)"_s, this, [this] {
        if (m_host->SiteDialog().IsWindow())
            m_host->SiteDialog().Show(1);
    });
    site->addAction(u"隠す(&H)"_s, this, [this] { m_host->SiteDialog().Show(0); });
    site->addAction(u"観測者から読み直す(&I)"_s, this, [this] { m_host->SiteDialog().InitLocation(0); });
    site->addAction(u"エンジンを渡し直す(&E)"_s, this, [this] { m_host->HandOverEngine(); });
    site->addAction(u"エンジンに命令する(&C)..."_s, this, &CMainWindow::OpenConsole);
    site->addSeparator();
    QMenu* outside = site->addMenu(u"外から移す(&M)"_s);
    for (const Place& place : Places) {
        outside->addAction(QString::fromUtf16(place.Name), this,
                           [this, &place] { m_host->MoveObserver(place.Longitude, place.Latitude, place.Altitude); });
    }
    QMenu* bodies = site->addMenu(u"天体(&B)"_s);
    for (int body = 0; body < BodyTable::Count; ++body)
        bodies->addAction(BodyTable::Label(body), this, [this, body] { m_host->SetBody(body); });
}

/// Offers the road map while it is installed, which may change while the program runs.
void CMainWindow::BuildRoadMapMenu()
{
    QMenu* maps = menuBar()->addMenu(u"地図(&M)"_s);
    const auto add = [this, maps](const QString& name, bool withObserver) {
        return maps->addAction(name, this, [this, withObserver] { m_host->OpenRoadMap(withObserver); });
    };
    QAction* shared = add(u"スーパーマップル・デジタル(&M)..."_s, true);
    shared->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    QAction* alone = add(u"エンジンだけで開く(&E)..."_s, false);
    const auto offer = [shared, alone] {
        for (QAction* action : {shared, alone})
            action->setEnabled(CHost::HasRoadMap());
    };
    connect(maps, &QMenu::aboutToShow, this, offer);
    offer();
}

void CMainWindow::BuildTimeMenu()
{
    QMenu* time = menuBar()->addMenu(u"時刻(&T)"_s);
    time->addAction(u"日時を変える(&D)..."_s, this, &CMainWindow::AskInstant);
    const auto addStep = [this, time](const QString& name, qint64 seconds) {
        time->addAction(name, this,
                        [this, seconds] { m_host->SetInstant(m_host->Observer().GetInstant().addSecs(seconds)); });
    };
    addStep(u"1時間進める(&N)"_s, SecondsPerHour);
    addStep(u"1時間戻す(&P)"_s, -SecondsPerHour);
    time->addAction(u"現在(&C)"_s, this, [this] { m_host->SetInstant(QDateTime::currentDateTimeUtc()); });
    time->addSeparator();
    auto* systems = new QActionGroup(this);
    const auto addSystem = [this, time, systems](const QString& name, TimeSystem system) {
        QAction* action = time->addAction(name, this, [this, system] { m_host->SetTimeSystem(system); });
        action->setCheckable(true);
        action->setChecked(system == TimeSystem::Zone);
        systems->addAction(action);
    };
    addSystem(u"標準時(&Z)"_s, TimeSystem::Zone);
    addSystem(u"世界時(&U)"_s, TimeSystem::Universal);
    addSystem(u"地方平時(&L)"_s, TimeSystem::LocalMean);
}

void CMainWindow::BuildEclipseMenu()
{
    QMenu* eclipse = menuBar()->addMenu(u"日食(&E)"_s);
    const auto addSwitch = [this, eclipse](const QString& name, bool on, void (CHost::*set)(bool)) {
        QAction* action = eclipse->addAction(name);
        action->setCheckable(true);
        action->setChecked(on);
        connect(action, &QAction::toggled, this, [this, set](bool checked) { (m_host.get()->*set)(checked); });
    };
    addSwitch(u"2035年9月2日の経路を表示(&P)"_s, false, &CHost::ShowEclipse);
    addSwitch(u"ベッセル要素を適用(&B)"_s, true, &CHost::ApplyBesselElements);
}

void CMainWindow::OpenConsole()
{
    CDlgCommand console(&m_host->Engine(), this);
    console.DoModal();
}

void CMainWindow::AskInstant()
{
    QDialog dialog(this);
    dialog.setWindowTitle(u"日時を変える"_s);
    auto* layout = new QVBoxLayout(&dialog);
    auto* edit = new QDateTimeEdit(m_host->Observer().GetInstant(), &dialog);
    edit->setTimeSpec(Qt::UTC);
    edit->setDisplayFormat(u"yyyy-MM-dd HH:mm:ss"_s);
    auto* label = new QLabel(u"世界時(&U)："_s, &dialog);
    label->setBuddy(edit);
    auto* buttons = new QDialogButtonBox(&dialog);
    connect(buttons->addButton(u"OK"_s, QDialogButtonBox::AcceptRole), &QPushButton::clicked, &dialog,
            &QDialog::accept);
    connect(buttons->addButton(u"キャンセル"_s, QDialogButtonBox::RejectRole), &QPushButton::clicked, &dialog,
            &QDialog::reject);
    layout->addWidget(label);
    layout->addWidget(edit);
    layout->addWidget(buttons);
    if (dialog.exec() == QDialog::Accepted)
        m_host->SetInstant(edit->dateTime());
}
