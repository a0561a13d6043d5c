#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

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
    using QComboBox::QComboBox;
};

/// A push button; its text colours can be set apart from the theme's.
class CKivButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;

    /// Colours of the text at rest, disabled and under the pointer, 0xRRGGBB each.
    void SetColors(quint32 text, quint32 disabled, quint32 highlighted);
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
};

/// A vertical track bar whose top is its lowest value.
class CKivSlider : public QSlider
{
    Q_OBJECT

public:
    explicit CKivSlider(QWidget* parent = nullptr);

protected:
    /// The theme's slider has no ticks of its own.
    void paintEvent(QPaintEvent* event) override;
};

/// A pair of arrows without a value of its own: each click, or each repeat of a held one, reports a step.
class CKivSpinButton : public QWidget
{
    Q_OBJECT

public:
    explicit CKivSpinButton(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

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
};
