#pragma once

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QString>

#include <functional>
#include <memory>

/// A text file of the host: read line by line as bytes, or written whole.
///
/// Writing replaces the file whole or not at all: the bytes go into a file beside it, which is flushed to disk and
/// renamed by Close. A writer that is destroyed, or that failed at any byte, leaves the old file as it was.
class CKivFile
{
public:
    /// Makes the device that is written to; a test hands in one that fails after some bytes.
    using SaveFileFactory = std::function<std::unique_ptr<QSaveFile>(const QString& path)>;

    CKivFile();
    explicit CKivFile(SaveFileFactory factory);

    /// Opens an existing file for reading, shared with other readers and writers. False when that fails.
    [[nodiscard]] bool OpenRead(const QString& path);

    /// Begins a new content for the path. False when the folder or the file cannot be written.
    [[nodiscard]] bool OpenCreate(const QString& path);

    /// Selects what Write makes of text: FALSE, TRUE is the multibyte code page, TRUE the UTF-16 form.
    void SetUnicode(bool unicode, bool multibyte = false);

    /// Reads the next line into `line` without its CR LF or LF. False at the end of the file and on an error.
    [[nodiscard]] bool ReadLine(QByteArray& line);

    /// Reads what is left of the file.
    [[nodiscard]] QByteArray ReadAll();

    /// Whether reading has ended because the file could not be read on.
    [[nodiscard]] bool HasReadError() const { return m_reader.error() != QFileDevice::NoError; }

    /// Adds text in the chosen encoding. False when any write since OpenCreate failed.
    bool Write(QStringView text);

    /// Adds bytes as they are. False when any write since OpenCreate failed.
    bool WriteBytes(QByteArrayView bytes);

    /// Length of the file and position in it, in bytes.
    [[nodiscard]] qint64 Length() const;
    [[nodiscard]] qint64 Position() const;
    bool Seek(qint64 position);

    /// Ends reading, or puts the written content in the place of the old file. False when the old file stays.
    bool Close();

private:
    SaveFileFactory m_factory;
    QFile m_reader;
    std::unique_ptr<QSaveFile> m_writer;
    bool m_unicode = false;
    bool m_failed = false;
};
