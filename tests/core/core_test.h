#pragma once

#include <QDateTime>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>
#include <limits>
#include <ostream>

inline constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinity = std::numeric_limits<double>::infinity();

/// Lets a failed comparison show the text.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

/// Writes a file, changed at the given time.
inline void WriteFile(const QString& path, const QByteArray& bytes, const QDateTime& changed = {})
{
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
