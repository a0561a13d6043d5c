#include "planetarium/DataFolders.h"

#include "host/system/CommonFile.h"
#include "host/text/KivFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace
{
const QString ListName = u"kivpel.obs"_s;

QString FindShipped()
{
    QDir folder(QCoreApplication::applicationDirPath());
    do {
        for (const QString& candidate : {u"data/"_s, u"share/planetarium-site/data/"_s}) {
            if (CCommonFile::DoesFileExist(folder.filePath(candidate + ListName)))
                return folder.filePath(candidate);
        }
    } while (folder.cdUp());
    return QCoreApplication::applicationDirPath() + u"/data/"_s;
}
} // namespace

DataFolders DataFolders::Default()
{
    DataFolders folders;
    folders.UseShipped(FindShipped());
    folders.User = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/planetarium-site/"_s;
    return folders;
}

void DataFolders::UseShipped(const QString& folder)
{
    Shipped = folder;
    TerrainIndex = Shipped + u"terrain/terrain.idx"_s;
    if (!CCommonFile::DoesFileExist(TerrainIndex))
        TerrainIndex.clear();
}

void DataFolders::InstallPlaceList() const
{
    if (!QDir().mkpath(User) || !CCommonFile::IsFileNewerThan(Shipped + ListName, User + ListName))
        return;
    CKivFile shipped;
    CKivFile copy;
    if (!shipped.OpenRead(Shipped + ListName) || !copy.OpenCreate(User + ListName))
        return;
    const QByteArray bytes = shipped.ReadAll();
    if (!shipped.HasReadError() && copy.WriteBytes(bytes))
        copy.Close();
}
