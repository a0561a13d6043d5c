#include "host/dialog/CommandHistory.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Serialised(const CCommandHistory& history)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << history;
    return bytes;
}

struct Reading
{
    QStringList Entries;
    bool IsWhole = false;
};

Reading Read(const QByteArray& bytes)
{
    CCommandHistory history{u"earlier"_s};
    QDataStream stream(bytes);
    stream >> history;
    return {history, stream.status() == QDataStream::Ok};
}
} // namespace

TEST(CommandHistory, KeepsTheCompleteEntriesOfADamagedStream)
{
    const QByteArray whole = Serialised({u"one"_s, u"two"_s});
    const qsizetype entry = (whole.size() - 4) / 2;
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const Reading reading = Read(whole.left(length));
        const QStringList expected = length < 4 + entry ? QStringList() : QStringList{u"one"_s};
        EXPECT_EQ(reading.Entries, expected) << length;
        EXPECT_FALSE(reading.IsWhole) << length;
    }

    QByteArray manyEntries = whole;
    qToBigEndian(0xFFFFFFFFU, manyEntries.data());
    QByteArray longEntry = whole;
    qToBigEndian(0xFFFFFFFEU, longEntry.data() + 4 + entry);
    EXPECT_EQ(Read(manyEntries).Entries, (QStringList{u"one"_s, u"two"_s}));
    EXPECT_FALSE(Read(manyEntries).IsWhole);
    EXPECT_EQ(Read(longEntry).Entries, QStringList{u"one"_s});
    EXPECT_FALSE(Read(longEntry).IsWhole);
}
