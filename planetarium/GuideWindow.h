#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QTextBlock;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

/// The user guide: its headings, a find line and the text.
class CGuideWindow : public QWidget
{
    Q_OBJECT

public:
    /// `folder` is where the guide's pictures are found.
    CGuideWindow(QWidget* parent, const QString& folder);

    /// Shows a guide in Markdown.
    void SetGuide(const QString& markdown);
    /// Brings a heading to the top; nothing happens when there is none of that name.
    void GoTo(const QString& heading);

protected:
    /// Esc closes the window, or first the search of a text.
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Direction
    {
        Forward,
        Backward,
        Here ///< what stands at the cursor counts as well, while the text is being typed
    };

    void Layout();
    void AddHeading(const QTextBlock& block);
    void ScrollTo(const QTextBlock& block);
    void Find(Direction direction);

    QTextBrowser* m_text; ///< of this, as the others
    QTreeWidget* m_contents;
    QLineEdit* m_find;
    QLabel* m_found;
    QTreeWidgetItem* m_chapter = nullptr; ///< of the contents; the one that is being filled
};
