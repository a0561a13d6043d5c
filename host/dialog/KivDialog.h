#pragma once

#include "host/control_window/CorKiv.h"
#include "host/dialog/DataExchange.h"
#include "host/dialog/Prompts.h"

#include <QDialog>
#include <QHash>
#include <QPointer>

#include <functional>
#include <vector>

class CKivEdit;
class QGroupBox;

/// The base of the module's dialogs. It builds the window from the template of its number, moves data between
/// members and controls, maps notifications to handlers, and holds the settings section and the host's sky engine.
///
/// Notifications that the program itself causes by writing controls never reach a handler; an invalid argument that
/// a handler runs into is caught here and shown.
class CKivDialog : public QDialog
{
    Q_OBJECT

public:
    /// What a control reports.
    enum class Notice
    {
        Change,    ///< the user changed the text of a box
        Clicked,   ///< a button, check box or radio
        DeltaPos,  ///< a spin button; the handler gets the delta
        SelChange, ///< the user chose an entry of a list
        Scroll,    ///< a slider moved
        EndScroll, ///< the user let a slider go
        DblClick   ///< the user clicked a list twice; the handler gets the row
    };

    /// One line of a dialog's message map.
    struct MessageEntry
    {
        Notice Kind;
        int Id;
        std::function<void(int delta)> Handler;
    };
    /// One line of a dialog's event map: an event of the control with this child number.
    struct EventEntry
    {
        int ControlId;
        int Event;
        std::function<void(const QVariantList& arguments)> Handler;
    };
    using MessageMap = std::vector<MessageEntry>;
    using EventSinkMap = std::vector<EventEntry>;

    CKivDialog(int templateNumber, QString registrySection, QWidget* parent);
    ~CKivDialog() override;

    [[nodiscard]] int TemplateNumber() const { return m_templateNumber; }
    [[nodiscard]] const QString& RegistrySection() const { return m_section; }

    /// Whether the window and its controls exist.
    [[nodiscard]] bool IsWindow() const { return m_isWindow; }

    /// The control of this number in the template; null when there is none or it is of another class.
    template <typename Control = QWidget> [[nodiscard]] Control* Item(int id) const
    {
        return qobject_cast<Control*>(m_items.value(id));
    }

    /// Destroys the window with its controls, after OnDestroy; the dialog itself stays and may be created anew.
    void DestroyWindow();

    /// Runs the dialog modally on the engine, null for none; the first run creates the window, and every run begins
    /// with OnInitDialog. Returns the dialog's result, or -1 when there is no template of its number.
    int DoModal(CCorKiv* engine);

    void done(int result) override;
    void accept() override;
    void reject() override;

    /// The engine handed over by the host; null for none.
    [[nodiscard]] CCorKiv* HostEngine() const { return m_hostEngine; }
    /// Assigns "TRUE" or "FALSE" to a property of the host engine; nothing happens without one.
    void DoitBool(const QString& path, int flag);
    /// Whether the host engine answers this text for the property; 0 without an engine.
    [[nodiscard]] int IsIt(const QString& path, const QString& value) const;

    /// Moves all members: true from the controls into the members, false the other way.
    void UpdateData(bool saveAndValidate = true);
    /// The same for one control; a pair of radios goes by its first.
    void UpdateItem(int id, bool saveAndValidate);
    void SetItemText(int id, const QString& text);
    void EnableItem(int id, bool enable);
    /// Writes to controls inside this call run no handler.
    template <typename Write> void WithoutNotices(Write write)
    {
        const WriteGuard guard(*this);
        write();
    }
    /// Runs a handler; an invalid argument that it runs into is shown and goes no further.
    void Guarded(const std::function<void()>& handler);
    /// Shows a box over this dialog through the prompts in use.
    IPrompts::Answer MessageBox(const QString& text, IPrompts::Icon icon = IPrompts::Icon::None,
                                IPrompts::Buttons buttons = IPrompts::Buttons::Ok);
    /// Connects the events of a created control to the event map.
    void ConnectEvents(CControlWindow& control);

protected:
    /// Builds the window from its template, then runs OnInitDialog. False when there is no such template
    /// or the window exists already.
    [[nodiscard]] bool Create(CCorKiv* hostEngine);

    void SetHostEngine(CCorKiv* engine) { m_hostEngine = engine; }

    virtual MessageMap GetMessageMap() { return {}; }
    virtual EventSinkMap GetEventSinkMap() { return {}; }
    virtual void DoDataExchange(CDataExchange* /*exchange*/) {}
    /// The base writes the members into the controls. True lets the dialog place the focus.
    virtual bool OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    /// The window's close box; the base lets the window close.
    virtual void OnClose();
    /// The window is about to be destroyed; its controls still exist.
    virtual void OnDestroy() {}
    /// A key pressed anywhere in this window, before the focused control sees it; true consumes it. Only after
    /// CatchKeys.
    virtual bool PreTranslateMessage(QKeyEvent& /*key*/) { return false; }
    void CatchKeys();

    template <typename Dialog> MessageEntry OnChange(int id, void (Dialog::*handler)())
    {
        return Entry(Notice::Change, id, handler);
    }
    template <typename Dialog> MessageEntry OnClicked(int id, void (Dialog::*handler)())
    {
        return Entry(Notice::Clicked, id, handler);
    }
    template <typename Dialog> MessageEntry OnSelChange(int id, void (Dialog::*handler)())
    {
        return Entry(Notice::SelChange, id, handler);
    }
    template <typename Dialog> MessageEntry OnScroll(int id, void (Dialog::*handler)())
    {
        return Entry(Notice::Scroll, id, handler);
    }
    template <typename Dialog> MessageEntry OnEndScroll(int id, void (Dialog::*handler)())
    {
        return Entry(Notice::EndScroll, id, handler);
    }
    template <typename Dialog> MessageEntry OnDeltaPos(int id, void (Dialog::*handler)(int))
    {
        return {Notice::DeltaPos, id, [this, handler](int delta) { (static_cast<Dialog*>(this)->*handler)(delta); }};
    }
    template <typename Dialog> MessageEntry OnDblClick(int id, void (Dialog::*handler)(int))
    {
        return {Notice::DblClick, id, [this, handler](int row) { (static_cast<Dialog*>(this)->*handler)(row); }};
    }

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class WriteGuard
    {
    public:
        explicit WriteGuard(CKivDialog& dialog) : m_dialog(dialog) { ++m_dialog.m_writing; }
        WriteGuard(const WriteGuard&) = delete;
        WriteGuard& operator=(const WriteGuard&) = delete;
        ~WriteGuard() { --m_dialog.m_writing; }

    private:
        CKivDialog& m_dialog;
    };

    template <typename Dialog> MessageEntry Entry(Notice kind, int id, void (Dialog::*handler)())
    {
        return {kind, id, [this, handler](int) { (static_cast<Dialog*>(this)->*handler)(); }};
    }

    [[nodiscard]] bool CreateWindow(CCorKiv* hostEngine);
    [[nodiscard]] bool LoadTemplate();
    void RunHandler(const MessageEntry& entry, int argument);
    void RunChangeHandler(const MessageEntry& entry, CKivEdit& edit);
    void SettleBox(CKivEdit& edit);
    void SettleFocusedBox();
    [[nodiscard]] static bool FocusFirstBox(const QGroupBox* group);
    [[nodiscard]] bool IsOwnKey(const QObject* watched, const QEvent* event) const;
    void ConnectMessages();
    void BindSpinButtons();
    /// Works the spin button beside a box by an arrow key; false for other keys and where there is none.
    bool StepBeside(int editId, int key);

    int m_templateNumber;
    QString m_section;
    QPointer<CCorKiv> m_hostEngine;
    QWidget* m_content =
        nullptr; ///< what the template made, scrolled on a small screen; a child of this, as the items are of it
    QHash<int, QWidget*> m_items;
    MessageMap m_messages;
    EventSinkMap m_events;
    int m_writing = 0;
    int m_handling = 0; ///< handlers under way; what they do to the focus is no doing of the user's
    bool m_isWindow = false;
};
