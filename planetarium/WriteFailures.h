#pragma once

#include "host/system/SettingsFile.h"

#include <QHash>
#include <QObject>
#include <QStringList>

class QWidget;

/// Reports which file could not be written, why, and what to do: soon, but not in the middle of what wrote it,
/// and once per file and cause until it could be written again.
class CWriteFailures : public QObject
{
    Q_OBJECT

public:
    /// Listens to the settings. The window is the parent of the messages; both must outlive this.
    CWriteFailures(QWidget& window, CSettingsFile& settings);
    ~CWriteFailures() override;

    /// A file could not be written, or could be again (no cause). `what` begins the message and `consequence` ends it.
    void Report(const QString& what, const QString& path, WriteFailure::Cause cause, const QString& consequence);
    /// Shows at once what is still to be reported.
    void Tell();

private:
    QWidget& m_window;
    CSettingsFile& m_settings;
    QHash<QString, WriteFailure::Cause> m_told; ///< by path
    QStringList m_messages;
};
