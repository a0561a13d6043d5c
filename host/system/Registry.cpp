#include "host/system/Registry.h"

#include "host/text/KivFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QVariant>

#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
CRegistry::WriteListener& Listener()
{
    static CRegistry::WriteListener listener;
    return listener;
}

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

/// One file of settings with what this program changed in it.
class CStore
{
public:
    explicit CStore(const QString& path) : m_path(path), m_file(path, QSettings::IniFormat)
    {
        (void)Listener(); // outlives the last store at the end of the program
    }
    CStore(const CStore&) = delete;
    CStore& operator=(const CStore&) = delete;
    ~CStore() { Save(); }

    [[nodiscard]] QVariant Value(const QString& key) const
    {
        const auto own = m_own.constFind(key);
        return own != m_own.constEnd() ? *own : m_file.value(key);
    }

    void SetValue(const QString& key, const QVariant& value)
    {
        m_own.insert(key, value);
        m_unsaved.insert(key);
        if (qApp && !std::exchange(m_isSaveDue, true))
            QMetaObject::invokeMethod(qApp, &CRegistry::Flush, Qt::QueuedConnection);
    }

    void Save()
    {
        m_isSaveDue = false;
        if (m_unsaved.isEmpty())
            return;
        const std::optional<QByteArray> content = Merged();
        const bool isWritten = content && Write(*content);
        if (isWritten)
            m_unsaved.clear();
        if (Listener())
            Listener()(m_path, isWritten ? WriteFailure::Cause::None
                                         : WriteFailure::Diagnose(m_path, content ? content->size() : 0));
    }

private:
    /// The file as it is now with this program's changes; none when it cannot be read or put together.
    [[nodiscard]] std::optional<QByteArray> Merged() const
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

    [[nodiscard]] bool Write(const QByteArray& content) const
    {
        if (QFileInfo::exists(m_path) && !QFileInfo(m_path).isFile())
            return false; // a device must not be replaced
        CKivFile file;
        return QDir().mkpath(QFileInfo(m_path).absolutePath()) && file.OpenCreate(m_path) && file.WriteBytes(content) &&
               file.Close();
    }

    QString m_path;
    QSettings m_file; ///< read only
    QHash<QString, QVariant> m_own;
    QSet<QString> m_unsaved; ///< keys
    bool m_isSaveDue = false;
};

std::unique_ptr<CStore>& Store()
{
    static std::unique_ptr<CStore> store;
    if (!store) {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
        store = std::make_unique<CStore>(folder + u"/planetarium-site/settings.ini"_s);
    }
    return store;
}

QString Key(QString section, const QString& name)
{
    if (section == u"General"_s)
        return name; // the store's own section of that name; as a prefix it would become one called "%General"
    return section.replace(u'\\', u'/') + u'/' + name;
}
} // namespace

void CRegistry::Read(const QString& section, const QString& name, int defaultValue, int* result, int /*kind*/)
{
    bool isInteger = false;
    // By way of the text: the store's own conversion wraps a number too large for an int.
    const int value = Store()->Value(Key(section, name)).toString().toInt(&isInteger);
    *result = isInteger ? value : defaultValue;
}

void CRegistry::Read(const QString& section, const QString& name, const QString& defaultValue, QString* result)
{
    const QVariant value = Store()->Value(Key(section, name));
    if (value.typeId() == QMetaType::QStringList)
        *result = value.toStringList().join(u", "_s); // an unquoted text with commas, as a person writes it
    else
        *result = value.canConvert<QString>() && value.isValid() ? value.toString() : defaultValue;
}

void CRegistry::Write(const QString& section, const QString& name, int data, int /*kind*/)
{
    Store()->SetValue(Key(section, name), data);
}

void CRegistry::Write(const QString& section, const QString& name, const QString& data)
{
    Store()->SetValue(Key(section, name), data);
}

void CRegistry::UseFile(const QString& path)
{
    Store() = std::make_unique<CStore>(path);
}

void CRegistry::Flush()
{
    Store()->Save();
}

void CRegistry::SetWriteListener(WriteListener listener)
{
    Listener() = std::move(listener);
}
