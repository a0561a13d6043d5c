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
    struct Case
    {
        const char *Longitude, *Latitude, *Altitude, *Said;
    };
    const Case cases[]{
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
    for (const Case& c : cases) {
        Embedded.Answers[u"? Location.Longitude"_s] = QString::fromUtf8(c.Longitude);
        Embedded.Answers[u"? Location.Latitude"_s] = QString::fromUtf8(c.Latitude);
        Embedded.Answers[u"? Location.Altitude"_s] = QString::fromUtf8(c.Altitude);
        Embedded.Control->Raise(Engine::EventMouseUp, {1, 0, 33, 44});
        EXPECT_EQ(Transcript.Take(), std::string(Asked) + c.Said) << c.Longitude;
    }
    // The cache holds the previous place, so the host's refill splits the picked one.
    Embedded.Answers[u"? Location.Longitude"_s] = u"12.5"_s;
    FollowObserver();
    Embedded.Control->Raise(Engine::EventMouseUp, {1, 0, 33, 44});
    EXPECT_EQ(Fields(), "W 12 30 0.0 N 0 0 0.0");
}

TEST_F(ObsMap, TouchIsAClickOnlyWhenAllThreeConditionsHold)
{
    struct Case
    {
        quint32 Kind, Flags;
        int Third;
        bool IsClick;
    };
    Open();
    for (const Case& c : {Case{320, 4, 1, true}, Case{320, 7, 1, true}, Case{321, 4, 1, false}, Case{320, 3, 1, false},
                          Case{320, 4, 2, false}}) {
        TouchInput touch{10, 20, c.Flags};
        Embedded.Control->Raise(Engine::EventTouch, {c.Kind, QVariant::fromValue(&touch), c.Third, 1, 1, 1});
        EXPECT_EQ(Transcript.Take().starts_with(Asked), c.IsClick) << c.Kind << ' ' << c.Flags << ' ' << c.Third;
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
    struct Case
    {
        double Magnification;
        int Slider;
        const char* Angle; ///< null: ignored
    };
    const Case cases[]{{1.0, 0, "180.000000; Solar.Planet.Earth.Borderline.Visible = FALSE"},
                       {90.0, 200, "2.000000; Solar.Planet.Earth.Borderline.Visible = TRUE"},
                       {1000.0, 200, "0.180000; Solar.Planet.Earth.Borderline.Visible = TRUE"},
                       {0.0, 200, nullptr},
                       {NotANumber, 200, nullptr},
                       {5e-324, 200, nullptr},
                       {0.5, 0, "360.000000; Solar.Planet.Earth.Borderline.Visible = FALSE"}};
    Open();
    for (const Case& c : cases) {
        Map.Control->Raise(ControlNumber::GlobeMap::EventMagnification, {c.Magnification});
        EXPECT_EQ(Transcript.Take(),
                  c.Angle ? std::string("E View.Angle = ") + c.Angle + "; Show Sky\nM 8()" : std::string())
            << c.Magnification;
        EXPECT_EQ(Item<CKivSlider>(ObsId::SliderMagnification)->value(), c.Slider) << c.Magnification;
    }
}

TEST_F(ObsMap, SliderSendsOneAngleAndOneZoom)
{
    struct Case
    {
        int Position;
        const char *Angle, *Zoom;
    };
    const Case cases[]{{99, "29.259082; Solar.Planet.Earth.Borderline.Visible = TRUE", "0.505000"},
                       {100, "30.000010; Solar.Planet.Earth.Borderline.Visible = FALSE", "0.500000"},
                       {200, "180.000000; Solar.Planet.Earth.Borderline.Visible = FALSE", "0.000000"},
                       {0, "2.000000; Solar.Planet.Earth.Borderline.Visible = TRUE", "1.000000"}};
    Open();
    for (const Case& c : cases) {
        Item<CKivSlider>(ObsId::SliderMagnification)->setValue(c.Position);
        EXPECT_EQ(Transcript.Take(),
                  std::string("E View.Angle = ") + c.Angle + "; Show Sky\nM 9(" + c.Zoom + ")\nM 8()");
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
    struct Case
    {
        int Body, Delta;
        Qt::KeyboardModifiers Keys;
        double Longitude, Latitude; ///< the centre before
        int Slider, SliderAfter;
        const char* Said;
    };
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    const Case cases[]{
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
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Said);
        StandOn(c.Body);
        auto* slider = Item<CKivSlider>(ObsId::SliderMagnification);
        slider->setValue(c.Slider);
        Map.CenterLongitude = c.Longitude;
        Map.CenterLatitude = c.Latitude;
        Embedded.Answers[u"? View.PlanetaryGlobe.Center.Latitude"_s].setNum(c.Latitude);
        Embedded.Answers[u"? View.PlanetaryGlobe.Center.Longitude"_s].setNum(c.Longitude);
        Transcript.Take();
        Wheel(MapMiddle(), c.Delta, c.Keys);
        EXPECT_EQ(Transcript.Take(), c.Said);
        EXPECT_EQ(slider->value(), c.SliderAfter);
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
    struct Case
    {
        const char *Visible, *Apply, *Asked, *Said;
    };
    const Case cases[]{{"true", "True", "H ? Solar.Planet.Earth.SolarEclipse.Path.Data\nM 31(data)", "M 32(true)"},
                       {"1", "1", "M 31()", "M 32(false)"},
                       {"YES", "", "M 31()", "M 32(false)"}};
    Open();
    const QString path = u"? Solar.Planet.Earth.SolarEclipse.Path."_s;
    Host.Answers[path + u"Data"_s] = u"data"_s;
    Host.Answers[path + u"Color"_s] = u"RGB(255, 128, 0)"_s;
    for (const Case& c : cases) {
        Host.Answers[path + u"Visible"_s] = QString::fromUtf8(c.Visible);
        Host.Answers[u"? Solar.Planet.Earth.BesselElement.Apply"_s] = QString::fromUtf8(c.Apply);
        Dialog->RedrawEclipsePath();
        EXPECT_EQ(Transcript.Take(), "H ? Solar.Planet.Earth.SolarEclipse.Path.Visible\n" + std::string(c.Asked) +
                                         "\nH ? Solar.Planet.Earth.SolarEclipse.Path.Color\nM 33(33023)\n"
                                         "H ? Solar.Planet.Earth.BesselElement.Apply\n" +
                                         c.Said + "\nM 8()");
    }
}
} // namespace
