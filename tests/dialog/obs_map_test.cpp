#include "tests/dialog/ObsFixture.h"

#include <limits>

using namespace Qt::StringLiterals;
namespace Engine = ControlNumber::Engine;

namespace
{
using ObsMap = CObsFixture;
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

constexpr char Asked[] = "E ? Location.Longitude\nE ? Location.Latitude\nE ? Location.Altitude";

TEST_F(ObsMap, ClickOnTheGlobeTakesTheEnginesLocationOver)
{
    const std::tuple<const char*, const char*, const char*, const char*> cases[]{
        {"-10.5", "20.25 deg", "-1500",
         "\nE View.PlanetaryGlobe.Center.Longitude = 349.500000; View.PlanetaryGlobe.Center.Latitude = 20.250000; "
         "Show Sky\nO 5: 349.500000 20.250000 -1500.0 9.00"},
        {"349.500000", "20.25", "7", ""}, // the observer stands there already
        {"abc", "", "x",
         "\nE View.PlanetaryGlobe.Center.Longitude = 0.000000; View.PlanetaryGlobe.Center.Latitude = 0.000000; "
         "Show Sky\nO 5: 0.000000 0.000000 0.0 9.00"},
        {"nan", "1e999", "inf", ""}};
    Open();
    StandOn(5);
    for (const auto& [longitude, latitude, altitude, said] : cases) {
        Embedded.Answers[u"? Location.Longitude"_s] = QString::fromUtf8(longitude);
        Embedded.Answers[u"? Location.Latitude"_s] = QString::fromUtf8(latitude);
        Embedded.Answers[u"? Location.Altitude"_s] = QString::fromUtf8(altitude);
        Embedded.Control->Raise(Engine::EventMouseUp, {1, 0, 33, 44});
        EXPECT_EQ(Transcript.Take(), std::string(Asked) + said) << longitude;
    }
    // The cache holds the previous place, so the host's refill splits the picked one.
    Embedded.Answers[u"? Location.Longitude"_s] = u"12.5"_s;
    FollowObserver();
    Embedded.Control->Raise(Engine::EventMouseUp, {1, 0, 33, 44});
    EXPECT_EQ(Fields(), "W 12 30 0.0 N 0 0 0.0");
}

TEST_F(ObsMap, TouchIsAClickOnlyWhenAllThreeConditionsHold)
{
    Open();
    for (const auto& [kind, flags, third, isClick] : {std::tuple<quint32, quint32, int, bool>{320, 4, 1, true},
                                                      {320, 7, 1, true},
                                                      {321, 4, 1, false},
                                                      {320, 3, 1, false},
                                                      {320, 4, 2, false}}) {
        TouchInput touch{10, 20, flags};
        Embedded.Control->Raise(Engine::EventTouch, {kind, QVariant::fromValue(&touch), third, 1, 1, 1});
        EXPECT_EQ(Transcript.Take().starts_with(Asked), isClick) << kind << ' ' << flags << ' ' << third;
    }
    Embedded.Control->Raise(Engine::EventTouch, {});
    Embedded.Control->Raise(Engine::EventTouch, {320, QVariant::fromValue<TouchInput*>(nullptr), 1});
    EXPECT_EQ(Transcript.Take(), "");
}

TEST_F(ObsMap, PickedPositionGoesToEngineAndObserver)
{
    Open(true);
    Embedded.Answers[u"? Location.Altitude"_s] = u"250.5"_s;
    const auto pick = [this](double longitude, double latitude) {
        Map.Control->Raise(ControlNumber::GlobeMap::EventObsPosition, {longitude, latitude});
        return Transcript.Take();
    };
    EXPECT_EQ(pick(-74.006, 40.5),
              "E Location.Longitude = -74.00600000; Location.Latitude = 40.50000000; show sky\n"
              "E ? Location.Altitude\n"
              "E View.PlanetaryGlobe.Center.Longitude = 285.994000; View.PlanetaryGlobe.Center.Latitude = 40.500000; "
              "Show Sky\nO 4: 285.994000 40.500000 250.5 9.00");
    EXPECT_EQ(pick(285.994, 40.5),
              "E Location.Longitude = 285.99400000; Location.Latitude = 40.50000000; show sky\nE ? Location.Altitude");
    EXPECT_EQ(pick(NotANumber, 1.0) + pick(1.0, Infinity), "");
    Click(ObsId::RadioAltManual);
    Transcript.Take();
    EXPECT_EQ(pick(10.0, 20.0).find("? Location.Altitude"), std::string::npos);
    EXPECT_EQ(Observer.GetHeight(), 39.0) << "typed by hand: the box counts, without a change of units";
}

TEST_F(ObsMap, MagnificationOfTheMapMirrorsIntoTheSlider)
{
    const std::tuple<double, int, const char*> cases[]{
        {1.0, 0, "180.000000; Solar.Planet.Earth.Borderline.Visible = FALSE"},
        {90.0, 200, "2.000000; Solar.Planet.Earth.Borderline.Visible = TRUE"},
        {1000.0, 200, "0.180000; Solar.Planet.Earth.Borderline.Visible = TRUE"},
        {0.0, 200, nullptr},
        {NotANumber, 200, nullptr},
        {5e-324, 200, nullptr},
        {0.5, 0, "360.000000; Solar.Planet.Earth.Borderline.Visible = FALSE"}};
    Open();
    for (const auto& [magnification, slider, angle] : cases) {
        Map.Control->Raise(ControlNumber::GlobeMap::EventMagnification, {magnification});
        EXPECT_EQ(Transcript.Take(),
                  angle ? std::string("E View.Angle = ") + angle + "; Show Sky\nM 8()" : std::string())
            << magnification;
        EXPECT_EQ(Item<CKivSlider>(ObsId::SliderMagnification)->value(), slider) << magnification;
    }
}

TEST_F(ObsMap, SliderSendsOneAngleAndOneZoom)
{
    const std::tuple<int, const char*, const char*> cases[]{
        {99, "29.259082; Solar.Planet.Earth.Borderline.Visible = TRUE", "0.505000"},
        {100, "30.000010; Solar.Planet.Earth.Borderline.Visible = FALSE", "0.500000"},
        {200, "180.000000; Solar.Planet.Earth.Borderline.Visible = FALSE", "0.000000"},
        {0, "2.000000; Solar.Planet.Earth.Borderline.Visible = TRUE", "1.000000"}};
    Open();
    for (const auto& [position, angle, zoom] : cases) {
        Item<CKivSlider>(ObsId::SliderMagnification)->setValue(position);
        EXPECT_EQ(Transcript.Take(), std::string("E View.Angle = ") + angle + "; Show Sky\nM 9(" + zoom + ")\nM 8()");
    }
    QTest::keyClick(Item(ObsId::SliderMagnification), Qt::Key_Down);
    EXPECT_EQ(Item<CKivSlider>(ObsId::SliderMagnification)->value(), 1) << "down is towards the wide end";
    StandOn(5);
    QTest::keyClick(Item(ObsId::SliderMagnification), Qt::Key_Up);
    EXPECT_EQ(Transcript.Take(), "E View.Angle = 2.000000; Solar.Planet.Earth.Borderline.Visible = FALSE; Show Sky\n"
                                 "M 9(1.000000)\nM 8()");
}

TEST_F(ObsMap, WheelTurnsAndZoomsTheShownMap)
{
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    const std::tuple<int, int, Qt::KeyboardModifiers, double, double, int, int, const char*> cases[]{
        {4, 120, none, 0, 0, 1, 0, "M 9(1.000000)\nM 8()"},
        {4, -120, none, 0, 0, 199, 200, "M 9(0.000000)\nM 8()"},
        {4, -120, none, 0, 0, 50, 53, "M 9(0.735000)\nM 8()"},
        {4, 120, ctrl, 10, 89.5, 9, 9, "M 5()\nM 4(10.000000, 90.000000)\nM 8()"},
        {4, 120, ctrl | shift, 10, 90, 9, 9, "M 5()\nM 4(10.000000, 90.000000)\nM 8()"},
        {4, -120, ctrl, 10, -89.5, 9, 9, "M 5()\nM 4(10.000000, -90.000000)\nM 8()"},
        {4, -120, shift, 0, 5, 9, 9, "M 5()\nM 4(359.000000, 5.000000)\nM 8()"},
        {4, 120, shift, 359.5, 5, 9, 9, "M 5()\nM 4(0.500000, 5.000000)\nM 8()"},
        {5, 120, none, 0, 0, 1, 0, "E View.Angle = 2.000000; Solar.Planet.Earth.Borderline.Visible = FALSE; Show Sky"},
        {5, 120, ctrl, 0, 89.5, 9, 9,
         "E ? View.PlanetaryGlobe.Center.Latitude\nE View.PlanetaryGlobe.Center.Latitude = 90.000000; Show Sky"},
        {5, -120, shift, 0, 0, 9, 9,
         "E ? View.PlanetaryGlobe.Center.Longitude\nE View.PlanetaryGlobe.Center.Longitude = 359.000000; Show Sky"}};
    Open();
    for (const auto& [body, delta, keys, longitude, latitude, slider, sliderAfter, said] : cases) {
        SCOPED_TRACE(said);
        StandOn(body);
        auto* box = Item<CKivSlider>(ObsId::SliderMagnification);
        box->setValue(slider);
        Map.CenterLongitude = longitude;
        Map.CenterLatitude = latitude;
        Embedded.Answers[u"? View.PlanetaryGlobe.Center.Latitude"_s].setNum(latitude);
        Embedded.Answers[u"? View.PlanetaryGlobe.Center.Longitude"_s].setNum(longitude);
        Transcript.Take();
        Wheel(MapMiddle(), delta, keys);
        EXPECT_EQ(Transcript.Take(), said);
        EXPECT_EQ(box->value(), sliderAfter);
    }
    Wheel(Item(ObsId::ButtonClose)->mapTo(Dialog.get(), QPoint(-20, 5)), 120);
    EXPECT_EQ(Transcript.Take(), "") << "outside the map";
    Wheel(MapMiddle(), 60);
    EXPECT_EQ(Transcript.Take(), "") << "half a notch";
    Item(ObsId::SliderMagnification)->setFocus();
    Wheel(Item(ObsId::SliderMagnification)->mapTo(Dialog.get(), QPoint(5, 50)), -120);
    EXPECT_GT(Item<CKivSlider>(ObsId::SliderMagnification)->value(), 9) << "the slider's own wheel: towards wide";
}

TEST_F(ObsMap, PaintingRedrawsTheGlobeOfOtherBodiesOnly)
{
    Open();
    for (const auto& [body, paints] : {std::pair(4, 0), std::pair(5, 1)}) {
        StandOn(body);
        Dialog->repaint();
        EXPECT_EQ(Transcript.PaintCount(), paints) << body;
        Transcript.Take();
        Dialog->repaint(QRect(Item(ObsId::EditLatDeg)->mapTo(Dialog.get(), QPoint()), QSize(4, 12)));
        EXPECT_EQ(Transcript.PaintCount(), 0) << "a blinking caret on " << body;
    }
}

TEST_F(ObsMap, PartsOfAWheelNotchAddUp)
{
    Open();
    StandOn(4);
    auto* slider = Item<CKivSlider>(ObsId::SliderMagnification);
    const auto after = [&](std::initializer_list<int> deltas, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        slider->setValue(100);
        for (const int delta : deltas)
            Wheel(MapMiddle(), delta, keys);
        return slider->value();
    };
    EXPECT_EQ(after({60, 60}), 97);
    EXPECT_EQ(after({240}), 97) << "one message is one step";
    EXPECT_EQ(after({60, -60, -60}), 103) << "a change of direction starts anew";
    EXPECT_EQ(after({40, 40, 40, 40}), 97);
}

TEST_F(ObsMap, EclipsePathFollowsTheHostEngine)
{
    const std::tuple<const char*, const char*, const char*, const char*> cases[]{
        {"true", "True", "H ? Solar.Planet.Earth.SolarEclipse.Path.Data\nM 31(data)", "M 32(true)"},
        {"1", "1", "M 31()", "M 32(false)"},
        {"YES", "", "M 31()", "M 32(false)"}};
    Open();
    const QString path = u"? Solar.Planet.Earth.SolarEclipse.Path."_s;
    Host.Answers[path + u"Data"_s] = u"data"_s;
    Host.Answers[path + u"Color"_s] = u"RGB(255, 128, 0)"_s;
    for (const auto& [visible, apply, asked, said] : cases) {
        Host.Answers[path + u"Visible"_s] = QString::fromUtf8(visible);
        Host.Answers[u"? Solar.Planet.Earth.BesselElement.Apply"_s] = QString::fromUtf8(apply);
        Dialog->RedrawEclipsePath();
        EXPECT_EQ(Transcript.Take(), "H ? Solar.Planet.Earth.SolarEclipse.Path.Visible\n" + std::string(asked) +
                                         "\nH ? Solar.Planet.Earth.SolarEclipse.Path.Color\nM 33(33023)\n"
                                         "H ? Solar.Planet.Earth.BesselElement.Apply\n" +
                                         said + "\nM 8()");
    }
}
} // namespace
