#include "host/dialog/ScreenFit.h"

#include <QApplication>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace
{
// What the desktop's own frame takes, until a window is shown.
constexpr QSize LikelyFrame(8, 34);
// Maps and lists ask for more than they need; on a small screen they are content with this.
constexpr QSize LeastArea(200, 120);
// Of layouts where there is no room for more.
constexpr int SideMargin = 6;
constexpr int TightMargin = 2;
constexpr int TightSpacing = 3;

QSize LeastSize(const QWidget& content)
{
    return content.minimumSizeHint().expandedTo(content.minimumSize());
}

/// Lets no size that was kept stand in the way of the new ones.
void Relayout(const QWidget& content)
{
    for (QWidget* item : content.findChildren<QWidget*>())
        item->updateGeometry();
    content.layout()->invalidate();
    content.layout()->activate();
}

/// Takes from maps and lists what the window is too large for the room.
void ShrinkAreas(QWidget* content, QSize room)
{
    const QSize excess = (LeastSize(*content) - room).expandedTo(QSize(0, 0));
    if (excess.isNull())
        return;
    for (QWidget* area : content->findChildren<QWidget*>()) {
        const QSize least = area->minimumSize();
        if (least.height() > LeastArea.height() && least.width() > LeastArea.width())
            area->setMinimumSize((least - excess).expandedTo(LeastArea));
    }
    Relayout(*content);
}

/// Takes the air out of the layouts.
void Tighten(QWidget* content, QSize room)
{
    const QSize least = LeastSize(*content);
    if (least.width() <= room.width() && least.height() <= room.height())
        return;
    for (QLayout* layout : content->findChildren<QLayout*>()) {
        const QMargins air = layout->contentsMargins();
        layout->setContentsMargins(std::min(air.left(), SideMargin), std::min(air.top(), TightMargin),
                                   std::min(air.right(), SideMargin), std::min(air.bottom(), TightMargin));
        layout->setSpacing(std::min(layout->spacing(), TightSpacing));
    }
    Relayout(*content);
}
} // namespace

QSize ScreenFit::Room(const QWidget& window)
{
    const QSize frame = window.frameGeometry().size() - window.size();
    return window.screen()->availableSize() - (frame.isEmpty() ? LikelyFrame : frame);
}

QWidget* ScreenFit::Scrolled(QWidget* content, QSize room)
{
    if (content->layout()) {
        ShrinkAreas(content, room);
        Tighten(content, room);
    }
    const QSize least = LeastSize(*content);
    if (least.width() <= room.width() && least.height() <= room.height())
        return content;
    auto* area = new QScrollArea(content->parentWidget());
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    const int bar = area->verticalScrollBar()->sizeHint().width();
    area->setMinimumSize((least + QSize(bar, bar)).boundedTo(room));
    QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
        if (now && area->widget() && area->widget()->isAncestorOf(now))
            area->ensureWidgetVisible(now);
    });
    return area;
}

void ScreenFit::Keep(QWidget& window)
{
    const QSize room = Room(window);
    if (window.width() > room.width() || window.height() > room.height())
        window.resize(window.size().boundedTo(room));
    const QRect screen = window.screen()->availableGeometry();
    const QRect frame = window.frameGeometry();
    const QPoint corner(std::max(screen.left(), std::min(frame.left(), screen.right() + 1 - frame.width())),
                        std::max(screen.top(), std::min(frame.top(), screen.bottom() + 1 - frame.height())));
    if (corner != frame.topLeft())
        window.move(corner);
}

QPoint ScreenFit::Beside(const QRect& other, QPoint seam, QSize size, const QRect& screen)
{
    const int end = screen.right() + 1;
    QPoint corner(other.right() + 1, other.top());
    if (corner.x() + size.width() > end)
        corner.setX(other.left() - size.width());
    if (corner.x() < screen.left())
        corner = {std::max(screen.left(), std::min(seam.x(), end) - size.width()), seam.y()};
    const int lowest = std::max(screen.top(), screen.bottom() + 1 - size.height());
    corner.setY(std::clamp(corner.y(), screen.top(), lowest));
    return corner;
}
