#pragma once

#include "planetarium/DataFolders.h"
#include "planetarium/Host.h"
#include "planetarium/WindowMemory.h"
#include "planetarium/WriteFailures.h"

#include <QMainWindow>

class CObserverPanel;
class CSiteChoices;
class QLabel;
class QPlainTextEdit;
class QProgressBar;

/// Who sits before the window.
enum class Audience
{
    Astronomer,
    Developer ///< also sees the log of all that is sent to the controls, and calls that only exercise the module
};

/// The planetarium's window: the sky of the main engine, the observer, and the ways to choose the site.
class CMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Becomes the main window of the context, which must outlive it. Puts into the user's folder what belongs there;
    /// what cannot be written there is reported.
    CMainWindow(CHostContext& context, const DataFolders& folders, Audience audience = Audience::Astronomer);
    ~CMainWindow() override;

    [[nodiscard]] CHost& Host() { return *m_host; }
    /// What was sent to the controls and their answers; the oldest lines go first when it grows long. It is kept for
    /// every audience.
    [[nodiscard]] QString LogText();
    void ClearLog();

protected:
    /// Takes the module's messages: progress of the place list, modal loops, closing.
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Install(const DataFolders& folders);
    [[nodiscard]] QWidget* BuildSide(Audience audience);
    void BuildMenus(Audience audience);
    void BuildFileMenu();
    void BuildSiteMenu();
    void BuildBodyMenu(QMenu* bodies);
    void BuildRoadMapMenu();
    void BuildTimeMenu();
    void BuildEclipseMenu();
    void BuildDeveloperMenu();
    void OfferWhatIsThere();
    void Refresh();
    void AskInstant();
    void OpenConsole();
    void Log(const QString& who, const QString& line, const QString& answer);
    void ShowNewLog();
    void ShowProgress(int phase, const QVariant& value);

    CHostContext& m_context;
    CWindowMemory m_memory;
    CWriteFailures m_failures;
    std::unique_ptr<CHost> m_host;
    CObserverPanel* m_panel = nullptr; ///< children of this, as the others
    CSiteChoices* m_choices = nullptr;
    QPlainTextEdit* m_log = nullptr;
    QStringList m_newLog; ///< not in it yet
    QProgressBar* m_progress = nullptr;
    QLabel* m_note = nullptr;
    bool m_isLogAtEnd = true;
    QAction* m_site = nullptr;
    QAction* m_city = nullptr;
    QAction* m_roadMap = nullptr;
    QAction* m_roadMapAlone = nullptr;
    QAction* m_clock = nullptr;
};
