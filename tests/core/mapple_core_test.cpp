#include "core_test.h"
#include "host/system/ComponentStore.h"
#include "host/system/Registry.h"
#include "roadmap/core/CormppCheck.h"
#include "roadmap/core/MappleDataCheck.h"
#include "roadmap/core/RoadMapSettings.h"
#include "roadmap/core/ScaleTable.h"
#include "roadmap/core/SitePosition.h"
#include "tests/TestHost.h"

#include <map>
#include <tuple>

using namespace Qt::StringLiterals;
using Root = CComponentStore::Root;
using Type = CComponentStore::ValueType;

namespace
{
const QString MapplePath = u"SOFTWARE\\Super Mapple"_s;

/// A store in a temporary folder, with a file and a folder that a component may point at.
class ComponentTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_machine.Use({m_machine.Settings(), m_machine.Path(u"new/components.xml"_s), QString()});
        WriteFile(There, "code");
    }

    static void Put(Root root, const QString& path, const QString& name, const CComponentStore::Value& value)
    {
        CComponentStore store;
        store.SetValue(root, path, name, value);
        ASSERT_TRUE(store.Save());
    }

    static void PutVersion(const QString& key, const QString& path, Type type = Type::String)
    {
        Put(Root::LocalMachine, MapplePath + u'\\' + key + u"\\Mapple\\App"_s, u"path"_s, {type, path});
    }

    CTestHost m_machine;
    const QString There = m_machine.Path(u"there.so"_s);
    const QString Missing = m_machine.Path(u"missing"_s);
};
} // namespace

TEST_F(ComponentTest, StoreKeepsValuesOfEveryType)
{
    const QString path = u"Software\\試験 & <b>\\x"_s;
    const std::tuple<QString, Type, QString> values[] = {{QString(), Type::String, u"{A \"quoted\" <id>}"_s},
                                                         {u"expandable"_s, Type::Expandable, u"%HOME%\\x"_s},
                                                         {u"list"_s, Type::MultiString, u"one\0two\0"_s},
                                                         {u"number"_s, Type::Number, u"12"_s},
                                                         {u"empty"_s, Type::String, QString()}};
    for (const auto& [name, type, text] : values)
        Put(Root::LocalMachine, path, name, {type, text});
    const CComponentStore store;
    const CComponentStore::Key* key = store.OpenKey(Root::LocalMachine, path.toUpper());
    ASSERT_NE(key, nullptr);
    for (const auto& [name, type, text] : values) {
        const auto read = key->QueryValue(name.toUpper());
        EXPECT_TRUE(read && read->Type == type && read->Text == text) << name.toStdString();
    }
    EXPECT_EQ(key->QueryValue(u"list"_s)->FirstText(), u"one"_s);
    EXPECT_FALSE(key->QueryValue(u"none"_s));
    EXPECT_EQ(store.OpenKey(Root::Classes, path), nullptr);
    EXPECT_EQ(store.OpenKey(Root::LocalMachine, path + u"\\y"_s), nullptr);
}

TEST_F(ComponentTest, KeysAreEnumeratedInTheirOrderWithTheLengthLeft)
{
    for (const QString& name : {u"bbbb"_s, u"aaaa"_s, u"longer"_s, u"cccccc"_s, u"d"_s})
        PutVersion(name, There);
    const CComponentStore store;
    const CComponentStore::Key* key = store.OpenKey(Root::LocalMachine, MapplePath);
    ASSERT_NE(key, nullptr);
    QStringList found;
    QString name = u"(none)"_s;
    qsizetype length = 3;
    for (qsizetype i = 0; key->EnumKey(i, &name, &length) != CComponentStore::Enumerated::NoMore; ++i)
        found += name + u':' + QString::number(length);
    EXPECT_EQ(found, (QStringList{u"(none):4"_s, u"aaaa:4"_s, u"aaaa:6"_s, u"cccccc:6"_s, u"d:1"_s}));
    EXPECT_EQ(key->EnumKey(-1, &name, &length), CComponentStore::Enumerated::NoMore);
    EXPECT_EQ(length, 1);
}

TEST_F(ComponentTest, StoreSurvivesDamagedFiles)
{
    const QString path = m_machine.Path(u"damaged.xml"_s);
    m_machine.Use({m_machine.Settings(), path, QString()});
    const QByteArray head = R"(<components><key name="HKEY_LOCAL_MACHINE"><key name="a"><value>v</value></key>)";
    const auto hasValue = [] {
        const CComponentStore store;
        const CComponentStore::Key* key = store.OpenKey(Root::LocalMachine, u"a");
        return key && key->QueryValue(QString()).has_value();
    };
    const std::pair<QByteArray, bool> cases[] = {
        {"", false},
        {QByteArray("\0\xFF\xFE<<>", 6), false},
        {head, true},
        {head + "<key><value>x</value></key><other/><value type=\"odd\">1</value>", true},
        {head + "\x01\x02", true},
        {head + QByteArray(R"(<key name="k">)").repeated(50000), true},
        {R"(<!DOCTYPE c [<!ENTITY a "&b;&b;"><!ENTITY b "&a;">]><components>&a;</components>)", false},
        {head + QByteArray(5 << 20, ' '), false}};
    for (const auto& [bytes, isRead] : cases) {
        WriteFile(path, bytes);
        EXPECT_EQ(hasValue(), isRead) << bytes.left(100).toStdString();
    }
    m_machine.Use({m_machine.Settings(), m_machine.Folder.path(), QString()});
    CComponentStore folder;
    folder.SetValue(Root::Classes, u"a", QString(), {});
    EXPECT_FALSE(folder.Save());
}

TEST_F(ComponentTest, ControlIsInstalledWhenItsFileIsThere)
{
    const QString classKey = u"CORMPP.CorMppCtrl.2\\CLSID"_s;
    const QString serverKey = u"CLSID\\{1-2}\\InprocServer32"_s;
    EXPECT_EQ(CCormppCheck::CheckCorMppInstalled(), 0);
    Put(Root::Classes, classKey, u"other"_s, {Type::String, u"{1-2}"_s});
    EXPECT_EQ(CCormppCheck::CheckCorMppInstalled(), 0) << "no default value";
    Put(Root::Classes, classKey, QString(), {Type::MultiString, u"{1-2}"_s + QChar(0) + u"x"_s + QChar(0)});
    EXPECT_EQ(CCormppCheck::CheckCorMppInstalled(), 0) << "no server key";
    const QString detour = m_machine.Folder.path() + u"/."_s.repeated(130) + u"/there.so"_s;
    const std::tuple<Type, QString, int> servers[] = {
        {Type::String, There, 1},   {Type::Expandable, There, 1},
        {Type::String, Missing, 0}, {Type::String, m_machine.Folder.path(), 0},
        {Type::String, detour, 0},  {Type::String, QString(), 0},
        {Type::Number, u"1"_s, 0}};
    for (const auto& [type, text, installed] : servers) {
        Put(Root::Classes, serverKey, QString(), {type, text});
        EXPECT_EQ(CCormppCheck::CheckCorMppInstalled(), installed) << text.toStdString();
    }
    for (const auto& [length, installed] : {std::pair{1023, 1}, {1024, 0}}) { // as long as its buffer, and longer
        const QString id(length, u'{');
        Put(Root::Classes, classKey, QString(), {Type::String, id});
        Put(Root::Classes, u"CLSID\\"_s + id + u"\\InprocServer32"_s, QString(), {Type::String, There});
        EXPECT_EQ(CCormppCheck::CheckCorMppInstalled(), installed) << length;
    }
}

TEST(MappleVersion, IsReadFromTheNameOfItsKey)
{
    const std::pair<QString, const char16_t*> names[] = {
        {u"version 12.34.5"_s, u"12 34 5"},    {u"VERSION 12.3.4"_s, u"12 3 0"},
        {u"1234567 10.1.25 "_s, u"10 1 5"},    {u"version10."_s, u"10 0 0"},
        {u"version 010.123.4"_s, u"10 123 4"}, {u"version 11x.2yz.3"_s, u"11 2 3"},
        {u"version 11.-2.3"_s, u"11 -2 3"},    {u"version 99999999999.1"_s, u"2147483647 1 0"}};
    for (const auto& [name, numbers] : names) {
        const auto version = tagMappleCheck::FromKeyName(name).value();
        EXPECT_EQ(Number::Format("%d %d %d", version.Major, version.Minor, version.Revision), QStringView(numbers))
            << name.toStdString();
    }
    for (const char16_t* name :
         {u"version 9.5.0", u"version 10", u"version  .5.0", u"version -12.5.0", u"12.34.5", u"x", u""})
        EXPECT_FALSE(tagMappleCheck::FromKeyName(name)) << QString::fromUtf16(name).toStdString();
}

TEST(MappleVersion, NewestIsTheGreatestWrappingKey)
{
    using Versions = std::vector<tagMappleCheck>;
    const auto version = [](int major, int minor, int revision) {
        return tagMappleCheck{major, minor, revision, QString(), 0};
    };
    EXPECT_EQ(tagMappleCheck::Newest(Versions{version(10, 9, 9), version(12, 0, 1), version(12, 0, 0)}), 1U);
    EXPECT_EQ(tagMappleCheck::Newest(Versions{version(12, 0, 0), version(11, 10000, 0)}), 0U) << "alike";
    EXPECT_EQ(tagMappleCheck::Newest(Versions{version(43, 0, 0), version(42, 0, 0)}), 1U) << "4.3e9 wraps to 5e6";
    EXPECT_EQ(version(12, 0, -1).SortKey(), 1'199'999'999U);
}

TEST_F(ComponentTest, DataAreInstalledWhenAnyVersionExists)
{
    EXPECT_EQ(CMappleDataCheck::CheckMappleDataInstalled(), 0);
    Put(Root::LocalMachine, MapplePath, u"x"_s, {});
    EXPECT_EQ(CMappleDataCheck::CheckMappleDataInstalled(), 0) << "an empty key";
    // None of these counts; each is as long as the one before it or shorter.
    PutVersion(u"version 12.0.14"_s, There, Type::Expandable);
    PutVersion(u"version 12.0.13"_s, There, Type::MultiString);
    PutVersion(u"version 12.0.5"_s, Missing);
    PutVersion(u"version 9.55.0"_s, There);
    Put(Root::LocalMachine, MapplePath + u"\\version 12.0.4\\Mapple"_s, u"path"_s, {Type::String, There});
    EXPECT_EQ(CMappleDataCheck::CheckMappleDataInstalled(), 0);
    PutVersion(u"version 13.0.100"_s, There);
    EXPECT_EQ(CMappleDataCheck::CheckMappleDataInstalled(), 0) << "a name longer than its predecessor is not read";
    PutVersion(u"Version 10.0.3"_s, m_machine.Folder.path());
    EXPECT_EQ(CMappleDataCheck::CheckMappleDataInstalled(), 1) << "the newest is missing, an older one is there";
}

TEST(ScaleTable, FollowsThePatternOfItsDecades)
{
    std::map<int, int> steps; // in thousandths of the decade, how many there are
    int unit = 1000;
    for (int index = 0; index + 1 < ScaleTable::SliderCount; ++index) {
        const int step = ScaleTable::Denominator(index + 1) - ScaleTable::Denominator(index);
        ++steps[step * 1000 / unit];
        if (ScaleTable::Denominator(index + 1) == unit * 10)
            unit *= 10;
    }
    EXPECT_EQ(steps, (std::map<int, int>{{50, 160}, {100, 20 * 3 + 19 + 10 * 3}, {200, 20 * 3}}));

    const std::map<int, int> known{
        {0, 1000},      {1, 1050},      {39, 2950},     {40, 3000},     {41, 3100},     {60, 5000},     {61, 5200},
        {70, 7000},     {71, 7100},     {80, 8000},     {89, 9800},     {90, 10000},    {91, 10500},    {180, 100000},
        {270, 1000000}, {328, 4800000}, {329, 4900000}, {330, 5000000}, {331, 9999999}, {332, 9999999}, {-1, 1000}};
    for (const auto& [index, scale] : known)
        EXPECT_EQ(ScaleTable::Denominator(index), scale) << index;
    EXPECT_EQ(ScaleTable::Denominator(std::numeric_limits<int>::max()), 9999999);
    EXPECT_EQ(ScaleTable::Denominator(std::numeric_limits<int>::min()), 1000);
}

TEST(SitePosition, IsShownInDegreesMinutesAndSeconds)
{
    const std::tuple<double, double, const char*> cases[] = {
        {139.691772, 35.689236, "東経： 139 度 41 分 30.38 秒 北緯： 35 度 41 分 21.25 秒"},
        {-70.5, -33.25, "西経： 070 度 30 分  0.00 秒 南緯： 33 度 15 分  0.00 秒"},
        {0.0, -0.0, "東経： 000 度 00 分  0.00 秒 北緯： 00 度 00 分  0.00 秒"},
        {359.9999999, 0.9999999, "東経： 359 度 59 分 60.00 秒 北緯： 00 度 59 分 60.00 秒"},
        {Nan, -Infinity, "東経： 000 度 00 分  0.00 秒 南緯： 00 度 00 分  0.00 秒"},
        {1e300, 0.0, "東経： 999999999 度 00 分  0.00 秒 北緯： 00 度 00 分  0.00 秒"}};
    for (const auto& [longitude, latitude, text] : cases)
        EXPECT_EQ(SiteText({longitude, latitude}).toStdString(), text);
}

TEST(SitePosition, IsReadFromAnEnginesAnswer)
{
    const std::pair<QString, const char*> answers[] = {
        {u"Location(139.691772, 35.689236, 39.0)"_s, "139.691772 35.689236"},
        {u"Solar.Planet.Mars(-222.5,  -4.5 m, 0, 1)"_s, "-222.500000 -4.500000"},
        {u"x(a,b,"_s, "0.000000 0.000000"}};
    for (const auto& [answer, text] : answers) {
        const auto position = SitePosition::FromEngineAnswer(answer).value();
        EXPECT_EQ(Number::Format("%f %f", position.Longitude, position.Latitude).toStdString(), text);
    }
    for (const QString& answer :
         {u""_s, u"(1, 2, 3)"_s, u"Location"_s, u"x(1, 2)"_s, u"x(1)"_s, u"x(,1,2)"_s, u"x(1,,2)"_s, u"x("_s})
        EXPECT_FALSE(SitePosition::FromEngineAnswer(answer)) << answer.toStdString();
}

TEST(RoadMapSettings, HoldWhateverIsStoredWithinBounds)
{
    const CTestHost machine;
    EXPECT_EQ(RoadMapSettings::ReadCreateWait(u"S"_s), 1000);
    for (const auto& [stored, wait] : {std::pair{0, 0}, {-1, 0}, {331, 331}, {2147483647, 10000}}) {
        CRegistry::Write(u"S"_s, u"CreateWait"_s, stored, CRegistry::Count);
        EXPECT_EQ(RoadMapSettings::ReadCreateWait(u"S"_s), wait);
    }
}
