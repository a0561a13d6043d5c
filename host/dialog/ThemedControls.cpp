#include "host/dialog/ThemedControls.h"

#include "host/text/Number.h"

#include <QPainter>
#include <QResizeEvent>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

void CKivButton::SetColors(quint32 text, quint32 disabled, quint32 highlighted)
{
    setStyleSheet(Number::Format("CKivButton { color: #%06x; } CKivButton:disabled { color: #%06x; } "
                                 "CKivButton:hover { color: #%06x; }",
                                 text, disabled, highlighted));
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

void CKivSlider::paintEvent(QPaintEvent* event)
{
    if (tickInterval() > 0) {
        constexpr int handleHalf = 7;
        constexpr int tickLength = 4;
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
        const int span = height() - 2 * handleHalf;
        for (int tick = minimum(); tick <= maximum(); tick += tickInterval()) {
            const int y = handleHalf + span * (tick - minimum()) / std::max(maximum() - minimum(), 1);
            painter.drawLine(0, y, tickLength, y);
            painter.drawLine(width() - 1 - tickLength, y, width() - 1, y);
        }
    }
    QSlider::paintEvent(event);
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
