#include "tests/core/core_test.h"
#include "tests/dialog/ObsFixture.h"

#include <limits>

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

TEST_F(ObsOutside, SettingsOfAnySize)
{
    const QString location = u"location(1, 2, 3) \"日本\"; "_s + QString(Megabyte, u'x');
    const QString zone = u"-3.5"_s + QString(20'000, u'日'); // the settings file grows slowly by such letters
    CRegistry::Write(u"Default"_s, u"location"_s, location);
    CRegistry::Write(u"Default"_s, u"time.timezone"_s, zone);
    CRegistry::Write(u"Dialog\\Obs"_s, u"FeatureAstro"_s, -7, CRegistry::Flag);
    CRegistry::Write(u"Dialog\\Obs"_s, u"FeatureOther"_s, std::numeric_limits<int>::max(), CRegistry::Flag);
    for (const auto& [angle, position] : {std::pair(QString(Megabyte, u'9'), 0), {u"2147483647"_s, 200}}) {
        CRegistry::Write(u"Dialog\\Obs"_s, u"ViewAngle"_s, angle);
        Machine.ReadAnew();
        Dialog = std::make_unique<CDlgObs>(&Parent, Folder.path() + u"/data/"_s, 0);
        Dialog->SetKPDateObs(&Observer);
        Open();
        EXPECT_EQ(Item<CKivSlider>(ObsId::SliderMagnification)->value(), position);
        EXPECT_EQ(Map.Flags, (std::vector<int>{1, 1, 1, 1, 0, 0, 0, 1}));
        StandOn(5);
        Click(ObsId::ButtonReset);
        const QString said = u"\nH location = "_s + location + u"\nH time.timezone = "_s + zone + u"; Show Sky\n"_s;
        EXPECT_NE(Transcript.Take().find(said.toStdString()), std::string::npos);
        EXPECT_EQ(Observer.GetUserTz(), -3.5);
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

    const QString path = u"? Solar.Planet.Earth.SolarEclipse.Path."_s;
    Host.Answers[path + u"Data"_s] = noise;
    Host.Answers[path + u"Visible"_s] = u"true"_s;
    Host.Answers[path + u"Color"_s] = u"RGB(255"_s + noise + u", 128"_s + noise + u", 1"_s + noise + u')';
    Host.Answers[u"? Solar.Planet.Earth.BesselElement.Apply"_s] = u"TRUE"_s + noise;
    Transcript.Take();
    Dialog->RedrawEclipsePath();
    const std::string said = Transcript.Take();
    EXPECT_NE(said.find("\nM 31(" + noise.toStdString() + ")\n"), std::string::npos);
    EXPECT_NE(said.find("\nM 33(98559)\n"), std::string::npos);
    EXPECT_NE(said.find("\nM 32(false)\n"), std::string::npos);
}
} // namespace
