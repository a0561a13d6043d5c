#pragma once

#include "host/dialog/KivDialog.h"
#include "obs/core/EntryRules.h"
#include "obs/core/ObsModule.h"

class CSiteModel;

/// The right-hand side of the site dialog: the boxes, spin buttons and radios in which a location is entered.
class CSiteEntry
{
public:
    /// `updateStatus` is the dialog's; dialog and model outlive this.
    CSiteEntry(CKivDialog& dialog, CSiteModel& model, std::function<void()> updateStatus);

    /// The notices of the controls here.
    [[nodiscard]] CKivDialog::MessageMap Messages();
    /// Binds the model's fields to the controls.
    void Exchange(CDataExchange* exchange);
    /// Reads the controls and makes all fields the observer's location.
    void UpdateValue();
    /// Whether the message that terrain data are missing was shown.
    [[nodiscard]] bool IsTerrainMissing() const { return TerrainMissing != 0; }

private:
    void OnChangeBox(EntryRules::Box box);          ///< OnChangeEdtLngDeg to OnChangeEdtTzMin
    void OnSpinBox(EntryRules::Box box, int delta); ///< OnDeltaposSpnLngDeg to OnDeltaposSpnTzMin
    [[nodiscard]] bool CorrectBox(EntryRules::Box box);
    [[nodiscard]] QString RangeText(EntryRules::Box box, const EntryRules::Finding& finding) const;
    void ClearBeyondPole();
    void Apply(EntryRules::Box box);
    void OnRdHemisphere(); ///< OnRdEast, OnRdWest, OnRdNorth and OnRdSouth
    void OnRdAltAuto();
    void OnRdAltManual();
    void CheckManualAltitude();
    void TellAltitudeMode();

    CKivDialog& m_dialog;
    CSiteModel& m_model;
    std::function<void()> m_updateStatus;
    CObsModule& m_module = CObsModule::Instance();
    int TerrainMissing = 0; ///< 1 once the message that terrain data are missing was shown
};
