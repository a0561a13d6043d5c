#include "host/control_window/ControlWindow.h"

#include "host/control/ControlRegister.h"

#include <QPointer>

namespace
{
/// Keeps a control that is still at work on the stack until the event loop comes round.
class CEndingControl : public QObject
{
public:
    CEndingControl(std::unique_ptr<IControl> control, QObject* parent) : QObject(parent), m_control(std::move(control))
    {
        deleteLater();
    }

private:
    std::unique_ptr<IControl> m_control;
};
} // namespace

CControlWindow::CControlWindow(QWidget* parent) : QWidget(parent)
{
    // The control covers it wholly; without this each redraw of the control would paint the dialog beneath it too.
    setAttribute(Qt::WA_OpaquePaintEvent);
    hide();
}

CControlWindow::~CControlWindow()
{
    if (!m_control)
        return;
    m_control->SetEventSink({});
    if (m_calls > 0)
        EndControl();
}

bool CControlWindow::CreateControl(const QString& className, QWidget* parent, const QRect& rect, int controlId)
{
    setParent(parent);
    setGeometry(rect);
    m_control = CControlRegister::Instance().Create(className, this);
    if (!m_control || !m_control->Window()) {
        m_control.reset();
        return false;
    }
    m_controlId = controlId;
    m_control->SetEventSink(m_sink);
    QWidget* window = m_control->Window();
    window->setAttribute(Qt::WA_OpaquePaintEvent);
    window->setGeometry(this->rect());
    window->show();
    setFocusProxy(window);
    return true;
}

void CControlWindow::SetEventSink(IControl::EventSink sink)
{
    m_sink = std::move(sink);
    if (m_control)
        m_control->SetEventSink(m_sink);
}

void CControlWindow::DestroyControl()
{
    hide();
    setParent(nullptr);
    m_controlId = 0;
    m_sink = {};
    if (!m_control)
        return;
    m_control->SetEventSink({});
    setFocusProxy(nullptr);
    EndControl();
}

/// The control goes once it is off the stack. In the middle of a method it outlives this window, which the host may
/// end.
void CControlWindow::EndControl()
{
    QWidget* const window = m_control->Window();
    window->hide();
    window->setParent(nullptr); // its owner deletes it, not this window
    new CEndingControl(std::move(m_control), m_calls > 0 ? nullptr : this);
}

void CControlWindow::RepaintNow()
{
    if (m_control && isVisible())
        m_control->Window()->repaint();
}

QVariant CControlWindow::Invoke(int method, const QVariantList& arguments)
{
    if (!m_control)
        return {};
    const QPointer<CControlWindow> self(this); // what the control reports to its owner may end this window
    ++m_calls;
    const QVariant result = m_control->Invoke(method, arguments);
    if (!self)
        return result;
    --m_calls;
    Q_EMIT Invoked(method, arguments, result);
    return result;
}

void CControlWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_control)
        m_control->Window()->setGeometry(rect());
}
