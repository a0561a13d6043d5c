// Bodies, automatic altitude and zones with the real host answering.

#include "city/ControlIds.h"
#include "host/observer/BodyTable.h"
#include "obs/core/SiteLocation.h"
#include "tests/story/StoryFixture.h"

#include <QMenu>

using namespace Qt::StringLiterals;

namespace
{
class BodiesStory : public CStory
{
protected:
    /// What the fields show: hemispheres, angles, altitude with its unit.
    std::string Filled() const { return Fields() + ' ' + TextOf(ObsId::EditAlt) + ' ' + TextOf(ObsId::LabelAltUnit); }
    /// The same worked out from the observer object.
    std::string Meant()
    {
        SiteFields fields;
        const int body = Observer().GetBody();
        SiteLocationFormat::SplitLongitude(SiteLocationFormat::PositiveLongitude(Observer().GetLongitude()), body,
                                           fields);
        SiteLocationFormat::SplitLatitude(Observer().GetLatitude(), fields);
        const bool isSmall = Observer().IsSmallObject(body) != 0;
        return Number::Format("%s %d %d %.1f %s %d %d %.1f %.0f %s", fields.LongitudeHemisphere ? "W" : "E",
                              fields.LongitudeDegrees, fields.LongitudeMinutes, fields.LongitudeSeconds,
                              fields.LatitudeHemisphere ? "S" : "N", fields.LatitudeDegrees, fields.LatitudeMinutes,
                              fields.LatitudeSeconds,
                              SiteLocationFormat::DisplayFromMetres(Observer().GetHeight(), isSmall),
                              isSmall ? "m" : "km")
            .toStdString();
    }
};

constexpr int Mars = 5;
constexpr int Jupiter = 6;

TEST_F(BodiesStory, EveryStepFromBodyToBodyFillsTheFieldsAnew)
{
    OpenSite();
    for (const int body : {0, 1, 2, 3, 4, 5, 6, 7, 8, 4, 9, 10, 11, 12, 13, 14, 0, 4}) {
        ChooseBody(body);
        EXPECT_EQ(Filled(), Meant()) << "on " << body;
        for (auto* menu : Window().findChildren<QMenu*>()) {
            Q_EMIT menu->aboutToShow();
            EXPECT_TRUE(menu->title() != u"天体(&B)"_s || menu->actions().at(body)->isChecked()) << body;
        }
    }
    EXPECT_GT(Observer().GetHeight(), 20.0) << "Tokyo kept its altitude";
}

TEST_F(BodiesStory, UnitsOfOneBodyDoNotReachAnother)
{
    OpenSite();
    Click(ObsId::RadioAltManual);
    ChooseBody(Jupiter);
    Enter(ObsId::EditAlt);
    Type("1");
    ChooseBody(Mars);
    Enter(ObsId::EditAlt);
    Type("1000");
    ChooseBody(Jupiter);
    EXPECT_EQ(Filled(), "W 0 0 0.0 N 0 0 0.0 1 km");
    ClickSpin(ObsId::SpinAlt, true);
    EXPECT_EQ(Observer().GetHeight(), 2000.0);
    ChooseBody(Mars);
    EXPECT_EQ(TextOf(ObsId::EditAlt), "1000");
}

TEST_F(BodiesStory, AutomaticAltitudeIsForTheEarthAlone)
{
    OpenSite();
    EXPECT_TRUE(IsChecked(ObsId::RadioAltAuto));
    ChooseBody(Jupiter);
    EXPECT_TRUE(IsChecked(ObsId::RadioAltManual));
    Enter(ObsId::EditAlt);
    Type("1");
    Click(ObsId::RadioAltAuto);
    EXPECT_TRUE(IsChecked(ObsId::RadioAltManual)) << "there is no terrain";
    for (int spin = 0; spin < 10; ++spin)
        ClickSpin(ObsId::SpinLngDeg, true);
    EXPECT_EQ(Observer().GetLongitude(), 10.0);
    EXPECT_EQ(Observer().GetHeight(), 1000.0);
    EXPECT_EQ(TextOf(ObsId::EditAlt), "1");
    ChooseBody(BodyTable::Earth);
    EXPECT_TRUE(IsChecked(ObsId::RadioAltAuto)) << "the choice is kept for the Earth";
    ChooseBody(Jupiter);
    Key(Qt::Key_Escape); // saves what is shown, 手動
    Quit();
    OpenSite();
    EXPECT_TRUE(IsChecked(ObsId::RadioAltManual));
    ChooseBody(BodyTable::Earth);
    EXPECT_TRUE(IsChecked(ObsId::RadioAltAuto)) << "in the next run, too";
    Host().Engine().Command(u"Solar.Planet.Earth.Landscape.AutoGetAltitude = FALSE"_s);
    Site().InitLocation(0);
    EXPECT_TRUE(IsChecked(ObsId::RadioAltManual)) << "switched elsewhere";
    EXPECT_TRUE(Item(ObsId::EditAlt)->isEnabled());
}

TEST_F(BodiesStory, AnEditOfTheAltitudeKeepsTheZoneInEveryTimeSystem)
{
    OpenSite();
    Click(ObsId::RadioAltManual);
    for (const TimeSystem system : {TimeSystem::Zone, TimeSystem::Universal, TimeSystem::LocalMean}) {
        Host().SetTimeSystem(system);
        Enter(ObsId::EditAlt);
        Type("250");
        EXPECT_EQ(Observer().GetUserTz(), 9.0);
        ClickSpin(ObsId::SpinAlt, true);
        EXPECT_EQ(Observer().GetUserTz(), 9.0);
        EXPECT_EQ(Observer().GetHeight(), 251.0);
    }
    EXPECT_EQ(TextOf(ObsId::EditTzHour) + ':' + TextOf(ObsId::EditTzMin), "9:19") << "local mean time of 139.69 E";
}

TEST_F(BodiesStory, APickedPlaceBringsItsZoneInEveryTimeSystem)
{
    OpenSite();
    for (const TimeSystem system : {TimeSystem::Universal, TimeSystem::LocalMean, TimeSystem::Zone}) {
        Host().SetTimeSystem(system);
        PickCity(u"ニューヨーク"_s);
        EXPECT_EQ(Observer().GetUserTz(), -5.0);
        PickCity(u"アメリカ合衆国"_s); // a folder: the boxes stay as they are
        EXPECT_EQ(Observer().GetUserTz(), -5.0);
        PickCity(u"ロンドン"_s);
        EXPECT_EQ(Observer().GetUserTz(), 0.0);
    }
}

TEST_F(BodiesStory, NumberBoxesOfTheCityListAndItsEditorTakeFullWidthDigits)
{
    OpenSite();
    PickCity(u"ロンドン"_s, [this](CKivDialog& list) {
        const auto type = [this](const CKivDialog& dialog, const QString& text) {
            dialog.Item(CoordinateId::EditLong3)->setFocus();
            dialog.Item<QLineEdit>(CoordinateId::EditLong3)->selectAll();
            EXPECT_EQ(QApplication::focusWidget(), dialog.Item(CoordinateId::EditLong3));
            Paste(text);
            return dialog.Item<QLineEdit>(CoordinateId::EditLong3)->text().toStdString();
        };
        EXPECT_EQ(type(list, u"４５．５"_s), "45.5");
        EXPECT_EQ(type(list, u"東経0°"_s), "45.5");
        InNext<CKivDialog>([&](CKivDialog& editor) {
            EXPECT_EQ(type(editor, u"１２．５"_s), "12.5");
            editor.Item<QAbstractButton>(EditCityId::ButtonOk)->click();
        });
        list.Item<QAbstractButton>(CityId::ButtonEdit)->click();
        EXPECT_EQ(list.Item<QLineEdit>(CoordinateId::EditLong3)->text(), u"12.5"_s);
    });
    EXPECT_NEAR(Observer().GetLongitude(), -(7 / 60.0 + 12.5 / 3600.0), 1e-9);
}
} // namespace
