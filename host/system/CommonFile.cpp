#include "host/system/CommonFile.h"

#include <QCoreApplication>
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

QString& ModulePath()
{
    static QString path;
    return path;
}

bool HasBlank(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
}

/// A link without blanks to a file or folder; empty when none can be made.
QString LinkTo(const QString& target)
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + u"/planetarium-site"_s;
    if (HasBlank(folder))
        folder = QDir::tempPath();
    if (!QDir().mkpath(folder))
        return {};
    const QByteArray hash = QCryptographicHash::hash(target.toUtf8(), QCryptographicHash::Sha1).toHex();
    const QString link = folder + u"/alias-"_s + QString::fromLatin1(hash);
    if (QFileInfo(link).symLinkTarget() == target)
        return link;
    QFile::remove(link);
    return QFile::link(target, link) ? link : QString();
}
} // namespace

bool CCommonFile::DoesFileExist(const QString& path)
{
    return QFileInfo(path).isFile();
}

QString CCommonFile::GetModulePath()
{
    return ModulePath().isEmpty() ? QCoreApplication::applicationDirPath() + u'/' : ModulePath();
}

void CCommonFile::SetModulePath(const QString& folder)
{
    ModulePath() = folder.isEmpty() || folder.endsWith(u'/') ? folder : folder + u'/';
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
    const QFileInfo info(path);
    // A link to the folder keeps the files beside it reachable; only a blank in the name itself needs a link to the
    // file.
    const bool isNameBlank = HasBlank(info.fileName());
    const QString link = LinkTo(isNameBlank ? info.absoluteFilePath() : info.absolutePath());
    if (link.isEmpty())
        return path;
    const QString result = isNameBlank ? link : link + u'/' + info.fileName();
    return result.size() < MaxShortPath ? result : path;
}
