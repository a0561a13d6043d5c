#pragma once

#include "host/control/Control.h"

#include <QWidget>

#include <memory>

/// The module's side of a control: a child window that holds a control of the register and gives its numbers names.
class CControlWindow : public QWidget
{
    Q_OBJECT

public:
    explicit CControlWindow(QWidget* parent = nullptr);
    ~CControlWindow() override;

    /// Whether Create succeeded and the control was not destroyed since.
    [[nodiscard]] bool IsCreated() const { return m_control != nullptr; }

    /// The child number under which the dialog receives the control's events; 0 before Create.
    [[nodiscard]] int ControlId() const { return m_controlId; }

    /// The control itself, for a host that adds its own; null before Create. Stays owned by this window.
    [[nodiscard]] IControl* Control() const { return m_control.get(); }

    /// Receives the control's events; may be set before Create.
    void SetEventSink(IControl::EventSink sink);

    /// Ends the control and takes this window, hidden, off its parent; nothing more is heard of the control. It may be
    /// called from inside one of the control's events.
    void DestroyControl();

    /// Invalidates, erases and paints the window at once; nothing happens while it is hidden.
    void RepaintNow();

Q_SIGNALS:
    /// A method was invoked; for transcripts and logs.
    void Invoked(int method, const QVariantList& arguments, const QVariant& result);

protected:
    /// Creates the registered class as a hidden child of the parent. False when it is unknown or refuses.
    [[nodiscard]] bool CreateControl(const QString& className, QWidget* parent, const QRect& rect, int controlId);

    QVariant Invoke(int method, const QVariantList& arguments);

    void resizeEvent(QResizeEvent* event) override;

private:
    void EndControl();

    std::unique_ptr<IControl> m_control;
    int m_calls = 0; ///< of the control's methods that are under way
    IControl::EventSink m_sink;
    int m_controlId = 0;
};
