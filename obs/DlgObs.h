#pragma once

#include "host/control_window/CorKiv.h"
#include "host/control_window/CorKivMap.h"
#include "host/dialog/KivDialog.h"
#include "host/dialog/WheelNotch.h"
#include "module/kivobs_export.h"
#include "obs/core/EntryRules.h"
#include "obs/core/Magnification.h"
#include "obs/core/ObsSettings.h"
#include "obs/core/SiteLocation.h"

#include <QRect>
#include <QString>

class CDlgCity;
class CKivSlider;
class CKPDateObs;

/// The observation-site dialog "場所": where the sky is observed from, by a click on a globe, typed coordinates, or
/// another body. It keeps the host's observer object, the host engine and its own two maps in step.
///
/// The host constructs it, sets the observer object and shows it with DoModeless; closing only hides it and tells
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
    /// Answers 1 whatever Create answered.
    int DoModeless(CCorKiv* hostEngine, const QString& terrainIndexPath);

    /// Non-zero: refills and shows the window; 0: hides it. Nothing happens before the window exists.
    void Show(int show);

    void SetCorKiv(CCorKiv* hostEngine) { SetHostEngine(hostEngine); }

    /// To be called before Create; the object must outlive the dialog.
    void SetKPDateObs(CKPDateObs* dateObs) { DateObs = dateObs; }

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
    [[nodiscard]] CCorKiv& EngineOfDialog() { return EmbeddedEngine; }
    [[nodiscard]] CCorKivMap& MapOfDialog() { return GlobeMap; }

protected:
    MessageMap GetMessageMap() override;
    EventSinkMap GetEventSinkMap() override;
    void DoDataExchange(CDataExchange* exchange) override;
    bool OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void OnClose() override;

    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // Life cycle
    void Init();
    void AttachControls();
    void SetUpSlider();
    void PlaceMaps();
    [[nodiscard]] bool CreateEmbeddedEngine();
    [[nodiscard]] bool CreateGlobeMap();
    void SetUpLandmarks();
    void RefreshUserList();
    void CloseAndSave();
    void NotifyHost();
    void ShowMapOfBody();
    void ReadAltitudeMode(int first, double& height);

    // Location: fields, cache, observer object
    void SetValue(double longitude, double latitude, double altitude, double timeZone, int force);
    [[nodiscard]] double EditToLng() const;
    [[nodiscard]] double EditToLat() const;
    void UpdateValue();
    [[nodiscard]] double EditToTz() const;
    void ChangeTz();
    void MoveCurrentPos(double longitude, double latitude);
    void MoveCurrentPos(double longitude, double latitude, double altitude, double timeZone);
    [[nodiscard]] bool IsSmall() const;
    [[nodiscard]] bool HasTerrainAltitude() const;

    // Coordinate entry
    void OnChangeBox(EntryRules::Box box);
    void OnSpinBox(EntryRules::Box box, int delta);
    [[nodiscard]] bool CorrectBox(EntryRules::Box box);
    void ApplyFields(EntryRules::Apply apply);
    void OnChangeEdtLngDeg() { OnChangeBox(EntryRules::Box::LngDeg); }
    void OnChangeEdtLngMin() { OnChangeBox(EntryRules::Box::LngMin); }
    void OnChangeEdtLngSec() { OnChangeBox(EntryRules::Box::LngSec); }
    void OnChangeEdtLatDeg() { OnChangeBox(EntryRules::Box::LatDeg); }
    void OnChangeEdtLatMin() { OnChangeBox(EntryRules::Box::LatMin); }
    void OnChangeEdtLatSec() { OnChangeBox(EntryRules::Box::LatSec); }
    void OnChangeEdtTzHour() { OnChangeBox(EntryRules::Box::TzHour); }
    void OnChangeEdtTzMin() { OnChangeBox(EntryRules::Box::TzMin); }
    void OnChangeEdtAlt();
    void OnDeltaposSpnLngDeg(int delta) { OnSpinBox(EntryRules::Box::LngDeg, delta); }
    void OnDeltaposSpnLngMin(int delta) { OnSpinBox(EntryRules::Box::LngMin, delta); }
    void OnDeltaposSpnLngSec(int delta) { OnSpinBox(EntryRules::Box::LngSec, delta); }
    void OnDeltaposSpnLatDeg(int delta) { OnSpinBox(EntryRules::Box::LatDeg, delta); }
    void OnDeltaposSpnLatMin(int delta) { OnSpinBox(EntryRules::Box::LatMin, delta); }
    void OnDeltaposSpnLatSec(int delta) { OnSpinBox(EntryRules::Box::LatSec, delta); }
    void OnDeltaposSpnTzHour(int delta) { OnSpinBox(EntryRules::Box::TzHour, delta); }
    void OnDeltaposSpnTzMin(int delta) { OnSpinBox(EntryRules::Box::TzMin, delta); }
    void OnDeltaposSpnAlt(int delta);
    void OnRdHemisphere(); ///< OnRdEast, OnRdWest, OnRdNorth and OnRdSouth
    void OnRdTzSign();     ///< OnRdTzP and OnRdTzM
    void OnRdAltAuto();
    void OnRdAltManual();
    void CheckManualAltitude();

    // Map interaction
    void OnVScroll();
    void UpdateViewAngle();
    void SliderValToVal();
    void MoveSlider();
    void SendViewAngle();
    void OnMouseWheel(int direction, Qt::KeyboardModifiers modifiers);
    void TurnGlobeMap(int direction, Qt::KeyboardModifiers modifiers);
    void TurnEmbeddedGlobe(int direction, Qt::KeyboardModifiers modifiers);
    void OnMapMouseUp();
    void OnTouch(const QVariantList& arguments);
    void OnSetObsPosition(double longitude, double latitude);
    void OnSetMag(double magnification);
    void SetCenterOfProjection(double longitude, double latitude);
    void TakePickedPlace(double longitude, double latitude, double altitude);
    [[nodiscard]] double Query(const char16_t* line);

    // Body, layers, initial values, status
    void OnSelchangePlanet();
    [[nodiscard]] int SelectedBody() const;
    void SelectBody(int body);
    void OnObsChkFeature(); ///< the eight check boxes
    void SetFeatureVisible();
    void SaveReg();
    void OnObsBtnSetInit();
    void SaveDefault(double longitude, double latitude, double altitude, double timeZone);
    void OnBnClickedObsBtnReset();
    void OnObsBtnCity();
    void TakePlace(const CDlgCity& dialog);
    void OnBnClickedObsBtnCmd();
    void UpdateStatus();
    void SetKPDateObsToCorMap();

    SiteFields Fields;
    int BodyIndex = 4;
    ObsSettings::Layers LayerFlags{};
    QString DataFolder;
    int TerrainMissing = 0; ///< 1 once the user was told that terrain data are missing
    CCorKiv EmbeddedEngine; ///< draws every body but the Earth
    QRect MapRect;          ///< where both maps sit, in dialog coordinates
    int DialogTag = 0;
    CCorKivMap GlobeMap; ///< draws the Earth
    double MapZoom = 1.0;
    CKivSlider* MagnificationSlider = nullptr; ///< a child of this
    int SliderPosition = Magnification::SliderMax;
    double ViewDegrees = 180.0;
    CKPDateObs* DateObs = nullptr;
    double AppliedLongitude = 0.0;
    double AppliedLatitude = 0.0;
    double AppliedAltitude = 0.0; ///< metres, but display units after the two-value MoveCurrentPos
    double AppliedTimeZone = 0.0;
    int LastBodyIndex = -1;
    int FilledBodyIndex = -1;   ///< body that the fields were last filled for; -1 before the first fill
    bool ShowsOffset = false;   ///< the zone fields show the offset of another time system, not the user's zone
    QString LandscapeIndexFile; ///< empty: no terrain data
    QString EclipsePathData;    ///< last path read from the host engine
    CWheelNotch Wheel;          ///< over the map
};
