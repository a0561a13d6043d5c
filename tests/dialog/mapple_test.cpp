// The road-map dialog: opening, picked sites, zoom, buttons, closing, and whatever may go wrong with its map.

#include "host/dialog/HostMessage.h"
#include "host/system/CommonFile.h"
#include "tests/dialog/MappleFixture.h"

#include <QElapsedTimer>
#include <QPointer>

#include <limits>

using namespace Qt::StringLiterals;
namespace RoadMap = ControlNumber::RoadMap;

namespace
{
class MappleTest : public CMappleFixture
{
protected:
    CKivSlider& Slider() { return *Item<CKivSlider>(MappleId::SliderZoom); }
};

constexpr auto TokyoText = "東経： 139 度 30 分  0.00 秒 北緯： 35 度 15 分  0.00 秒";
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
} // namespace

TEST_F(MappleTest, OpensOnTheObserversSite)
{
    MakeDialog();
    Observer.UpdateLocationObjectByUI(5, 1); // the place on the Earth counts, wherever the observer stands
    Transcript.Take();
    QString folderOfCreation;
    Map.During = [&](int) { folderOfCreation = QDir::currentPath(); };
    ASSERT_EQ(Dialog->Create(&HostEngine), 1);
    EXPECT_EQ(Transcript.Take(), "R 4(8000)\nR 1(true, 502200000.000000, 126900000.000000)\nR 5()");
    EXPECT_EQ(folderOfCreation, QDir(CCommonFile::GetModulePath()).canonicalPath());
    EXPECT_EQ(QDir::currentPath(), WorkingFolder);
    EXPECT_EQ(SiteText(), TokyoText);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(Dialog.get()));
    EXPECT_TRUE(Dialog->windowTitle() == u"スーパーマップル・デジタル"_s && !Dialog->isModal());
    EXPECT_EQ(Slider().value(), 80);
    EXPECT_EQ(Slider().maximum(), 329);
    EXPECT_FALSE(Item(MappleId::ButtonRead)->isVisible());
    EXPECT_FALSE(Find().isVisible());
    EXPECT_EQ(Dialog->Create(&HostEngine), 0); // there is a window
}

TEST_F(MappleTest, AsksTheEngineForTheSiteWithoutAnObserver)
{
    const char* const asked = "R 4(8000)\nH ? Location";
    for (const auto& [answer, heard, text] : {
             std::tuple<QString, const char*, const char*>{
                 u"Location(139.5, 35.25, 39)"_s,
                 "R 4(8000)\nH ? Location\nR 1(true, 502200000.000000, 126900000.000000)\nR 5()", TokyoText},
             {u"Location(-139.5, -35.25, 39)"_s,
              "R 4(8000)\nH ? Location\nR 1(true, -502200000.000000, -126900000.000000)\nR 5()",
              "西経： 139 度 30 分  0.00 秒 南緯： 35 度 15 分  0.00 秒"},
             {u"Location(139.5, 35.25)"_s, asked, ""},
         }) {
        Host.Answers[u"? Location"_s] = answer;
        MakeDialog(false);
        Store("Dialog\\Mapple", "ZoomAngle", u"80"_s);
        ASSERT_EQ(Dialog->Create(&HostEngine), 1);
        EXPECT_EQ(Transcript.Take(), heard);
        EXPECT_EQ(SiteText(), text);
    }
    MakeDialog(false);
    EXPECT_EQ(Dialog->Create(nullptr), 1);
    EXPECT_EQ(SiteText(), "");
    Raise(RoadMap::EventMouseUp, {1.0, 2.0});
    Dialog->UpdateSelectPosition();
}

TEST_F(MappleTest, OpensWithoutDataAndWithoutAMap)
{
    RemoveData();
    Open();
    EXPECT_EQ(Transcript.Take(), "");
    EXPECT_FALSE(Dialog->MapOfDialog().IsCreated());
    EXPECT_FALSE(Item(MappleId::ButtonFind)->isEnabled());
    for (const int id : {MappleId::ButtonCenter, MappleId::ButtonFind})
        Click(id);
    Dialog->OnBnClickedFind();
    Dialog->OnBnClickedRead();
    Slider().setFocus();
    QTest::keyClick(&Slider(), Qt::Key_Down);
    Dialog->resize(900, 700);
    Dialog->UpdateSelectPosition();
    EXPECT_EQ(SiteText(), TokyoText);
    QTest::keyClick(&Slider(), Qt::Key_Escape);
    EXPECT_FALSE(Dialog->IsWindow());
    EXPECT_EQ(StoredText("Dialog\\Mapple", "ZoomAngle"), "82");
}

TEST_F(MappleTest, TellsThatTheMapCannotBeMade)
{
    Store("Dialog\\Mapple", "ZoomAngle", u"17"_s);
    Map.Refuses = true;
    MakeDialog();
    Prompts.Expect("Can't Create CorMpp", IPrompts::Icon::None);
    EXPECT_EQ(Dialog->Create(&HostEngine), 0);
    EXPECT_FALSE(Dialog->isVisible());
    EXPECT_EQ(QDir::currentPath(), WorkingFolder);
    Dialog->UpdateSelectPosition();
    Dialog->OnBnClickedCenter();
    EXPECT_EQ(StoredText("Dialog\\Mapple", "ZoomAngle"), "17");

    Map.Refuses = false; // a second try, now that the component is there
    EXPECT_EQ(Dialog->Create(&HostEngine), 1);
}

TEST_F(MappleTest, PausesAsLongAsIsStoredWithinReason)
{
    const auto create = [this](const char* wait) {
        Store("Dialog\\Mapple", "CreateWait", QString::fromLatin1(wait));
        MakeDialog();
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(Dialog->Create(&HostEngine), 1);
        return timer.elapsed();
    };
    RemoveData();
    EXPECT_GE(create("300"), 300);
    EXPECT_LT(create("-2147483648"), 300);
}

TEST_F(MappleTest, AClickMovesTheObserver)
{
    Open();
    Observer.UpdateLocationObjectByUI(5, 1);
    Transcript.Take();
    bool isPicking = false;
    Observer.SetListener([&](CKPDateObs::Change) {
        isPicking = Dialog->IsPicking();
        Transcript.Add(
            Number::Format("O %d: %.6f %.6f", Observer.GetBody(), Observer.GetLongitude(), Observer.GetLatitude()));
    });
    Raise(RoadMap::EventMouseUp, {35.5, 139.75});
    EXPECT_EQ(Transcript.Take(), "O 4: 139.500000 35.250000\nO 4: 139.750000 35.500000");
    EXPECT_TRUE(isPicking && !Dialog->IsPicking());
    EXPECT_DOUBLE_EQ(Observer.GetHeight(), 10.0);
    EXPECT_EQ(SiteText(), "東経： 139 度 45 分  0.00 秒 北緯： 35 度 30 分  0.00 秒");

    for (const QVariantList& nonsense : {QVariantList{}, {1.0}, {Nan, 1.0}, {u"x"_s, QVariant()}})
        Raise(RoadMap::EventMouseUp, nonsense);
    EXPECT_EQ(Transcript.Take(), "");

    Observer.UpdateObsByUI(-70.0, -33.0, 0.0);
    Transcript.Take();
    Dialog->UpdateSelectPosition();
    EXPECT_EQ(Transcript.Take(), "R 1(true, -252000000.000000, -118800000.000000)");
    EXPECT_EQ(SiteText(), "西経： 070 度 00 分  0.00 秒 南緯： 33 度 00 分  0.00 秒");
}

TEST_F(MappleTest, AClickMovesTheEngineWithoutAnObserver)
{
    Open(false);
    Raise(RoadMap::EventMouseUp, {35.5, 139.75});
    EXPECT_EQ(Transcript.Take(), "H Location = Location(139.750000, 35.500000, *); show sky");
    double chosen[2] = {139.75 * 3.6e6, -35.5 * 3.6e6};
    HostWindow::Send(Dialog.get(), 0x187D, 0, QVariant::fromValue(static_cast<double*>(chosen)));
    EXPECT_EQ(Transcript.Take(), "H Location = Location(139.750000, -35.500000, *); Show Sky");
    EXPECT_EQ(SiteText(), "東経： 139 度 45 分  0.00 秒 南緯： 35 度 30 分  0.00 秒");
    HostWindow::Send(Dialog.get(), 0x187D, 0, QVariant::fromValue(static_cast<double*>(nullptr)));
    HostWindow::Send(Dialog.get(), 0x187D, 0, 12345);
    Dialog->UpdateSelectPosition();
    EXPECT_EQ(Transcript.Take(), "");
}

TEST_F(MappleTest, ZoomsWhenTheScrollEnds)
{
    Open();
    CKivSlider& slider = Slider();
    const auto at = [&slider](int position) {
        constexpr int handle = 14;
        return QPoint(slider.width() / 2, handle / 2 + (slider.height() - handle) * position / ScaleTable::SliderMax);
    };
    QTest::mousePress(&slider, Qt::LeftButton, {}, at(80));
    QTest::mouseMove(&slider, at(200));
    EXPECT_GT(slider.value(), 150);
    EXPECT_EQ(Transcript.Take(), "");
    QTest::mouseMove(&slider, at(400)); // beyond the end
    EXPECT_EQ(Transcript.Take(), "");
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, at(329));
    EXPECT_EQ(slider.value(), 329);
    EXPECT_EQ(Transcript.Take(), "R 4(4900000)");

    QTest::keyPress(&slider, Qt::Key_Home);
    EXPECT_EQ(Transcript.Take(), "");
    QTest::keyRelease(&slider, Qt::Key_Home);
    EXPECT_EQ(Transcript.Take(), "R 4(1000)");
    QTest::keyPress(&slider, Qt::Key_Down);
    slider.clearFocus(); // the key is let go elsewhere
    EXPECT_EQ(Transcript.Take(), "R 4(1050)");
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_PageDown);
    EXPECT_EQ(Transcript.Take(), "R 4(2700)");
    QTest::keyClick(&slider, Qt::Key_A);
    EXPECT_EQ(Transcript.Take(), "");

    const int before = slider.value();
    Wheel(slider, QPoint(5, 5), -120);
    EXPECT_GT(slider.value(), before);
    EXPECT_EQ(Transcript.Take(), "R 4(" + std::to_string(ScaleTable::Denominator(slider.value())) + ')');
    Wheel(*Dialog, QPoint(5, 5), -120);
    EXPECT_EQ(Transcript.Take(), "");
}

TEST_F(MappleTest, RemembersTheZoomOneStepWider)
{
    for (const auto& [stored, scale, slider, storedAfter] : {
             std::tuple<const char*, const char*, int, const char*>{"0", "R 4(1000)", 0, "1"},
             {"330", "R 4(5000000)", 329, "330"},
             {"-5", "R 4(1000)", 0, "1"},
             {"wide", "R 4(8000)", 80, "81"},
         }) {
        MakeDialog(false);
        Store("Dialog\\Mapple", "ZoomAngle", QString::fromLatin1(stored));
        ASSERT_EQ(Dialog->Create(nullptr), 1);
        QApplication::processEvents();
        EXPECT_EQ(Transcript.Take(), scale) << stored;
        EXPECT_EQ(Slider().value(), slider) << stored;
        Dialog->close();
        EXPECT_EQ(StoredText("Dialog\\Mapple", "ZoomAngle"), storedAfter) << stored;
    }
}

TEST_F(MappleTest, EveryWayOfClosingDestroysTheWindow)
{
    const std::vector<std::function<void()>> ways{
        [this] { Click(MappleId::ButtonClose); },
        [this] { Dialog->close(); },
        [this] { QTest::keyClick(Item(MappleId::ButtonHelp), Qt::Key_Return); },
        [this] { QTest::keyClick(&Slider(), Qt::Key_Enter); },
        [this] { QTest::keyClick(Map.Control->Window(), Qt::Key_Escape); },
        [this] { Dialog->reject(); },
        [this] { Dialog.reset(); },
    };
    int stored = 80;
    for (const auto& close : ways) {
        OpenFind();
        const QPointer<QWidget> find = &Find();
        const QPointer<QWidget> map = Map.Control->Window();
        close();
        EXPECT_FALSE(find);
        EXPECT_EQ(StoredText("Dialog\\Mapple", "ZoomAngle"), std::to_string(++stored));
        if (Dialog) {
            EXPECT_FALSE(Dialog->IsWindow() || Dialog->isVisible() || Dialog->MapOfDialog().IsCreated());
            Raise(RoadMap::EventMouseUp, {1.0, 2.0}); // the control is still there, but nobody listens
            EXPECT_EQ(Dialog->FindOfDialog(), nullptr);
            Dialog->UpdateSelectPosition();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_EQ(Dialog->Create(&HostEngine), 1); // the object serves again
            Dialog->close();
            ++stored;
        }
        EXPECT_FALSE(map);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Transcript.Take();
    }
}

TEST_F(MappleTest, SurvivesAHostThatEndsItInTheMiddleOfAnEvent)
{
    Open();
    Observer.SetListener([this](CKPDateObs::Change) { Dialog->close(); });
    Raise(RoadMap::EventMouseUp, {35.5, 139.75});
    EXPECT_FALSE(Dialog->IsWindow());
    EXPECT_DOUBLE_EQ(Observer.GetLongitude(), 139.75);

    Open();
    Map.During = [this](int) {
        Map.During = nullptr;
        Dialog.reset();
    };
    Click(MappleId::ButtonCenter);
    EXPECT_FALSE(Dialog);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the control goes now
}

TEST_F(MappleTest, ButtonsDriveTheMap)
{
    MakeDialog();
    Dialog->SetReadFile(1);
    ASSERT_EQ(Dialog->Create(&HostEngine), 1);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Dialog.get()));
    Transcript.Take();
    Click(MappleId::ButtonCenter);
    EXPECT_EQ(Transcript.Take(), "R 5()");
    Prompts.ExpectFile(u"/tmp/印 1.txt"_s);
    Click(MappleId::ButtonRead);
    EXPECT_EQ(Transcript.Take(), "R 6(/tmp/印 1.txt)");
    Prompts.ExpectFile({});
    Click(MappleId::ButtonRead);
    EXPECT_EQ(Transcript.Take(), "");
    for (const bool isShown : {true, false, true}) {
        Click(MappleId::ButtonFind);
        EXPECT_EQ(Find().isVisible(), isShown);
    }
}

TEST_F(MappleTest, TheMapCoversAResizedWindowUnderItsControls)
{
    Open();
    const CCorMpp& map = Dialog->MapOfDialog();
    const auto rectOf = [this](int id) { return QRect(Item(id)->mapTo(Dialog.get(), QPoint()), Item(id)->size()); };
    const QRect help = rectOf(MappleId::ButtonHelp);
    const int margin = Dialog->height() - help.y() - help.height();
    EXPECT_GT(margin, 0);
    EXPECT_EQ(map.geometry(), QRect(QPoint(margin, margin), QPoint(rectOf(MappleId::SliderZoom).x() - 2,
                                                                   rectOf(MappleId::TextSite).y() - margin - 1)));
    Dialog->resize(Dialog->size() + QSize(70, 50));
    QApplication::processEvents();
    EXPECT_EQ(map.geometry(), Dialog->rect());
    EXPECT_EQ(Map.Control->Window()->size(), Dialog->size());
    for (const int id : {MappleId::ButtonCenter, MappleId::ButtonHelp, MappleId::SliderZoom, MappleId::TextSite})
        EXPECT_EQ(Dialog->childAt(rectOf(id).center()), Item(id)) << id;
    EXPECT_EQ(Dialog->childAt(QPoint(40, 40)), Map.Control->Window());
}
