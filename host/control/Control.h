#pragma once

#include <QVariant>

#include <functional>
#include <utility>

class QWidget;

/// A control of the host: methods, properties and events that go by number. Everything the module asks of a sky
/// engine, a globe map or a road map passes through this one seam; a recording double is twenty lines.
class IControl
{
public:
    using EventSink = std::function<void(int event, const QVariantList& arguments)>;

    IControl() = default;
    IControl(const IControl&) = delete;
    IControl& operator=(const IControl&) = delete;
    virtual ~IControl() = default;

    /// The window that shows the control; lives as long as the control.
    [[nodiscard]] virtual QWidget* Window() = 0;

    /// Calls a numbered method. An unknown number or a wrong argument is ignored and returns an invalid value.
    virtual QVariant Invoke(int method, const QVariantList& arguments) = 0;

    /// Sets a numbered property; an unknown number is ignored.
    virtual void SetControlProperty(int property, const QVariant& value) = 0;

    /// Receives the control's events; one listener, none when empty.
    void SetEventSink(EventSink sink) { m_sink = std::move(sink); }

protected:
    /// Raises a numbered event; the listener runs before this returns.
    void RaiseEvent(int event, const QVariantList& arguments) const
    {
        // A copy: the listener may end its own life, or set another one.
        if (const EventSink sink = m_sink)
            sink(event, arguments);
    }

private:
    EventSink m_sink;
};
