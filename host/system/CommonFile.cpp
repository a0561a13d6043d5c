#include "host/system/CommonFile.h"

#include "host/system/HostContext.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype MaxShortPath = 260;

bool HasBlank(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
}

/// Where aliases are kept; empty when there is no such folder.
QString AliasFolder()
{
    const QString name = u"/planetarium-site"_s;
    for (const QString& place : {QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation),
                                 QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)}) {
        if (!place.isEmpty() && !HasBlank(place) && QDir().mkpath(place + name))
            return place + name;
    }
    return {};
}

QString AliasName(const QString& target)
{
    const QByteArray hash = QCryptographicHash::hash(target.toUtf8(), QCryptographicHash::Sha1).toHex();
    return u"alias-"_s + QString::fromLatin1(hash);
}

bool MakeLink(const QString& target, const QString& link)
{
    if (QFileInfo(link).symLinkTarget() == target)
        return true;
    QFile::remove(link);
    return QFile::link(target, link);
}

/// A blank-free path of a file whose name has no blank, through a link to its folder.
QString ThroughFolderLink(const QFileInfo& file, const QString& aliases)
{
    const QString link = aliases + u'/' + AliasName(file.absolutePath());
    return MakeLink(file.absolutePath(), link) ? link + u'/' + file.fileName() : QString();
}

/// A blank-free path of a file with a blank in its name: a folder with a link to it and to each of its neighbours,
/// which are looked for beside the path.
QString AmongLinkedNeighbours(const QFileInfo& file, const QString& aliases)
{
    const QString folder = aliases + u'/' + AliasName(file.absolutePath()) + u"-files"_s;
    if (!QDir().mkpath(folder))
        return {};
    for (const QFileInfo& neighbour : file.absoluteDir().entryInfoList(QDir::Files))
        MakeLink(neighbour.absoluteFilePath(), folder + u'/' + neighbour.fileName());
    const QString link = folder + u'/' + AliasName(file.fileName());
    return MakeLink(file.absoluteFilePath(), link) ? link : QString();
}
} // namespace

bool CCommonFile::DoesFileExist(const QString& path)
{
    return QFileInfo(path).isFile();
}

QString CCommonFile::GetModulePath()
{
    return CHostContext::Current().ModuleFolder();
}

bool CCommonFile::IsFileNewerThan(const QString& first, const QString& second)
{
    const QFileInfo firstInfo(first);
    if (!firstInfo.isFile())
        return false;
    const QFileInfo secondInfo(second);
    return !secondInfo.isFile() || firstInfo.lastModified() > secondInfo.lastModified();
}

QString CCommonFile::GetShortPath(const QString& path)
{
    if (!HasBlank(path))
        return path;
    const QString aliases = AliasFolder();
    if (aliases.isEmpty())
        return {};
    const QFileInfo info(path);
    const QString result =
        HasBlank(info.fileName()) ? AmongLinkedNeighbours(info, aliases) : ThroughFolderLink(info, aliases);
    return !result.isEmpty() && result.size() < MaxShortPath ? result : QString();
}
