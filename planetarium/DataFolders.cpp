#include "planetarium/DataFolders.h"

#include "city/core/PlaceDocument.h"
#include "host/system/CommonFile.h"
#include "host/system/ComponentStore.h"
#include "host/text/KivFile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace
{
const QString ListName = u"kivpel.obs"_s;
const QString RoadMapClassId = u"{6F2B7C10-4D5A-4E0B-9A57-3C0B1E0D8F41}"_s;

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
/// A copy that is whole or not there.
bool Copy(const QString& from, const QString& to)
{
    CKivFile source;
    CKivFile copy;
    if (!source.OpenRead(from) || !copy.OpenCreate(to))
        return false;
    const QByteArray bytes = source.ReadAll();
    return !source.HasReadError() && copy.WriteBytes(bytes) && copy.Close();
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

CHostContext::CFiles DataFolders::HostFiles(const QString& settings) const
{
    return {settings, User + u"components.xml"_s, Shipped};
}

QString DataFolders::InstallPlaceList() const
{
    QDir().mkpath(User); // where that fails, so do the copies
    const QString list = User + ListName;
    if (CCommonFile::IsFileNewerThan(Shipped + ListName, list) && !Copy(Shipped + ListName, list))
        return list;
    // The site dialog gives its map the user's list only where there is one when it is made. An old one will do: the
    // dialog writes it anew, with the user's changes, as the shipped list is newer.
    const QString userList = User + QString::fromUtf16(CPlacePaths::UserListName);
    if (CCommonFile::DoesFileExist(userList) || !CCommonFile::DoesFileExist(Shipped + ListName))
        return {};
    if (!Copy(Shipped + ListName, userList))
        return userList;
    QFile file(userList);
    if (file.open(QIODevice::ReadWrite))
        file.setFileTime(QDateTime::fromSecsSinceEpoch(0), QFileDevice::FileModificationTime);
    return {};
}

QString DataFolders::InstallRoadMap() const
{
    using Root = CComponentStore::Root;
    using Type = CComponentStore::ValueType;
    CComponentStore store;
    store.SetValue(Root::Classes, u"CORMPP.CorMppCtrl.2\\CLSID", QString(), {Type::String, RoadMapClassId});
    store.SetValue(Root::Classes, u"CLSID\\"_s + RoadMapClassId + u"\\InprocServer32"_s, QString(),
                   {Type::String, QCoreApplication::applicationFilePath()});
    store.SetValue(Root::LocalMachine, u"SOFTWARE\\Super Mapple\\Version 10.00.1\\Mapple\\App", u"path"_s,
                   {Type::String, Shipped + u"roadmap"_s});
    return store.Save() ? QString() : CHostContext::Current().ComponentsFile();
}
