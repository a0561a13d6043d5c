#pragma once

#include "host/text/KivFile.h"

#include <QByteArray>
#include <QString>

/// The overlay's file, which holds what the user cannot make again. It is replaced whole or not at all; the last good
/// contents stay beside it as backups. A damaged content, and one that another program put there meanwhile, is set
/// aside for good as "<path>.damaged-1" or "<path>.other-1".
class COverlayFile
{
public:
    /// Backups "<path>.1" (the newest) to "<path>.3".
    static constexpr int BackupCount = 3;

    explicit COverlayFile(CKivFile::SaveFileFactory factory) : m_factory(std::move(factory)) {}
    void SetSaveFileFactory(CKivFile::SaveFileFactory factory) { m_factory = std::move(factory); }

    /// The content; empty when there is no file, or none that can be read.
    [[nodiscard]] static QByteArray Read(const QString& path);

    /// Notes that this content was read and found whole.
    void KnowAsWhole(const QByteArray& bytes) { m_whole = bytes; }

    /// Puts the bytes in the file's place. False, with the old file in place, when they cannot be written or the
    /// old file cannot be set aside.
    [[nodiscard]] bool Save(const QString& path, const QByteArray& bytes);

private:
    [[nodiscard]] bool IsWhole(const QByteArray& bytes) const;

    CKivFile::SaveFileFactory m_factory;
    QByteArray m_whole; ///< what the file held when it was last read or written here
};
