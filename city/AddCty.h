#pragma once

#include "host/dialog/KivDialog.h"
#include "module/kivobs_export.h"

/// Asks whether a place or a folder is to be added to the place list.
class KIVOBS_EXPORT CAddCty : public CKivDialog
{
    Q_OBJECT

public:
    static constexpr int AddPlace = 0;
    static constexpr int AddFolder = 1;

    explicit CAddCty(QWidget* parent);
    CAddCty(CCorKiv* engine, QWidget* parent);

    /// AddPlace or AddFolder, -1 for no choice; what it says before the dialog opens is preset.
    int AddKind = -1;

    /// Returns the dialog's result, -1 when it has no template.
    int DoModal() { return CKivDialog::DoModal(HostEngine()); }

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;
};
