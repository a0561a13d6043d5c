#include "host/system/SettingsFile.h"

#include "host/text/KivFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <utility>

namespace
{
std::optional<QByteArray> Content(const QString& path)
{
    CKivFile file;
    if (!QFileInfo::exists(path))
        return QByteArray();
    if (!file.OpenRead(path))
        return std::nullopt;
    const QByteArray content = file.ReadAll();
    return file.HasReadError() ? std::nullopt : std::optional(content);
}
} // namespace

CSettingsFile::CSettingsFile(const QString& path) : m_path(path), m_file(path, QSettings::IniFormat) {}

CSettingsFile::~CSettingsFile()
{
    Save();
}

QVariant CSettingsFile::Value(const QString& key) const
{
    const auto own = m_own.constFind(key);
    return own != m_own.constEnd() ? *own : m_file.value(key);
}

void CSettingsFile::SetValue(const QString& key, const QVariant& value)
{
    m_own.insert(key, value);
    m_unsaved.insert(key);
    if (!std::exchange(m_isSaveDue, true))
        QMetaObject::invokeMethod(this, &CSettingsFile::Save, Qt::QueuedConnection);
}

void CSettingsFile::Save()
{
    m_isSaveDue = false;
    if (m_unsaved.isEmpty())
        return;
    const std::optional<QByteArray> content = Merged();
    const bool isWritten = content && Write(*content);
    if (isWritten)
        m_unsaved.clear();
    if (m_listener)
        m_listener(m_path, isWritten ? WriteFailure::Cause::None
                                     : WriteFailure::Diagnose(m_path, content ? content->size() : 0));
}

/// The file as it is now with this program's changes; none when it cannot be read or put together.
std::optional<QByteArray> CSettingsFile::Merged() const
{
    const std::optional<QByteArray> present = Content(m_path);
    QTemporaryFile draft; // the form of the file is the toolkit's own, which it writes to files alone
    if (!present || !draft.open() || draft.write(*present) != present->size() || !draft.flush())
        return std::nullopt;
    QSettings settings(draft.fileName(), QSettings::IniFormat);
    for (const QString& key : m_unsaved)
        settings.setValue(key, m_own.value(key));
    settings.sync();
    return settings.status() == QSettings::AccessError ? std::nullopt : Content(draft.fileName());
}

bool CSettingsFile::Write(const QByteArray& content) const
{
    if (QFileInfo::exists(m_path) && !QFileInfo(m_path).isFile())
        return false; // a device must not be replaced
    CKivFile file;
    return QDir().mkpath(QFileInfo(m_path).absolutePath()) && file.OpenCreate(m_path) && file.WriteBytes(content) &&
           file.Close();
}
