#include "city/core/OverlayFile.h"

#include "city/core/OverlayJson.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace
{
std::filesystem::path NativePath(const QString& path)
{
    return path.toStdU16String();
}

QByteArray Digest(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/// Gives the file a second name, or a copy where the file system knows no second names.
bool Duplicate(const QString& from, const QString& to)
{
    std::error_code error;
    std::filesystem::remove(NativePath(to), error);
    std::filesystem::create_hard_link(NativePath(from), NativePath(to), error);
    if (!error)
        return true;
    error.clear();
    std::filesystem::copy_file(NativePath(from), NativePath(to), error);
    return !error;
}

bool SetAside(const QString& path)
{
    int number = 1;
    while (QFileInfo::exists(path + u".damaged-"_s + QString::number(number)))
        ++number;
    return Duplicate(path, path + u".damaged-"_s + QString::number(number));
}

/// What the file held before the save under way; after the save it becomes the newest backup.
QString FormerName(const QString& path)
{
    return path + u".former"_s;
}

void Rotate(const QString& path)
{
    const auto backup = [&path](int number) { return NativePath(path + u'.' + QString::number(number)); };
    std::error_code error; // a backup that cannot be moved must not spoil a save that has succeeded
    for (int number = COverlayFile::BackupCount; number > 1; --number)
        std::filesystem::rename(backup(number - 1), backup(number), error);
    std::filesystem::rename(NativePath(FormerName(path)), backup(1), error);
}
} // namespace

QByteArray COverlayFile::Read(const QString& path)
{
    CKivFile file;
    if (!file.OpenRead(path))
        return {};
    const QByteArray bytes = file.ReadAll();
    return file.HasReadError() ? QByteArray() : bytes;
}

void COverlayFile::KnowAsWhole(const QByteArray& bytes)
{
    m_wholeDigest = Digest(bytes);
}

bool COverlayFile::IsWhole(const QByteArray& bytes) const
{
    return Digest(bytes) == m_wholeDigest || OverlayJson::Parse(bytes).IsWhole;
}

bool COverlayFile::Save(const QString& path, const QByteArray& bytes)
{
    const QByteArray former = Read(path);
    const bool isDamaged = QFileInfo(path).size() > 0 && !IsWhole(former); // also when it cannot be read
    const bool isWorthKeeping = !isDamaged && !former.isEmpty() && former != bytes;
    if (isDamaged && !SetAside(path))
        return false;
    const bool isKept = isWorthKeeping && Duplicate(path, FormerName(path));

    CKivFile file(m_factory);
    const bool isSaved = file.OpenCreate(path) && file.WriteBytes(bytes) && file.Close();
    if (isSaved)
        KnowAsWhole(bytes);
    if (isSaved && isKept)
        Rotate(path);
    else if (isKept)
        QFile::remove(FormerName(path));
    return isSaved;
}
