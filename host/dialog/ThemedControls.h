#pragma once

#include "host/dialog/WheelNotch.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTreeView>

class CNumberInput;

/// The host's themed controls. Templates name them as widget classes; the theme styles them by these names.

class CKivRadioButton : public QRadioButton
{
    Q_OBJECT

public:
    using QRadioButton::QRadioButton;
};

class CKivCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    using QCheckBox::QCheckBox;
};

class CKivComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit CKivComboBox(QWidget* parent = nullptr);

protected:
    /// The wheel turns a list that has the focus only: a pointer that rests on it means what lies beside it.
    void wheelEvent(QWheelEvent* event) override;
};

/// A push button; its text colours can be set apart from the theme's.
class CKivButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;

    /// Colours of the text at rest, disabled and under the pointer, 0xRRGGBB each. Where the text cannot be read on the
    /// palette's buttons, the button gets a ground to go with it.
    void SetColors(quint32 text, quint32 disabled, quint32 highlighted);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void PairColors();

    QString m_colors; ///< of the text as a style sheet; empty for the theme's
    QColor m_textColor;
};

/// A one-line text box with the caret rules of its dialogs.
class CKivEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// Replaces the text; a text that is there already stays untouched, with its caret.
    void SetText(const QString& newText);

    /// End of the selection, or the caret without one.
    [[nodiscard]] int SelectionEnd() const;

    /// Makes this a box for decimal numbers, whole ones only or any, of at most so many characters; a longer text that
    /// the program writes may stand. What is refused is shown in a tip.
    void TakeNumbers(bool isWhole, int maxChars);
    [[nodiscard]] bool TakesNumbers() const { return m_input != nullptr; }

    /// Shows a number that the program writes. While the user is in the box, a text that `standing`, what it means at
    /// the box's own format, means that number already keeps its digits and its caret; so does a text that is no
    /// number yet (empty `standing`) while the value in force is what it was.
    void ShowNumber(const QString& number, const QString& standing);
    /// Remembers the value in force, as the box would show it.
    void SetInForce(const QString& number) { m_inForce = number; }

    /// Whether the box holds something that no handler has applied.
    [[nodiscard]] bool IsPending() const { return m_isPending; }
    void SetPending(bool isPending) { m_isPending = isPending; }

private:
    void TellRefusal();

    CNumberInput* m_input = nullptr; ///< a child of this; null: any text
    QString m_inForce;
    bool m_isPending = false;
};

/// A vertical track bar whose top is its lowest value. A key held, a drag and a held click are one scroll action each,
/// which ends when the key or the button is let go; anything else that moves it, such as the wheel, ends at once.
class CKivSlider : public QSlider
{
    Q_OBJECT

public:
    explicit CKivSlider(QWidget* parent = nullptr);

Q_SIGNALS:
    /// A scroll action ended, wherever it led.
    void EndScroll();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    /// As for a list: with the focus only.
    void wheelEvent(QWheelEvent* event) override;
    /// The theme's slider has no ticks of its own.
    void paintEvent(QPaintEvent* event) override;

private:
    void EndHeldScroll();

    bool m_isHeld = false; ///< by a key or a mouse button
};

/// A list in report style: rows of one height under headings, one row selected at a time. It shows whatever model it
/// is given.
class CKivListCtrl : public QTreeView
{
    Q_OBJECT

public:
    explicit CKivListCtrl(QWidget* parent = nullptr);

    /// Selects and marks whole rows instead of cells.
    void SetFullRowSelect();

    /// Width of the rows in pixels while the vertical scroll bar shows.
    [[nodiscard]] int WidthBesideScrollBar() const;

    /// Row of the selection; -1 without one.
    [[nodiscard]] int SelectedRow() const;
    /// Selects a row and gives it the list's own focus, without taking the keyboard.
    void SelectRow(int row);
};

/// A pair of arrows without a value of its own: each click, or each repeat of a held one, reports a step.
class CKivSpinButton : public QWidget
{
    Q_OBJECT

public:
    explicit CKivSpinButton(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

    /// The box beside it, whose value it changes; not owned. The wheel turns it while the box has the focus.
    void SetBuddy(QWidget* box) { m_buddy = box; }

    /// Names the arrows for people who cannot see them; the caption of what they change.
    void SetCaption(const QString& caption);

Q_SIGNALS:
    /// Negative for the upper arrow, positive for the lower.
    void DeltaPos(int delta);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QAbstractButton* m_up = nullptr;   ///< a child of this
    QAbstractButton* m_down = nullptr; ///< a child of this
    QPointer<QWidget> m_buddy;
    CWheelNotch m_wheel;
};
