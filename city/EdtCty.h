#pragma once

#include "city/CoordinateDialog.h"
#include "host/control_window/CorKivMap.h"
#include "module/kivobs_export.h"

/// The place editor: edits one place of the list, its name, position, altitude, time zone and kind.
class KIVOBS_EXPORT CEdtCty : public CCoordinateDialog
{
    Q_OBJECT

public:
    explicit CEdtCty(QWidget* parent);
    CEdtCty(CCorKiv* engine, QWidget* parent);

    /// The globe map that names the kinds; without one there are none to choose from. Not owned.
    void SetCorMapPtr(CCorKivMap* map) { MapControl = map; }

    /// Shown when the dialog opens; after OK what the user typed, trimmed, not empty, and fit for the place files.
    QString Name;
    int Kind = 0; ///< index of the kind, -1 when none is chosen
    CCorKivMap* MapControl = nullptr;

    /// Returns the dialog's result, -1 when it has no template.
    int DoModal() { return CKivDialog::DoModal(HostEngine()); }

    /// Trims the name and tests every value; shows all that is wrong in one box. 1 when nothing is, else 0.
    int CheckValue();

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void ListKinds();
};
