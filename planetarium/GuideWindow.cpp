#include "planetarium/GuideWindow.h"

#include "host/dialog/ScreenFit.h"

#include <QAction>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace
{
constexpr int PageWidth = 760; // pixels
constexpr int ContentsWidth = 220;
constexpr int Margin = 16;
constexpr int BlockNumber = Qt::UserRole; ///< of a heading, in the contents

/// A browser whose pictures are never wider than its page.
class CGuideBrowser : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override
    {
        const QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return resource;
        QImage picture = resource.value<QImage>();
        if (picture.isNull())
            picture.loadFromData(resource.toByteArray());
        const int widest = PageWidth - 6 * Margin;
        return picture.width() <= widest ? picture : picture.scaledToWidth(widest, Qt::SmoothTransformation);
    }
};
} // namespace

CGuideWindow::CGuideWindow(QWidget* parent, const QString& folder)
    : QWidget(parent, Qt::Window), m_text(new CGuideBrowser(this)), m_contents(new QTreeWidget(this)),
      m_find(new QLineEdit(this)), m_found(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"使い方"_s);
    setProperty("windowMemory", u"WindowGuide"_s);
    m_text->setSearchPaths({folder});
    m_text->setOpenExternalLinks(false);
    m_text->setAccessibleName(u"使い方"_s);
    m_text->document()->setDocumentMargin(Margin);
    QPalette marked = m_text->palette(); // what was found is marked while the find line has the focus, too
    for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText})
        marked.setColor(QPalette::Inactive, role, marked.color(QPalette::Active, role));
    m_text->setPalette(marked);
    m_contents->setHeaderHidden(true);
    m_contents->setAccessibleName(u"目次"_s);
    m_find->setPlaceholderText(u"使い方を検索 (Ctrl+F)"_s);
    m_find->setAccessibleName(u"使い方を検索"_s);
    m_find->setClearButtonEnabled(true);
    Layout();
    resize(QSize(ContentsWidth + PageWidth, 680).boundedTo(ScreenFit::Room(*this)));

    connect(m_contents, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item)
            ScrollTo(m_text->document()->findBlockByNumber(item->data(0, BlockNumber).toInt()));
    });
    connect(m_find, &QLineEdit::textEdited, this, [this] { Find(Direction::Here); });
    connect(m_find, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty())
            m_found->clear();
    });
    const auto addKeys = [this](const QList<QKeySequence>& keys, auto run) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, run);
        addAction(action);
    };
    addKeys({QKeySequence::Find}, [this] {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
    });
    addKeys({Qt::Key_F3}, [this] { Find(Direction::Forward); });
    addKeys({Qt::SHIFT | Qt::Key_F3}, [this] { Find(Direction::Backward); });
    m_text->setFocus();
}

void CGuideWindow::Layout()
{
    const auto addButton = [this](Qt::ArrowType arrow, const QString& tip, Direction direction) {
        auto* button = new QToolButton(this);
        button->setArrowType(arrow);
        button->setAutoRaise(true);
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        connect(button, &QToolButton::clicked, this, [this, direction] { Find(direction); });
        return button;
    };
    auto* top = new QHBoxLayout;
    top->addWidget(m_found, 1, Qt::AlignRight);
    m_find->setMinimumWidth(ContentsWidth);
    top->addWidget(m_find);
    top->addWidget(addButton(Qt::UpArrow, u"前を検索 (Shift+F3)"_s, Direction::Backward));
    top->addWidget(addButton(Qt::DownArrow, u"次を検索 (F3)"_s, Direction::Forward));
    auto* parts = new QSplitter(this);
    parts->addWidget(m_contents);
    parts->addWidget(m_text);
    parts->setStretchFactor(1, 1);
    parts->setSizes({ContentsWidth, PageWidth});
    auto* column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(parts, 1);
}

void CGuideWindow::SetGuide(const QString& markdown)
{
    m_text->setMarkdown(markdown);
    const QSignalBlocker blocker(m_contents);
    m_contents->clear();
    m_chapter = nullptr;
    for (QTextBlock block = m_text->document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 1) // the first is the guide's own title
            AddHeading(block);
    }
    m_contents->expandAll();
}

void CGuideWindow::AddHeading(const QTextBlock& block)
{
    constexpr int chapterLevel = 2;
    const bool isChapter = block.blockFormat().headingLevel() == chapterLevel || !m_chapter;
    auto* item = isChapter ? new QTreeWidgetItem(m_contents) : new QTreeWidgetItem(m_chapter);
    item->setText(0, block.text());
    item->setData(0, BlockNumber, block.blockNumber());
    if (isChapter)
        m_chapter = item;
}

void CGuideWindow::GoTo(const QString& heading)
{
    for (int i = 0; i < m_contents->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_contents->topLevelItem(i);
        if (item->text(0) != heading)
            continue;
        m_contents->setCurrentItem(nullptr); // chosen a second time, it is gone to again
        m_contents->setCurrentItem(item);
        return;
    }
}

void CGuideWindow::ScrollTo(const QTextBlock& block)
{
    m_text->setTextCursor(QTextCursor(m_text->document()->lastBlock()));
    m_text->setTextCursor(QTextCursor(block)); // from below, so that the heading comes to the top
}

void CGuideWindow::Find(Direction direction)
{
    const QString text = m_find->text();
    if (text.isEmpty())
        return;
    QTextDocument& document = *m_text->document();
    const bool isBack = direction == Direction::Backward;
    const auto flags = isBack ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    QTextCursor from = m_text->textCursor();
    if (direction == Direction::Here)
        from.setPosition(from.selectionStart());
    QTextCursor found = document.find(text, from, flags);
    if (found.isNull()) { // on from the other end
        from.movePosition(isBack ? QTextCursor::End : QTextCursor::Start);
        found = document.find(text, from, flags);
    }
    m_found->setText(found.isNull() ? u"見つかりません"_s : QString());
    if (!found.isNull())
        m_text->setTextCursor(found);
}

void CGuideWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel)) {
        if (m_find->hasFocus() && !m_find->text().isEmpty())
            m_find->clear();
        else
            close();
        return;
    }
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && m_find->hasFocus())
        Find(event->modifiers().testFlag(Qt::ShiftModifier) ? Direction::Backward : Direction::Forward);
    else
        QWidget::keyPressEvent(event);
}
