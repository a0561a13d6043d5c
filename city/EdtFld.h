#pragma once

#include "host/dialog/KivDialog.h"
#include "module/kivobs_export.h"

/// The folder editor: edits the name of a folder of the place list.
class KIVOBS_EXPORT CEdtFld : public CKivDialog
{
    Q_OBJECT

public:
    explicit CEdtFld(QWidget* parent);
    CEdtFld(CCorKiv* engine, QWidget* parent);

    /// Shown when the dialog opens; after OK what the user typed, trimmed, not empty, and fit for the place files.
    QString Name;

    /// Returns the dialog's result, -1 when it has no template.
    int DoModal() { return CKivDialog::DoModal(HostEngine()); }

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    bool OnInitDialog() override;
    void OnOK() override;
};
