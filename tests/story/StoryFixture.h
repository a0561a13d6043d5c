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

    /// Opens the site dialog as the menu does and waits until it is the active window.
    void OpenSite();
    [[nodiscard]] CDlgObs& Site() { return Host().SiteDialog(); }
    template <typename Control = QWidget> Control* Item(int id) { return Site().Item<Control>(id); }

    /// Text of a box, a label or a button of the site dialog.
    [[nodiscard]] std::string TextOf(int id) { return CDialogDriver::TextOf(Site(), id); }
    [[nodiscard]] bool IsChecked(int id);
    /// Gives a box the focus as a click into it does, and selects what it holds.
    void Enter(int id);
    /// Keys to the widget with the focus, with a pause between them (milliseconds).
    void Type(const char* text, int pause = 0);
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Puts a text on the clipboard and pastes it into the widget with the focus.
    void Paste(const QString& text);
    /// A click into the middle of an item, or at a point of a widget.
    void Click(int id);
    static void ClickAt(QWidget& widget, const QPointF& at);
    void ClickSpin(int id, bool up);
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
