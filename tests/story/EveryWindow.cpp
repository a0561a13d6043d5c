#include "tests/story/EveryWindow.h"

#include "city/AddCty.h"
#include "city/ControlIds.h"
#include "city/DlgCity.h"
#include "city/EdtCty.h"
#include "city/EdtFld.h"
#include "host/dialog/DlgCommand.h"
#include "roadmap/ControlIds.h"
#include "roadmap/DlgMapple.h"

#include <QTreeView>

using namespace Qt::StringLiterals;

namespace
{
/// The question where a place goes, which is the city list's own.
struct CMoveTo : CKivDialog
{
    using CKivDialog::CKivDialog;
    int DoModal() { return CKivDialog::DoModal(nullptr); }
};
} // namespace

void CEveryWindow::Visit(const std::function<void(QWidget&)>& look)
{
    const auto named = [&look](QWidget& window) {
        Settle();
        SCOPED_TRACE(window.windowTitle().toStdString());
        look(window);
    };
    // A modal dialog runs just long enough for the look.
    const auto modal = [&named](auto& dialog) { RunModal(dialog, [&] { named(dialog); }); };
    Start();
    named(Window());
    OpenSite();
    named(Site());
    ChooseBody(5);
    named(Site());
    Host().OpenRoadMap(true);
    named(*Host().RoadMap());
    Host().RoadMap()->Item<QAbstractButton>(MappleId::ButtonFind)->click();
    const auto dialogs = Host().RoadMap()->findChildren<CKivDialog*>();
    ASSERT_EQ(dialogs.size(), 1) << "the search window";
    named(*dialogs.front());
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
    CMoveTo move(MoveToId::Template, QString(), &Window());
    modal(move);
    CDlgCommand console(&Host().Engine(), &Window());
    modal(console);
}
