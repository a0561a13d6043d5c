#include "host/dialog/HostMessage.h"

#include "host/system/HostContext.h"

#include <QCoreApplication>

QEvent::Type CHostMessage::EventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

QObject* HostWindow::Main()
{
    return CHostContext::Current().MainWindow;
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
