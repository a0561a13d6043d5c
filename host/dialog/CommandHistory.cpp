#include "host/dialog/CommandHistory.h"

#include <QDataStream>

QDataStream& operator<<(QDataStream& stream, const CCommandHistory& history)
{
    stream << static_cast<quint32>(history.size());
    for (const QString& entry : history)
        stream << entry;
    return stream;
}

QDataStream& operator>>(QDataStream& stream, CCommandHistory& history)
{
    history.clear();
    quint32 count = 0;
    stream >> count;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        QString entry;
        stream >> entry;
        if (stream.status() == QDataStream::Ok)
            history.append(entry);
    }
    return stream;
}
