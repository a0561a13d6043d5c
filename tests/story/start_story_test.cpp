#include "tests/story/StoryFixture.h"

namespace
{
using StartStory = CStory;

TEST_F(StartStory, TheSiteDialogShowsTheObserversPlace)
{
    Start();
    OpenSite();
    EXPECT_EQ(TextOf(ObsId::EditLngDeg) + ' ' + TextOf(ObsId::EditLngMin) + ' ' + TextOf(ObsId::EditLngSec),
              "139 41 30.4");
    EXPECT_TRUE(IsChecked(ObsId::RadioNorth));
    EXPECT_EQ(TextOf(ObsId::EditLatDeg), "35");
}
} // namespace
