#include "tools/LineWriter.h"

#include <QSaveFile>
#include <QtEndian>

#include <cstdio>
#include <stdexcept>

void LineWriter::WriteBytes(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
}

void LineWriter::WriteLines(const QString& path, const std::vector<MapLine>& lines)
{
    QByteArray bytes("KOL1");
    const auto put = [&bytes](quint32 value) {
        char word[4];
        qToLittleEndian(value, word);
        bytes.append(word, 4);
    };
    put(static_cast<quint32>(lines.size()));
    size_t points = 0;
    for (const MapLine& line : lines) {
        put(static_cast<quint32>(line.size()));
        for (const MapPoint& point : line) {
            put(static_cast<quint32>(point.Longitude));
            put(static_cast<quint32>(point.Latitude));
        }
        points += line.size();
    }
    WriteBytes(path, bytes);
    std::printf("%s: %zu lines, %zu points\n", qPrintable(path), lines.size(), points);
}
