#include "planetarium/Host.h"

#include "host/control/ControlNumbers.h"
#include "host/control_window/CorKivMap.h"
#include "host/dialog/ScreenFit.h"
#include "host/observer/BodyTable.h"
#include "host/system/CommonFile.h"
#include "host/system/Registry.h"
#include "host/text/Number.h"
#include "obs/ControlIds.h"
#include "obs/core/EngineLines.h"
#include "obs/core/SiteLocation.h"
#include "planetarium/CallText.h"
#include "planetarium/EclipseData.h"
#include "planetarium/SavedState.h"
#include "planetarium/WindowMemory.h"

#include <QAbstractButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimeZone>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr int EngineId = 1;
constexpr int SaveDelay = 1000; // milliseconds; not at every key
} // namespace

CHost::CHost(QWidget* mainWindow, DataFolders folders)
    : m_folders(std::move(folders)), m_dialog(std::make_unique<CDlgObs>(mainWindow, m_folders.User, 0)),
      m_mainWindow(mainWindow)
{
    if (m_engine.Create(CCorKiv::DefaultVariant, mainWindow, QRect(), EngineId)) {
        m_engine.SetActive(true);
        m_engine.SetEventSink([this](int event, const QVariantList&) {
            if (event == ControlNumber::Engine::EventMouseUp)
                TakeOverEngineLocation();
        });
    }
    for (const QString& line : EngineLines::SetUp(CCommonFile::GetShortPath(m_folders.TerrainIndex)))
        TellEngine(line);
    TellEngine(u"Solar.Planet.Earth.SolarEclipse.Path.Visible = FALSE"_s);
    TellEngine(u"Solar.Planet.Earth.SolarEclipse.Path.Color = RGB(255, 150, 60)"_s);
    TellEngine(u"Solar.Planet.Earth.BesselElement.Apply = TRUE"_s);
    const QString path = LoadEclipsePath(m_folders.Shipped);
    if (!path.isEmpty())
        TellEngine(u"Solar.Planet.Earth.SolarEclipse.Path.Data = \""_s + path + u'"');

    PlaceOnOtherBodies();
    SavedState::RestoreObserver(m_observer);
    m_observer.SetListener([this](CKPDateObs::Change change) { OnObserverChange(change); });
    m_dialog->SetKPDateObs(&m_observer);
    LogControls();
    PlaceEngine();
    TellZone();
    OnObserverChange(CKPDateObs::Change::Time);
    m_clock.setSingleShot(true);
    m_clock.setTimerType(Qt::PreciseTimer);
    connect(&m_clock, &QTimer::timeout, this, &CHost::Tick);
    m_saveSoon.setSingleShot(true);
    m_saveSoon.setInterval(SaveDelay);
    connect(&m_saveSoon, &QTimer::timeout, this, &CHost::SaveState);
}

/// Where the observer stands on a body that is chosen for the first time.
void CHost::PlaceOnOtherBodies()
{
    constexpr int mars = 5;
    m_observer.UpdateLocationObjectByUI(BodyTable::Moon, 1);
    m_observer.UpdateObsByUI(23.473, 0.674, 0.0); // where people first landed
    m_observer.UpdateLocationObjectByUI(mars, 1);
    m_observer.UpdateObsByUI(222.56, -4.59, 0.0); // the crater Gale; longitude counted west
    m_observer.UpdateLocationObjectByUI(BodyTable::Earth, 1);
}

CHost::~CHost()
{
    m_observer.SetListener({});
}

void CHost::LogControls()
{
    connect(&m_engine, &CCorKiv::CommandSent, this, [this](const QString& line, const QString& answer) {
        Speak(u"空"_s, line, answer);
        if (m_own == 0 && answer.isEmpty()) // a line refused is answered with the reason
            OnEngineLine(line);
    });
    connect(&m_dialog->EngineOfDialog(), &CCorKiv::CommandSent, this,
            [this](const QString& line, const QString& answer) { Speak(u"場所"_s, line, answer); });
    connect(&m_dialog->MapOfDialog(), &CControlWindow::Invoked, this,
            [this](int method, const QVariantList& arguments, const QVariant& result) {
                Speak(u"地球"_s, CallText::GlobeMap(method, arguments), CallText::Answer(result));
            });
}

void CHost::Speak(const QString& who, const QString& line, const QString& answer)
{
    if (!m_isTick)
        Q_EMIT Spoken(who, line, answer);
}

void CHost::TellEngine(const QString& line)
{
    ++m_own;
    m_engine.Command(line);
    --m_own;
}

void CHost::PlaceEngine()
{
    const double longitude = SiteLocationFormat::PositiveLongitude(m_observer.GetLongitude());
    TellEngine(
        EngineLines::PlaceOnBody(m_observer.GetBody(), longitude, m_observer.GetLatitude(), m_observer.GetHeight()));
    TellEngine(EngineLines::CenterAt(longitude, m_observer.GetLatitude()));
}

void CHost::OnObserverChange(CKPDateObs::Change change)
{
    if (m_quiet)
        return;
    switch (change) {
    case CKPDateObs::Change::Location:
    case CKPDateObs::Change::Body:
        PlaceEngine();
        if (m_roadMap && m_roadMapHasObserver && m_roadMap->IsPicking() && !m_dialog->IsWindow())
            FindAltitude(); // the road map leaves it to the host, and no site dialog asks the terrain
        TellZone();
        RefillDialog();
        MoveRoadMap();
        m_saveSoon.start();
        break;
    case CKPDateObs::Change::Time:
        PassOnTime();
        break;
    case CKPDateObs::Change::DateDisplay:
        TellZone();
        ShowTimeSystem();
        m_saveSoon.start();
        break;
    }
    Q_EMIT ObserverChanged();
}

void CHost::PassOnTime()
{
    const QDateTime ut = m_observer.GetInstant();
    TellEngine(EngineLines::UniversalTime(ut.date().year(), ut.date().month(), ut.date().day(), ut.time().hour(),
                                          ut.time().minute(), ut.time().second()));
    if (!m_dialog->IsWindow())
        return;
    m_dialog->UpdateDate();
    if (std::exchange(m_eclipseDate, ut.date()) != ut.date()) // the path is a matter of the day
        m_dialog->RedrawEclipsePath();
}

void CHost::RunClock(bool run)
{
    if (run == m_isClockRunning)
        return;
    m_isClockRunning = run;
    if (run) {
        m_sinceTick.start();
        AwaitNextSecond();
    } else {
        Tick(); // what has passed of the second
        m_clock.stop();
    }
    Q_EMIT ClockSwitched(run);
}

/// The sky's time goes on by what has passed, however late the timer comes.
void CHost::Tick()
{
    const QScopedValueRollback silent(m_isTick, true); // once a second, it would bury all else in the log
    m_observer.SetUT(m_observer.GetInstant().addMSecs(m_sinceTick.restart()));
    AwaitNextSecond();
}

/// Ticks when another second is to be shown, so that none is skipped.
void CHost::AwaitNextSecond()
{
    constexpr int second = 1000; // milliseconds, as the next
    constexpr int margin = 2;    // a timer may be early by one
    m_clock.start(second - m_observer.GetInstant().time().msec() + margin);
}

/// Takes the altitude of the observer's place from the engine, which asks the terrain unless that is switched off.
void CHost::FindAltitude()
{
    TellEngine(Number::Format("Location = Location(%f, %f, *); Show Sky", m_observer.GetLongitude(),
                              m_observer.GetLatitude()));
    TakeOverAltitude();
}

/// Only the height is new.
void CHost::TakeOverAltitude()
{
    const QScopedValueRollback quiet(m_quiet, true);
    ++m_own;
    const double altitude = Number::LeadingDouble(m_engine.Command(QString::fromUtf16(EngineLines::QueryAltitude)));
    --m_own;
    m_observer.UpdateObsByUI(m_observer.GetLongitude(), m_observer.GetLatitude(), altitude);
}

/// Hands the user's zone to the engine when it is another than the one sent last.
void CHost::TellZone()
{
    if (m_toldZone == m_observer.GetUserTz())
        return;
    m_toldZone = m_observer.GetUserTz();
    TellEngine(Number::Format("time.timezone = %f; Show Sky", m_toldZone));
}

void CHost::RefillDialog()
{
    m_dialog->InitLocation(0);
    ShowTimeSystem();
}

/// A refill shows the user's zone; in another time system the offset in force takes its place.
void CHost::ShowTimeSystem()
{
    if (m_dialog->IsWindow() && m_observer.GetTimeSys() != static_cast<int>(TimeSystem::Zone))
        m_dialog->UpdateTimeSys();
}

/// A line that the module sent to the main engine; when it moves the engine, the observer object follows.
void CHost::OnEngineLine(const QString& line)
{
    const QString path = line.section(u'=', 0, 0).trimmed().toLower();
    if (path == u"location.altitude"_s) {
        TakeOverAltitude(); // the dialog reads the terrain while it is being refilled
        m_saveSoon.start();
        Q_EMIT ObserverChanged();
    } else if (path == u"location"_s) {
        TakeOverEngineLocation(line.section(u'=', 1).trimmed().startsWith(u"location("_s, Qt::CaseInsensitive));
    } else if (path == QString::fromUtf16(EngineLines::AutoGetAltitude).toLower()) {
        RefillSoon(); // the dialog's own line or the console's
        m_saveSoon.start();
    } else if (path == u"time.timezone"_s)
        m_toldZone = Number::LeadingDouble(line.section(u'=', 1).trimmed());
}

void CHost::TakeOverEngineLocation(bool onEarth)
{
    const auto ask = [this](const char16_t* query) {
        ++m_own;
        const double answer = Number::LeadingDouble(m_engine.Command(QString::fromUtf16(query)));
        --m_own;
        return answer;
    };
    const double longitude = ask(EngineLines::QueryLongitude);
    const double latitude = ask(EngineLines::QueryLatitude);
    const double altitude = ask(EngineLines::QueryAltitude);
    if (onEarth && m_observer.GetBody() != BodyTable::Earth)
        m_observer.UpdateLocationObjectByUI(BodyTable::Earth, 1);
    m_observer.UpdateObsByUI(longitude, latitude, altitude);
}

void CHost::OpenSiteDialog()
{
    const bool isFirst = !m_dialog->IsWindow();
    OfferAltitudeMode();
    m_dialog->DoModeless(&m_engine, m_folders.TerrainIndex);
    if (isFirst)
        PlaceSiteDialog();
    // The showing takes the stored altitude; the terrain's, where it is automatic, comes with a refill.
    RefillSoon();
}

void CHost::PlaceSiteDialog()
{
    if (CWindowMemory::Knows(*m_dialog) || !m_mainWindow->screen())
        return;
    // Right of the sky stand the place and the time. The new window's frame is not known yet; it will be as the
    // other's.
    const int title = m_mainWindow->geometry().top() - m_mainWindow->frameGeometry().top();
    const QPoint sky = m_engine.mapToGlobal(m_engine.rect().topRight()) + QPoint(0, title);
    m_dialog->move(ScreenFit::Beside(m_mainWindow->frameGeometry(), sky, m_dialog->size() + QSize(0, title),
                                     m_mainWindow->screen()->availableGeometry()));
}

void CHost::OpenCityList()
{
    OpenSiteDialog();
    if (auto* button = m_dialog->Item<QAbstractButton>(ObsId::ButtonCity))
        button->click();
}

void CHost::SaveState()
{
    m_saveSoon.stop();
    SavedState::SaveObserver(m_observer);
    if (m_dialog->IsWindow() && !m_folders.TerrainIndex.isEmpty())
        SavedState::SaveAltitudeMode(IsAltitudeAutomatic());
}

/// What was last sent to the engine, by the dialog or the console; off the Earth nothing is automatic, but the choice
/// stands.
bool CHost::IsAltitudeAutomatic()
{
    ++m_own;
    const QString answer = m_engine.Command(u"? Location.Altitude.AutoGet"_s);
    --m_own;
    return answer == u"TRUE"_s;
}

/// Hands the dialog, before it opens, the choice where the altitude comes from, which belongs to the place: an altitude
/// that the user typed would else give way to the terrain's. The dialog itself stores the choice only when it is closed
/// by 閉じる, and off the Earth as 手動.
void CHost::OfferAltitudeMode()
{
    if (m_folders.TerrainIndex.isEmpty())
        return;
    const std::optional<bool> choice =
        m_dialog->IsWindow() ? std::optional(IsAltitudeAutomatic()) : SavedState::AltitudeMode();
    int stored = -1;
    CRegistry::Read(m_dialog->RegistrySection(), u"AutoAltitude"_s, stored, &stored, CRegistry::Flag);
    if (choice && stored != int{*choice})
        CRegistry::Write(m_dialog->RegistrySection(), u"AutoAltitude"_s, int{*choice}, CRegistry::Flag);
}

/// Refills the dialog once the line that made it necessary is done.
void CHost::RefillSoon()
{
    if (std::exchange(m_isRefillDue, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isRefillDue = false;
            RefillDialog();
        },
        Qt::QueuedConnection);
}

void CHost::SetInstant(const QDateTime& instant)
{
    m_observer.SetUT(instant);
    if (m_isClockRunning) {
        m_sinceTick.start();
        AwaitNextSecond();
    }
}

void CHost::SetTimeSystem(TimeSystem system)
{
    m_observer.SetTimeSys(static_cast<int>(system));
    m_saveSoon.start();
    if (m_dialog->IsWindow())
        m_dialog->UpdateTimeSys();
    Q_EMIT ObserverChanged();
}

void CHost::MoveObserver(double longitude, double latitude, double altitude)
{
    m_observer.UpdateObsByUI(longitude, latitude, altitude);
}

void CHost::SetBody(int body)
{
    m_observer.UpdateLocationObjectByUI(body, 1);
}

void CHost::ShowEclipse(bool visible)
{
    TellEngine(u"Solar.Planet.Earth.SolarEclipse.Path.Visible = "_s + (visible ? u"TRUE"_s : u"FALSE"_s));
    m_dialog->RedrawEclipsePath();
}

void CHost::ApplyBesselElements(bool apply)
{
    TellEngine(u"Solar.Planet.Earth.BesselElement.Apply = "_s + (apply ? u"TRUE"_s : u"FALSE"_s));
    m_dialog->RedrawEclipsePath();
}

void CHost::HandOverEngine()
{
    m_dialog->SetCorKiv(&m_engine);
}
