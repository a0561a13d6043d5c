#include "city/core/OverlayFile.h"

#include "city/core/OverlayJson.h"

#include <QFileInfo>

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace
{
std::filesystem::path NativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

/// Gives the file a second name, or a copy where the file system knows no second names. A symbolic link stands for the
/// file it points to, as it does when the file is replaced.
bool Duplicate(const QString& from, const QString& to)
{
    std::error_code error;
    const std::filesystem::path source = std::filesystem::canonical(NativePath(from), error);
    if (error)
        return false;
    std::filesystem::remove(NativePath(to), error);
    std::filesystem::create_hard_link(source, NativePath(to), error);
    if (!error)
        return true;
    std::error_code copyError;
    std::filesystem::copy_file(source, NativePath(to), copyError);
    if (copyError)
        std::filesystem::remove(NativePath(to), error); // no half copies
    return !copyError;
}

/// Keeps the content for good, under "<path>.<label>-1" or the next free number; once, however often it is asked.
bool SetAside(const QString& path, const QString& label, const QByteArray& content)
{
    QString last;
    for (int number = 1;; ++number) {
        const QString name = path + u'.' + label + u'-' + QString::number(number);
        if (!QFileInfo::exists(name))
            return (!last.isEmpty() && !content.isEmpty() && COverlayFile::Read(last) == content) ||
                   Duplicate(path, name);
        last = name;
    }
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

bool COverlayFile::IsWhole(const QByteArray& bytes) const
{
    return (!bytes.isEmpty() && bytes == m_whole) || OverlayJson::Parse(bytes).IsWhole;
}

namespace
{
/// Brings a save to its end that broke off between the replacement and the backup.
void EndFormerSave(const QString& path, const QByteArray& content)
{
    const QString former = FormerName(path);
    if (!QFileInfo::exists(former))
        return;
    if (COverlayFile::Read(former) == content)
        QFile::remove(former);
    else
        Rotate(path);
}
} // namespace

bool COverlayFile::Save(const QString& path, const QByteArray& bytes)
{
    const QByteArray former = Read(path);
    EndFormerSave(path, former);
    const bool isDamaged = QFileInfo(path).size() > 0 && !IsWhole(former); // also when it cannot be read
    if (isDamaged && !SetAside(path, u"damaged"_s, former))
        return false;
    const bool isWorthKeeping = !isDamaged && !former.isEmpty() && former != bytes;
    // Another program wrote it since it was read here: its changes are no earlier state of these.
    if (isWorthKeeping && former != m_whole && !SetAside(path, u"other"_s, former))
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
