#include "planetarium/Guide.h"

#include "host/dialog/Help.h"
#include "host/text/Number.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QTextBlock>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace
{
/// Scrolls to the heading that names the template's number in brackets at its end, such as "場所（7300）".
void ScrollToPage(QTextBrowser& browser, int templateNumber)
{
    const QString mark = Number::Format("（%d）", templateNumber);
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && block.text().endsWith(mark)) {
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
        static QPointer<QTextBrowser> browser;
        QFile guide(file);
        if (!guide.open(QIODevice::ReadOnly))
            return;
        if (!browser) {
            browser = new QTextBrowser(parent ? parent->window() : nullptr);
            browser->setWindowFlag(Qt::Window);
            browser->setAttribute(Qt::WA_DeleteOnClose);
            browser->setWindowTitle(u"使い方"_s);
            browser->setSearchPaths({QFileInfo(file).absolutePath()});
            browser->setOpenExternalLinks(false);
            browser->resize(720, 640);
        }
        browser->setMarkdown(QString::fromUtf8(guide.readAll()));
        browser->show();
        browser->raise();
        ScrollToPage(*browser, templateNumber);
    });
}
