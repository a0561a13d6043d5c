#include "host/text/KivFile.h"

#include "host/text/CodePage932.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace
{
/// Makes the disk take what was written. What it cannot promise is no error; what it refuses is, and the device's own
/// flush at the end would not report.
bool IsOnDisk(int handle)
{
    return fsync(handle) == 0 || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}
} // namespace

CKivFile::CKivFile() : CKivFile([](const QString& path) { return std::make_unique<QSaveFile>(path); }) {}

CKivFile::CKivFile(SaveFileFactory factory) : m_factory(std::move(factory)) {}

bool CKivFile::OpenRead(const QString& path)
{
    m_reader.close();
    m_reader.setFileName(path);
    return m_reader.open(QIODevice::ReadOnly);
}

bool CKivFile::OpenCreate(const QString& path)
{
    m_failed = false;
    m_writer = m_factory(path);
    if (m_writer && m_writer->open(QIODevice::WriteOnly))
        return true;
    m_writer.reset();
    return false;
}

void CKivFile::SetUnicode(bool unicode, bool multibyte)
{
    m_unicode = unicode && !multibyte;
}

bool CKivFile::ReadLine(QByteArray& line)
{
    if (!m_reader.isOpen() || m_reader.atEnd())
        return false;
    line = m_reader.readLine();
    if (line.isEmpty())
        return false; // the device failed before its end
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    return true;
}

QByteArray CKivFile::ReadAll()
{
    return m_reader.isOpen() ? m_reader.readAll() : QByteArray();
}

bool CKivFile::Write(QStringView text)
{
    if (m_unicode)
        return WriteBytes(QByteArrayView(reinterpret_cast<const char*>(text.utf16()), text.size() * 2));
    return WriteBytes(CodePage932::Encode(text));
}

bool CKivFile::WriteBytes(QByteArrayView bytes)
{
    if (!m_writer)
        return false;
    if (!m_failed && m_writer->write(bytes.data(), bytes.size()) != bytes.size())
        m_failed = true;
    return !m_failed;
}

qint64 CKivFile::Length() const
{
    return m_writer ? m_writer->size() : m_reader.size();
}

qint64 CKivFile::Position() const
{
    return m_writer ? m_writer->pos() : m_reader.pos();
}

bool CKivFile::Seek(qint64 position)
{
    return m_writer ? m_writer->seek(position) : m_reader.seek(position);
}

bool CKivFile::Close()
{
    if (!m_writer) {
        m_reader.close();
        return true;
    }
    // The device forgets an error of the flush that its own commit makes, and would put a cut file in place.
    if (!m_failed && (!m_writer->flush() || !IsOnDisk(m_writer->handle())))
        m_failed = true;
    if (m_failed)
        m_writer->cancelWriting();
    const bool done = m_writer->commit();
    m_writer.reset();
    return done && !m_failed;
}
