// From one run to the next: where the program starts, and what of the user's is there again.

#include "city/ControlIds.h"
#include "controls/globe_map/GlobeMap.h"
#include "host/observer/BodyTable.h"
#include "tests/story/StoryFixture.h"

#include <QAction>
#include <QFile>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Mars = 5;

class StartStory : public CStory
{
protected:
    /// Where the observer stands, by the observer object and by the engine, which must agree.
    std::string Where()
    {
        const auto ask = [this](const char16_t* query) {
            return Number::LeadingDouble(Host().Engine().Command(QString::fromUtf16(query)));
        };
        EXPECT_NEAR(ask(u"? Location.Latitude"), Observer().GetLatitude(), 1e-5);
        return Number::Format("body %d: %.4f %.4f %.0f, zone %.2f, system %d", Observer().GetBody(),
                              Observer().GetLongitude(), Observer().GetLatitude(), Observer().GetHeight(),
                              Observer().GetUserTz(), Observer().GetTimeSys())
            .toStdString();
    }
    QByteArray SettingsFile() const { return ReadFile(Machine.Settings()); }
};

constexpr auto Tokyo = "body 4: 139.6918 35.6892 39, zone 9.00, system 0";

TEST_F(StartStory, AFirstRunStartsInTokyoAndLaterOnesAtTheInitialPlace)
{
    Start();
    EXPECT_EQ(Where(), Tokyo);
    OpenSite();
    EXPECT_EQ(TextOf(ObsId::EditLngDeg) + ' ' + TextOf(ObsId::EditLngMin) + ' ' + TextOf(ObsId::EditLngSec),
              "139 41 30.4");
    PickCity(u"ニューヨーク"_s);
    Prompts.AnswerAll();
    Click(ObsId::ButtonSetInit);
    const std::string newYork = Where();
    EXPECT_EQ(newYork.substr(0, 16), "body 4: -74.0060") << newYork;
    Quit();
    CRegistry::Write(u"Planetarium"_s, u"Body"_s, u"none"_s); // nothing else is remembered
    Start();
    EXPECT_EQ(Where(), newYork);
}

TEST_F(StartStory, StartsWhereItWasLeft)
{
    OpenSite();
    PickCity(u"ニューヨーク"_s);
    OpenSite(); // to the front again
    ChooseBody(Mars);
    Enter(ObsId::EditLngDeg);
    Type("77");
    EXPECT_EQ(TextOf(ObsId::EditLngDeg), "77");
    Host().SetTimeSystem(TimeSystem::LocalMean);
    Window().setGeometry(31, 47, 700, 520);
    Site().move(17, 23);
    Settle();
    const int siteTop = Site().y(); // it is as wide as this screen
    const std::string left = Where();
    EXPECT_EQ(left.substr(0, 9), "body 5: 7") << left;
    Quit();

    Start();
    EXPECT_EQ(Where(), left);
    EXPECT_EQ(Window().geometry(), QRect(31, 47, 700, 520));
    for (const QAction* action : Window().findChildren<QAction*>()) {
        if (action->isChecked() && action->text().contains(u'時')) {
            EXPECT_EQ(action->text(), u"地方平時(&L)"_s);
        }
    }
    OpenSite();
    EXPECT_EQ(Site().y(), siteTop);
    EXPECT_EQ(TextOf(ObsId::EditLngDeg), "77");
    ChooseBody(BodyTable::Earth);
    EXPECT_TRUE(IsChecked(ObsId::RadioWest));
    EXPECT_EQ(TextOf(ObsId::EditLngDeg), "74") << "the place on every body is remembered";
    Window().showMaximized();
    Quit();
    Start();
    EXPECT_TRUE(Window().isMaximized());
}

TEST_F(StartStory, AnAltitudeTypedByHandIsTheSameInTheNextRun)
{
    OpenSite();
    Click(ObsId::RadioAltManual);
    Enter(ObsId::EditAlt);
    Type("123");
    Site().close(); // the close box, which stores nothing of the dialog's own
    int stored = -1;
    CRegistry::Read(u"Dialog\\Obs"_s, u"AutoAltitude"_s, stored, &stored, CRegistry::Flag);
    EXPECT_EQ(stored, -1);
    Quit();
    OpenSite();
    EXPECT_TRUE(IsChecked(ObsId::RadioAltManual));
    EXPECT_EQ(TextOf(ObsId::EditAlt), "123");
    EXPECT_EQ(Observer().GetHeight(), 123.0);
}

TEST_F(StartStory, ACrashLosesNoSite)
{
    Start();
    for (const char* written : {"139.69177778, 12.68922222, 0.000", "-20.00000000, -30.00000000, 8.000"}) {
        if (*written == '1') {
            OpenSite();
            Enter(ObsId::EditLatDeg);
            Type("12");
        } else
            Host().MoveObserver(-20.0, -30.0, 8.0);
        const std::string left = Where();
        EXPECT_TRUE(QTest::qWaitFor([&] { return SettingsFile().contains(written); }, 5000))
            << SettingsFile().toStdString();
        Crash();
        Start();
        EXPECT_EQ(Where(), left);
    }
}

TEST_F(StartStory, SpoiltSettingsDoNoHarm)
{
    for (const auto& [name, value] :
         {std::pair(u"Site4"_s, u"nan, 5, 5"_s), std::pair(u"Site4"_s, u"10, 95, 5"_s),
          std::pair(u"Site4"_s, u"361, 5, 5"_s), std::pair(u"Site4"_s, u"10, 5, 1e400"_s),
          std::pair(u"Site4"_s, u"10, 5"_s), std::pair(u"Site5"_s, u"7"_s), std::pair(u"TimeZone"_s, u"1e99"_s),
          std::pair(u"TimeSystem"_s, u"7"_s), std::pair(u"WindowMain"_s, u"!!"_s), std::pair(u"Body"_s, u"15"_s)}) {
        CRegistry::Write(u"Planetarium"_s, u"Body"_s, u"4"_s);
        CRegistry::Write(u"Planetarium"_s, name, value);
        Start();
        EXPECT_EQ(Where(), Tokyo) << name.toStdString() << ' ' << value.toStdString();
        EXPECT_GE(Window().width(), 700);
        EXPECT_LE(Window().width(), Window().screen()->size().width());
        Crash(); // so that nothing better is stored
    }
}

/// The user's own list is shown on the globe, and there is none before the first run.
TEST_F(StartStory, APlaceAddedInTheFirstRunShowsOnTheGlobe)
{
    OpenSite();
    Host().MoveObserver(150.0, 20.0, 0.0); // nothing but sea around
    Settle();
    const auto isNamed = [this] {
        const DrawnItems drawn = static_cast<CGlobeMap*>(Site().MapOfDialog().Control())->Drawn();
        return std::any_of(drawn.begin(), drawn.end(), [](const auto& item) { return item.Name == u"SEA"; });
    };
    EXPECT_FALSE(isNamed());
    PickCity(u"小笠原村"_s, [this](CKivDialog& list) {
        InNext<CKivDialog>([](CKivDialog& choice) { choice.accept(); }, AddCityId::Template);
        InNext<CKivDialog>(
            [](CKivDialog& editor) {
                for (const auto& [id, text] : {std::pair{EditCityId::EditName, "SEA"},
                                               {CoordinateId::EditLong1, "150"},
                                               {CoordinateId::EditLong2, "12"},
                                               {CoordinateId::EditLong3, "0"},
                                               {CoordinateId::EditLat1, "20"},
                                               {CoordinateId::EditLat2, "0"},
                                               {CoordinateId::EditLat3, "0"}})
                    CDialogDriver::Type(editor, id, text);
                editor.accept();
            },
            EditCityId::Template);
        list.Item<QAbstractButton>(CityId::ButtonAdd)->click();
    });
    Host().MoveObserver(150.0, 20.0, 0.0);
    Settle();
    EXPECT_TRUE(isNamed());
}
} // namespace
