// Wheel and keys of the site dialog's controls.

#include "tests/story/StoryFixture.h"

namespace
{
using ControlsStory = CStory;
using namespace ObsId;

TEST_F(ControlsStory, TheWheelTurnsOnlyWhatHasTheFocus)
{
    constexpr int notch = 120;
    constexpr int earth = 4;
    constexpr int mars = 5;
    OpenSite();
    Enter(EditLatDeg);
    Wheel(*Item(ComboPlanet), -notch);
    EXPECT_EQ(Observer().GetBody(), earth);
    const int slider = Item<CKivSlider>(SliderMagnification)->value();
    Wheel(*Item(SliderMagnification), -notch);
    EXPECT_EQ(Item<CKivSlider>(SliderMagnification)->value(), slider);
    Wheel(*Item(SpinLngDeg), notch);
    EXPECT_EQ(TextOf(EditLngDeg), "139");
    Wheel(Site().MapOfDialog(), -notch);
    EXPECT_EQ(Item<CKivSlider>(SliderMagnification)->value(), slider + 3) << "the map zooms wherever the focus is";

    Enter(EditLngDeg);
    for (int part = 0; part < 12; ++part)
        Wheel(*Item(SpinLngDeg), notch / 12);
    EXPECT_EQ(TextOf(EditLngDeg), "140") << "twelve parts are one notch";
    Item(ComboPlanet)->setFocus();
    Wheel(*Item(ComboPlanet), -notch);
    EXPECT_EQ(Observer().GetBody(), mars);
}

TEST_F(ControlsStory, TheKeyOfAGroupGoesToItsFirstBox)
{
    OpenSite();
    for (const auto& [key, lastUsed, first] : {std::tuple<Qt::Key, int, int>{Qt::Key_O, EditLngSec, EditLngDeg},
                                               {Qt::Key_A, EditLatMin, EditLatDeg},
                                               {Qt::Key_T, EditTzMin, EditTzHour}}) {
        Enter(lastUsed);
        Key(Qt::Key_Tab);
        Key(key, Qt::AltModifier);
        EXPECT_EQ(QApplication::focusWidget(), Item(first));
        EXPECT_TRUE(Item<QLineEdit>(first)->hasSelectedText());
    }
}
} // namespace
