#pragma once

#include <QEvent>
#include <QVariant>

class QObject;

/// A numbered message to the host with two parameters.
class CHostMessage : public QEvent
{
public:
    CHostMessage(int number, QVariant first, QVariant second)
        : QEvent(EventType()), Number(number), First(std::move(first)), Second(std::move(second))
    {
    }

    /// The event type of all host messages.
    [[nodiscard]] static QEvent::Type EventType();

    const int Number;
    const QVariant First;
    const QVariant Second;
};

/// Where the module's messages to the host go.
namespace HostWindow
{
inline constexpr int MessageObsClosed = 2034;     ///< sent to the main window; both parameters 0
inline constexpr int MessageDialogClosed = 2024;  ///< posted to the dialog's parent; 0 and the template number
inline constexpr int MessageModalLoop = 0x06BD;   ///< sent; 1 before a modal dialog runs, 0 after
inline constexpr int MessageListProgress = 0x470; ///< sent; phase 0 with a text, 1 with a percentage, 2 with 0

/// The main window of the host's context; null for none.
[[nodiscard]] QObject* Main();

/// Delivers a message before it returns; nothing happens without a receiver.
void Send(QObject* receiver, int number, const QVariant& first = 0, const QVariant& second = 0);
/// Sends the progress of loading the place list to the main window.
void SendListProgress(int phase, const QVariant& value);
/// Queues a message for the receiver's event loop; nothing happens without a receiver.
void Post(QObject* receiver, int number, const QVariant& first = 0, const QVariant& second = 0);
} // namespace HostWindow
