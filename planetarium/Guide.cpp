#include "planetarium/Guide.h"

#include "host/dialog/Help.h"
#include "host/dialog/ScreenFit.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPointer>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
/// The page of each template that has one.
struct Page
{
    int Template;
    const char16_t* Heading;
};
constexpr std::array Pages{Page{7300, u"場所"},
                           Page{7301, u"都市名"},
                           Page{7302, u"場所の追加"},
                           Page{7303, u"場所の編集"},
                           Page{7304, u"フォルダの編集"},
                           Page{7305, u"移動先の選択"},
                           Page{7306, u"コマンド入力"},
                           Page{7307, u"スーパーマップル・デジタル"},
                           Page{7308, u"スーパーマップル・デジタル検索"}};

constexpr int PageWidth = 760; // pixels
constexpr int Margin = 16;

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
        const int widest = PageWidth - 4 * Margin;
        return picture.width() <= widest ? picture : picture.scaledToWidth(widest, Qt::SmoothTransformation);
    }
};

void ScrollToPage(QTextBrowser& browser, int templateNumber)
{
    QString heading;
    for (const Page& page : Pages) {
        if (page.Template == templateNumber)
            heading = QString::fromUtf16(page.Heading);
    }
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && block.text() == heading) {
            browser.setTextCursor(QTextCursor(browser.document()->lastBlock()));
            browser.setTextCursor(QTextCursor(block)); // from below, so that the heading comes to the top
            return;
        }
    }
}
} // namespace

void Guide::Install(const QString& file)
{
    Help::SetProvider([file](QWidget* parent, int templateNumber) {
        static QPointer<CGuideBrowser> browser;
        QFile guide(file);
        if (!guide.open(QIODevice::ReadOnly))
            return;
        if (browser && parent && browser->parentWidget() != parent->window())
            delete browser; // a modal dialog would leave another window's guide without input
        if (!browser) {
            browser = new CGuideBrowser(parent ? parent->window() : nullptr);
            browser->setWindowFlag(Qt::Window);
            browser->setAttribute(Qt::WA_DeleteOnClose);
            browser->setWindowTitle(u"使い方"_s);
            browser->setSearchPaths({QFileInfo(file).absolutePath()});
            browser->setOpenExternalLinks(false);
            browser->resize(QSize(PageWidth, 640).boundedTo(ScreenFit::Room(*browser)));
            browser->document()->setDocumentMargin(Margin);
        }
        browser->setMarkdown(QString::fromUtf8(guide.readAll()));
        browser->show();
        browser->raise();
        ScrollToPage(*browser, templateNumber);
    });
}
