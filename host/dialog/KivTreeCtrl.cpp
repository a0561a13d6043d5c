#include "host/dialog/KivTreeCtrl.h"

#include "host/dialog/Contrast.h"

#include <QApplication>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace
{
constexpr int BoxSize = 9;      // of the box with the plus sign
constexpr int WidestName = 320; // pixels; of a longer one the beginning is shown
} // namespace

CKivTreeCtrl::CKivTreeCtrl(QWidget* parent) : QTreeView(parent)
{
    header()->hide();
    setUniformRowHeights(true); // keeps folders of a thousand places quick to open
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setRootIsDecorated(true);
    setAllColumnsShowFocus(true);
    setAttribute(Qt::WA_InputMethodEnabled);
}

QModelIndex CKivTreeCtrl::Selected() const
{
    return selectionModel() ? selectionModel()->selectedIndexes().value(0) : QModelIndex();
}

void CKivTreeCtrl::Select(const QModelIndex& index, ScrollHint hint)
{
    if (!selectionModel())
        return;
    for (QModelIndex folder = index.parent(); folder.isValid(); folder = folder.parent())
        expand(folder);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    scrollTo(index, hint);
}

void CKivTreeCtrl::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    QScrollBar& bar = *horizontalScrollBar();
    const int before = bar.value();
    QTreeView::scrollTo(index, hint);
    const QRect shown = visualRect(index);
    if (shown.isNull())
        return;
    const int text = shown.left() + bar.value();
    const int left = text - indentation(); // the box to expand it is shown too
    const int right = text + std::min(sizeHintForIndex(index).width(), WidestName);
    if (right > header()->sectionSize(0)) {
        header()->setMinimumSectionSize(right);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // at once, for it would cover the lowest row later
        updateGeometries();
        QTreeView::scrollTo(index, hint);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }
    // No further than it takes; the base goes to one end of the row or the other.
    bar.setValue(std::clamp(before, std::min(right - viewport()->width(), left), left));
}

void CKivTreeCtrl::SetDropHighlight(const QModelIndex& index)
{
    if (m_dropHighlight == index)
        return;
    m_dropHighlight = index;
    viewport()->update();
}

QPixmap CKivTreeCtrl::CreateDragImage(const QModelIndex& index) const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect =
        QRect(QPoint(), itemDelegateForIndex(index)->sizeHint(option, index).boundedTo({WidestName, WidestName}));
    option.state |= QStyle::State_Enabled;
    option.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    QPixmap image(option.rect.size() * devicePixelRatioF());
    image.setDevicePixelRatio(devicePixelRatioF());
    image.fill(Qt::transparent);
    QPainter painter(&image);
    constexpr double ghostly = 0.8;
    painter.setOpacity(ghostly);
    painter.fillRect(option.rect, palette().color(QPalette::AlternateBase));
    itemDelegateForIndex(index)->paint(&painter, option, index);
    return image;
}

bool CKivTreeCtrl::IsOnExpandBox(QPoint point, const QModelIndex& index) const
{
    const int left = visualRect(index).left();
    return point.x() < left && point.x() >= left - indentation();
}

void CKivTreeCtrl::mousePressEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    const QModelIndex index = indexAt(point);
    m_pressed = QModelIndex();
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    if (IsOnExpandBox(point, index)) {
        setExpanded(index, !isExpanded(index));
        return;
    }
    if (point.x() < visualRect(index).left())
        return;
    m_pressed = index;
    m_pressPoint = point;
}

void CKivTreeCtrl::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressed.isValid() || (event->buttons() & Qt::LeftButton) == 0)
        return;
    if ((event->position().toPoint() - m_pressPoint).manhattanLength() < QApplication::startDragDistance())
        return;
    const QModelIndex index = m_pressed;
    m_pressed = QModelIndex();
    Q_EMIT BeginDrag(index, m_pressPoint);
}

void CKivTreeCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    const QModelIndex index = m_pressed;
    m_pressed = QModelIndex();
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    const int sideways = horizontalScrollBar()->value();
    Select(index);
    horizontalScrollBar()->setValue(sideways); // a second click is to meet the same name
}

void CKivTreeCtrl::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    const QPersistentModelIndex index = indexAt(point);
    if (event->button() != Qt::LeftButton || !index.isValid() || point.x() < visualRect(index).left()) {
        mousePressEvent(event); // a quick second click on an expand box
        return;
    }
    if (index != Selected()) {
        mousePressEvent(event); // two quick clicks on neighbours
        return;
    }
    if (model()->hasChildren(index))
        setExpanded(index, !isExpanded(index));
    Q_EMIT DoubleClicked(index);
}

void CKivTreeCtrl::keyPressEvent(QKeyEvent* event)
{
    const bool isCommand = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    const QString text = event->text();
    const bool opensFolders = text == u"+" || text == u"-" || text == u"*";
    if (event->key() == Qt::Key_Space && isCommand)
        return; // would leave nothing selected
    if (!isCommand && !opensFolders && !text.isEmpty() && text.at(0).isPrint() && !text.at(0).isSpace())
        Q_EMIT TextTyped(text);
    else
        QTreeView::keyPressEvent(event);
}

void CKivTreeCtrl::inputMethodEvent(QInputMethodEvent* event)
{
    // The input method shows the text itself until it is settled.
    if (!event->commitString().isEmpty())
        Q_EMIT TextTyped(event->commitString());
    event->accept();
}

QVariant CKivTreeCtrl::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImEnabled)
        return true;
    if (query == Qt::ImCursorRectangle)
        return visualRect(currentIndex());
    return QTreeView::inputMethodQuery(query);
}

void CKivTreeCtrl::focusInEvent(QFocusEvent* event)
{
    QTreeView::focusInEvent(event);
    setAttribute(Qt::WA_InputMethodEnabled); // the base clears it for items that cannot be edited
}

void CKivTreeCtrl::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    setAttribute(Qt::WA_InputMethodEnabled);
}

void CKivTreeCtrl::drawRow(QPainter* painter, const QStyleOptionViewItem& options, const QModelIndex& index) const
{
    QTreeView::drawRow(painter, options, index);
    if (m_dropHighlight != index)
        return;
    QRect frame = visualRect(index);
    frame.adjust(0, 0, -1, -1);
    QColor fill = palette().color(QPalette::Link);
    painter->save();
    painter->setPen(fill);
    constexpr int faint = 60;
    fill.setAlpha(faint);
    painter->setBrush(fill);
    painter->drawRect(frame);
    painter->restore();
}

/// Dotted lines from the folder down to its items, and a box with a plus or minus where there is something to open.
void CKivTreeCtrl::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    painter->save();
    const QColor ink = Contrast::Halfway(palette().color(QPalette::Text), palette().color(QPalette::Base));
    painter->setPen(QPen(ink, 1, Qt::DotLine));
    const int middle = rect.center().y();
    int x = rect.right() + 1 - indentation() / 2;
    const auto hasNext = [](const QModelIndex& item) { return item.siblingAtRow(item.row() + 1).isValid(); };
    const bool isFirst = !index.parent().isValid() && index.row() == 0;
    painter->drawLine(x, middle, rect.right(), middle);
    painter->drawLine(x, isFirst ? middle : rect.top(), x, hasNext(index) ? rect.bottom() : middle);
    for (QModelIndex folder = index.parent(); folder.isValid(); folder = folder.parent()) {
        x -= indentation();
        if (hasNext(folder))
            painter->drawLine(x, rect.top(), x, rect.bottom());
    }
    if (model()->hasChildren(index)) {
        const int center = rect.right() + 1 - indentation() / 2;
        const QRect box(center - BoxSize / 2, middle - BoxSize / 2, BoxSize - 1, BoxSize - 1);
        painter->setPen(ink);
        painter->setBrush(palette().color(QPalette::Base));
        painter->drawRect(box);
        painter->setPen(palette().color(QPalette::Text));
        painter->drawLine(box.left() + 2, middle, box.right() - 1, middle);
        if (!isExpanded(index))
            painter->drawLine(center, box.top() + 2, center, box.bottom() - 1);
    }
    painter->restore();
}
