#include "host/dialog/ThemedControls.h"

#include "host/text/Number.h"

#include <QResizeEvent>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

void CKivButton::SetColors(quint32 border, quint32 face, quint32 text)
{
    // Only the resting look: hover, focus and disabled states stay the theme's, so that they can be told apart.
    setStyleSheet(Number::Format("CKivButton:enabled { border-color: #%06x; background: #%06x; color: #%06x; }", border,
                                 face, text));
}

void CKivEdit::SetText(const QString& newText)
{
    if (text() != newText)
        setText(newText);
}

int CKivEdit::SelectionEnd() const
{
    return hasSelectedText() ? selectionEnd() : cursorPosition();
}

CKivSlider::CKivSlider(QWidget* parent) : QSlider(Qt::Vertical, parent)
{
    setInvertedAppearance(true);
    setInvertedControls(true);
}

CKivSpinButton::CKivSpinButton(QWidget* parent) : QWidget(parent)
{
    const auto makeArrow = [this](Qt::ArrowType arrow, int delta) {
        auto* button = new QToolButton(this);
        button->setArrowType(arrow);
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::NoFocus); // the box beside it keeps the caret; its arrow keys do the same
        connect(button, &QToolButton::clicked, this, [this, delta] { Q_EMIT DeltaPos(delta); });
        return button;
    };
    m_up = makeArrow(Qt::UpArrow, -1);
    m_down = makeArrow(Qt::DownArrow, 1);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize CKivSpinButton::sizeHint() const
{
    constexpr int boxMargins = 12; // of the box beside it
    const int height = fontMetrics().height() + boxMargins;
    return {height * 3 / 4, height};
}

void CKivSpinButton::SetCaption(const QString& caption)
{
    setAccessibleName(caption);
    m_up->setAccessibleName(caption + u" 増やす"_s);
    m_down->setAccessibleName(caption + u" 減らす"_s);
}

void CKivSpinButton::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int half = height() / 2;
    m_up->setGeometry(0, 0, width(), half);
    m_down->setGeometry(0, half, width(), height() - half);
}

void CKivSpinButton::wheelEvent(QWheelEvent* event)
{
    if (!isEnabled() || event->angleDelta().y() == 0)
        return;
    Q_EMIT DeltaPos(event->angleDelta().y() > 0 ? -1 : 1);
    event->accept();
}
