#include "host/dialog/CommandIds.h"
#include "host/dialog/DlgCommand.h"
#include "tests/story/StoryFixture.h"

using namespace Qt::StringLiterals;

/// The console on the host's own engine, with the observer behind it.
TEST_F(CStory, TheConsoleSaysWhatIsWrongAndABrokenLineChangesNothing)
{
    const std::pair<const char*, const char*> lines[] = {
        {"View.Angel = 90", "エラー：「View.Angel」というプロパティはありません。"},
        {"? Locatoin", "エラー：「Locatoin」というプロパティはありません。"},
        {"Location.Longitude = 10; Location.Latitude = north; Show Sky",
         "エラー：「Location.Latitude」に「north」は設定できません。"},
        {"location = location(10, 20", "エラー：「location」に「location(10, 20」は設定できません。"},
        {"time.timezone = three", "エラー：「time.timezone」に「three」は設定できません。"},
        {"Location = Location(10, 20, 30) Show Sky",
         "エラー：「Location」に「Location(10, 20, 30) Show Sky」は設定できません。"},
        {"? View.Angle", "180"}};
    OpenSite();
    ChooseBody(5);
    Observer().UpdateObsByUI(222.5, 4.5, 0.0);
    const QString before = Host().Engine().Command(u"? Location"_s);
    CDlgCommand console(&Host().Engine(), &Window());
    QTimer::singleShot(0, &console, [&] {
        Settle();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&console));
        for (const auto& [line, answer] : lines) {
            Type(line);
            Key(Qt::Key_Return);
            EXPECT_EQ(console.Item<QLineEdit>(CommandId::EditAnswer)->text().toStdString(), answer);
        }
        console.reject();
    });
    console.DoModal();
    EXPECT_EQ(Host().Engine().Command(u"? Location"_s), before);
    EXPECT_EQ(Observer().GetBody(), 5);
    EXPECT_EQ(Observer().GetLongitude(), 222.5);
    EXPECT_EQ(TextOf(ObsId::EditLatDeg), "4");
}
