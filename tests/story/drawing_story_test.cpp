#include "controls/globe_map/GlobeMap.h"
#include "controls/sky_engine/SkyEngine.h"
#include "host/observer/BodyTable.h"
#include "tests/story/StoryFixture.h"

using CDrawingStory = CStory;

TEST_F(CDrawingStory, TheMapThatNobodySeesIsNotDrawn)
{
    OpenSite();
    const auto& globe = *static_cast<CGlobeMap*>(Site().MapOfDialog().Control());
    const auto& engine = *static_cast<CSkyEngine*>(Site().EngineOfDialog().Control());
    const auto expectDrawn = [&](int globeTimes, int engineTimes, const char* what) {
        Settle();
        EXPECT_EQ(globe.DrawnCount(), globeTimes) << what;
        EXPECT_EQ(engine.DrawnCount(), engineTimes) << what;
    };
    const int opened = globe.DrawnCount();
    Host().MoveObserver(10.0, 20.0, 0.0);
    expectDrawn(opened + 1, 0, "the Earth has the globe map");

    ChooseBody(BodyTable::Moon);
    Settle();
    const int onMoon = globe.DrawnCount();
    const int landed = engine.DrawnCount();
    EXPECT_GT(landed, 0);
    Host().MoveObserver(40.0, 10.0, 0.0);
    expectDrawn(onMoon, landed + 1, "once, however many lines moved it");

    Site().Show(0);
    Host().SetBody(BodyTable::Earth);
    Host().MoveObserver(-70.0, -30.0, 0.0);
    expectDrawn(onMoon, landed + 1, "a closed dialog draws neither");
    Site().Show(1);
    expectDrawn(onMoon + 1, landed + 1, "the one in sight is brought up to date");
    EXPECT_NEAR(globe.Center().Longitude, -70.0, 1e-6);
    EXPECT_NEAR(globe.Center().Latitude, -30.0, 1e-6);
}
