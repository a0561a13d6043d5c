#include "tests/dialog/ObsFixture.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
using ObsSite = CObsFixture;

TEST_F(ObsSite, LayersGoToTheMapInTheirOrder)
{
    const char* names[]{"FeatureObs",   "FeatureCutcherry",      "FeatureCity",     "FeatureAstro",
                        "FeatureMount", "FeatureNaturalTerrain", "FeatureBuilding", "FeatureOther"};
    for (const int slots : {3, 8, 12, -1}) {
        Map.FeatureCount = slots;
        Open();
        std::vector<int> flags{1, 1, 1, 0, 0, 0, 0, 0};
        flags.resize(static_cast<size_t>(std::max(slots, 8)));
        EXPECT_EQ(Map.Flags, flags) << slots;
        for (size_t layer = 0; layer < 8; ++layer) {
            Click(ObsId::CheckFeatureFirst + static_cast<int>(layer));
            flags[layer] = 1 - flags[layer];
            EXPECT_EQ(Map.Flags, flags) << slots;
            EXPECT_EQ(Transcript.Take(), "M 22()\nM 23()\nM 8()");
            EXPECT_EQ(Stored("Dialog\\Obs", names[layer]), -77) << "stored by closing only";
        }
        Dialog = std::make_unique<CDlgObs>(&Parent, Folder.path() + u"/data/"_s, 0);
        Dialog->SetKPDateObs(&Observer);
    }
    Open();
    Click(ObsId::CheckFeatureFirst + 5);
    Click(ObsId::ButtonClose);
    for (size_t layer = 0; layer < 8; ++layer)
        EXPECT_EQ(Stored("Dialog\\Obs", names[layer]), layer < 3 || layer == 5 ? 1 : 0);
}

TEST_F(ObsSite, ChoosingABodyTellsTheObserverObjectOnly)
{
    Open();
    auto* combo = Item<QComboBox>(ObsId::ComboPlanet);
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(Transcript.Take(), "O 5: 0.000000 0.000000 0.0 9.00");
    EXPECT_FALSE(Item(ObsId::ButtonSetInit)->isEnabled());
    EXPECT_TRUE(Dialog->MapOfDialog().isVisible()) << "the map follows when the host refills the dialog";
    FollowObserver();
    QTest::keyClick(combo, Qt::Key_Home);
    EXPECT_EQ(Observer.GetBody(), 0);
    EXPECT_TRUE(Dialog->EngineOfDialog().isVisible());
}

TEST_F(ObsSite, SavingTheInitialPlaceAsksFirst)
{
    const std::tuple<double, double, double, double, const char*, IPrompts::Answer, const char*, const char*> cases[]{
        {139.691772, 35.689236, 39.0, 9.0,
         "東経 139度41分30.4秒\n北緯  35度41分21.2秒\n標高 39m\nタイムゾーン "
         "+09時間00分\n\nを初期値として設定します。",
         IPrompts::Answer::Cancel, "(none)", "(none)"},
        {-74.006, 40.71280556, 10.0, -5.0,
         "西経  74度00分21.6秒\n北緯  40度42分46.1秒\n標高 10m\nタイムゾーン "
         "-05時間00分\n\nを初期値として設定します。",
         IPrompts::Answer::Ok, "location(-74.006000, 40.712806, 10.000000)", "-5.000000"}};
    Open();
    for (const auto& [longitude, latitude, altitude, zone, text, answer, location, timeZone] : cases) {
        Observer.UpdateObsByUI(longitude, latitude, altitude, zone);
        Dialog->InitLocation(0);
        Prompts.Expect(text, IPrompts::Icon::Information, IPrompts::Buttons::OkCancel, answer);
        Click(ObsId::ButtonSetInit);
        EXPECT_EQ(StoredText("Default", "location"), location);
        EXPECT_EQ(StoredText("Default", "time.timezone"), timeZone);
    }
}

TEST_F(ObsSite, ResetSendsTheStoredTextsAsTheyStand)
{
    const std::tuple<const char*, const char*, const char*, double> cases[]{
        {nullptr, nullptr,
         "H location = location(139.691772, 35.689236, 39.000000)\n"
         "H time.timezone = 9.000000; Show Sky\nO date 9.00",
         9.0},
        {"nowhere, at all", "-3.5 h", "H location = nowhere, at all\nH time.timezone = -3.5 h; Show Sky\nO date -3.50",
         -3.5},
        {"", "x", "H location = \nH time.timezone = x; Show Sky\nO date 0.00", 0.0}};
    Open();
    for (const auto& [location, timeZone, said, zone] : cases) {
        if (location) {
            CRegistry::Write(u"Default"_s, u"location"_s, QString::fromUtf8(location));
            CRegistry::Write(u"Default"_s, u"time.timezone"_s, QString::fromUtf8(timeZone));
        }
        StandOn(5);
        Observer.SetUserTz(2.0);
        Click(ObsId::ButtonReset);
        EXPECT_EQ(Transcript.Take(), "O 4: 139.691772 35.689236 39.0 2.00\n" + std::string(said));
        EXPECT_EQ(Item<QComboBox>(ObsId::ComboPlanet)->currentIndex(), 4);
        EXPECT_EQ(Observer.GetUserTz(), zone);
        EXPECT_TRUE(Item(ObsId::ButtonCity)->isEnabled());
    }
}

TEST_F(ObsSite, TimeSystemDecidesTheShownOffset)
{
    const std::tuple<int, double, double, const char*, bool> cases[]{
        {0, -3.5, 0, "- 3 30", true},  {0, 9.99, 0, "+ 9 59", true},     {0, 5.9999, 0, "+ 5 60", true},
        {1, 9.0, 139, "+ 0 0", false}, {2, 9.0, -74.0, "- 4 56", false}, {2, 9.0, 285.0, "- 5 0", false},
        {7, 9.0, 139, "+ 0 0", false}, {-1, 9.0, 139, "+ 0 0", false}};
    Open();
    for (const auto& [system, zone, longitude, shown, enabled] : cases) {
        Observer.UpdateObsByUI(longitude, 10.0, 0.0, zone);
        Observer.SetTimeSys(system);
        Dialog->UpdateTimeSys();
        EXPECT_EQ((Item<QAbstractButton>(ObsId::RadioTzMinus)->isChecked() ? "- " : "+ ") + TextOf(ObsId::EditTzHour) +
                      ' ' + TextOf(ObsId::EditTzMin),
                  shown);
        EXPECT_EQ(Item(ObsId::EditTzHour)->isEnabled(), enabled);
        EXPECT_TRUE(Item(ObsId::GroupTz)->isEnabled());
    }
    Transcript.Take();
    Dialog->UpdateDate();
    EXPECT_EQ(Transcript.Take(), "E Time = UT(2026, 1, 2, 3, 4, 5); Show Sky");
}
} // namespace
