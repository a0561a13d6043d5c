// What the program puts in place for the module before it starts.

#include "host/control_window/CorMpp.h"
#include "planetarium/ControlClasses.h"
#include "planetarium/DataFolders.h"
#include "roadmap/core/CormppCheck.h"
#include "roadmap/core/MappleDataCheck.h"
#include "tests/TestFile.h"
#include "tests/TestHost.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Install, PutsTheNewestPlaceListWhereItCan)
{
    const QTemporaryDir folder;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    DataFolders folders;
    folders.UseShipped(folder.path() + u"/shipped/"_s);
    folders.User = folder.path() + u"/new/user/"_s;
    EXPECT_EQ(folders.TerrainIndex, QString());
    folders.InstallPlaceList();
    EXPECT_FALSE(QFile::exists(folders.User + u"kivpel.obs"_s)) << "nothing is shipped";

    QDir().mkpath(folders.Shipped);
    const QString shipped = folders.Shipped + u"kivpel.obs"_s;
    const QByteArray bytes("any\0bytes\r\n\xFF", 12);
    const QString copy = folders.User + u"kivpel.obs"_s;
    WriteFile(shipped, bytes, now.addDays(-2));
    folders.InstallPlaceList();
    EXPECT_EQ(ReadFile(copy), bytes);
    WriteFile(shipped, "changed", now.addDays(-1)); // still older than the copy made just now
    folders.InstallPlaceList();
    EXPECT_EQ(ReadFile(copy), bytes);
    WriteFile(shipped, "changed", now.addDays(1));
    folders.InstallPlaceList();
    EXPECT_EQ(ReadFile(copy), "changed");
    QFile::remove(shipped);
    folders.InstallPlaceList();
    EXPECT_EQ(ReadFile(copy), "changed") << "the copy outlives what was shipped";
    WriteFile(shipped, "new", now.addDays(2));
    folders.User = copy + u"/below/a/file/"_s;
    folders.InstallPlaceList();
    EXPECT_EQ(ReadFile(copy), "changed");
}

TEST(Install, OffersTheRoadMapWhileItsDataAreThere)
{
    CTestHost machine;
    DataFolders folders;
    folders.UseShipped(QStringLiteral(KIV_SOURCE_DATA));
    folders.InstallRoadMap();
    EXPECT_EQ(CCormppCheck::CheckCorMppInstalled(), 1);
    EXPECT_EQ(CMappleDataCheck::CheckMappleDataInstalled(), 1);
    ControlClasses::Register(folders.Shipped);
    QWidget window;
    CCorMpp map;
    ASSERT_TRUE(map.Create(&window, QRect(0, 0, 300, 200), 5241));
    map.SetScale(1000000);
    EXPECT_TRUE(map.Search(true, u"天文台"_s));

    folders.Shipped = machine.Path(u"elsewhere/"_s);
    folders.InstallRoadMap();
    EXPECT_EQ(CMappleDataCheck::CheckMappleDataInstalled(), 0) << "the data are gone";
    machine.Use({machine.Settings(), u"/proc/components.xml"_s, QString()});
    EXPECT_EQ(folders.InstallRoadMap(), u"/proc/components.xml"_s);
    EXPECT_EQ(CCormppCheck::CheckCorMppInstalled(), 0);
}
