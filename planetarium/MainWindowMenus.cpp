// The menus: the ways to the site, the sky's time and eclipse; for a developer also the calls that exercise the module.

#include "host/dialog/DlgCommand.h"
#include "host/observer/BodyTable.h"
#include "planetarium/MainWindow.h"
#include "planetarium/ObserverPanel.h"
#include "planetarium/SiteChoices.h"

#include <QActionGroup>
#include <QDateTimeEdit>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>
#include <cmath>
#include <utility>

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

void CMainWindow::BuildMenus(Audience audience)
{
    BuildFileMenu();
    BuildSiteMenu();
    BuildRoadMapMenu();
    BuildTimeMenu();
    BuildEclipseMenu();
    if (audience == Audience::Developer)
        BuildDeveloperMenu();
    QMenu* help = menuBar()->addMenu(u"ヘルプ(&H)"_s);
    help->addAction(u"使い方(&G)"_s, QKeySequence(Qt::Key_F1), this, [this] { m_context.ShowHelp(this, 0); });
    // The keys that the panel names also work while 場所, the road map or the guide is the active window.
    for (QAction* action : {m_site, m_city, m_roadMap, m_clock})
        action->setShortcutContext(Qt::ApplicationShortcut);
    m_choices->Add(m_site, u"座標や拡大地図で選びます。ほかの天体も選べます。"_s);
    m_choices->Add(m_city, u"地名の一覧から選びます。"_s);
    m_choices->Add(m_roadMap, u"日本の道路地図から選びます。"_s);
}

void CMainWindow::BuildFileMenu()
{
    QMenu* file = menuBar()->addMenu(u"ファイル(&F)"_s);
    file->addAction(u"コマンド入力(&C)..."_s, this, &CMainWindow::OpenConsole);
    file->addSeparator();
    file->addAction(u"終了(&X)"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), this, &QWidget::close)
        ->setShortcutContext(Qt::ApplicationShortcut);
}

void CMainWindow::BuildSiteMenu()
{
    QMenu* site = menuBar()->addMenu(u"場所(&O)"_s);
    m_site = site->addAction(u"場所を開く(&O)..."_s, QKeySequence(Qt::CTRL | Qt::Key_L), this,
                             [this] { m_host->OpenSiteDialog(); });
    m_city = site->addAction(u"都市名選択(&T)..."_s, QKeySequence(Qt::CTRL | Qt::Key_T), this,
                             [this] { m_host->OpenCityList(); });
    site->addAction(u"「場所」を隠す(&H)"_s, this, [this] { m_host->SiteDialog().Show(0); });
    site->addSeparator();
    BuildBodyMenu(site->addMenu(u"天体(&B)"_s));
}

void CMainWindow::BuildBodyMenu(QMenu* bodies)
{
    auto* choice = new QActionGroup(this);
    for (int body = 0; body < BodyTable::Count; ++body) {
        QAction* action = bodies->addAction(BodyTable::Label(body), this, [this, body] { m_host->SetBody(body); });
        action->setCheckable(true);
        choice->addAction(action);
    }
    connect(bodies, &QMenu::aboutToShow, this,
            [this, choice] { choice->actions().at(m_host->Observer().GetBody())->setChecked(true); });
}

void CMainWindow::BuildRoadMapMenu()
{
    QMenu* maps = menuBar()->addMenu(u"地図(&M)"_s);
    maps->setToolTipsVisible(true);
    const auto add = [this, maps](const QString& name, bool withObserver) {
        return maps->addAction(name, this, [this, withObserver] { m_host->OpenRoadMap(withObserver); });
    };
    m_roadMap = add(u"スーパーマップル・デジタル(&M)..."_s, true);
    m_roadMap->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    m_roadMapAlone = add(u"観測者と連動せずに開く(&E)..."_s, false);
    connect(maps, &QMenu::aboutToShow, this, &CMainWindow::OfferWhatIsThere);
    OfferWhatIsThere();
}

/// Offers the road map while it is installed, which may change while the program runs.
void CMainWindow::OfferWhatIsThere()
{
    const bool hasRoadMap = CHost::HasRoadMap();
    for (QAction* action : {m_roadMap, m_roadMapAlone}) {
        const QString why =
            hasRoadMap
                ? QString()
                : u"道路地図がこのコンピューターに登録されていません。保存先のフォルダに書き込めることを確認して、起動し直してください。"_s;
        action->setStatusTip(why);
        action->setToolTip(why);
        action->setEnabled(hasRoadMap);
    }
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
    time->addAction(u"現在の時刻にする(&C)"_s, this, [this] { m_host->SetInstant(QDateTime::currentDateTimeUtc()); });
    m_clock =
        time->addAction(u"時計を進める(&R)"_s, QKeySequence(Qt::CTRL | Qt::Key_R), m_host.get(), &CHost::RunClock);
    m_clock->setCheckable(true);
    connect(m_host.get(), &CHost::ClockSwitched, m_clock, &QAction::setChecked);
    m_panel->SetClockSwitch(m_clock);
    time->addSeparator();
    auto* systems = new QActionGroup(this);
    for (const auto& [name, system] :
         {std::pair(u"標準時(&Z)"_s, TimeSystem::Zone), std::pair(u"世界時(&U)"_s, TimeSystem::Universal),
          std::pair(u"地方平時(&L)"_s, TimeSystem::LocalMean)}) {
        QAction* action = time->addAction(name, this, [this, system = system] { m_host->SetTimeSystem(system); });
        action->setCheckable(true);
        action->setChecked(m_host->Observer().GetTimeSys() == static_cast<int>(system));
        systems->addAction(action);
    }
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

void CMainWindow::BuildDeveloperMenu()
{
    QMenu* developer = menuBar()->addMenu(u"開発(&D)"_s);
    developer->addAction(u"「場所」をもう一度表示(&S)"_s, this, [this] {
        if (m_host->SiteDialog().IsWindow())
            m_host->SiteDialog().Show(1);
    });
    developer->addAction(u"「場所」を最新の観測地に合わせる(&I)"_s, this,
                         [this] { m_host->SiteDialog().InitLocation(0); });
    developer->addAction(u"エンジンを再設定（動作確認用）(&E)"_s, this, [this] { m_host->HandOverEngine(); });
    QMenu* places = developer->addMenu(u"観測地を移す(&M)"_s);
    for (const Place& place : Places) {
        places->addAction(QString::fromUtf16(place.Name), this,
                          [this, &place] { m_host->MoveObserver(place.Longitude, place.Latitude, place.Altitude); });
    }
    developer->addSeparator();
    developer->addAction(u"コマンドと応答の記録を消す(&C)"_s, this, &CMainWindow::ClearLog);
}

void CMainWindow::OpenConsole()
{
    CDlgCommand console(&m_host->Engine(), this);
    console.DoModal();
}

void CMainWindow::AskInstant()
{
    const CKPDateObs& observer = m_host->Observer();
    const auto offset = static_cast<int>(std::lround(observer.GetTz() * static_cast<double>(SecondsPerHour)));
    QDialog dialog(this);
    dialog.setWindowTitle(u"日時を変える"_s);
    auto* layout = new QVBoxLayout(&dialog);
    auto* edit = new QDateTimeEdit(&dialog);
    edit->setTimeSpec(Qt::UTC); // of a day without switches, whatever the machine's own zone
    edit->setDateTime(observer.GetInstant().addSecs(offset));
    edit->setDisplayFormat(u"yyyy年MM月dd日 HH:mm:ss"_s);
    auto* label = new QLabel(CObserverPanel::TimeSystemText(observer) + u"(&T)："_s, &dialog);
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
        m_host->SetInstant(edit->dateTime().addSecs(-offset));
}
