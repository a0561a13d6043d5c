// The planetarium's road map: when it is offered, and how it and the observer follow each other.

#include "host/control/ControlRegister.h"
#include "host/system/ComponentStore.h"
#include "planetarium/Host.h"
#include "tests/dialog/DialogDriver.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr int Mars = 5;

class HostRoadMapTest : public CDialogDriver
{
protected:
    HostRoadMapTest() : m_map(u"R"_s, m_transcript), m_engine(u"H"_s, m_transcript)
    {
        CRegistry::Write(u"Dialog\\Mapple"_s, u"CreateWait"_s, 0, CRegistry::Count);
        m_folders.User = Folder.path() + u'/';
        m_folders.Shipped = m_folders.User;
        m_map.Register(QString::fromUtf16(ControlClass::RoadMap));
        m_engine.Register(QString::fromUtf16(ControlClass::SkyEngine));
        m_host = std::make_unique<CHost>(&m_mainWindow, m_folders);
    }
    // The lines that the road map got.
    std::string Heard()
    {
        QStringList heard;
        for (const QString& line : QString::fromStdString(m_transcript.Take()).split(u'\n')) {
            if (line.startsWith(u"R "))
                heard += line;
        }
        return heard.join(u'\n').toStdString();
    }
    void OpenRoadMap(bool withObserver)
    {
        QDir(Folder.path()).mkdir(u"roadmap"_s);
        m_folders.InstallRoadMap();
        m_host->OpenRoadMap(withObserver);
        Heard();
    }
    void Click(double latitude, double longitude)
    {
        m_map.Control->Raise(ControlNumber::RoadMap::EventMouseUp, {latitude, longitude});
    }

    DataFolders m_folders;
    CTranscript m_transcript;
    ControlScript m_map;
    ControlScript m_engine;
    QWidget m_mainWindow;
    std::unique_ptr<CHost> m_host;
};
} // namespace

TEST_F(HostRoadMapTest, IsOfferedWhereItIsInstalled)
{
    EXPECT_FALSE(CHost::HasRoadMap());
    m_host->OpenRoadMap(true);
    EXPECT_EQ(m_host->RoadMap(), nullptr);
    m_folders.InstallRoadMap();
    EXPECT_TRUE(CHost::HasRoadMap());
    m_host->OpenRoadMap(true); // the control is there, its data are not
    EXPECT_TRUE(m_host->RoadMap()->IsWindow());
    EXPECT_FALSE(m_host->RoadMap()->MapOfDialog().IsCreated());
}

TEST_F(HostRoadMapTest, FollowsTheObserverAndLeadsIt)
{
    OpenRoadMap(true);
    m_host->MoveObserver(140.0, 36.0, 5.0);
    EXPECT_EQ(Heard(), "R 1(true, 504000000.000000, 129600000.000000)");
    m_host->SetBody(Mars);
    Heard();
    m_engine.Answers[u"? Location.Altitude"_s] = u"1234.5"_s;
    Click(35.5, 139.75);
    EXPECT_EQ(Heard(), ""); // the mark is there already
    EXPECT_EQ(m_host->Observer().GetBody(), CKPDateObs::Earth);
    EXPECT_DOUBLE_EQ(m_host->Observer().GetLongitude(), 139.75);
    EXPECT_DOUBLE_EQ(m_host->Observer().GetHeight(), 1234.5) << "no site dialog is open to ask the terrain";
    CDlgMapple* const open = m_host->RoadMap();
    m_host->OpenRoadMap(true);
    EXPECT_EQ(m_host->RoadMap(), open);
    open->close();
    m_host->MoveObserver(141.0, 36.0, 5.0);
    EXPECT_EQ(Heard(), "");
}

TEST_F(HostRoadMapTest, LeadsTheObserverThroughTheEngine)
{
    OpenRoadMap(false);
    m_host->SetBody(Mars);
    Heard();
    m_engine.Answers[u"? Location.Longitude"_s] = u"139.75"_s;
    m_engine.Answers[u"? Location.Latitude"_s] = u"35.5"_s;
    Click(35.5, 139.75);
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(m_host->Observer().GetBody(), CKPDateObs::Earth);
    EXPECT_DOUBLE_EQ(m_host->Observer().GetLongitude(), 139.75);
    EXPECT_DOUBLE_EQ(m_host->Observer().GetLatitude(), 35.5);
}
