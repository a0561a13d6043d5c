#pragma once

#include "host/control_window/CorKivMap.h"
#include "host/observer/KPDateObs.h"
#include "obs/ControlIds.h"
#include "planetarium/MainWindow.h"
#include "tests/dialog/DialogDriver.h"

/// The program as its user has it: the real host with its engine, maps, terrain and files, its windows shown
/// offscreen, keys and mouse as events to whatever has the focus or lies under the pointer. Settings and the user's
/// files are in a temporary folder; only prompts are doubled.
class CStory : public CDialogDriver
{
protected:
    CStory();
    ~CStory() override;

    /// Starts the program on the folder as it is, a second time after Quit.
    void Start(Audience audience = Audience::Astronomer);
    /// Ends the program as closing its main window does.
    void Quit();
    /// Ends it without a word, as a crash does.
    void Crash() { m_window.reset(); }
    [[nodiscard]] CHost& Host() { return m_window->Host(); }
    [[nodiscard]] CMainWindow& Window() { return *m_window; }
    [[nodiscard]] CKPDateObs& Observer() { return Host().Observer(); }

    /// Opens the site dialog as the menu does, of a program that is started for it if there is none, and waits until
    /// it is the active window.
    void OpenSite();
    [[nodiscard]] CDlgObs& Site() { return Host().SiteDialog(); }
    [[nodiscard]] CKivDialog* Shown() const override { return &m_window->Host().SiteDialog(); }

    /// Gives a box the focus as a click into it does, and selects what it holds.
    void Enter(int id);
    /// Keys to the widget with the focus, with a pause between them (milliseconds).
    void Type(const char* text, int pause = 0);
    /// Puts a text on the clipboard and pastes it into the widget with the focus.
    void Paste(const QString& text);
    /// A click into an item, or at a point of a widget; what it starts has run then.
    void Click(int id);
    static void ClickAt(QWidget& widget, const QPointF& at);
    /// The wheel over the middle of a widget.
    static void Wheel(QWidget& widget, int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Chooses a body in the list of the site dialog.
    void ChooseBody(int body);
    /// The city list by its button, with the place of this name selected before the steps and OK after them.
    void PickCity(const QString& name, const std::function<void(CKivDialog&)>& steps = {});

    DataFolders Folders;

private:
    std::unique_ptr<CMainWindow> m_window;
};
