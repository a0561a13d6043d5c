#include "tests/dialog/ObsFixture.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace
{
using ObsLifecycle = CObsFixture;

TEST_F(ObsLifecycle, OpensOnTheObserversSiteByHandOrByTheTerrain)
{
    Transcript.Take();
    EXPECT_EQ(Dialog->DoModeless(&HostEngine, {}), 1);
    const std::string said = Transcript.Take();
    EXPECT_EQ(said.find("IndexFile"), std::string::npos);
    EXPECT_NE(said.find("\nH Solar.Planet.Earth.Landscape.AutoGetAltitude = FALSE\nE Time = UT(2026, 1, 2, 3, 4, 5)"),
              std::string::npos);
    EXPECT_EQ(Dialog->windowTitle().toStdString(), "場所");
    EXPECT_EQ(Fields(), "E 139 41 30.4 N 35 41 21.2");
    EXPECT_TRUE(Item<QAbstractButton>(ObsId::RadioAltManual)->isChecked());
    EXPECT_EQ(Dialog->Create(&HostEngine), 0) << "the window exists already";

    TerrainPath = Folder.filePath(u"terrain data/earth.idx"_s);
    WriteFile(TerrainPath, {});
    CDlgObs dialog(&Parent, Folder.path() + u"/data/"_s, 0);
    dialog.SetKPDateObs(&Observer);
    EXPECT_EQ(dialog.DoModeless(&HostEngine, TerrainPath), 1);
    const QString withTerrain = QString::fromStdString(Transcript.Take());
    const QString line = withTerrain.section(u'\n', 15, 15);
    const QString sent = line.section(u'"', 1, 1);
    EXPECT_EQ(line, u"E Solar.Planet.Earth.Landscape.IndexFile = \""_s + sent + u'"');
    EXPECT_FALSE(sent.contains(u' ')) << sent.toStdString();
    EXPECT_EQ(QFileInfo(sent).canonicalFilePath(), QFileInfo(TerrainPath).canonicalFilePath());
    EXPECT_TRUE(withTerrain.contains(u"\nH Solar.Planet.Earth.Landscape.AutoGetAltitude = TRUE\n"_s));
    EXPECT_TRUE(dialog.Item<QAbstractButton>(ObsId::RadioAltAuto)->isChecked());
    // A later showing without a path keeps the first: the altitude stays automatic.
    dialog.DoModeless(&HostEngine, {});
    EXPECT_NE(Transcript.Take().find("H Solar.Planet.Earth.Landscape.AutoGetAltitude = TRUE"), std::string::npos);
}

TEST_F(ObsLifecycle, RefusedControlsAreReportedAndTheRestStillShows)
{
    for (const bool engineRefuses : {true, false}) {
        Embedded.Refuses = engineRefuses;
        Map.Refuses = !engineRefuses;
        CDlgObs dialog(&Parent, Folder.path() + u"/data/"_s, 0);
        dialog.SetKPDateObs(&Observer);
        Prompts.Expect(engineRefuses ? "Can't create map control" : "Can't create corkivmap control",
                       IPrompts::Icon::None);
        Transcript.Take();
        EXPECT_EQ(dialog.DoModeless(&HostEngine, {}), 1);
        EXPECT_TRUE(dialog.isVisible());
        const std::string said = Transcript.Take();
        EXPECT_EQ(said.find("M "), std::string::npos) << said;
        EXPECT_EQ(said.find("E View.Device") != std::string::npos, !engineRefuses) << said;
        dialog.RedrawEclipsePath();
        EXPECT_EQ(Transcript.Take(), "") << "no map, no question";
        dialog.InitLocation(0);
        EXPECT_EQ(dialog.DoModeless(&HostEngine, TerrainPath), 1);
        dialog.Item<QAbstractButton>(ObsId::CheckFeatureFirst)->click();
        dialog.Item<CKivSlider>(ObsId::SliderMagnification)->setValue(50);
    }
}

TEST_F(ObsLifecycle, LandmarkListIsChosenBeforeTheRefresh)
{
    const std::tuple<const char*, bool, bool, bool, bool, const char*, bool, bool> cases[]{
        {"nothing", false, false, false, false, "module/kivpel.obs", false, false},
        {"module only", false, false, false, true, "module/kivpel.obs", true, false},
        {"user list", false, false, true, true, "data/kivpel_user.obs", true, false},
        {"older shipped list", true, false, true, false, "data/kivpel_user.obs", true, false},
        {"newer shipped list", true, true, true, false, "data/kivpel_user.obs", true, true},
        {"first start", true, true, false, true, "module/kivpel.obs", true, true}};
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const auto put = [this](const char* name, bool exists, const QDateTime& changed) {
        const QString path = Folder.filePath(QString::fromLatin1(name));
        QFile::remove(path);
        if (exists)
            WriteFile(path, "// head\r\n", changed);
    };
    for (const auto& [name, shipped, newer, user, module, list, exists, rewritten] : cases) {
        put("data/kivpel.obs", shipped, newer ? now : now.addDays(-2));
        put("data/kivpel_user.obs", user, now.addDays(-1));
        put("module/kivpel.obs", module, now);
        CDlgObs dialog(&Parent, Folder.path() + u"/data/"_s, 0);
        dialog.SetKPDateObs(&Observer);
        Transcript.Take();
        EXPECT_EQ(dialog.Create(&HostEngine), 1);
        const std::string told = "M 20(" + Folder.filePath(QString::fromLatin1(list)).toStdString() + ")\nM 16(" +
                                 (exists ? "true" : "false") + ")\nM 22()";
        EXPECT_NE(Transcript.Take().find(told), std::string::npos) << name;
        const QFileInfo userList(Folder.filePath(u"data/kivpel_user.obs"_s));
        EXPECT_EQ(userList.isFile(), user || rewritten) << name;
        EXPECT_EQ(userList.isFile() && userList.lastModified() > now.addSecs(-3600), rewritten) << name;
    }
}

TEST_F(ObsLifecycle, RefillTakesOnlyWhatDiffers)
{
    Open(true);
    Host.Answers[u"? Solar.Planet.Earth.Landscape.AutoGetAltitude"_s] = u"TRUE"_s;
    Embedded.Answers[u"? Location.Altitude"_s] = u"123.4 m"_s;
    Item<QComboBox>(ObsId::ComboPlanet)->setCurrentIndex(5);
    Dialog->InitLocation(0);
    const std::string said = Transcript.Take();
    EXPECT_NE(said.find("E ? Location.Altitude\nH Location.Altitude = 123.400000; show sky"), std::string::npos)
        << said;
    EXPECT_EQ(TextOf(ObsId::EditAlt), "123");
    EXPECT_EQ(Item<QComboBox>(ObsId::ComboPlanet)->currentIndex(), 5) << "the body is unchanged: left alone";
    EXPECT_FALSE(Item(ObsId::EditAlt)->isEnabled());

    Host.Answers[u"? Solar.Planet.Earth.Landscape.AutoGetAltitude"_s] = u"true"_s;
    Item<CKivEdit>(ObsId::EditLngSec)->setText(u"7"_s);
    Dialog->InitLocation(0); // the height differs, so the fields are pushed; the longitude itself is not split anew
    EXPECT_TRUE(Item<QAbstractButton>(ObsId::RadioAltManual)->isChecked());
    EXPECT_EQ(Fields(), "E 139 41 30.4 N 35 41 21.2");
    CRegistry::Write(u"Dialog\\Obs"_s, u"AutoAltitude"_s, 0, CRegistry::Flag);
    Dialog->InitLocation(1);
    EXPECT_NE(Transcript.Take().find("H Solar.Planet.Earth.Landscape.AutoGetAltitude = FALSE"), std::string::npos);
    EXPECT_EQ(Item<QComboBox>(ObsId::ComboPlanet)->currentIndex(), 4);
}

TEST_F(ObsLifecycle, EachBodyHasItsMapItsHemisphereAndItsControls)
{
    const std::tuple<int, int, bool, bool, bool, bool, const char*, const char*> cases[]{
        {4, 0, true, true, true, true, "W 74 0 21.6 N 40 42 46.1", "m"},
        {4, 2, true, true, true, false, "W 74 0 21.6 N 40 42 46.1", "m"},
        {1, 0, false, true, false, false, "W 74 0 21.6 N 40 42 46.1", "m"},
        {5, 0, false, false, false, false, "W 285 59 38.4 N 40 42 46.1", "m"},
        {6, 0, false, false, false, false, "W 285 59 38.4 N 40 42 46.1", "km"},
        {3, 1, false, false, false, false, "E 285 59 38.4 N 40 42 46.1", "m"}};
    Open();
    for (const auto& [body, timeSystem, onGlobeMap, hemisphere, earth, zone, fields, unit] : cases) {
        SCOPED_TRACE(body);
        Observer.SetTimeSys(timeSystem);
        Observer.UpdateLocationObjectByUI(body, 1);
        for (const double longitude : {-10.0, -74.006}) {
            Observer.UpdateObsByUI(longitude, 40.712806, 10.0);
            Dialog->InitLocation(0);
        }
        EXPECT_EQ(Dialog->MapOfDialog().isVisible(), onGlobeMap);
        EXPECT_EQ(Dialog->EngineOfDialog().isVisible(), !onGlobeMap);
        EXPECT_EQ(Transcript.Take().find("M 6(285.994000, 40.712806)") != std::string::npos, onGlobeMap);
        EXPECT_EQ(Fields(), fields);
        EXPECT_EQ(TextOf(ObsId::LabelAltUnit), unit);
        using namespace ObsId;
        EXPECT_EQ(Item(RadioEast)->isEnabled(), hemisphere);
        for (const int id : {GroupTz, ButtonSetInit, ButtonCity, GroupFeature, CheckFeatureFirst + 7})
            EXPECT_EQ(Item(id)->isEnabled(), earth) << id;
        for (const int id : {RadioTzPlus, EditTzHour, SpinTzHour, LabelTzHour, EditTzMin, SpinTzMin, LabelTzMin})
            EXPECT_EQ(Item(id)->isEnabled(), zone) << id;
        for (const int id : {RadioNorth, EditLatDeg, RadioAltAuto, EditAlt, SpinAlt, ButtonReset, ButtonClose})
            EXPECT_TRUE(Item(id)->isEnabled()) << id;
    }
    EXPECT_EQ(Item<QComboBox>(ObsId::ComboPlanet)->count(), 15);
    EXPECT_EQ(Item<QComboBox>(ObsId::ComboPlanet)->itemText(14).toStdString(), "エリス");
}

TEST_F(ObsLifecycle, ClosingTellsTheHostOnceAndSavesByButtonAndKeysOnly)
{
    const auto byKey = [this](Qt::Key key) { QTest::keyClick(Item(ObsId::EditLatMin), key); };
    const std::pair<std::function<void()>, bool> ways[]{{[this] { Click(ObsId::ButtonClose); }, true},
                                                        {[&] { byKey(Qt::Key_Return); }, true},
                                                        {[&] { byKey(Qt::Key_Enter); }, true},
                                                        {[&] { byKey(Qt::Key_Escape); }, true},
                                                        {[this] { Dialog->close(); }, false}};
    int position = 10;
    for (const auto& [close, saves] : ways) {
        CRegistry::Write(u"Dialog\\Obs"_s, u"ViewAngle"_s, 3, CRegistry::Count);
        Open();
        Item<CKivSlider>(ObsId::SliderMagnification)->setValue(++position);
        Click(ObsId::CheckFeatureFirst + 1);
        const int layer = Item<QAbstractButton>(ObsId::CheckFeatureFirst + 1)->isChecked() ? 1 : 0;
        Messages.clear();
        close();
        EXPECT_EQ(Messages.join(u'|').toStdString(), "main 2034 0 0") << "the other one is posted";
        QCoreApplication::processEvents();
        EXPECT_EQ(Messages.join(u'|').toStdString(), "main 2034 0 0|parent 2024 0 7300");
        EXPECT_FALSE(Dialog->isVisible());
        EXPECT_EQ(Stored("Dialog\\Obs", "ViewAngle"), saves ? position : 3);
        EXPECT_EQ(Stored("Dialog\\Obs", "FeatureCutcherry") == layer, saves);
        EXPECT_EQ(Stored("Dialog\\Obs", "AutoAltitude"), 0) << "without terrain data it is manual";
    }
    Dialog->Show(1);
    EXPECT_TRUE(Dialog->isVisible());
    Dialog->Show(0);
    EXPECT_FALSE(Dialog->isVisible());
}

TEST_F(ObsLifecycle, WithoutObserverOrEngineNothingBreaks)
{
    Dialog->Show(1);
    EXPECT_FALSE(Dialog->isVisible()) << "there is no window to show yet";
    for (const bool hasObserver : {false, true}) {
        CDlgObs dialog(nullptr, Folder.path() + u"/data/"_s, 0);
        dialog.SetKPDateObs(hasObserver ? &Observer : nullptr);
        HostEngine.SetEventSink({});
        EXPECT_EQ(dialog.DoModeless(nullptr, TerrainPath), 1);
        dialog.UpdateTimeSys();
        dialog.UpdateDate();
        Transcript.Take();
        for (auto* radio : dialog.findChildren<CKivRadioButton*>())
            radio->click();
        dialog.Item<QAbstractButton>(ObsId::CheckFeatureFirst)->click();
        dialog.Item<QAbstractButton>(ObsId::ButtonReset)->click();
        for (auto* edit : dialog.findChildren<CKivEdit*>()) {
            edit->selectAll();
            QTest::keyClicks(edit, u"1"_s);
        }
        dialog.Item<QComboBox>(ObsId::ComboPlanet)->setCurrentIndex(5);
        Embedded.Control->Raise(ControlNumber::Engine::EventMouseUp, {});
        Map.Control->Raise(ControlNumber::GlobeMap::EventObsPosition, {10.0, 20.0});
        Map.Control->Raise(ControlNumber::GlobeMap::EventMagnification, {2.0});
        EXPECT_EQ(Transcript.Take().find("H "), std::string::npos);
        dialog.close();
    }
}

TEST_F(ObsLifecycle, TemplateHasEveryControlAndTabFollowsTheEye)
{
    // The numbers are the host's, which finds controls by them.
    const std::pair<const char*, QString> classes[]{
        {"CKivComboBox", u"7042"_s},
        {"QGroupBox",
         u"7035 経度(&O)：|7037 緯度(&A)：|7047 標高(&E)：|7036 タイムゾーン(&T)：|7069 ランドマーク表示(&L)："_s},
        {"CKivRadioButton", u"7013 東経|7014 西経|7019 北緯|7020 南緯|7048 自動|7049 手動|7027 +|7028 -"_s},
        {"QLabel", u"7044 時|7045 分|7046 m|7000 map|7063 詳細|7064 広域"_s},
        {"CKivCheckBox",
         u"7070 観測地|7071 市区町村|7072 都市|7073 天文台|7074 山岳|7075 自然地形|7076 建造物|7077 その他"_s},
        {"CKivButton",
         u"7043 cmd|7030 初期値として保存(&I)|7053 初期値に戻す(&R)|7029 都市名選択(&N)...|1 閉じる(&C)|57670 ヘルプ(&H)"_s},
        {"CKivSlider", u"7001"_s},
        {"CKivEdit", u"7015 139|7016 41|7038 30.4|7021 35|7023 41|7040 21.2|7025 39|7031 9|7033 0"_s},
        {"CKivSpinButton", u"7017|7018|7039|7022|7024|7041|7026|7032|7034"_s}};
    Open();
    for (const auto& [name, rows] : classes) {
        for (const QString& row : rows.split(u'|')) {
            const int id = row.section(u' ', 0, 0).toInt();
            ASSERT_NE(Item(id), nullptr) << id;
            EXPECT_STREQ(Item(id)->metaObject()->className(), name) << id;
            EXPECT_EQ(TextOf(id), row.section(u' ', 1).toStdString()) << id;
            EXPECT_EQ(Item(id)->isVisible(), id != ObsId::ButtonCommand && id != ObsId::MapPlaceholder) << id;
        }
    }
    const int order[]{7001, 7042, 7013, 7014, 7015, 7016, 7038, 7019, 7020, 7021, 7023, 7040, 7048, 7049, 7025, 7027,
                      7028, 7031, 7033, 7030, 7053, 7029, 7070, 7071, 7072, 7073, 7074, 7075, 7076, 7077, 1,    57670};
    std::vector<QWidget*> chain;
    for (QWidget* next = Item(7001); chain.empty() || next != Item(7001); next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisible())
            chain.push_back(next);
    }
    ASSERT_EQ(chain.size(), std::size(order));
    for (size_t i = 0; i < chain.size(); ++i) {
        EXPECT_EQ(chain[i], Item(order[i])) << order[i];
        EXPECT_FALSE(chain[i]->accessibleName().isEmpty() && TextOf(order[i]).empty()) << order[i];
    }
}
} // namespace
