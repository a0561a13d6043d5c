#include "tests/dialog/MappleFixture.h"

#include "host/control/ControlRegister.h"
#include "host/system/CommonFile.h"
#include "host/system/ComponentStore.h"

using namespace Qt::StringLiterals;

CMappleFixture::CMappleFixture() : WorkingFolder(QDir::currentPath()), Map(u"R"_s, Transcript), Host(u"H"_s, Transcript)
{
    Store("Dialog\\Mapple", "CreateWait", u"0"_s);
    QDir(Folder.path()).mkdir(u"module"_s);
    CComponentStore store;
    store.SetValue(CComponentStore::Root::LocalMachine, u"SOFTWARE\\Super Mapple\\version 12.0.3\\Mapple\\App",
                   u"path"_s, {CComponentStore::ValueType::String, Folder.path()});
    EXPECT_TRUE(store.Save());
    Map.Register(QString::fromUtf16(ControlClass::RoadMap));
    Host.Register(QString::fromUtf16(ControlClass::SkyEngine));
    EXPECT_TRUE(HostEngine.Create(CCorKiv::DefaultVariant, &MainWindow, QRect(), 1));
    Observer.UpdateObsByUI(139.5, 35.25, 10.0);
    Observer.SetListener([this](CKPDateObs::Change) {
        Transcript.Add(Number::Format("O %d: %.6f %.6f %.1f", Observer.GetBody(), Observer.GetLongitude(),
                                      Observer.GetLatitude(), Observer.GetHeight()));
    });
}

CMappleFixture::~CMappleFixture()
{
    Dialog.reset();
    EXPECT_EQ(QDir::currentPath(), WorkingFolder);
}

void CMappleFixture::RemoveData()
{
    EXPECT_TRUE(QFile::remove(Machine.Path(u"components.xml"_s)));
}

void CMappleFixture::MakeDialog(bool withObserver)
{
    Dialog.reset(); // it stores what it keeps before the next one reads it
    Dialog = std::make_unique<CDlgMapple>(&MainWindow);
    if (withObserver)
        Dialog->SetKPDateObs(&Observer);
}

void CMappleFixture::Open(bool withObserver)
{
    MakeDialog(withObserver);
    ASSERT_EQ(Dialog->Create(&HostEngine), 1);
    EXPECT_TRUE(QTest::qWaitForWindowActive(Dialog.get()));
    Transcript.Take();
}

void CMappleFixture::OpenFind()
{
    Open();
    Click(Item(MappleId::ButtonFind));
    WaitForFind();
}

void CMappleFixture::WaitForFind()
{
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&Find()));
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Find(); }));
}

void CMappleFixture::GiveResults(const QStringList& rows)
{
    std::vector<CRoadMapResult> results;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const QStringList parts = rows[i].split(u'|');
        results.push_back({1000.0 * static_cast<double>(i), 500.0 * static_cast<double>(i), parts.value(0),
                           parts.value(1), parts.value(4), parts.value(3), parts.value(2)});
    }
    Results = std::make_unique<CRoadMapResults>(std::move(results));
    Map.Results[ControlNumber::RoadMap::GetSearchResult] = Results->Handle();
}
