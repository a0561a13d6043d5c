#include "tests/dialog/ObsFixture.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

CObsFixture::CObsFixture()
    : Embedded(u"E"_s, Transcript), Host(u"H"_s, Transcript), Map(u"M"_s, Transcript), MainWindow(u"main"_s, Messages),
      Parent(u"parent"_s, Messages), TerrainPath(Folder.filePath(u"earth.idx"_s))
{
    QDir(Folder.path()).mkdir(u"data"_s);
    QDir(Folder.path()).mkdir(u"module"_s);
    Machine.Context().MainWindow = &MainWindow;
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

void CObsFixture::Type(int id, const char* text)
{
    auto* edit = Item<CKivEdit>(id);
    edit->selectAll();
    const QString keys = QString::fromUtf8(text);
    QTest::keyClicks(edit, keys.chopped(1));
    Transcript.Take();
    QTest::keyClicks(edit, keys.last(1));
}
