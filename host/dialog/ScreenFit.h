#pragma once

#include <QRect>

class QWidget;

/// Windows on small screens and at large scales: none is larger than the screen, none leaves it.
namespace ScreenFit
{
/// What the window's screen has room for inside a frame, in the window's own pixels.
[[nodiscard]] QSize Room(const QWidget& window);

/// The content itself where it fits the room, if need be with smaller maps and lists, else a new area, a child of the
/// content's parent, that scrolls it and follows the focus.
[[nodiscard]] QWidget* Scrolled(QWidget* content, QSize room);

/// Makes a window that is larger than its screen as large as that, and brings it wholly onto it.
void Keep(QWidget& window);
/// Where a window of this size goes beside another: to its right or its left where the screen has the room, else over
/// the other, to the left of `seam` and below it, so that what is right of that and above it stays in sight where that
/// is possible. All in the screen's pixels.
[[nodiscard]] QPoint Beside(const QRect& other, QPoint seam, QSize size, const QRect& screen);
} // namespace ScreenFit
