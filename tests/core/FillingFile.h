#pragma once

#include <QSaveFile>

#include <algorithm>

/// A device that takes only so many bytes, like a disk that fills up.
class CFillingFile : public QSaveFile
{
public:
    CFillingFile(const QString& path, qint64 room) : QSaveFile(path), m_room(room) {}

protected:
    qint64 writeData(const char* data, qint64 length) override
    {
        const qint64 taken = std::min(length, m_room);
        m_room -= taken;
        return taken > 0 || length == 0 ? QSaveFile::writeData(data, taken) : -1;
    }

private:
    qint64 m_room;
};
