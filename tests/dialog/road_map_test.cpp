#include "controls/core/MarksFile.h"
#include "controls/road_map/RoadMap.h"
#include "controls/road_map/ScaleBar.h"
#include "host/control/ControlNumbers.h"
#include "host/text/Number.h"
#include "tests/dialog/DialogDriver.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <utility>

using namespace Qt::StringLiterals;
namespace Method = ControlNumber::RoadMap;

namespace
{
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double Unit = ControlNumber::RoadMap::MillisecondsPerDegree;
const QString Shipped = QStringLiteral(KIV_SOURCE_DATA);

constexpr char Addresses[] = "# address,name,rank,population,latitude,longitude\n"
                             "東京都三鷹市,三鷹市,1,180000,35.6836,139.5596\r\n"
                             "東京都港区,港区,1,0,35.6581,139.7515\n"
                             "山形県飽海郡遊佐町,遊佐町,2,0,39.0157,139.9291\n"
                             "千葉県鎌ケ谷市,鎌ケ谷市,1,-5,35.7769,140.0008\n"
                             "東京都三鷹市上連雀,上連雀,3,x,35.6969,139.5561\n"
                             ",nowhere,1,0,1,1\nfar,far,1,0,91,0\nword,word,1,0,x,1\nshort,row\nrank,rank,9,0,1,1\n";
constexpr char Facilities[] = "国立天文台三鷹,東京都三鷹市大沢,天文・宇宙,天文台,研究天文台,35.6756,139.5381\n"
                              "ＪＡＸＡ筑波,,天文・宇宙,宇宙機関,研究,36.0650,140.1281\n"
                              "富士山,静岡県・山梨県,自然,山岳,山,35.3606,138.7274\n"
                              "ドーム,東京都港区,天文・宇宙,プラネタリウム,天文台の隣,35.65,139.75\n"
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
    QColor Middle() { return Picture().pixelColor(200, 150); }

    /// Searches and waits for the end: the names (facilities) or addresses found.
    QStringList Find(bool isFacility, const QString& text)
    {
        Events.clear();
        EXPECT_TRUE(Map.Invoke(Method::Search, {isFacility, text}).toBool());
        EXPECT_TRUE(Events.empty()) << "an end before the call returned";
        QCoreApplication::processEvents();
        const int event = isFacility ? Method::EventLandMarkEnd : Method::EventAddressKeyEnd;
        EXPECT_EQ(Events, (std::vector<std::pair<int, QVariantList>>{{event, {CRoadMap::StatusFinished}}}));
        QStringList found;
        const CRoadMapResults* results = CRoadMapResults::Find(Map.Invoke(Method::GetSearchResult, {}).toLongLong());
        if (!results)
            return {u"(none)"_s};
        for (const CRoadMapResult& row : results->Rows())
            found += isFacility ? row.Name : row.Address;
        return found;
    }

    CRoadMap Map;
    std::vector<std::pair<int, QVariantList>> Events;
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
    const struct
    {
        double X, Y, Longitude, Latitude;
    } cases[] = {
        {139.5 * Unit, 35.5 * Unit, 139.5, 35.5}, {359 * Unit, -10 * Unit, -1, -10}, {1e300, 95 * Unit, 0, 90}};
    for (const auto& sample : cases) {
        m_stage.Map.Invoke(Method::SetPosition, {false, sample.X, sample.Y});
        EXPECT_NEAR(m_stage.Map.Center().Latitude, sample.Latitude, 1e-9);
        if (sample.X < 1e10) {
            EXPECT_NEAR(m_stage.Map.Center().Longitude, sample.Longitude, 1e-9);
        }
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
    const double metersPerDegree = 6371000 * std::numbers::pi / 180;
    for (const int scale : {1000, 8000, 500000}) {
        m_stage.Show(139, 60, scale);
        m_stage.Events.clear();
        QTest::mouseClick(&m_stage.Map, Qt::LeftButton, {}, QPoint(200 + 120, 150 - 90));
        ASSERT_EQ(m_stage.Events.size(), 1U);
        EXPECT_EQ(m_stage.Events[0].first, Method::EventMouseUp);
        const double metersPerPixel = scale * 0.0254 / m_stage.Map.logicalDpiX();
        const double degrees = metersPerPixel / metersPerDegree;
        // Half a pixel: the middle of an odd number of pixels lies within one.
        EXPECT_NEAR(m_stage.Events[0].second[0].toDouble(), 60 + 90.5 * degrees, 3 * degrees) << "latitude comes first";
        EXPECT_NEAR(m_stage.Events[0].second[1].toDouble(), 139 + 2 * 119.5 * degrees, 5 * degrees);
        ASSERT_TRUE(m_stage.Map.Site());
        EXPECT_EQ(m_stage.Map.Site()->Latitude, m_stage.Events[0].second[0].toDouble());
        EXPECT_EQ(m_stage.Map.Center().Latitude, 60);
    }
    m_stage.Events.clear();
    QTest::mouseClick(&m_stage.Map, Qt::RightButton, {}, QPoint(10, 10));
    EXPECT_TRUE(m_stage.Events.empty());
}

TEST_F(RoadMapTest, DragAndKeysMoveTheMapAndPickTheMiddle)
{
    m_stage.Show(139, 36, 100000);
    QTest::mousePress(&m_stage.Map, Qt::LeftButton, {}, QPoint(200, 150));
    for (const int x : {180, 150, 100}) {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 150), QPointF(x, 150), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&m_stage.Map, &move);
    }
    QTest::mouseRelease(&m_stage.Map, Qt::LeftButton, {}, QPoint(100, 150));
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
    for (const auto key : {Qt::Key_Space, Qt::Key_Return}) {
        m_stage.Events.clear();
        QTest::keyClick(&m_stage.Map, key);
        ASSERT_EQ(m_stage.Events.size(), 1U);
        EXPECT_EQ(m_stage.Events[0].second,
                  (QVariantList{m_stage.Map.Center().Latitude, m_stage.Map.Center().Longitude}));
    }
    const GeoPoint site = m_stage.Map.Center();
    for (int press = 0; press < 20; ++press)
        QTest::keyClick(&m_stage.Map, Qt::Key_Down);
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
    const QPoint middle(200, 100);
    EXPECT_FALSE(map->Site());
    QTest::mouseClick(map, Qt::LeftButton, {}, middle);
    ASSERT_TRUE(map->Site());
    EXPECT_NEAR(map->Site()->Longitude, map->Center().Longitude, 1e-4);
    EXPECT_NEAR(map->Site()->Latitude, map->Center().Latitude, 1e-4);
}

TEST_F(RoadMapTest, WrongCallsChangeNothing)
{
    m_stage.Show(139.5, 35.6, 300000);
    const QImage before = m_stage.Picture();
    const std::pair<int, QVariantList> calls[] = {
        {Method::SetPosition, {}},
        {Method::SetPosition, {false, 1.0}},
        {Method::SetPosition, {false, Nan, 1.0}},
        {Method::SetPosition, {true, 1.0, Infinity}},
        {Method::SetPosition, {true, u"1"_s, u"2"_s}},
        {Method::SetPosition, {u"true"_s, 1.0, 2.0}},
        {Method::SetScale, {}},
        {Method::SetScale, {0}},
        {Method::SetScale, {-8000}},
        {Method::SetScale, {Nan}},
        {Method::SetScale, {u"9"_s}},
        {Method::CenterMark, {}},
        {Method::OpenFile, {}},
        {Method::OpenFile, {5}},
        {0, {}},
        {7, {1}},
        {-1, {}},
    };
    for (const auto& [method, arguments] : calls)
        EXPECT_FALSE(m_stage.Map.Invoke(method, arguments).isValid()) << method;
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
    const QString large = Folder.filePath(u"large.gpx"_s);
    const QString closed = Folder.filePath(u"closed.gpx"_s);
    const QString empty = Folder.filePath(u"empty.gpx"_s);
    WriteFile(large, "<gpx>");
    ASSERT_TRUE(QFile::resize(large, (16 << 20) + 1));
    WriteFile(closed, "<gpx>");
    ASSERT_TRUE(QFile::setPermissions(closed, {}));
    WriteFile(empty, "<gpx><metadata><name>nothing</name></metadata></gpx>");
    struct Case
    {
        QString Path;
        const char* Reason;
    };
    std::vector<Case> cases{{Folder.filePath(u"missing.gpx"_s), "ファイルが見つかりません。"},
                            {Folder.path(), "フォルダや装置は読み込めません。"},
                            {u"/dev/zero"_s, "フォルダや装置は読み込めません。"},
                            {large, "ファイルが 16 MB を超えています。"},
                            {Folder.filePath(u"roadmap/addresses.csv"_s), "GPX 形式ではないか、壊れています。"},
                            {empty, "地点・ルート・軌跡がありません。"}};
    if (!QFileInfo(closed).isReadable()) // the superuser may read everything
        cases.push_back({closed, "ファイルを開けません。読み取りの権限を確認してください。"});
    for (const auto& [path, reason] : cases) {
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
    const struct
    {
        bool IsFacility;
        QString Text;
        QStringList Found;
    } cases[] = {
        {false, u"三鷹"_s, {u"東京都三鷹市"_s, u"東京都三鷹市上連雀"_s}},
        {false, u"  上連雀\u3000東京\t三鷹 "_s, {u"東京都三鷹市上連雀"_s}},
        {false, u"東京 三鷹 港"_s, {}},
        {false, u"山形県遊佐町"_s, {u"山形県飽海郡遊佐町"_s}},
        {false, u"鎌ヶ谷"_s, {u"千葉県鎌ケ谷市"_s}},
        {false, u"天文台"_s, {}},
        {false, u" \u3000 "_s, {}},
        {false, u""_s, {}},
        {false, u".*"_s, {}},
        {false, u"%\\\n'\""_s, {}},
        {false, QString(100000, u'東'), {}},
        {false, u"東京 "_s.repeated(50000) + u"港"_s, {u"東京都港区"_s}},
        {false, QString(QChar(0xD800)) + QChar(0), {}},
        {true, u"jaxa"_s, {u"ＪＡＸＡ筑波"_s}},
        {true, u"ｊａｘａ　筑波"_s, {u"ＪＡＸＡ筑波"_s}},
        {true, u"天文台"_s, {u"国立天文台三鷹"_s, u"ドーム"_s}},
        {true, u"東京 天文台 天文台"_s, {u"国立天文台三鷹"_s, u"ドーム"_s}},
        {true, u"山"_s, {u"富士山"_s}},
        {true, u"プラネ"_s, {u"ドーム"_s}},
    };
    for (const auto& sample : cases)
        EXPECT_EQ(m_stage.Find(sample.IsFacility, sample.Text), sample.Found) << sample.Text.left(40).toStdString();

    EXPECT_EQ(m_stage.Find(true, u"国立天文台"_s).size(), 1);
    const qint64 handle = m_stage.Map.Invoke(Method::GetSearchResult, {}).toLongLong();
    const CRoadMapResult row = CRoadMapResults::Find(handle)->Rows().at(0);
    EXPECT_DOUBLE_EQ(row.X, 139.5381 * Unit);
    EXPECT_DOUBLE_EQ(row.Y, 35.6756 * Unit);
    EXPECT_EQ((QStringList{row.Address, row.LargeCategory, row.MiddleCategory, row.SmallCategory}),
              (QStringList{u"東京都三鷹市大沢"_s, u"天文・宇宙"_s, u"天文台"_s, u"研究天文台"_s}));
}

TEST_F(RoadMapTest, LaterSearchCancelsTheEarlierOne)
{
    EXPECT_EQ(m_stage.Find(true, u"富士山"_s), QStringList{u"富士山"_s});
    const qint64 old = m_stage.Map.Invoke(Method::GetSearchResult, {}).toLongLong();
    m_stage.Events.clear();
    EXPECT_TRUE(m_stage.Map.Invoke(Method::Search, {true, u"ドーム"_s}).toBool());
    EXPECT_TRUE(m_stage.Map.Invoke(Method::Search, {false, u"港区"_s}).toBool());
    EXPECT_NE(CRoadMapResults::Find(old), nullptr) << "the list lives until a search has ended";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_stage.Events,
              (std::vector<std::pair<int, QVariantList>>{{Method::EventLandMarkEnd, {CRoadMap::StatusCancelled}},
                                                         {Method::EventAddressKeyEnd, {CRoadMap::StatusFinished}}}));
    EXPECT_EQ(CRoadMapResults::Find(old), nullptr);
    qint64 last = 0;
    {
        CMapStage other(Folder.path() + u'/');
        other.Find(false, u"三鷹"_s);
        last = other.Map.Invoke(Method::GetSearchResult, {}).toLongLong();
        EXPECT_NE(CRoadMapResults::Find(last), nullptr);
        other.Map.Invoke(Method::Search, {false, u"港"_s}); // its end never comes
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(CRoadMapResults::Find(last), nullptr);
}

TEST_F(RoadMapTest, DamagedDataLeaveAMap)
{
    const QByteArray garbage = QByteArray("\0\xFF,,,,\n,\xE3\x81,1,0,9e999,nan\n", 22) + QByteArray(300, ',') + "KOL1";
    for (const QByteArray& bytes : {QByteArray(), garbage, garbage.repeated(20000), QByteArray(9 << 20, 'x')}) {
        for (const QString& name : {u"roadmap/addresses.csv"_s, u"roadmap/facilities.csv"_s, u"roadmap/coast.kol"_s,
                                    u"roadmap/coastwide.kol"_s, u"roadmap/relief.png"_s, u"roadmap/rivers.kol"_s,
                                    u"roadmap/prefectures.kol"_s, u"earth/coast10.kol"_s})
            WriteFile(Folder.filePath(name), bytes);
        CMapStage stage(Folder.path() + u'/');
        EXPECT_FALSE(stage.Map.Invoke(Method::Search, {false, u"東"_s}).toBool()) << "there is nothing to search in";
        stage.Show(139, 36, 100000);
        EXPECT_FALSE(stage.Picture().isNull());
    }
    CMapStage nowhere(u"/nowhere/"_s);
    EXPECT_EQ(nowhere.Picture().pixelColor(60, 60), nowhere.Picture().pixelColor(300, 60));
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

    const QString path = Folder.filePath(u"marks.gpx"_s);
    WriteFile(path, gpx);
    m_stage.Show(139.25, 35.5, 300000);
    const QImage before = m_stage.Picture();
    m_stage.Show(100, 10, 300000);
    m_stage.Map.Invoke(Method::OpenFile, {path});
    EXPECT_NEAR(m_stage.Map.Center().Longitude, 139.25, 1e-9) << "the map goes to the first mark";
    EXPECT_NE(m_stage.Picture(), before);

    // Tangles of lines that cross each other are drawn quickly, in one piece as in many.
    m_stage.Show(139.1, 35.55, 100000);
    m_stage.Map.Invoke(Method::OpenFile, {path});
    m_stage.Show(139.1, 35.55, 100000);
    const QImage without = m_stage.Picture();
    for (const auto& [points, perWay] : {std::pair{1500, 2000}, {20000, 30000}, {20000, 2}}) {
        QByteArray tangle = "<gpx><trk><trkseg>";
        for (int i = 0; i < points; ++i) {
            tangle += i > 0 && i % perWay == 0 ? "</trkseg><trkseg>" : "";
            tangle += Number::Format("<trkpt lat='%f' lon='%f'/>", 35.5 + 0.001 * (i * 37 % 101),
                                     139 + 0.001 * (i * 53 % 211))
                          .toUtf8();
        }
        WriteFile(path, tangle + "</trkseg></trk></gpx>");
        m_stage.Map.Invoke(Method::OpenFile, {path});
        m_stage.Show(139.1, 35.55, 100000);
        QElapsedTimer timer;
        timer.start();
        EXPECT_NE(m_stage.Picture(), without) << points << " in ways of " << perWay;
        EXPECT_LT(timer.elapsed(), 1500);
        RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    }

    const struct
    {
        QByteArray Bytes;
        std::size_t Points;
    } damaged[] = {
        {gpx.left(300), 1},
        {"<gpx>" + QByteArray("<wpt lat='1' lon='2'>").repeated(20000), 5000},
        {"<gpx>" + QByteArray("<rte>").repeated(20000), 0},
        {"\xFF\xFE\x00<", 0},
        {R"(<!DOCTYPE g [<!ENTITY a "&b;&b;"><!ENTITY b "&a;&a;">]><gpx>&a;<wpt lat="1" lon="1"/></gpx>)", 0}};
    for (const auto& sample : damaged)
        EXPECT_EQ(MarksFile::Parse(sample.Bytes).Points.size(), sample.Points) << sample.Bytes.left(60).toStdString();
}

TEST(ScaleBar, IsARoundLengthThatFits)
{
    const struct
    {
        double MetersPerPixel;
        const char16_t* Text;
    } cases[] = {{0.2645, u"20 m"}, {2.1166, u"200 m"}, {7.7, u"1 km"}, {2645, u"200 km"}, {0.001, u"0.1 m"}};
    for (const auto& sample : cases) {
        const ScaleBar bar = ScaleBar::For(sample.MetersPerPixel, 130);
        EXPECT_EQ(bar.Text, QStringView(sample.Text)) << sample.MetersPerPixel;
        EXPECT_NEAR(bar.Pixels * sample.MetersPerPixel, bar.Meters, 1e-6);
        EXPECT_TRUE(bar.Pixels <= 130 && bar.Pixels > 50) << bar.Pixels;
    }
}

TEST(ShippedRoadMap, KnowsTheLandAndTheSeaAtEveryScale)
{
    CMapStage stage(Shipped);
    const auto isLand = [&stage](double longitude, double latitude, int scale) {
        stage.Show(longitude, latitude, scale);
        const QColor color = stage.Middle();
        return color.blue() < color.green() + 8;
    };
    for (const int scale : {1000, 8000, 100000, 1000000, 9999999}) {
        EXPECT_TRUE(isLand(138.53, 35.83, scale)) << scale;
        EXPECT_FALSE(isLand(135.0, 38.5, scale)) << scale;
        EXPECT_TRUE(isLand(100.03, 60.03, scale)) << "Siberia, " << scale;
        EXPECT_FALSE(isLand(-30.03, 0.03, scale)) << "the Atlantic, " << scale;
        EXPECT_TRUE(isLand(10.03, -89.5, scale)) << "Antarctica, " << scale;
    }
    EXPECT_FALSE(isLand(136.07, 35.28, 500000)) << "Lake Biwa";
    EXPECT_TRUE(isLand(138.38, 38.03, 200000)) << "Sado";
    for (const double longitude : {-180.0, 122.2, 153.8, 180.0}) {
        for (const double latitude : {-90.0, 20.2, 45.8, 90.0}) {
            for (const int scale : {1000, 300000, 9999999}) {
                stage.Show(longitude, latitude, scale);
                EXPECT_FALSE(stage.Picture().isNull());
            }
        }
    }
}

TEST(ShippedRoadMap, MountainsHaveLightAndShadowFromAfar)
{
    CMapStage stage(Shipped);
    const auto countTones = [&stage](int scale) {
        stage.Show(138.2, 35.55, scale); // between high ridges
        const QImage picture = stage.Picture().copy(190, 140, 20, 20);
        QSet<QRgb> tones;
        for (int index = 0; index < 400; ++index)
            tones.insert(picture.pixel(index % 20, index / 20));
        return tones.size();
    };
    EXPECT_GT(countTones(4000000), 30);
    EXPECT_LT(countTones(4000), 6);
}

TEST(ShippedRoadMap, TablesAreWholeAndInJapan)
{
    CRoadMapData data;
    data.Load(Shipped + u"roadmap/"_s);
    EXPECT_GE(data.FindAddresses(u"県"_s).size(), 1500U);
    for (const auto& [text, address] : {std::pair(u"音更"_s, u"北海道河東郡音更町"_s),
                                        {u"札幌"_s, u"北海道札幌市"_s},
                                        {u"千代田区"_s, u"東京都千代田区"_s},
                                        {u"与那国"_s, u"沖縄県八重山郡与那国町"_s}}) {
        const auto rows = data.FindAddresses(text);
        ASSERT_FALSE(rows.empty()) << text.toStdString();
        EXPECT_EQ(rows[0].Address, address);
    }
    std::vector<CRoadMapResult> facilities;
    for (const QString& category : {u"天文・宇宙"_s, u"自然"_s, u"文化・観光"_s}) {
        const auto rows = data.FindFacilities(category);
        facilities.insert(facilities.end(), rows.begin(), rows.end());
    }
    EXPECT_GE(facilities.size(), 250U);
    for (const CRoadMapResult& row : facilities) {
        EXPECT_FALSE(row.Address.isEmpty() || row.MiddleCategory.isEmpty() || row.SmallCategory.isEmpty());
        EXPECT_TRUE(row.X > 122 * Unit && row.X < 154.1 * Unit && row.Y > 20 * Unit && row.Y < 45.6 * Unit)
            << row.Name.toStdString();
        // In or near the municipality that the address names; remote islands and wide areas apart.
        const RoadMapAddress* near = data.NearestMunicipality({row.X / Unit, row.Y / Unit}, 1.0);
        EXPECT_TRUE(near || row.Address.contains(u"小笠原"_s)) << row.Name.toStdString();
    }
}
