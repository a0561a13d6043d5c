#include "tests/core/core_test.h"
#include "tests/dialog/ObsFixture.h"

using namespace Qt::StringLiterals;

// What comes into the site dialog from outside: files, settings and engines' answers of any size and content.
namespace
{
constexpr int Megabyte = 1 << 20;

class ObsOutside : public CObsFixture
{
protected:
    /// A shipped list newer than the user's.
    void PutLists(const QByteArray& shipped, const QByteArray& user) const
    {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        WriteFile(Folder.filePath(u"data/kivpel.obs"_s), shipped, now.addDays(-1));
        WriteFile(UserList, user, now.addDays(-2));
    }

    const QString UserList = Folder.filePath(u"data/kivpel_user.obs"_s);
};

TEST_F(ObsOutside, AListTooLongForTheTablesLeavesTheUsersAndOpensAllTheSame)
{
    const QByteArray old = "@Old\r\nkept as it is,1E,2N,3,9,0,0,0\n";
    const std::pair<QByteArray, const char*> lists[] = {
        {"@A\r\n" + QByteArray("p,1E,2N,3,+9,0,0,0\r\n").repeated(20'000),
         "地名の数が上限（10,000 件）を超えているため、超えた分は読み込めません。"},
        {QByteArray("@f\r\n").repeated(3000),
         "フォルダの数が上限（1,999 件）を超えているため、超えた分は読み込めません。"}};
    for (const auto& [shipped, warning] : lists) {
        PutLists(shipped, old);
        CDlgObs dialog(&Parent, Folder.path() + u"/data/"_s, 0);
        dialog.SetKPDateObs(&Observer);
        Prompts.Expect(warning, IPrompts::Icon::Exclamation);
        Transcript.Take();
        EXPECT_EQ(dialog.DoModeless(&HostEngine, {}), 1);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_NE(Transcript.Take().find("M 20(" + UserList.toStdString() + ")\nM 16(true)\nM 22()"),
                  std::string::npos);
        EXPECT_EQ(ReadFile(UserList), old);
    }
}

TEST_F(ObsOutside, EngineAnswersOfAnySizeAndContent)
{
    const QString noise = (QString(QChar(0)) + QChar(0xD800) + u"日9"_s + QChar(0xDC00)).repeated(Megabyte / 5);
    const std::pair<QString, const char*> altitudes[]{{u"123.4"_s + noise, "123.400000"},
                                                      {QString(Megabyte, u' ') + u"+7.5"_s, "7.500000"},
                                                      {QString(Megabyte, u'9'), "0.000000"},
                                                      {noise, "0.000000"}};
    Open(true);
    Host.Answers[u"? Solar.Planet.Earth.Landscape.AutoGetAltitude"_s] = u"TRUE"_s;
    for (const auto& [answer, height] : altitudes) {
        Embedded.Answers[u"? Location.Altitude"_s] = answer;
        Dialog->InitLocation(0);
        EXPECT_NE(Transcript.Take().find(std::string("\nH Location.Altitude = ") + height + "; show sky"),
                  std::string::npos)
            << height;
    }
    Host.Answers[u"? Solar.Planet.Earth.Landscape.AutoGetAltitude"_s] = u"TRUE"_s + noise;
    Dialog->InitLocation(0);
    EXPECT_TRUE(Item<QAbstractButton>(ObsId::RadioAltManual)->isChecked());
}
} // namespace
