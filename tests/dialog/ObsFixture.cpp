#include "tests/dialog/ObsFixture.h"

#include "host/control/ControlRegister.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/ThemedControls.h"
#include "host/system/CommonFile.h"
#include "host/system/Registry.h"
#include "host/text/Number.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QTest>
#include <QTimeZone>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

CObsFixture::CObsFixture()
    : Embedded(u"E"_s, Transcript), Host(u"H"_s, Transcript), Map(u"M"_s, Transcript), MainWindow(u"main"_s, Messages),
      Parent(u"parent"_s, Messages), TerrainPath(Folder.filePath(u"earth.idx"_s))
{
    CRegistry::UseFile(Folder.filePath(u"settings.ini"_s));
    QDir(Folder.path()).mkdir(u"data"_s);
    QDir(Folder.path()).mkdir(u"module"_s);
    CCommonFile::SetModulePath(Folder.filePath(u"module"_s));
    HostWindow::SetMain(&MainWindow);
    Host.Register(QString::fromUtf16(ControlClass::SkyEngine3));
    Embedded.Register(QString::fromUtf16(ControlClass::SkyEngine));
    Map.Register(QString::fromUtf16(ControlClass::GlobeMap));
    EXPECT_TRUE(HostEngine.Create(3, &MainWindow, QRect(0, 0, 100, 100), 1));
    Observer.SetUT(QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC));
    Observer.SetListener([this](CKPDateObs::Change change) {
        Transcript.Add(change == CKPDateObs::Change::DateDisplay
                           ? Number::Format("O date %.2f", Observer.GetUserTz())
                           : Number::Format("O %d: %.6f %.6f %.1f %.2f", Observer.GetBody(), Observer.GetLongitude(),
                                            Observer.GetLatitude(), Observer.GetHeight(), Observer.GetUserTz()));
        if (m_follows && change != CKPDateObs::Change::DateDisplay)
            Dialog->InitLocation(0);
    });
    Dialog = std::make_unique<CDlgObs>(&Parent, Folder.path() + u"/data/"_s, 0);
    Dialog->SetKPDateObs(&Observer);
}

CObsFixture::~CObsFixture()
{
    Dialog.reset();
    HostWindow::SetMain(nullptr);
    CCommonFile::SetModulePath({});
    for (const char16_t* name :
         {ControlClass::SkyEngine, ControlClass::SkyEngine3, ControlClass::SkyEngine4, ControlClass::GlobeMap})
        CControlRegister::Instance().Unregister(QString::fromUtf16(name));
}

void CObsFixture::Open(bool terrain)
{
    EXPECT_EQ(Dialog->DoModeless(&HostEngine, terrain ? TerrainPath : QString()), 1);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(Dialog.get()));
    Transcript.Take();
}

void CObsFixture::StandOn(int body)
{
    Observer.UpdateLocationObjectByUI(body, 1);
    Dialog->InitLocation(0);
    Transcript.Take();
}

std::string CObsFixture::TextOf(int id) const
{
    QWidget* item = Dialog->Item(id);
    if (const auto* edit = qobject_cast<QLineEdit*>(item))
        return edit->text().toStdString();
    if (const auto* label = qobject_cast<QLabel*>(item))
        return label->text().toStdString();
    if (const auto* group = qobject_cast<QGroupBox*>(item))
        return group->title().toStdString();
    const auto* button = qobject_cast<QAbstractButton*>(item);
    return button ? button->text().toStdString() : std::string();
}

void CObsFixture::Click(int id)
{
    QWidget* item = Item(id);
    QTest::mouseClick(item, Qt::LeftButton, {}, QPoint(8, item->height() / 2));
}

void CObsFixture::Type(int id, const char* text)
{
    auto* edit = Item<CKivEdit>(id);
    edit->selectAll();
    const QString keys = QString::fromUtf8(text);
    QTest::keyClicks(edit, keys.chopped(1));
    Transcript.Take();
    QTest::keyClicks(edit, keys.last(1));
}

void CObsFixture::Paste(int id, const char* text)
{
    auto* edit = Item<CKivEdit>(id);
    edit->selectAll();
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
}

void CObsFixture::ClickSpin(int id, bool up)
{
    auto* spin = Item<CKivSpinButton>(id);
    QWidget* arrow = spin->childAt(spin->width() / 2, up ? spin->height() / 4 : spin->height() * 3 / 4);
    QTest::mouseClick(arrow, Qt::LeftButton);
}

void CObsFixture::Wheel(QPoint dialogPoint, int delta, Qt::KeyboardModifiers modifiers)
{
    QWidget* under = Dialog->childAt(dialogPoint);
    QWidget* target = under ? under : Dialog.get();
    QWheelEvent event(target->mapFrom(Dialog.get(), dialogPoint), Dialog->mapToGlobal(dialogPoint), {}, {0, delta},
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // the toolkit hands on to parents only what came from the user
    qApp->notify(target, &event);
}

QPoint CObsFixture::MapMiddle()
{
    return Dialog->MapOfDialog().geometry().center();
}

std::string CObsFixture::Fields()
{
    using namespace ObsId;
    const auto radio = [this](int id) { return Item<QAbstractButton>(id)->isChecked(); };
    return std::string(radio(RadioEast)   ? "E"
                       : radio(RadioWest) ? "W"
                                          : "?") +
           ' ' + TextOf(EditLngDeg) + ' ' + TextOf(EditLngMin) + ' ' + TextOf(EditLngSec) +
           (radio(RadioNorth)   ? " N "
            : radio(RadioSouth) ? " S "
                                : " ? ") +
           TextOf(EditLatDeg) + ' ' + TextOf(EditLatMin) + ' ' + TextOf(EditLatSec);
}

int CObsFixture::Stored(const char* section, const char* name)
{
    int value = 0;
    CRegistry::Read(QString::fromLatin1(section), QString::fromLatin1(name), -77, &value, CRegistry::Count);
    return value;
}

std::string CObsFixture::StoredText(const char* section, const char* name)
{
    QString value;
    CRegistry::Read(QString::fromLatin1(section), QString::fromLatin1(name), u"(none)"_s, &value);
    return value.toStdString();
}
