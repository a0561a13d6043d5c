#include "host/dialog/HostMessage.h"

#include <QCoreApplication>
#include <QPointer>

namespace
{
QPointer<QObject>& MainWindow()
{
    static QPointer<QObject> window;
    return window;
}
} // namespace

QEvent::Type CHostMessage::EventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

void HostWindow::SetMain(QObject* window)
{
    MainWindow() = window;
}

QObject* HostWindow::Main()
{
    return MainWindow();
}

void HostWindow::Send(QObject* receiver, int number, const QVariant& first, const QVariant& second)
{
    if (!receiver)
        return;
    CHostMessage message(number, first, second);
    QCoreApplication::sendEvent(receiver, &message);
}

void HostWindow::SendListProgress(int phase, const QVariant& value)
{
    Send(Main(), MessageListProgress, phase, value);
}

void HostWindow::Post(QObject* receiver, int number, const QVariant& first, const QVariant& second)
{
    if (receiver)
        QCoreApplication::postEvent(receiver, new CHostMessage(number, first, second)); // the event loop owns it
}
