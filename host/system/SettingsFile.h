#pragma once

#include "host/system/WriteFailure.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>
#include <utility>

/// A file of settings with what this program changed in it. A value that cannot be written holds while the program
/// runs, and the next writing tries again. The file is replaced whole or stays as it was, and what another program
/// wrote into it in the meantime is kept.
class CSettingsFile : public QObject
{
    Q_OBJECT

public:
    explicit CSettingsFile(const QString& path);
    /// Saves.
    ~CSettingsFile() override;

    /// The value of a key such as "section/name"; invalid when there is none.
    [[nodiscard]] QVariant Value(const QString& key) const;
    /// Is saved by the event loop soon.
    void SetValue(const QString& key, const QVariant& value);
    void Save();

    /// Hears how each attempt to write the file ended; none when empty.
    using Listener = std::function<void(const QString& path, WriteFailure::Cause cause)>;
    void SetListener(Listener listener) { m_listener = std::move(listener); }

private:
    [[nodiscard]] std::optional<QByteArray> Merged() const;
    [[nodiscard]] bool Write(const QByteArray& content) const;

    QString m_path;
    QSettings m_file; ///< read only
    QHash<QString, QVariant> m_own;
    QSet<QString> m_unsaved; ///< keys
    bool m_isSaveDue = false;
    Listener m_listener;
};
