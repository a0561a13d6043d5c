#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <gtest/gtest.h>

/// Writes a file, with the folders above it, changed at the given time.
inline void WriteFile(const QString& path, const QByteArray& bytes, const QDateTime& changed = {})
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
    ASSERT_TRUE(file.flush());
    if (changed.isValid()) {
        ASSERT_TRUE(file.setFileTime(changed, QFileDevice::FileModificationTime));
    }
}

inline QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}
