#include "tests/story/EveryWindow.h"

#include "city/AddCty.h"
#include "city/DlgCity.h"
#include "city/DlgCityMoveTo.h"
#include "city/EdtCty.h"
#include "city/EdtFld.h"
#include "host/dialog/DlgCommand.h"
#include "roadmap/DlgMapple.h"
#include "roadmap/DlgMappleFind.h"

#include <QTest>
#include <QTimer>
#include <QTreeView>

using namespace Qt::StringLiterals;

void CEveryWindow::Visit(const std::function<void(QWidget&)>& look)
{
    const auto named = [&look](QWidget& window) {
        Settle();
        SCOPED_TRACE(window.windowTitle().toStdString());
        look(window);
    };
    // A modal dialog runs just long enough for the look.
    const auto modal = [&named](auto& dialog) {
        QTimer::singleShot(0, &dialog, [&] {
            named(dialog);
            dialog.reject();
        });
        dialog.DoModal();
    };
    Start();
    named(Window());
    OpenSite();
    named(Site());
    ChooseBody(5);
    named(Site());
    Host().OpenRoadMap(true);
    named(*Host().RoadMap());
    auto* find = Host().RoadMap()->findChild<CDlgMappleFind*>();
    ASSERT_NE(find, nullptr);
    find->show();
    named(*find);
    CDlgCity city(&Host().Engine(), &Window());
    city.Paths = {Folders.User + u"kivpel.obs"_s, Folder.filePath(u"user.obs"_s), Folder.filePath(u"overlay.json"_s)};
    QTimer::singleShot(0, &city, [&city] { // with its find line open
        if (auto* tree = city.findChild<QTreeView*>())
            QTest::keyClick(tree, Qt::Key_F, Qt::ControlModifier);
    });
    modal(city);
    CAddCty add(&Window());
    modal(add);
    CEdtCty place(&Window());
    modal(place);
    CEdtFld folder(&Window());
    modal(folder);
    CDlgCityMoveTo move(u"山岳"_s, &Window());
    modal(move);
    CDlgCommand console(&Host().Engine(), &Window());
    modal(console);
}
