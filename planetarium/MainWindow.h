#pragma once

#include "planetarium/DataFolders.h"
#include "planetarium/Host.h"

#include <QMainWindow>

class CObserverPanel;
class QLabel;
class QPlainTextEdit;
class QProgressBar;

/// The planetarium's window: the main engine's view, the observer, the menu that exercises the module, and the log of
/// every engine line with its answer.
class CMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit CMainWindow(const DataFolders& folders);
    ~CMainWindow() override;

    [[nodiscard]] CHost& Host() { return *m_host; }
    /// The log as it stands; the oldest lines go first when it grows long.
    [[nodiscard]] QString LogText() const;
    void ClearLog();

protected:
    /// Takes the module's messages: progress of the place list, modal loops, closing.
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void BuildSiteMenu();
    void BuildRoadMapMenu();
    void BuildTimeMenu();
    void BuildEclipseMenu();
    void AskInstant();
    void OpenConsole();
    void Log(const QString& who, const QString& line, const QString& answer);
    void ShowProgress(int phase, const QVariant& value);

    std::unique_ptr<CHost> m_host;
    CObserverPanel* m_panel = nullptr; ///< children of this, as the others
    QPlainTextEdit* m_log = nullptr;
    QProgressBar* m_progress = nullptr;
    QLabel* m_note = nullptr;
};
