#pragma once

#include "host/dialog/KivDialog.h"

/// Asks where a folder goes that was dropped on another one: after that folder or into it.
class CDlgCityMoveTo : public CKivDialog
{
    Q_OBJECT

public:
    static constexpr int MoveAfter = 0;
    static constexpr int MoveInto = 1;

    /// `folderName` is the folder dropped on.
    CDlgCityMoveTo(QString folderName, QWidget* parent);

    int MoveMode = MoveAfter;

    /// Returns the dialog's result, -1 when it has no template.
    int DoModal() { return CKivDialog::DoModal(HostEngine()); }

protected:
    MessageMap GetMessageMap() override;
    void DoDataExchange(CDataExchange* exchange) override;
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void OnClickedRadio() { UpdateData(); }
    void SetRadioText(int id, int stringNumber);

    QString FolderName;
};
