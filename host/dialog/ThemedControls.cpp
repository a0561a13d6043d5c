#include "host/dialog/ThemedControls.h"

#include "host/dialog/Contrast.h"
#include "host/dialog/HeldKey.h"
#include "host/dialog/NumberInput.h"
#include "host/text/Number.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

void CKivButton::SetColors(quint32 text, quint32 disabled, quint32 highlighted)
{
    m_colors = Number::Format("CKivButton { color: #%06x; } CKivButton:disabled { color: #%06x; } "
                              "CKivButton:hover { color: #%06x; }",
                              text, disabled, highlighted);
    m_textColor = QColor::fromRgb(text);
    PairColors();
}

/// The host's look may have another ground than the colours are made for; then the button gets its own. The ground is
/// asked of the parent, as a style sheet changes the palette of the button itself.
void CKivButton::PairColors()
{
    const QColor ground = (parentWidget() ? parentWidget()->palette() : QPalette()).color(QPalette::Button);
    const QColor fitting = Contrast::GroundFor(m_textColor, ground);
    const QString pair =
        fitting == ground
            ? QString()
            : u"CKivButton { background: %1; border: 1px solid %2; border-radius: 3px; padding: 5px 12px; } "
              "CKivButton:hover { background: %3; } CKivButton:pressed { background: %4; } "
              "CKivButton:focus { border-color: %5; }"_s.arg(fitting.name(), Contrast::Halfway(fitting, ground).name(),
                                                             fitting.lighter(115).name(), fitting.darker(125).name(),
                                                             palette().color(QPalette::Highlight).name());
    if (const QString sheet = m_colors + pair; sheet != styleSheet())
        setStyleSheet(sheet);
}

void CKivButton::changeEvent(QEvent* event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_colors.isEmpty())
        PairColors();
}

void CKivButton::keyPressEvent(QKeyEvent* event)
{
    if (!IsHeldEndKey(*event)) // a press is a click, however long the key is held
        QPushButton::keyPressEvent(event);
}

CKivComboBox::CKivComboBox(QWidget* parent) : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
}

void CKivComboBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
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

void CKivEdit::TakeNumbers(bool isWhole, int maxChars)
{
    if (!m_input) {
        m_input = new CNumberInput(this);
        setValidator(m_input);
        setInputMethodHints(Qt::ImhPreferLatin);
        connect(this, &QLineEdit::inputRejected, this, &CKivEdit::TellRefusal);
    }
    m_input->Allow(isWhole, maxChars);
}

void CKivEdit::ShowNumber(const QString& number, const QString& standing)
{
    const bool isSame = standing.isEmpty() ? m_inForce == number : standing == number;
    m_inForce = number;
    if (hasFocus() && isSame)
        return;
    if (m_input && number.size() > m_input->Longest())
        m_input->Allow(m_input->IsWhole(), static_cast<int>(number.size()));
    SetText(number);
}

void CKivEdit::TellRefusal()
{
    const QString what = m_input->IsWhole() ? u"整数"_s : u"数値"_s;
    QToolTip::showText(mapToGlobal(QPoint(0, height())),
                       what + u"を入力してください（"_s + QString::number(m_input->Longest()) + u" 文字まで）。"_s,
                       this);
}

CKivSlider::CKivSlider(QWidget* parent) : QSlider(Qt::Vertical, parent)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    setInvertedAppearance(true);
    setInvertedControls(true);
    connect(this, &QSlider::valueChanged, this, [this] {
        if (!m_isHeld)
            Q_EMIT EndScroll();
    });
}

void CKivSlider::EndHeldScroll()
{
    if (!m_isHeld)
        return;
    m_isHeld = false;
    Q_EMIT EndScroll();
}

void CKivSlider::mousePressEvent(QMouseEvent* event)
{
    const bool wasHeld = m_isHeld;
    m_isHeld = true;
    QSlider::mousePressEvent(event);
    if (!event->isAccepted())
        m_isHeld = wasHeld; // not one of its buttons
}

void CKivSlider::mouseReleaseEvent(QMouseEvent* event)
{
    QSlider::mouseReleaseEvent(event);
    if (event->buttons() == Qt::NoButton)
        EndHeldScroll();
}

void CKivSlider::keyPressEvent(QKeyEvent* event)
{
    const bool wasHeld = m_isHeld;
    m_isHeld = true;
    QSlider::keyPressEvent(event);
    if (!event->isAccepted())
        m_isHeld = wasHeld; // not one of its keys
}

void CKivSlider::keyReleaseEvent(QKeyEvent* event)
{
    QSlider::keyReleaseEvent(event);
    if (!event->isAutoRepeat() && !isSliderDown())
        EndHeldScroll();
}

void CKivSlider::focusOutEvent(QFocusEvent* event)
{
    QSlider::focusOutEvent(event);
    if (!isSliderDown())
        EndHeldScroll(); // the release of the key goes elsewhere
}

void CKivSlider::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QSlider::wheelEvent(event);
    else
        event->ignore();
}

void CKivSlider::paintEvent(QPaintEvent* event)
{
    if (tickInterval() > 0) {
        constexpr int handleHalf = 7;
        constexpr int tickLength = 4;
        constexpr int tickDistance = 12; // from the groove to the outer end of a tick
        QPainter painter(this);
        painter.setPen(Contrast::Halfway(palette().color(QPalette::WindowText), palette().color(QPalette::Window)));
        const int span = height() - 2 * handleHalf;
        const int left = width() / 2 - tickDistance;
        const int right = width() / 2 + tickDistance - 1;
        for (int tick = minimum(); tick <= maximum(); tick += tickInterval()) {
            const int y = handleHalf + span * (tick - minimum()) / std::max(maximum() - minimum(), 1);
            painter.drawLine(left, y, left + tickLength, y);
            painter.drawLine(right - tickLength, y, right, y);
        }
    }
    QSlider::paintEvent(event);
}

CKivListCtrl::CKivListCtrl(QWidget* parent) : QTreeView(parent)
{
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true); // no row is measured, so a long list shows at once
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    header()->setStretchLastSection(false); // columns keep the widths they are given
    header()->setSectionsMovable(false);
}

void CKivListCtrl::SetFullRowSelect()
{
    setSelectionBehavior(SelectRows);
    setAllColumnsShowFocus(true);
}

int CKivListCtrl::WidthBesideScrollBar() const
{
    return std::max(0, maximumViewportSize().width() - style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
}

int CKivListCtrl::SelectedRow() const
{
    const QModelIndexList rows = selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
    return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void CKivListCtrl::SelectRow(int row)
{
    if (model())
        setCurrentIndex(model()->index(row, 0));
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
    m_up->setAccessibleName(caption + u"を増やす"_s);
    m_down->setAccessibleName(caption + u"を減らす"_s);
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
    const int turned = event->angleDelta().y();
    if (!isEnabled() || turned == 0 || !m_buddy || !m_buddy->hasFocus()) {
        event->ignore();
        return;
    }
    if (const int step = m_wheel.Take(turned); step != 0)
        Q_EMIT DeltaPos(-step);
    event->accept();
}
