#pragma once

#include "host/control/CorKiv.h"
#include "host/observer/KPDateObs.h"
#include "obs/DlgObs.h"
#include "planetarium/DataFolders.h"

#include <QObject>

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

    void OpenSiteDialog();
    void SetInstant(const QDateTime& instant);
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
    /// Something was said to a control: who, the line, the answer (empty for none).
    void Spoken(const QString& who, const QString& line, const QString& answer);

private:
    void OnObserverChange(CKPDateObs::Change change);
    void TellZone();
    void RefillDialog();
    void ShowTimeSystem();
    void OnEngineLine(const QString& line);
    void TakeOverEngineLocation();
    void PlaceEngine();
    void TellEngine(const QString& line);
    void LogControls();
    void PlaceOnOtherBodies();

    DataFolders m_folders;
    CKPDateObs m_observer;
    CCorKiv m_engine;
    std::unique_ptr<CDlgObs> m_dialog;
    double m_toldZone = 9.0; ///< hours; the zone that the engine was told last
    int m_own = 0;           ///< lines of the host itself are under way
    bool m_quiet = false;    ///< the observer object only catches up with the engine
};
