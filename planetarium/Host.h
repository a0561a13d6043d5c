#pragma once

#include "host/control_window/CorKiv.h"
#include "host/observer/KPDateObs.h"
#include "obs/DlgObs.h"
#include "planetarium/DataFolders.h"
#include "roadmap/DlgMapple.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

/// The host's side of the module: it owns the observer object, the main sky engine and the dialog, and keeps them in
/// step. A change of the observer object updates the engine and refills the dialog; a change that the dialog makes to
/// the engine is taken over into the observer object.
class CHost : public QObject
{
    Q_OBJECT

public:
    /// The windows belong to `mainWindow`, which must outlive the host.
    CHost(QWidget* mainWindow, DataFolders folders);
    ~CHost() override;

    [[nodiscard]] CCorKiv& Engine() { return m_engine; }
    [[nodiscard]] CKPDateObs& Observer() { return m_observer; }
    [[nodiscard]] CDlgObs& SiteDialog() { return *m_dialog; }

    /// The road map that was opened last; null before the first.
    [[nodiscard]] CDlgMapple* RoadMap() { return m_roadMap.get(); }

    /// At its first opening the dialog comes up beside the main window where the screen has room, later where it was.
    void OpenSiteDialog();
    /// Opens the site dialog and its city list; on another body than the Earth there is none.
    void OpenCityList();
    /// Keeps the observer for the next run, at once; a second after each change it is done unasked.
    void SaveState();
    /// Whether the road map can be offered on this machine.
    [[nodiscard]] static bool HasRoadMap();
    /// Opens the road map with the observer object, or with the engine alone. An open one of the same kind comes to the
    /// front, one of the other kind is closed. Nothing happens where it cannot be offered.
    void OpenRoadMap(bool withObserver);
    void CloseRoadMap();
    /// The sky's time, from which a running clock goes on.
    void SetInstant(const QDateTime& instant);
    /// Lets the sky's time go on second by second, or holds it; it stands when the host is made.
    void RunClock(bool run);
    [[nodiscard]] bool IsClockRunning() const { return m_isClockRunning; }
    void SetTimeSystem(TimeSystem system);
    /// Moves the observer on the current body from outside the dialog: degrees and metres.
    void MoveObserver(double longitude, double latitude, double altitude);
    void SetBody(int body);
    void ShowEclipse(bool visible);
    void ApplyBesselElements(bool apply);
    /// Hands the module the engine once more, as after the host replaced its view.
    void HandOverEngine();

Q_SIGNALS:
    void ObserverChanged();
    void ClockSwitched(bool runs);
    /// Something was sent to a control: which, the line, the answer (empty for none). The clock's lines are left out.
    void Spoken(const QString& who, const QString& line, const QString& answer);

private:
    void OnObserverChange(CKPDateObs::Change change);
    void PassOnTime();
    void Tick();
    void AwaitNextSecond();
    void Speak(const QString& who, const QString& line, const QString& answer);
    void FindAltitude();
    void TakeOverAltitude();
    void TellZone();
    void RefillDialog();
    void MoveRoadMap();
    void ShowTimeSystem();
    void OnEngineLine(const QString& line);
    /// `onEarth` when the line put the engine on the Earth, whatever body the observer is on.
    void TakeOverEngineLocation(bool onEarth = false);
    void PlaceEngine();
    void TellEngine(const QString& line);
    void LogControls();
    void LogRoadMap();
    void PlaceOnOtherBodies();
    void PlaceSiteDialog();
    void RefillSoon();
    [[nodiscard]] bool IsAltitudeAutomatic();
    void OfferAltitudeMode();

    DataFolders m_folders;
    CKPDateObs m_observer;
    CCorKiv m_engine;
    std::unique_ptr<CDlgObs> m_dialog;
    std::unique_ptr<CDlgMapple> m_roadMap;
    bool m_roadMapHasObserver = false;
    QWidget* m_mainWindow = nullptr; ///< not owned
    double m_toldZone = 9.0;         ///< hours; the zone sent to the engine last
    int m_own = 0;                   ///< lines of the host itself are under way
    QTimer m_clock;
    QTimer m_saveSoon;
    QElapsedTimer m_sinceTick;
    QDate m_eclipseDate; ///< universal time; of the day that the dialog asked for the eclipse last
    bool m_isClockRunning = false;
    bool m_isTick = false;      ///< the clock moves the time
    bool m_isRefillDue = false; ///< a refill of the dialog is queued
    bool m_quiet = false;       ///< the observer object only catches up with the engine
};
