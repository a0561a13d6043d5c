#include "host/system/WriteFailure.h"

#include <QFileInfo>
#include <QStorageInfo>

WriteFailure::Cause WriteFailure::Diagnose(const QString& path, qint64 bytes)
{
    constexpr qint64 block = 4096;
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir())
        return Cause::NoFolder;
    if (file.exists() && !file.isFile())
        return Cause::IsNoFile;
    const QStorageInfo drive(folder.absoluteFilePath());
    if (drive.isReadOnly())
        return Cause::ReadOnlyDrive;
    if (!folder.isWritable() || (file.exists() && !file.isWritable()))
        return Cause::NotPermitted;
    if (drive.isValid() && drive.bytesAvailable() < bytes + block)
        return Cause::Full;
    return Cause::Other;
}
