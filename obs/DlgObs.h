#pragma once

#include "host/dialog/KivDialog.h"
#include "module/kivobs_export.h"

#include <QString>

#include <array>
#include <memory>

class CCorKiv;
class CCorKivMap;
class CDlgCity;
class CKPDateObs;
class CSiteEntry;
class CSiteMaps;
class CSiteModel;

/// The observation-site dialog "場所": where the sky is observed from, by a click on a globe, typed coordinates, or
/// another body. It keeps the host's observer object, the host engine and its own two maps in step.
///
/// The host constructs it, sets the observer object and shows it with DoModeless; closing only hides it and notifies
/// the host. Neither the observer object nor an engine is owned.
class KIVOBS_EXPORT CDlgObs : public CKivDialog
{
    Q_OBJECT

public:
    /// `dataFolder` holds the user's place files and ends with a separator; the tag is kept for the host.
    CDlgObs(QWidget* parent, const QString& dataFolder, int dialogTag);
    ~CDlgObs() override;

    /// Creates the window and everything in it. 1 on success, 0 on failure; a failed map leaves the window.
    int Create(CCorKiv* hostEngine);

    /// Shows the dialog, creating it at the first time. An empty terrain index path keeps the one given before.
    /// Returns 1 whatever Create returned.
    int DoModeless(CCorKiv* hostEngine, const QString& terrainIndexPath);

    /// Non-zero: refills and shows the window; 0: hides it. Nothing happens before the window exists.
    void Show(int show);

    void SetCorKiv(CCorKiv* hostEngine) { SetHostEngine(hostEngine); }

    /// To be called before Create; the object must outlive the dialog.
    void SetKPDateObs(CKPDateObs* dateObs);

    /// Refills the dialog from the observer object: 0 only what differs, non-zero everything.
    void InitLocation(int first);

    /// Hands the observer object's time to the embedded engine.
    void UpdateDate() { SetKPDateObsToCorMap(); }

    /// Shows the offset of the observer object's time system in the time-zone fields.
    void UpdateTimeSys();

    /// Takes the host engine's eclipse path over to the globe map.
    void RedrawEclipsePath();

    /// Does nothing; part of the interface.
    void InitControls() {}

    /// The dialog's two maps, for a host that logs or inspects them.
    [[nodiscard]] CCorKiv& EngineOfDialog();
    [[nodiscard]] CCorKivMap& MapOfDialog();

protected:
    MessageMap GetMessageMap() override;
    EventSinkMap GetEventSinkMap() override;
    void DoDataExchange(CDataExchange* exchange) override;
    bool OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void OnClose() override;

    void Init();
    void OnSelchangePlanet();
    void OnObsChkFeature(); ///< the eight check boxes
    void SetFeatureVisible();
    void SaveReg();
    void OnObsBtnSetInit();
    void SaveDefault(double longitude, double latitude, double altitude, double timeZone);
    void OnBnClickedObsBtnReset();
    void OnObsBtnCity();
    void OnBnClickedObsBtnCmd();
    void UpdateStatus();
    void SetKPDateObsToCorMap();

    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void AttachControls();
    void KeepStoredSettings();
    void SetUpLandmarks();
    void RefreshUserList();
    void CloseAndSave(bool saves);
    void ReadAltitudeMode(int first, double& height);
    void TakePlace(const CDlgCity& dialog);

    std::unique_ptr<CSiteModel> Model;
    std::unique_ptr<CSiteMaps> Maps;
    std::unique_ptr<CSiteEntry> Entry;
    std::array<int, 8> LayerFlags{}; ///< 0 or 1 each, in the order of the check boxes
    QString DataFolder;
    int DialogTag = 0;
    int LastBodyIndex = -1;  ///< body last shown in the list of bodies
    QString EclipsePathData; ///< last path read from the host engine
};
