#include "city/PlaceFindLine.h"

#include "host/dialog/Contrast.h"
#include "host/dialog/ThemedControls.h"
#include "host/text/Number.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

using namespace Qt::StringLiterals;

CPlaceFindLine::CPlaceFindLine(QAbstractScrollArea* tree)
    : QFrame(tree), m_tree(tree), m_viewport(tree->viewport()), m_edit(new CKivEdit(this)), m_count(new QLabel(this))
{
    constexpr int margin = 4;
    constexpr int mostChars = 100;
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setAccessibleName(u"名前の検索"_s);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(margin, margin, margin, margin);
    row->setSpacing(margin);
    m_edit->setPlaceholderText(u"名前の一部"_s);
    m_edit->setAccessibleName(u"検索する名前"_s);
    m_edit->setMaxLength(mostChars);
    Contrast::KeepPlaceholderReadable(*m_edit);
    m_edit->installEventFilter(this);
    connect(m_edit, &QLineEdit::textChanged, this, &CPlaceFindLine::TextChanged);
    row->addWidget(m_edit, 1);
    m_count->setAlignment(Qt::AlignCenter);
    m_count->setMinimumWidth(m_count->fontMetrics().horizontalAdvance(u"00000 / 00000"_s));
    row->addWidget(m_count);

    const auto addButton = [this, row](Qt::ArrowType arrow, const QString& text, const QString& tip) {
        auto* button = new QToolButton(this);
        if (text.isEmpty())
            button->setArrowType(arrow);
        else
            button->setText(text);
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        button->setFocusPolicy(Qt::NoFocus); // the keys of the line do the same
        button->setAutoRaise(true);
        row->addWidget(button);
        return button;
    };
    connect(addButton(Qt::UpArrow, {}, u"前を検索 (Shift+F3)"_s), &QToolButton::clicked, this,
            &CPlaceFindLine::PreviousWanted);
    connect(addButton(Qt::DownArrow, {}, u"次を検索 (F3)"_s), &QToolButton::clicked, this, &CPlaceFindLine::NextWanted);
    connect(addButton(Qt::NoArrow, u"×"_s, u"検索を閉じる (Esc)"_s), &QToolButton::clicked, this,
            &CPlaceFindLine::Close);
    m_viewport->installEventFilter(this);
    QWidget* const afterTree = tree->nextInFocusChain();
    setTabOrder(tree, m_edit);
    if (afterTree != this && afterTree != m_edit)
        setTabOrder(m_edit, afterTree);
    hide();
}

void CPlaceFindLine::Open(const QString& text)
{
    if (isHidden() || !m_edit->hasFocus())
        m_edit->selectAll(); // what was looked for the last time; a text takes its place
    if (isHidden()) {
        show();
        Place();
    }
    raise();
    m_edit->setFocus(Qt::OtherFocusReason);
    if (text.isEmpty())
        m_edit->selectAll();
    else
        m_edit->insert(text);
}

void CPlaceFindLine::Close()
{
    hide();
    m_tree->setFocus();
}

QString CPlaceFindLine::Text() const
{
    return m_edit->text();
}

void CPlaceFindLine::ShowCount(int ordinal, int count)
{
    if (count == 0)
        m_count->setText(Text().isEmpty() ? QString() : u"見つかりません"_s);
    else if (ordinal == 0)
        m_count->setText(Number::Format("%d 件", count));
    else
        m_count->setText(Number::Format("%d / %d", ordinal, count));
}

bool CPlaceFindLine::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_viewport && event->type() == QEvent::Resize)
        Place();
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        return OnKey(key->key(), key->modifiers());
    }
    return QFrame::eventFilter(watched, event);
}

bool CPlaceFindLine::OnKey(int key, Qt::KeyboardModifiers modifiers)
{
    const bool isBackward = (modifiers & Qt::ShiftModifier) != 0;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F3:
        isBackward ? Q_EMIT PreviousWanted() : Q_EMIT NextWanted();
        return true;
    case Qt::Key_Down:
        Q_EMIT NextWanted();
        return true;
    case Qt::Key_Up:
        Q_EMIT PreviousWanted();
        return true;
    case Qt::Key_Escape:
        Close();
        return true;
    default:
        return false;
    }
}

/// At the upper right corner, where the names seldom reach.
void CPlaceFindLine::Place()
{
    constexpr int gap = 6;
    constexpr int widest = 340;
    const QRect room = m_viewport->geometry();
    const int width = qMin(widest, room.width() - 2 * gap);
    setGeometry(room.right() - gap - width, room.top() + gap, width, sizeHint().height());
}
