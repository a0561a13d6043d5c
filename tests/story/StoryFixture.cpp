#include "tests/story/StoryFixture.h"

#include "city/ControlIds.h"
#include "planetarium/ControlClasses.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTreeView>

using namespace Qt::StringLiterals;

CStory::CStory()
{
    Folders.UseShipped(QStringLiteral(KIV_SOURCE_DATA));
    Folders.User = Folder.path() + u"/user/"_s;
    Machine.Use(Folders.HostFiles(Machine.Settings()));
    CRegistry::Write(u"Dialog\\Mapple"_s, u"CreateWait"_s, 0, CRegistry::Count);
    ControlClasses::Register(Folders.Shipped);
}

CStory::~CStory()
{
    Quit();
}

void CStory::Start(Audience audience)
{
    Machine.Use(Folders.HostFiles(Machine.Settings()));
    m_window = std::make_unique<CMainWindow>(Machine.Context(), Folders, audience);
    m_window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
}

void CStory::Quit()
{
    if (!m_window)
        return;
    m_window->close();
    Settle();
    m_window.reset();
}

void CStory::OpenSite()
{
    if (!m_window)
        Start();
    Host().OpenSiteDialog();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Site()));
    Settle();
}

void CStory::Enter(int id)
{
    auto* edit = Item<QLineEdit>(id);
    ASSERT_NE(edit, nullptr);
    QTest::mouseClick(edit, Qt::LeftButton);
    ASSERT_EQ(QApplication::focusWidget(), edit);
    edit->selectAll();
}

void CStory::Type(const char* text, int pause)
{
    const QString keys = QString::fromUtf8(text);
    for (const QChar key : keys) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(key), Qt::NoModifier);
        if (pause > 0)
            QTest::qWait(pause);
    }
}

void CStory::Paste(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    Key(Qt::Key_V, Qt::ControlModifier);
}

void CStory::Click(int id)
{
    CDialogDriver::Click(id);
    Settle();
}

void CStory::ClickAt(QWidget& widget, const QPointF& at)
{
    QTest::mouseClick(&widget, Qt::LeftButton, {}, at.toPoint());
    Settle();
}

void CStory::Wheel(QWidget& widget, int delta, Qt::KeyboardModifiers modifiers)
{
    CDialogDriver::Wheel(widget, widget.rect().center(), delta, modifiers);
    Settle();
}

void CStory::ChooseBody(int body)
{
    auto* combo = Item<CKivComboBox>(ObsId::ComboPlanet);
    combo->setFocus();
    combo->setCurrentIndex(body);
    Q_EMIT combo->activated(body);
    Settle();
}

void CStory::PickCity(const QString& name, const std::function<void(CKivDialog&)>& steps)
{
    InNext<CKivDialog>([name, steps](CKivDialog& list) {
        auto* tree = list.Item<QTreeView>(CityId::Tree);
        const QAbstractItemModel& model = *tree->model();
        for (const QModelIndex& found :
             model.match(model.index(0, 0), Qt::DisplayRole, name, -1, Qt::MatchExactly | Qt::MatchRecursive)) {
            tree->setCurrentIndex(found);
            if (model.rowCount(found) == 0)
                break; // not a folder of the same name
        }
        EXPECT_EQ(tree->currentIndex().data().toString().toStdString(), name.toStdString());
        if (steps)
            steps(list);
        list.Item<QAbstractButton>(CityId::ButtonOk)->click();
    });
    Click(ObsId::ButtonCity);
}
