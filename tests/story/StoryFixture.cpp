#include "tests/story/StoryFixture.h"

#include "city/ControlIds.h"
#include "host/control/ControlRegister.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/ThemedControls.h"
#include "host/system/CommonFile.h"
#include "host/system/ComponentStore.h"
#include "host/system/Registry.h"
#include "planetarium/ControlClasses.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

CStory::CStory()
{
    Folders.UseShipped(QStringLiteral(KIV_SOURCE_DATA));
    Folders.User = Folder.path() + u"/user/"_s;
    CRegistry::UseFile(Folder.filePath(u"settings.ini"_s));
    CRegistry::Write(u"Dialog\\Mapple"_s, u"CreateWait"_s, 0, CRegistry::Count);
    CCommonFile::SetModulePath(Folders.Shipped);
    ControlClasses::Register(Folders.Shipped);
}

CStory::~CStory()
{
    Quit();
    HostWindow::SetMain(nullptr);
    CCommonFile::SetModulePath({});
    CComponentStore::UseFile(Folder.filePath(u"gone"_s));
    CRegistry::UseFile(u"/dev/null"_s);
    for (const char16_t* name : {ControlClass::SkyEngine, ControlClass::SkyEngine3, ControlClass::SkyEngine4,
                                 ControlClass::GlobeMap, ControlClass::RoadMap})
        CControlRegister::Instance().Unregister(QString::fromUtf16(name));
}

void CStory::Start(Audience audience)
{
    m_window = std::make_unique<CMainWindow>(Folders, audience);
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
    Host().OpenSiteDialog();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Site()));
    Settle();
}

std::string CStory::TextOf(int id)
{
    QWidget* item = Item(id);
    if (const auto* edit = qobject_cast<QLineEdit*>(item))
        return edit->text().toStdString();
    if (const auto* label = qobject_cast<QLabel*>(item))
        return label->text().toStdString();
    const auto* button = qobject_cast<QAbstractButton*>(item);
    return button ? button->text().toStdString() : std::string();
}

bool CStory::IsChecked(int id)
{
    const auto* button = Item<QAbstractButton>(id);
    return button && button->isChecked();
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

void CStory::Press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void CStory::Paste(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    Press(Qt::Key_V, Qt::ControlModifier);
}

void CStory::Click(int id)
{
    QWidget* item = Item(id);
    ASSERT_NE(item, nullptr);
    QTest::mouseClick(item, Qt::LeftButton, {}, QPoint(8, item->height() / 2));
    Settle();
}

void CStory::ClickAt(QWidget& widget, const QPointF& at)
{
    QTest::mouseClick(&widget, Qt::LeftButton, {}, at.toPoint());
    Settle();
}

void CStory::ClickSpin(int id, bool up)
{
    auto* spin = Item<CKivSpinButton>(id);
    ASSERT_NE(spin, nullptr);
    QTest::mouseClick(spin->childAt(spin->width() / 2, up ? spin->height() / 4 : spin->height() * 3 / 4),
                      Qt::LeftButton);
    Settle();
}

void CStory::Wheel(QWidget& widget, int delta, Qt::KeyboardModifiers modifiers)
{
    const QPoint middle = widget.rect().center();
    QWidget* under = widget.childAt(middle);
    QWidget* target = under ? under : &widget;
    QWheelEvent event(target->mapFrom(&widget, middle), widget.mapToGlobal(middle), {}, {0, delta}, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // the toolkit hands on to parents only what came from the user
    qApp->notify(target, &event);
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

void CStory::InNext(const std::function<void(CKivDialog&)>& steps, int templateNumber)
{
    ++m_awaited;
    auto* poll = new QTimer(qApp);
    poll->callOnTimeout([this, poll, steps, templateNumber] {
        auto* dialog = qobject_cast<CKivDialog*>(QApplication::activeModalWidget());
        if (!dialog || (templateNumber != 0 && dialog->TemplateNumber() != templateNumber))
            return;
        dialog->activateWindow(); // no window manager does it here
        if (QApplication::activeWindow() != dialog)
            return;
        --m_awaited;
        poll->stop();
        poll->deleteLater();
        steps(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
    poll->start(1);
}

void CStory::PickCity(const QString& name, const std::function<void(CKivDialog&)>& steps)
{
    InNext([name, steps](CKivDialog& list) {
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
    EXPECT_EQ(m_awaited, 0) << "a dialog never came";
}

void CStory::Settle()
{
    for (int round = 0; round < 3; ++round)
        QApplication::processEvents();
}
