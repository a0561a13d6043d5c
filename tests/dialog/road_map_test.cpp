#include "controls/core/MarksFile.h"
#include "controls/road_map/RoadMap.h"
#include "controls/road_map/ScaleBar.h"
#include "tests/core/core_test.h"
#include "tests/dialog/DialogDriver.h"

#include <QFileInfo>
#include <QSet>

#include <numbers>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;
namespace Method = ControlNumber::RoadMap;

namespace
{
constexpr double Unit = Method::MillisecondsPerDegree;
const QString Shipped = QStringLiteral(KIV_SOURCE_DATA);

constexpr char Addresses[] = "# address,name,rank,population,latitude,longitude\n"
                             "東京都三鷹市,三鷹市,1,180000,35.6836,139.5596\r\n"
                             "東京都港区,港区,1,0,35.6581,139.7515\n"
                             "山形県飽海郡遊佐町,遊佐町,2,0,39.0157,139.9291\n"
                             "千葉県鎌ケ谷市,鎌ケ谷市,1,-5,35.7769,140.0008\n"
                             "東京都三鷹市上連雀,上連雀,3,x,35.6969,139.5561\n"
                             ",nowhere,1,0,1,1\nfar,far,1,0,91,0\nword,word,1,0,x,1\nshort,row\nrank,rank,9,0,1,1\n";
constexpr char Facilities[] = "ドーム,東京都港区,天文・宇宙,プラネタリウム,天文台の隣,35.65,139.75\n"
                              "国立天文台三鷹,東京都三鷹市大沢,天文・宇宙,天文台,研究天文台,35.6756,139.5381\n"
                              "ＪＡＸＡ筑波,,天文・宇宙,宇宙機関,研究,36.0650,140.1281\n"
                              "富士山,静岡県・山梨県,自然,山岳,山,35.3606,138.7274\n"
                              "too,few,fields\n";

/// Brings a control of its own over a data folder to a fixed size, and keeps the events that it raised.
class CMapStage
{
public:
    explicit CMapStage(const QString& dataFolder) : Map(nullptr, dataFolder)
    {
        Map.resize(401, 301);
        Map.SetEventSink([this](int event, const QVariantList& arguments) { Events.emplace_back(event, arguments); });
    }

    void Show(double longitude, double latitude, int scale)
    {
        Map.Invoke(Method::SetPosition, {false, longitude * Unit, latitude * Unit});
        Map.Invoke(Method::SetScale, {scale});
    }

    QImage Picture() { return Map.grab().toImage(); }

    const CRoadMapResults* Results()
    {
        return CRoadMapResults::Find(Map.Invoke(Method::GetSearchResult, {}).toLongLong());
    }

    /// Searches and waits for the end: the names (facilities) or addresses found.
    QString Find(bool isFacility, const QString& text)
    {
        Events.clear();
        EXPECT_TRUE(Map.Invoke(Method::Search, {isFacility, text}).toBool());
        EXPECT_TRUE(Events.empty()) << "an end before the call returned";
        QCoreApplication::processEvents();
        const int event = isFacility ? Method::EventLandMarkEnd : Method::EventAddressKeyEnd;
        EXPECT_EQ(Events, (ControlEvents{{event, {CRoadMap::StatusFinished}}}));
        QStringList found;
        for (const CRoadMapResult& row : Results()->Rows())
            found += isFacility ? row.Name : row.Address;
        return found.join(u' ');
    }

    CRoadMap Map;
    ControlEvents Events;
};

class RoadMapTest : public CDialogDriver
{
protected:
    RoadMapTest()
    {
        WriteFile(Folder.filePath(u"roadmap/addresses.csv"_s), Addresses);
        WriteFile(Folder.filePath(u"roadmap/facilities.csv"_s), Facilities);
    }

    CMapStage m_stage{Folder.path() + u'/'};
};
} // namespace

TEST_F(RoadMapTest, PositionMovesOrMarks)
{
    for (const auto& [x, y, longitude, latitude] : {std::tuple{139.5 * Unit, 35.5 * Unit, 139.5, 35.5},
                                                    {359 * Unit, -10 * Unit, -1.0, -10.0},
                                                    {1e300, 95 * Unit, std::remainder(1e300 / Unit, 360.0), 90.0}}) {
        m_stage.Map.Invoke(Method::SetPosition, {false, x, y});
        EXPECT_NEAR(m_stage.Map.Center().Longitude, longitude, 1e-9);
        EXPECT_NEAR(m_stage.Map.Center().Latitude, latitude, 1e-9);
        EXPECT_FALSE(m_stage.Map.Site());
    }
    m_stage.Show(135, 34, 8000);
    m_stage.Map.Invoke(Method::CenterMark, {}); // nothing is marked yet
    m_stage.Map.Invoke(Method::SetPosition, {true, 140 * Unit, 36 * Unit});
    EXPECT_EQ(m_stage.Map.Center().Longitude, 135) << "marking does not move the map";
    m_stage.Map.Invoke(Method::CenterMark, {});
    EXPECT_NEAR(m_stage.Map.Center().Longitude, 140, 1e-9);
    EXPECT_NEAR(m_stage.Map.Center().Latitude, 36, 1e-9);
    EXPECT_TRUE(m_stage.Events.empty());
}

TEST_F(RoadMapTest, ClickMarksThePlaceThatTheScaleTells)
{
    for (const int scale : {1000, 8000, 500000}) {
        m_stage.Show(139, 60, scale);
        m_stage.Events.clear();
        QTest::mouseClick(&m_stage.Map, Qt::LeftButton, {}, QPoint(200 + 120, 150 - 90));
        const GeoPoint site = m_stage.Map.Site().value_or(GeoPoint());
        EXPECT_EQ(m_stage.Events, (ControlEvents{{Method::EventMouseUp, {site.Latitude, site.Longitude}}}));
        const double degreesPerPixel = scale * 0.0254 / m_stage.Map.logicalDpiX() * 180 / (6371000 * std::numbers::pi);
        // Half a pixel: the middle of an odd number of pixels lies within one.
        EXPECT_NEAR(site.Latitude, 60 + 90.5 * degreesPerPixel, 3 * degreesPerPixel);
        EXPECT_NEAR(site.Longitude, 139 + 2 * 119.5 * degreesPerPixel, 5 * degreesPerPixel);
        EXPECT_EQ(m_stage.Map.Center().Latitude, 60);
    }
    m_stage.Events.clear();
    QTest::mouseClick(&m_stage.Map, Qt::RightButton, {}, QPoint(10, 10));
    EXPECT_TRUE(m_stage.Events.empty());
}

TEST_F(RoadMapTest, DragAndKeysMoveTheMapAndPickTheMiddle)
{
    m_stage.Show(139, 36, 100000);
    Drag(m_stage.Map, {200, 150}, {100, 150});
    EXPECT_TRUE(m_stage.Events.empty()) << "letting go of the map picks nothing";
    EXPECT_FALSE(m_stage.Map.Site());
    const double moved = m_stage.Map.Center().Longitude;
    EXPECT_NEAR((moved - 139) * 90.0, 100 * 100000 * 0.0254 / 96 / 1000, 0.05) << "kilometres";

    QTest::keyClick(&m_stage.Map, Qt::Key_Right);
    QTest::keyClick(&m_stage.Map, Qt::Key_Up);
    EXPECT_GT(m_stage.Map.Center().Longitude, moved);
    EXPECT_GT(m_stage.Map.Center().Latitude, 36);
    QTest::keyClick(&m_stage.Map, Qt::Key_Left);
    QTest::keyClick(&m_stage.Map, Qt::Key_Down);
    EXPECT_NEAR(m_stage.Map.Center().Longitude, moved, 1e-4);
    EXPECT_NEAR(m_stage.Map.Center().Latitude, 36, 1e-4);
    const GeoPoint site = m_stage.Map.Center();
    for (const auto key : {Qt::Key_Space, Qt::Key_Return}) {
        m_stage.Events.clear();
        QTest::keyClick(&m_stage.Map, key);
        EXPECT_EQ(m_stage.Events, (ControlEvents{{Method::EventMouseUp, {site.Latitude, site.Longitude}}}));
    }
    m_stage.Show(0, 0, 100000);
    QTest::keyClick(&m_stage.Map, Qt::Key_Home);
    EXPECT_EQ(m_stage.Map.Center().Latitude, site.Latitude);
}

TEST_F(RoadMapTest, KeepsItsMiddleInTheMiddleOfWhatIsNotCovered)
{
    QWidget window;
    auto* map = new CRoadMap(&window, Folder.path() + u'/');
    auto* strip = new QWidget(&window);
    strip->setAutoFillBackground(true);
    window.resize(401, 301);
    map->setGeometry(window.rect());
    strip->setGeometry(0, 200, 401, 101);
    map->show();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_FALSE(map->Site());
    QTest::mouseClick(map, Qt::LeftButton, {}, {200, 100});
    ASSERT_TRUE(map->Site());
    EXPECT_NEAR(map->Site()->Longitude, map->Center().Longitude, 1e-4);
    EXPECT_NEAR(map->Site()->Latitude, map->Center().Latitude, 1e-4);
}

TEST_F(RoadMapTest, WrongCallsChangeNothing)
{
    m_stage.Show(139.5, 35.6, 300000);
    const QImage before = m_stage.Picture();
    const std::pair<int, std::vector<QVariantList>> calls[] = {
        {Method::SetPosition, {{}, {false, 1.0}, {false, Nan, 1.0}, {true, 1.0, Infinity}}},
        {Method::SetPosition, {{true, u"1"_s, u"2"_s}, {u"true"_s, 1.0, 2.0}}},
        {Method::SetScale, {{}, {0}, {-8000}, {Nan}, {u"9"_s}}},
        {Method::OpenFile, {{}, {5}}},
        {-1, {{}}}};
    for (const auto& [method, argumentLists] : calls) {
        for (const QVariantList& arguments : argumentLists)
            EXPECT_FALSE(m_stage.Map.Invoke(method, arguments).isValid()) << method;
    }
    for (const QVariantList& arguments : {QVariantList(), {true}, {u"x"_s, u"x"_s}, {true, 5}, {false, QVariant()}})
        EXPECT_FALSE(m_stage.Map.Invoke(Method::Search, arguments).toBool());
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_stage.Events.empty());
    EXPECT_EQ(m_stage.Picture(), before);
    EXPECT_EQ(m_stage.Map.Invoke(Method::GetSearchResult, {}).toLongLong(), 0);
}

TEST_F(RoadMapTest, AFileThatCannotBeReadIsToldWithItsReason)
{
    m_stage.Show(139.5, 35.6, 300000);
    const QImage before = m_stage.Picture();
    for (const QString& name : {u"large"_s, u"closed"_s, u"empty"_s})
        WriteFile(Folder.filePath(name), "<gpx><metadata><name>nothing</name></metadata></gpx>");
    ASSERT_TRUE(QFile::resize(Folder.filePath(u"large"_s), (16 << 20) + 1));
    ASSERT_TRUE(QFile::setPermissions(Folder.filePath(u"closed"_s), {}));
    const std::pair<QString, const char*> cases[] = {
        {u"missing"_s, "ファイルが見つかりません。"},
        {u"roadmap"_s, "フォルダや装置は読み込めません。"},
        {u"/dev/zero"_s, "フォルダや装置は読み込めません。"},
        {u"large"_s, "ファイルが 16 MB を超えています。"},
        {u"roadmap/addresses.csv"_s, "GPX 形式ではないか、壊れています。"},
        {u"empty"_s, "地点・ルート・軌跡がありません。"},
        {u"closed"_s, "ファイルを開けません。読み取りの権限を確認してください。"}};
    for (const auto& [name, reason] : cases) {
        const QString path = QDir(Folder.path()).filePath(name);
        if (name == u"closed" && QFileInfo(path).isReadable())
            continue;                                 // the superuser may read everything
        m_stage.Map.Invoke(Method::OpenFile, {path}); // answers before the box is there
        const QByteArray text = "「" + QFileInfo(path).fileName().toUtf8() + "」を読み込めませんでした。\n" + reason +
                                "\n\n読み込めるのは、地点・ルート・軌跡を含む GPX ファイル（16 MB まで）です。";
        Prompts.Expect(text.constData(), IPrompts::Icon::Exclamation);
        QCoreApplication::processEvents();
        EXPECT_TRUE(Prompts.AreDone());
    }
    EXPECT_EQ(m_stage.Picture(), before);
}

TEST_F(RoadMapTest, SearchFindsWhatHoldsEveryWord)
{
    const std::pair<QString, const char16_t*> addresses[] = {{u"三鷹"_s, u"東京都三鷹市 東京都三鷹市上連雀"},
                                                             {u"  上連雀\u3000東京\t三鷹 "_s, u"東京都三鷹市上連雀"},
                                                             {u"山形県遊佐町"_s, u"山形県飽海郡遊佐町"},
                                                             {u"鎌ヶ谷"_s, u"千葉県鎌ケ谷市"},
                                                             {u"東京 "_s.repeated(50000) + u"港"_s, u"東京都港区"}};
    for (const auto& [text, found] : addresses)
        EXPECT_EQ(m_stage.Find(false, text), QStringView(found)) << text.left(40).toStdString();
    for (const QString& text : {u"東京 三鷹 港"_s, u"天文台"_s, u" \u3000 "_s, u".*"_s, QString(100000, u'東')})
        EXPECT_EQ(m_stage.Find(false, text), QString()) << text.left(40).toStdString();
    const std::pair<QString, const char16_t*> facilities[] = {{u"jaxa"_s, u"ＪＡＸＡ筑波"},
                                                              {u"ｊａｘａ　筑波"_s, u"ＪＡＸＡ筑波"},
                                                              {u"山"_s, u"富士山"},
                                                              {u"東京 天文台 天文台"_s, u"ドーム 国立天文台三鷹"},
                                                              {u"天文台"_s, u"国立天文台三鷹 ドーム"},
                                                              {u"プラネ"_s, u"ドーム"},
                                                              {u"国立天文台"_s, u"国立天文台三鷹"}};
    for (const auto& [text, found] : facilities)
        EXPECT_EQ(m_stage.Find(true, text), QStringView(found)) << text.toStdString();

    const CRoadMapResult row = m_stage.Results()->Rows().at(0);
    EXPECT_DOUBLE_EQ(row.X, 139.5381 * Unit);
    EXPECT_DOUBLE_EQ(row.Y, 35.6756 * Unit);
    EXPECT_EQ((QStringList{row.Address, row.LargeCategory, row.MiddleCategory, row.SmallCategory}),
              (QStringList{u"東京都三鷹市大沢"_s, u"天文・宇宙"_s, u"天文台"_s, u"研究天文台"_s}));
}

TEST_F(RoadMapTest, LaterSearchCancelsTheEarlierOne)
{
    EXPECT_EQ(m_stage.Find(true, u"富士山"_s), u"富士山"_s);
    const qint64 old = m_stage.Results()->Handle();
    m_stage.Events.clear();
    EXPECT_TRUE(m_stage.Map.Invoke(Method::Search, {true, u"ドーム"_s}).toBool());
    EXPECT_TRUE(m_stage.Map.Invoke(Method::Search, {false, u"港区"_s}).toBool());
    EXPECT_NE(CRoadMapResults::Find(old), nullptr) << "the list lives until a search has ended";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_stage.Events, (ControlEvents{{Method::EventLandMarkEnd, {CRoadMap::StatusCancelled}},
                                             {Method::EventAddressKeyEnd, {CRoadMap::StatusFinished}}}));
    EXPECT_EQ(CRoadMapResults::Find(old), nullptr);
    qint64 last = 0;
    {
        CMapStage other(Folder.path() + u'/');
        other.Find(false, u"三鷹"_s);
        last = other.Results()->Handle();
        other.Map.Invoke(Method::Search, {false, u"港"_s}); // its end never comes
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(CRoadMapResults::Find(last), nullptr);
}

TEST_F(RoadMapTest, DamagedDataLeaveAMap)
{
    for (const QString& name :
         {u"roadmap/addresses.csv"_s, u"roadmap/facilities.csv"_s, u"roadmap/coast.kol"_s, u"roadmap/coastwide.kol"_s,
          u"roadmap/relief.png"_s, u"roadmap/rivers.kol"_s, u"roadmap/prefectures.kol"_s, u"earth/coast10.kol"_s})
        WriteFile(Folder.filePath(name), "no such data");
    for (const QString& folder : {Folder.path() + u'/', u"/nowhere/"_s}) {
        CMapStage stage(folder);
        EXPECT_FALSE(stage.Map.Invoke(Method::Search, {false, u"東"_s}).toBool()) << "there is nothing to search in";
        EXPECT_EQ(stage.Picture().pixelColor(60, 60), stage.Picture().pixelColor(300, 60));
    }
}

TEST_F(RoadMapTest, MarksOfAFileAreShown)
{
    const QByteArray gpx = R"(<?xml version="1.0"?><gpx xmlns="http://www.topografix.com/GPX/1/1">
        <wpt lat="35.5" lon="139.25"><ele>12</ele><name> 観測 地点
        A</name><extensions><x/></extensions></wpt>
        <wpt lat="95" lon="1"><name>nowhere</name></wpt><wpt lat="1"/><name>title</name>
        <trk><name>way</name><trkseg><trkpt lat="35.5" lon="139.2"/><trkpt lat="35.6" lon="139.3"/></trkseg>
        <trkseg><trkpt lat="1" lon="nan"/><trkpt lat="1" lon="1"/></trkseg></trk>
        <rte><rtept lat="35.51" lon="139.25"/><rtept lat="-35.6" lon="-139.3"/></rte></gpx>)";
    const RoadMapMarks marks = MarksFile::Parse(gpx);
    ASSERT_EQ(marks.Points.size(), 1U);
    EXPECT_EQ(marks.Points[0].Name, u"観測 地点 A"_s);
    EXPECT_EQ(marks.Points[0].Position.Longitude, 139.25);
    ASSERT_EQ(marks.Ways.size(), 2U);
    EXPECT_EQ(marks.Ways[0].size(), 2U);
    EXPECT_EQ(MarksFile::Parse(gpx.left(300)).Points.size(), 1U) << "what was read before the end";
    EXPECT_EQ(MarksFile::Parse("<gpx>" + QByteArray("<wpt lat='1' lon='2'>").repeated(20000)).Points.size(), 5000U);

    const QString path = Folder.filePath(u"marks.gpx"_s);
    WriteFile(path, gpx);
    m_stage.Show(100, 10, 300000);
    m_stage.Map.Invoke(Method::OpenFile, {path});
    EXPECT_NEAR(m_stage.Map.Center().Longitude, 139.25, 1e-9) << "the map goes to the first mark";
    static_cast<void>(m_stage.Picture());
    const DrawnItem mark = m_stage.Map.Drawn().back();
    EXPECT_EQ(mark.Name, u"観測 地点 A"_s);
    EXPECT_LT((mark.Place - QPointF(200.5, 150.5)).manhattanLength(), 2.0);
}

TEST(ScaleBar, IsARoundLengthThatFits)
{
    const std::pair<double, QString> cases[] = {
        {0.2645, u"20 m"_s}, {2.1166, u"200 m"_s}, {7.7, u"1 km"_s}, {2645.0, u"200 km"_s}, {0.001, u"0.1 m"_s}};
    for (const auto& [metersPerPixel, text] : cases) {
        const ScaleBar bar = ScaleBar::For(metersPerPixel, 130);
        EXPECT_EQ(bar.Text, text);
        EXPECT_NEAR(bar.Pixels * metersPerPixel, bar.Meters, 1e-6);
        EXPECT_TRUE(bar.Pixels <= 130 && bar.Pixels > 50) << bar.Pixels;
    }
}

TEST(ShippedRoadMap, KnowsTheLandAndTheSeaAtEveryScale)
{
    CMapStage stage(Shipped);
    const std::tuple<const char*, double, double, bool> places[] = {
        {"Honshu", 138.53, 35.83, true},       {"Sado", 138.43, 38.17, true},
        {"Siberia", 100.03, 60.03, true},      {"Antarctica", 10.03, -89.5, true},
        {"South Pole", -179.97, -89.97, true}, {"North Pole", 179.97, 89.97, false},
        {"Sea of Japan", 135.0, 38.5, false},  {"Lake Biwa", 136.07, 35.28, false},
        {"Atlantic", -30.03, 0.03, false},     {"Pacific", 179.97, 20.2, false}};
    for (const auto& [name, longitude, latitude, isLand] : places) {
        for (const int scale : {1000, 8000, 100000, 1000000, 9999999}) {
            stage.Show(longitude, latitude, scale);
            const QColor color = stage.Picture().pixelColor(200, 150);
            EXPECT_EQ(color.blue() < color.green() + 8, isLand) << name << ", " << scale;
        }
    }
}

TEST(ShippedRoadMap, TablesAreWholeAndInJapan)
{
    CRoadMapData data;
    data.Load(Shipped + u"roadmap/"_s);
    EXPECT_GE(data.FindAddresses(u"県"_s).size(), 1500U);
    for (const auto& [text, address] : {std::pair(u"音更"_s, u"北海道河東郡音更町"_s),
                                        {u"札幌"_s, u"北海道札幌市"_s},
                                        {u"千代田区"_s, u"東京都千代田区"_s},
                                        {u"与那国"_s, u"沖縄県八重山郡与那国町"_s}})
        EXPECT_EQ(data.FindAddresses(text).at(0).Address, address);
    int count = 0;
    for (const QString& category : {u"天文・宇宙"_s, u"自然"_s, u"文化・観光"_s}) {
        for (const CRoadMapResult& row : data.FindFacilities(category)) {
            ++count;
            EXPECT_FALSE(row.Address.isEmpty() || row.MiddleCategory.isEmpty() || row.SmallCategory.isEmpty());
            EXPECT_TRUE(row.X > 122 * Unit && row.X < 154.1 * Unit && row.Y > 20 * Unit && row.Y < 45.6 * Unit)
                << row.Name.toStdString();
            // In or near the municipality that the address names; remote islands and wide areas apart.
            const RoadMapAddress* near = data.NearestMunicipality({row.X / Unit, row.Y / Unit}, 1.0);
            EXPECT_TRUE(near || row.Address.contains(u"小笠原"_s)) << row.Name.toStdString();
        }
    }
    EXPECT_GE(count, 250);
}
