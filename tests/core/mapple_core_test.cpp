#include "core_test.h"
#include "host/system/CurrentDirectory.h"
#include "host/system/Registry.h"
#include "roadmap/core/RoadMapSettings.h"
#include "roadmap/core/ScaleTable.h"
#include "roadmap/core/SitePosition.h"
#include "tests/TestHost.h"

#include <map>

using namespace Qt::StringLiterals;

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
    struct Row
    {
        SitePosition Position;
        QString Text;
    };
    for (const Row& row : {
             Row{{139.691772, 35.689236}, u"東経： 139 度 41 分 30.38 秒 北緯： 35 度 41 分 21.25 秒"_s},
             Row{{-70.5, -33.25}, u"西経： 070 度 30 分  0.00 秒 南緯： 33 度 15 分  0.00 秒"_s},
             Row{{0.0, -0.0}, u"東経： 000 度 00 分  0.00 秒 北緯： 00 度 00 分  0.00 秒"_s},
             Row{{359.9999999, 0.9999999}, u"東経： 359 度 59 分 60.00 秒 北緯： 00 度 59 分 60.00 秒"_s},
             Row{{Nan, -Infinity}, u"東経： 000 度 00 分  0.00 秒 南緯： 00 度 00 分  0.00 秒"_s},
             Row{{1e300, 0.0}, u"東経： 999999999 度 00 分  0.00 秒 北緯： 00 度 00 分  0.00 秒"_s},
         })
        EXPECT_EQ(SiteText(row.Position), row.Text);
}

TEST(SitePosition, IsReadFromAnEnginesAnswer)
{
    struct Row
    {
        QString Answer;
        QString Position; // empty: none
    };
    for (const Row& row : {
             Row{u"Location(139.691772, 35.689236, 39.0)"_s, u"139.691772 35.689236"_s},
             Row{u"Solar.Planet.Mars(-222.5,  -4.5 m, 0, 1)"_s, u"-222.500000 -4.500000"_s},
             Row{u"x(a,b,"_s, u"0.000000 0.000000"_s},
             Row{u""_s, u""_s},
             Row{u"(1, 2, 3)"_s, u""_s},
             Row{u"Location"_s, u""_s},
             Row{u"x(1, 2)"_s, u""_s},
             Row{u"x(1)"_s, u""_s},
             Row{u"x(,1,2)"_s, u""_s},
             Row{u"x(1,,2)"_s, u""_s},
             Row{u"x("_s, u""_s},
         }) {
        const auto position = SitePosition::FromEngineAnswer(row.Answer);
        EXPECT_EQ(position ? Number::Format("%f %f", position->Longitude, position->Latitude) : QString(), row.Position)
            << row.Answer.toStdString();
    }
}

TEST(RoadMapSettings, HoldWhateverIsStoredWithinBounds)
{
    const CTestHost machine;
    EXPECT_EQ(RoadMapSettings::ReadCreateWait(u"S"_s), 1000);
    EXPECT_EQ(RoadMapSettings::ReadZoomIndex(u"S"_s), 80);
    for (const auto& [stored, wait, zoom] :
         {std::tuple{0, 0, 0}, {-1, 0, 0}, {331, 331, 331}, {332, 332, 331}, {2147483647, 10000, 331}}) {
        CRegistry::Write(u"S"_s, u"CreateWait"_s, stored, CRegistry::Count);
        CRegistry::Write(u"S"_s, u"ZoomAngle"_s, stored, CRegistry::Count);
        EXPECT_EQ(RoadMapSettings::ReadCreateWait(u"S"_s), wait);
        EXPECT_EQ(RoadMapSettings::ReadZoomIndex(u"S"_s), zoom);
    }
}

TEST(CurrentDirectory, ComesBackToTheFirstOne)
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    const QString before = QDir::currentPath();
    {
        CCurrentDirectory directory;
        directory.SwitchTo(first.filePath(u"missing"_s));
        EXPECT_EQ(QDir::currentPath(), before);
        directory.SwitchTo(first.path());
        directory.SwitchTo(second.path());
        EXPECT_EQ(QDir::currentPath(), QDir(second.path()).canonicalPath());
        directory.Restore();
        EXPECT_EQ(QDir::currentPath(), before);
        directory.SwitchTo(first.path());
    }
    EXPECT_EQ(QDir::currentPath(), before);
}
