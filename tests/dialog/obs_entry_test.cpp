#include "tests/dialog/ObsFixture.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{
using ObsEntry = CObsFixture;

constexpr char LngMin[] = "経度の分には 0 から 59 までの値を入力してください。";
constexpr char LngSec[] = "経度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char LatDeg[] = "緯度の度には 0 から 90 までの値を入力してください。";
constexpr char LatMin[] = "緯度の分には 0 から 59 までの値を入力してください。";
constexpr char LatSec[] = "緯度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char Lng180[] = "経度には 0 から 180 までの値を入力してください。";
constexpr char Lng360[] = "経度には 0 から 360 までの値を入力してください。";
constexpr char TzHour[] = "タイムゾーンの時には 0 から 14 までの値を入力してください。";
constexpr char TzMin[] = "タイムゾーンの分には 0 から 59 までの値を入力してください。";

/// The two lines of a two-value apply and what the observer object gets.
std::string Moved(int body, const char* longitude, const char* latitude, const char* altitude = "39.0")
{
    const auto place = [&](const char* head, const char* ends) {
        return std::string(head) + "Longitude = " + longitude + ends + head + "Latitude = " + latitude + ends;
    };
    const double degrees = Number::LeadingDouble(QByteArrayView(longitude)); // the observer object keeps one turn
    const QString lngLat = Number::Format("%.6f %.6f", degrees > 360.0 ? degrees - 360.0 : degrees,
                                          Number::LeadingDouble(QByteArrayView(latitude)));
    std::string said = "E " + place("Location.", "; ");
    said.resize(said.size() - 2);
    return said + "\nE " + place("View.PlanetaryGlobe.Center.", "; ") + "Show Sky\nO " + std::to_string(body) + ": " +
           lngLat.toStdString() + ' ' + altitude + " 9.00";
}

/// The same for a four-value apply at the place of the typing test.
std::string Lifted(int body, const std::string& metres)
{
    return "E Location.Longitude = 10.50833333; Location.Latitude = 20.67500000;  Location.Altitude = " + metres +
           ".00000000\nE View.PlanetaryGlobe.Center.Longitude = 10.508333; View.PlanetaryGlobe.Center.Latitude = "
           "20.675000; Show Sky\nO " +
           std::to_string(body) + ": 10.508333 20.675000 " + metres + ".0 9.00";
}

TEST_F(ObsEntry, TypingFollowsTheRulesOfEachBox)
{
    using namespace ObsId;
    const std::string atPole = Moved(4, "10.50833333", "90.00000000");
    // What is said since the last key; fields where they count.
    const std::tuple<int, int, const char*, const char*, const char*, std::string, const char*> entries[]{
        {4, EditLngDeg, "12", nullptr, "12", Moved(4, "12.50833333", "20.67500000"), "E 12 30 30.0 N 20 40 30.0"},
        {4, EditLngDeg, "181", Lng180, "180", "", "E 180 30 30.0 N 20 40 30.0"},
        {1, EditLngDeg, "181", Lng180, "180", "", "E 180 30 30.0 N 20 40 30.0"},
        {5, EditLngDeg, "360", nullptr, "360", Moved(5, "360.50833333", "20.67500000"), "W 360 30 30.0 N 20 40 30.0"},
        {5, EditLngDeg, "361", Lng360, "360", "", "W 360 30 30.0 N 20 40 30.0"},
        {4, EditLngDeg, "-5", Lng180, "0", "", "E 0 30 30.0 N 20 40 30.0"},
        {4, EditLngMin, "59", nullptr, "59", Moved(4, "10.99166667", "20.67500000"), "E 10 59 30.0 N 20 40 30.0"},
        {4, EditLngMin, "60", LngMin, "59", "", "E 10 59 30.0 N 20 40 30.0"},
        {4, EditLngMin, "-1", LngMin, "0", "", "E 10 0 30.0 N 20 40 30.0"},
        {4, EditLngSec, "12.", nullptr, "12.", "", "E 10 30 12. N 20 40 30.0"},
        {4, EditLngSec, "12.6", nullptr, "12.6", Moved(4, "10.50350000", "20.67500000"), "E 10 30 12.6 N 20 40 30.0"},
        {4, EditLngSec, "60", LngSec, "59.9", "", "E 10 30 59.9 N 20 40 30.0"},
        {4, EditLngSec, "-1", LngSec, "0.0", "", "E 10 30 0.0 N 20 40 30.0"},
        {4, EditLatDeg, "90", nullptr, "90", atPole, "E 10 30 30.0 N 90 0 0.0"},
        {4, EditLatDeg, "91", LatDeg, "90", atPole, "E 10 30 30.0 N 90 0 0.0"},
        {4, EditLatDeg, "-3", LatDeg, "0", Moved(4, "10.50833333", "0.00000000"), "E 10 30 30.0 N 0 0 0.0"},
        {4, EditLatMin, "60", LngMin, "59", Moved(4, "10.50833333", "20.99166667"), "E 10 30 30.0 N 20 59 30.0"},
        {4, EditLatMin, "-2", LatMin, "0", Moved(4, "10.50833333", "20.00833333"), "E 10 30 30.0 N 20 0 30.0"},
        {4, EditLatSec, "60", LngSec, "59.9", Moved(4, "10.50833333", "20.68330556"), "E 10 30 30.0 N 20 40 59.9"},
        {4, EditLatSec, "-2", LatSec, "0.0", Moved(4, "10.50833333", "20.66666667"), "E 10 30 30.0 N 20 40 0.0"},
        {4, EditTzHour, "14", nullptr, "14", "O date 14.00", nullptr},
        {4, EditTzHour, "15", TzHour, "14", "", nullptr},
        {4, EditTzHour, "-1", TzHour, "0", "", nullptr},
        {4, EditTzMin, "30", nullptr, "30", "O date 9.50", nullptr},
        {4, EditTzMin, "60", TzMin, "59", "", nullptr},
        {4, EditAlt, "-9999", nullptr, "-9999", Lifted(4, "-9999"), nullptr},
        {6, EditAlt, "12", nullptr, "12", Lifted(6, "12000"), nullptr},
        {4, EditAlt, "1000000", "地球の標高には -9999 から 999999 までの値を入力してください。", "999999", "", nullptr},
        {5, EditAlt, "-99991", "火星の標高には -9999 から 999999 までの値を入力してください。", "-9999", "", nullptr},
        {6, EditAlt, "-1", "木星の標高には 0 から 999999 までの値を入力してください。", "0", "", nullptr},
    };
    Open();
    for (const auto& [body, id, typed, prompt, text, said, fields] : entries) {
        SCOPED_TRACE(std::to_string(id) + " on " + std::to_string(body) + ": " + typed);
        Observer.UpdateLocationObjectByUI(body, 1);
        Observer.UpdateObsByUI(10.508333334, 20.675, 39.0, 9.0);
        Dialog->InitLocation(1);
        if (prompt)
            Prompts.Expect(prompt, IPrompts::Icon::Information);
        Type(id, typed);
        EXPECT_EQ(Transcript.Take(), said);
        EXPECT_EQ(TextOf(id), text);
        if (fields) {
            EXPECT_EQ(Fields(), fields);
        }
    }
}

TEST_F(ObsEntry, CaretStaysWhereTheUserTypes)
{
    using namespace ObsId;
    const std::tuple<int, const char*, int, const char*, const char*, int> cases[]{
        {EditLngDeg, "15", 0, "1", "115", 1}, // no caret rule: left alone
        {EditLngMin, "5", 0, "1", "15", 2},   // not longer: one character further
        {EditLngSec, "", 0, "7", "7.0", 1},   // the refill makes it longer
        {EditLatSec, "", 0, "7", "7.0", 1},   {EditLatDeg, "5", 0, "1", "15", 1}, {EditAlt, "50", 0, "1", "150", 1}};
    Open();
    FollowObserver();
    StandOn(6); // kilometres: the refill after each change pushes all fields
    Observer.UpdateObsByUI(15.25, 5.25, 50000.0);
    for (const auto& [id, text, caret, keys, after, caretAfter] : cases) {
        auto* edit = Item<CKivEdit>(id);
        edit->setText(QString::fromUtf8(text));
        edit->setCursorPosition(caret);
        QTest::keyClicks(edit, QString::fromUtf8(keys));
        EXPECT_EQ(TextOf(id), after) << id;
        EXPECT_EQ(edit->cursorPosition(), caretAfter) << id;
    }
    auto* longitudeMinutes = Item<CKivEdit>(EditLngMin);
    longitudeMinutes->setCursorPosition(0);
    Type(EditLatMin, "7");
    EXPECT_EQ(longitudeMinutes->cursorPosition(), 1) << "latitude minutes restore the other box's caret";
}

TEST_F(ObsEntry, SpinsStepClampAndFlip)
{
    using namespace ObsId;
    const std::tuple<int, int, bool, double, double, const char*> cases[]{
        {4, SpinLngDeg, false, 0.25, 20, "W 1 15 0.0 N 20 0 0.0"},
        {1, SpinLngDeg, true, 180.0, 20, "W 179 0 0.0 N 20 0 0.0"},
        {4, SpinLngDeg, false, 359.75, 20, "E 1 15 0.0 N 20 0 0.0"},
        {6, SpinLngDeg, true, 360.0, 20, "W 1 0 0.0 N 20 0 0.0"},
        {6, SpinLngDeg, false, 0.25, 20, "W 359 15 0.0 N 20 0 0.0"},
        {5, SpinLngDeg, true, 359.0, 20, "W 360 0 0.0 N 20 0 0.0"},
        {4, SpinLngSec, false, 10.0 + 0.05 / 3600, 20, "E 10 0 0.0 N 20 0 0.0"},
        {4, SpinLngMin, true, 10.9875, 20, "E 10 59 15.0 N 20 0 0.0"},
        {4, SpinLngMin, false, 10.0125, 20, "E 10 0 45.0 N 20 0 0.0"},
        {4, SpinLngSec, true, 10.0125, 20, "E 10 0 45.1 N 20 0 0.0"},
        {4, SpinLngSec, false, 10.0, 20, "E 10 0 0.0 N 20 0 0.0"},
        {4, SpinLngSec, true, 10.01663888889, 20, "E 10 0 59.9 N 20 0 0.0"},
        {4, SpinLatDeg, true, 10, 89.5, "E 10 0 0.0 N 90 0 0.0"},
        {4, SpinLatDeg, true, 10, -88.5, "E 10 0 0.0 S 89 30 0.0"},
        {4, SpinLatDeg, false, 10, 0.5, "E 10 0 0.0 N 0 0 0.0"},
        {4, SpinLatMin, true, 10, 90, "E 10 0 0.0 N 90 0 0.0"},
        {4, SpinLatMin, true, 10, 20.0, "E 10 0 0.0 N 20 1 0.0"},
        {4, SpinLatSec, true, 10, 90, "E 10 0 0.0 N 90 0 0.0"},
        {4, SpinLatSec, false, 10, 20.0125, "E 10 0 0.0 N 20 0 44.9"}};
    Open();
    for (const auto& [body, spin, up, longitude, latitude, fields] : cases) {
        SCOPED_TRACE(std::to_string(spin) + (up ? " up from " : " down from ") + fields);
        Observer.UpdateLocationObjectByUI(body, 1);
        Observer.UpdateObsByUI(longitude, latitude, 0.0);
        Dialog->InitLocation(1);
        ClickSpin(spin, up);
        EXPECT_EQ(Fields(), fields);
        EXPECT_TRUE(Transcript.Take().find("Show Sky\nO ") != std::string::npos) << "applied";
    }
    const std::tuple<int, int, bool, const char*, const char*> plain[]{
        {SpinAlt, EditAlt, true, "5", "6"},           {SpinAlt, EditAlt, false, "-9999", "-9999"},
        {SpinAlt, EditAlt, true, "999999", "999999"}, {SpinTzHour, EditTzHour, true, "14", "14"},
        {SpinTzHour, EditTzHour, false, "0", "0"},    {SpinTzMin, EditTzMin, true, "58", "59"},
        {SpinTzMin, EditTzMin, true, "59", "59"},     {SpinTzMin, EditTzMin, false, "30", "29"}};
    StandOn(4);
    Item<CKivEdit>(EditLngDeg)->setText(u"180"_s);
    Item<CKivEdit>(EditLngMin)->setText(u"30"_s);
    ClickSpin(SpinLngDeg, true);
    EXPECT_EQ(Fields(), "W 179 30 0.0 N 20 0 44.9") << "the minutes stay";
    for (const auto& [spin, edit, up, from, to] : plain) {
        Item<CKivEdit>(edit)->setText(QString::fromUtf8(from));
        ClickSpin(spin, up);
        EXPECT_EQ(TextOf(edit), to) << spin;
    }
    EXPECT_EQ(Observer.GetHeight(), 999999.0);
    StandOn(6); // kilometres do not go below 0
    Item<CKivEdit>(EditAlt)->setText(u"0"_s);
    ClickSpin(SpinAlt, false);
    EXPECT_EQ(TextOf(EditAlt), "0");
    StandOn(4);
    EXPECT_NEAR(Observer.GetUserTz(), 29.0 / 60.0, 1e-9) << "minutes over hours 0";
    QTest::keyClick(Item(EditTzHour), Qt::Key_Up);
    EXPECT_EQ(TextOf(EditTzHour), "1") << "the arrow keys of the box work its spin button";
}

TEST_F(ObsEntry, RadiosApplyAtOnce)
{
    Open(true);
    Observer.UpdateObsByUI(10.5, 20.0, 39.0);
    Embedded.Answers[u"? Location.Altitude"_s] = u"77"_s;
    Dialog->InitLocation(1);
    Transcript.Take();
    const std::string asked = "\nE ? Location.Altitude\nO"; // the altitude is automatic
    const auto moved = [&asked](const char* longitude, const char* latitude) {
        std::string said = Moved(4, longitude, latitude, "77.0");
        return said.replace(said.find("\nO"), 2, asked);
    };
    Item(ObsId::RadioEast)->setFocus();
    Key(Qt::Key_Right);
    EXPECT_EQ(Transcript.Take(), moved("-10.50000000", "20.00000000"));
    Click(ObsId::RadioSouth);
    EXPECT_EQ(Transcript.Take(), moved("-10.50000000", "-20.00000000"));
    Click(ObsId::RadioAltManual);
    EXPECT_EQ(Transcript.Take(), "H Solar.Planet.Earth.Landscape.AutoGetAltitude = FALSE");
    EXPECT_TRUE(Item(ObsId::EditAlt)->isEnabled());
    Click(ObsId::RadioAltAuto);
    EXPECT_TRUE(
        Transcript.Take().starts_with("H Solar.Planet.Earth.Landscape.AutoGetAltitude = TRUE\nE Location.Long"));
    EXPECT_FALSE(Item(ObsId::EditAlt)->isEnabled());
    Observer.UpdateLocationObjectByUI(6, 1);
    Dialog->InitLocation(1);
    Click(ObsId::RadioSouth);
    EXPECT_EQ(Observer.GetHeight(), 77000.0) << "the engine's answer counts as kilometres, like a typed value";
}

/// Runs in a process of its own: the guard of the automatic altitude stays set in the one that meets it.
TEST_F(ObsEntry, MissingTerrainIsToldOnce)
{
    const auto clickTwice = [this] {
        Open();
        Prompts.Expect("標高を自動設定するには、地形データが必要です。\r\n地形データを追加インストールしてください。",
                       IPrompts::Icon::Exclamation);
        for (int i = 0; i < 2; ++i) {
            Item<QAbstractButton>(ObsId::RadioAltAuto)->setEnabled(true);
            Click(ObsId::RadioAltAuto);
            EXPECT_TRUE(Item<QAbstractButton>(ObsId::RadioAltManual)->isChecked());
            Dialog->InitLocation(1);
            EXPECT_FALSE(Item(ObsId::RadioAltAuto)->isEnabled());
            EXPECT_FALSE(Item(ObsId::RadioAltManual)->isEnabled());
            EXPECT_TRUE(Item(ObsId::EditAlt)->isEnabled());
        }
        std::_Exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(clickTwice(), ::testing::ExitedWithCode(0), "");
}
} // namespace
