#include "core_test.h"
#include "host/observer/CommonCoordFormat.h"
#include "host/observer/KPDateObs.h"
#include "host/system/CommonFile.h"
#include "host/system/Registry.h"
#include "tests/TestHost.h"

#include <array>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
int Integer(const QString& section, const QString& name)
{
    int value = 0;
    CRegistry::Read(section, name, -77, &value, CRegistry::Count);
    return value;
}

QString Text(const QString& section, const QString& name)
{
    QString value;
    CRegistry::Read(section, name, u"default"_s, &value);
    return value;
}

const QString Obs = u"Dialog\\Obs"_s;
} // namespace

TEST(Registry, KeepsWhatIsWritten)
{
    CTestHost machine;
    EXPECT_EQ(Integer(Obs, u"ViewAngle"_s), -77);
    EXPECT_EQ(Text(u"Default"_s, u"location"_s), u"default"_s);
    const QStringList texts =
        u"location(139.691772, 35.689236, 39.000000)|| a |a,b|@x|\\\"'=;#%|港\n見\0台|12"_s.split(u'|');
    const int numbers[] = {0, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    for (const QString& text : texts)
        CRegistry::Write(u"Dialog\\MappleFind"_s, u"T%1"_s.arg(texts.indexOf(text)), text);
    for (const int number : numbers)
        CRegistry::Write(Obs, u"I%1"_s.arg(number), number, CRegistry::Count);
    machine.ReadAnew();
    for (const QString& text : texts)
        EXPECT_EQ(Text(u"Dialog\\MappleFind"_s, u"T%1"_s.arg(texts.indexOf(text))), text);
    for (const int number : numbers)
        EXPECT_EQ(Integer(Obs, u"I%1"_s.arg(number)), number);
    // What another program wrote in the meantime is kept.
    CRegistry::Write(Obs, u"ViewAngle"_s, 5, CRegistry::Count);
    WriteFile(machine.Settings(), "[Default]\nlocation=elsewhere\n");
    machine.ReadAnew();
    EXPECT_EQ(Integer(Obs, u"ViewAngle"_s), 5);
    EXPECT_EQ(Text(u"Default"_s, u"location"_s), u"elsewhere"_s);
}

TEST(Registry, SurvivesNonsense)
{
    CTestHost machine;
    const auto use = [&machine](const QByteArray& settings) {
        WriteFile(machine.Path(u"byhand.ini"_s), settings);
        machine.Use({machine.Path(u"byhand.ini"_s), QString(), QString()});
    };
    use("[General]\nCorKiv=3\n[Default]\nlocation=location(1.5, 2, 3)\n"
        "[Dialog]\nObs\\A=nonsense\nObs\\B=99999999999\nObs\\C=2.5\nObs\\D=\nObs\\E=1, 2\nObs\\F=@Invalid()\n"
        "Obs\\G=@Variant(\\0\\0\\0\\x1)\nObs\\H=@Size(1 1)\n");
    EXPECT_EQ(Integer(u"General"_s, u"CorKiv"_s), 3);
    EXPECT_EQ(Text(u"Default"_s, u"location"_s), u"location(1.5, 2, 3)"_s);
    for (const QString& name : {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s, u"F"_s, u"H"_s})
        EXPECT_EQ(Integer(Obs, name), -77) << name.toStdString();
    for (const QString& name : {u"F"_s, u"H"_s})
        EXPECT_EQ(Text(Obs, name), u"default"_s) << name.toStdString();
    use(QByteArray(1, char(0)) + "\xFF[[[\n=\n]\n@@@(\n%zz\\x=\\x\n[a\nb");
    EXPECT_EQ(Integer(Obs, u"ViewAngle"_s), -77);
    CRegistry::Write(Obs, u"ViewAngle"_s, 5, CRegistry::Count);
    EXPECT_EQ(Integer(Obs, u"ViewAngle"_s), 5);
}

TEST(CommonFile, ShortPathLeadsToTheFileAndItsNeighbours)
{
    QTemporaryDir root;
    qputenv("XDG_CACHE_HOME", root.filePath(u"cache"_s).toUtf8());
    const QString folder = root.filePath(u"地形 data\u3000"_s);
    for (const QString& name : {u"index.kti"_s, u"the index.kti"_s}) {
        WriteFile(folder + u'/' + name, name.toUtf8());
        WriteFile(folder + u"/tile.dem"_s, "tile");
        for (int i = 0; i < 2; ++i) { // made, then found
            const QString path = CCommonFile::GetShortPath(folder + u'/' + name);
            EXPECT_FALSE(path.contains(u' ') || path.contains(u'\u3000')) << path.toStdString();
            EXPECT_EQ(ReadFile(path), name.toUtf8());
            EXPECT_EQ(ReadFile(QFileInfo(path).absolutePath() + u"/tile.dem"_s), "tile");
        }
    }
    EXPECT_EQ(CCommonFile::GetShortPath(u"/no/blank"_s), u"/no/blank"_s);
    const QString tooLong = folder + u'/' + QString(250, u'x');
    EXPECT_EQ(CCommonFile::GetShortPath(tooLong), QString());
    WriteFile(root.filePath(u"file"_s), "");
    qputenv("XDG_CACHE_HOME", root.filePath(u"file"_s).toUtf8());
    EXPECT_FALSE(CCommonFile::GetShortPath(folder + u"/index.kti"_s).contains(u' '));
    qunsetenv("XDG_CACHE_HOME");
}

TEST(KPDateObs, TakesOnlyPlacesThatExist)
{
    CKPDateObs observer;
    int told = 0;
    observer.SetListener([&told](CKPDateObs::Change) { ++told; });
    // What the dialog gives, and where the observer then is.
    const std::pair<std::array<double, 3>, std::array<double, 3>> cases[] = {
        {{-74, 40, 10}, {-74, 40, 10}},
        {{Nan, Nan, Nan}, {-74, 40, 10}},
        {{Infinity, -Infinity, Infinity}, {-74, 40, 10}},
        {{720.5, 91, CKPDateObs::AltitudeLeftToHost}, {0.5, 90, 10}},
        {{360, -1e300, -10}, {360, -90, -10}},
        {{139, 35, 20}, {139, 35, 20}}};
    for (const auto& [given, place] : cases) {
        observer.UpdateObsByUI(given[0], given[1], given[2], given[0]);
        EXPECT_EQ((std::array{observer.GetLongitude(), observer.GetLatitude(), observer.GetHeight()}), place);
    }
    EXPECT_EQ(told, 6);
    observer.UpdateLocationObjectByUI(5, 1);
    observer.UpdateObsByUI(200, 10, 1);
    EXPECT_EQ(observer.GetLongitude(), 200);
    EXPECT_EQ(observer.GetLongitude(4), 139) << "each body keeps its own place";
    for (const int body : {-1, 15, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(observer.GetLatitude(body), 0.0);
        EXPECT_EQ(observer.IsSmallObject(body), 0);
        observer.UpdateLocationObjectByUI(body, 1);
        EXPECT_EQ(observer.GetBody(), CKPDateObs::Earth);
    }
}

TEST(CommonCoordFormat, ComparesAndTurnsAngles)
{
    EXPECT_TRUE(CCommonCoordFormat::IsEqualDeg(139.691772, 139.691773));
    EXPECT_FALSE(CCommonCoordFormat::IsEqualDeg(0, 0.1 / 3600)) << "a displayed tenth of a second differs";
    EXPECT_TRUE(CCommonCoordFormat::IsEqualDeg(-74, 286));
    EXPECT_FALSE(CCommonCoordFormat::IsEqualDeg(Nan, Nan));
    EXPECT_TRUE(CCommonCoordFormat::IsEqualAlt(10, 10.05));
    EXPECT_FALSE(CCommonCoordFormat::IsEqualAlt(10, 11));
    const std::pair<double, double> turns[] = {{-1, 359},   {360, 0}, {-720, 0},    {725, 5},
                                               {-1e-20, 0}, {Nan, 0}, {Infinity, 0}};
    for (const auto& [from, to] : turns)
        EXPECT_EQ(degmal(from), to) << from;
    EXPECT_LT(degmal(-1e300), 360.0);
}
