#pragma once

#include <QObject>
#include <QString>

class QWidget;

/// Places and sizes of windows from one run to the next. It watches the whole application: a window that it knows comes
/// up where it was when it was last hidden, and never off the screen.
class CWindowMemory : public QObject
{
    Q_OBJECT

public:
    CWindowMemory();

    /// Whether a place is stored for this window.
    [[nodiscard]] static bool Knows(const QWidget& window);
    /// Stores where the window is now; nothing for a window that has no name here.
    static void Save(const QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What the window is stored under; empty for one that is placed by its parent, such as a message box.
    [[nodiscard]] static QString NameOf(const QWidget& window);
    static void Restore(QWidget& window);
};
