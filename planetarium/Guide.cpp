#include "planetarium/Guide.h"

#include "host/dialog/Prompts.h"
#include "host/system/HostContext.h"
#include "planetarium/GuideWindow.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

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

QString HeadingOf(int templateNumber)
{
    for (const Page& page : Pages) {
        if (page.Template == templateNumber)
            return QString::fromUtf16(page.Heading);
    }
    return {};
}
} // namespace

void Guide::Install(CHostContext& context, const QString& file)
{
    context.Help = [file](QWidget* parent, int templateNumber) {
        static QPointer<CGuideWindow> window;
        QFile guide(file);
        if (!guide.open(QIODevice::ReadOnly)) {
            IPrompts::Current().Show(
                parent,
                u"使い方のファイル（%1）が見つかりません。\n「%2」にあるかどうか、確認してください。"_s.arg(
                    QFileInfo(file).fileName(), QDir::toNativeSeparators(QFileInfo(file).absolutePath())),
                IPrompts::Icon::Warning, IPrompts::Buttons::Ok);
            return;
        }
        if (window && parent && window->parentWidget() != parent->window())
            delete window; // a modal dialog would leave another window's guide without input
        if (!window) {
            window = new CGuideWindow(parent ? parent->window() : nullptr, QFileInfo(file).absolutePath());
            window->SetGuide(QString::fromUtf8(guide.readAll()));
        }
        window->show();
        window->raise();
        window->activateWindow();
        window->GoTo(HeadingOf(templateNumber));
    };
}
