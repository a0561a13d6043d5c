#include "city/ControlIds.h"
#include "city/DlgCity.h"
#include "host/dialog/KivTreeCtrl.h"
#include "tests/dialog/ObsFixture.h"

using namespace Qt::StringLiterals;

namespace
{
class ObsCity : public CObsFixture
{
protected:
    void WriteList(const char* folder, bool isAutoAltitude = true) const
    {
        const QByteArray head = "#PLACE LIST\r\nSite,010.5000000W,20.5000000S,    123,-08.00, ";
        WriteFile(Folder.filePath(QString::fromUtf8(folder) + u"/kivpel.obs"_s),
                  head + (isAutoAltitude ? "1, 0, 2\r\n" : "0, 0, 2\r\n"));
    }

    /// Opens the city list with the button and does the steps in it; a list left open is cancelled.
    void InCityList(const std::function<void(CDlgCity&)>& steps)
    {
        InNext<CDlgCity>([this, steps](CDlgCity& dialog) {
            EXPECT_EQ(Messages.value(0), u"main 1725 1 0"_s);
            Transcript.Take();
            Messages.clear();
            steps(dialog);
        });
        Messages.clear();
        Click(ObsId::ButtonCity);
        EXPECT_EQ(Messages, QStringList{u"main 1725 0 0"_s});
    }

    static void SelectSite(CDlgCity& dialog)
    {
        auto* tree = dialog.Item<CKivTreeCtrl>(CityId::Tree);
        tree->Select(tree->model()->index(1, 0)); // beside the root
        EXPECT_EQ(tree->Selected().data().toString(), u"Site"_s);
    }
};

TEST_F(ObsCity, SaysThatThereIsNoList)
{
    Open();
    Prompts.Expect("観測地ファイルが見つかりません。", IPrompts::Icon::None);
    Click(ObsId::ButtonCity);
    EXPECT_EQ(Transcript.Take(), "");
}

TEST_F(ObsCity, TakesThePlaceOver)
{
    WriteList("module");
    Open(true);
    Observer.UpdateObsByUI(139.5, 35.5, 39.0, 9.0);
    Dialog->InitLocation(0);
    Transcript.Take();
    Embedded.Answers[u"? Location.Altitude"_s] = u"456.0"_s;
    InCityList([](CDlgCity& dialog) {
        EXPECT_EQ(dialog.Coordinates.LongitudeDegrees, 139);
        EXPECT_EQ(dialog.Coordinates.LatitudeMinutes, 30);
        EXPECT_EQ(dialog.Coordinates.TimeZoneHours, 9);
        SelectSite(dialog);
        dialog.Item<QAbstractButton>(CityId::ButtonOk)->click();
    });
    EXPECT_EQ(Fields(), "W 10 30 0.0 S 20 30 0.0");
    EXPECT_EQ(TextOf(ObsId::EditAlt), "456");
    EXPECT_NEAR(Observer.GetLongitude(), -10.5, 1e-9);
    EXPECT_EQ(Observer.GetHeight(), 456.0);
    EXPECT_EQ(Observer.GetUserTz(), -8.0);
    EXPECT_EQ(Dialog->findChildren<CDlgCity*>().size(), 0);
}

TEST_F(ObsCity, TurnsAutomaticAltitudeOffForAPlaceWithItsOwn)
{
    WriteList("data", false);
    Open(true);
    EXPECT_TRUE(Item<QAbstractButton>(ObsId::RadioAltAuto)->isChecked());
    InCityList([this](CDlgCity& dialog) {
        SelectSite(dialog);
        for (const IPrompts::Answer answer : {IPrompts::Answer::Cancel, IPrompts::Answer::Ok}) {
            EXPECT_EQ(dialog.IsInitialSet, 0);
            Prompts.Expect("西経  10度30分 0.0秒\n南緯  20度30分 0.0秒\n標高 123m\nタイムゾーン - 8時間 0分"
                           "\n\nを初期値として設定します。",
                           IPrompts::Icon::Information, IPrompts::Buttons::OkCancel, answer);
            dialog.Item<QAbstractButton>(CityId::ButtonSetInit)->click();
        }
        EXPECT_EQ(StoredText("Default", "location"), "(none)"); // not before the list ends with OK
        dialog.Item<QAbstractButton>(CityId::ButtonOk)->click();
    });
    EXPECT_NE(Transcript.Take().find("H Solar.Planet.Earth.Landscape.AutoGetAltitude = FALSE"), std::string::npos);
    EXPECT_TRUE(Item<QAbstractButton>(ObsId::RadioAltManual)->isChecked());
    EXPECT_TRUE(Item(ObsId::EditAlt)->isEnabled());
    EXPECT_EQ(Observer.GetHeight(), 123.0);
    EXPECT_EQ(StoredText("Default", "location"), "location(-10.500000, -20.500000, 123.000000)");
    EXPECT_EQ(StoredText("Default", "time.timezone"), "-8.000000");
}

} // namespace
