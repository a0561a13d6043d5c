#pragma once

#include <QPersistentModelIndex>
#include <QPixmap>
#include <QTreeView>

/// A tree with lines and boxes to expand, one column and one selected item. A press selects when the button is
/// released, so that a drag, which the tree only reports, leaves the selection alone. Names are not edited in place.
class CKivTreeCtrl : public QTreeView
{
    Q_OBJECT

public:
    explicit CKivTreeCtrl(QWidget* parent = nullptr);

    /// The selected item; invalid for none.
    [[nodiscard]] QModelIndex Selected() const;
    /// Selects an item, opens the folders above it and brings it into view.
    void Select(const QModelIndex& index, ScrollHint hint = EnsureVisible);

    /// The item marked as the target of a drop; invalid for none.
    [[nodiscard]] QModelIndex DropHighlight() const { return m_dropHighlight; }
    void SetDropHighlight(const QModelIndex& index);

    /// Brings an item into view, sideways too; what lies deep makes the tree wider than its window.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

    /// A picture of the item that follows the pointer during a drag.
    [[nodiscard]] QPixmap CreateDragImage(const QModelIndex& index) const;

Q_SIGNALS:
    /// The left button went down on the item, at this point of the tree, and the pointer moved on.
    void BeginDrag(const QModelIndex& index, QPoint point);
    void DoubleClicked(const QModelIndex& index);
    /// The user's edit of an item's text in place ended; a null text when it was cancelled.
    void EndLabelEdit(const QModelIndex& index, const QString& text);
    /// Text was typed that is no command of the tree.
    void TextTyped(const QString& text);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;

private:
    [[nodiscard]] bool IsOnExpandBox(QPoint point, const QModelIndex& index) const;

    QPersistentModelIndex m_pressed; ///< the item under the pressed left button
    QPoint m_pressPoint;
    QPersistentModelIndex m_dropHighlight;
};
