#pragma once

#include "host/dialog/CommandHistory.h"
#include "host/dialog/KivDialog.h"

class CKivCheckBox;
class CKivComboBox;
class CKivEdit;

/// The command window: a line typed here goes to a sky engine as it stands, and the engine's answer is shown. OK sends
/// and keeps the window open for the next line. When asked, the lines sent are kept in the settings (section
/// "Dialog\Command") for the next time. The Up key goes back through the lines sent and Down forth again, as in a
/// shell: what is being typed stands behind the newest one and is not lost on the way.
class CDlgCommand : public CKivDialog
{
    Q_OBJECT

public:
    static constexpr int LongestHistory = 100;  ///< entries
    static constexpr int LongestCommand = 4096; ///< characters of a line

    /// The engine is not owned; without one every line is answered with nothing.
    CDlgCommand(CCorKiv* engine, QWidget* parent);

    /// The window's title from the next run on; empty for the template's.
    void SetTitle(const QString& title) { TitleText = title; }

    /// Runs the window on the engine given at construction; returns the dialog's result, -1 when it has no template.
    int DoModal() { return CKivDialog::DoModal(HostEngine()); }

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void OnClose() override;
    [[nodiscard]] bool PreTranslateMessage(QKeyEvent& key) override;

private:
    static constexpr int Typing = -1; ///< no entry of the history, but a line of its own

    void AttachControls();
    [[nodiscard]] QString TypedLine() const;
    void Remember(const QString& line);
    void ShowHistory(const QString& line);
    bool WalkHistory(int step);
    void ShowAnswer(const QString& answer);
    [[nodiscard]] QString ReadHistory();
    void SaveHistory() const;

    QString TitleText;
    CCommandHistory CommandHistory; ///< newest first, no line twice
    int HistoryPosition = Typing;   ///< entry of the history in the box
    QString TypedText;              ///< left behind on the walk through the history
    CKivComboBox* CommandCombo = nullptr;
    CKivCheckBox* SaveCheck = nullptr;
    CKivEdit* AnswerEdit = nullptr;
};
