#pragma once

#include <QKeyEvent>

/// Whether the event is the repeat of a held Enter or Escape. Each press ends one window only: the repeats go on to the
/// window below it, which is not meant.
[[nodiscard]] inline bool IsHeldEndKey(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.isAutoRepeat() &&
           (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Escape);
}
