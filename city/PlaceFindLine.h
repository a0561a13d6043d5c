#pragma once

#include <QFrame>

class CKivEdit;
class QAbstractScrollArea;
class QLabel;

/// The find line of the place tree: a small box at the tree's upper corner that opens when the user types.
class CPlaceFindLine : public QFrame
{
    Q_OBJECT

public:
    /// The line belongs to the tree and is hidden at first.
    explicit CPlaceFindLine(QAbstractScrollArea* tree);

    /// Shows the line; a text is typed into it.
    void Open(const QString& text);
    /// Hides the line and hands the focus back to the tree.
    void Close();

    [[nodiscard]] QString Text() const;
    /// Shows which of how many matches is reached; the ordinal is 0 for none of them.
    void ShowCount(int ordinal, int count);

Q_SIGNALS:
    void TextChanged(const QString& text);
    void NextWanted();
    void PreviousWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool OnKey(int key, Qt::KeyboardModifiers modifiers);
    void Place();

    QWidget* m_tree;
    QWidget* m_viewport; ///< of the tree
    CKivEdit* m_edit;    ///< a child of this
    QLabel* m_count;     ///< a child of this
};
