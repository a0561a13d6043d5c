#include "FillingFile.h"
#include "core_test.h"
#include "host/text/KivFile.h"

#include <clocale>
#include <csignal>
#include <random>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace
{
/// Codes that Windows decodes but encodes to another code of the same character.
bool IsDuplicate(unsigned lead, unsigned trail)
{
    if (lead == 0x87)
        return (trail >= 0x90 && trail <= 0x92) || (trail >= 0x95 && trail <= 0x97) || (trail >= 0x9A && trail <= 0x9C);
    return lead == 0xED || lead == 0xEE ||
           (lead == 0xFA && ((trail >= 0x4A && trail <= 0x54) || (trail >= 0x58 && trail <= 0x5B)));
}
} // namespace

TEST(CodePage932, UsesTheWindowsTable)
{
    const std::pair<const char*, QString> both[] = {
        {"\x81\x60", u"～"_s}, {"\x81\x7C", u"－"_s},     {"\x81\x5C", u"―"_s},           {"\x81\x61", u"∥"_s},
        {"\\~", u"\\~"_s},     {"\xB6\xDE", u"ｶﾞ"_s},     {"\x87\x40\x87\x8A", u"①㈱"_s}, {"\xFB\xFC", u"髙"_s},
        {"\xFA\xB1", u"﨑"_s}, {"\xF0\x40", u"\uE000"_s}, {"\x93\xFA\x96{", u"日本"_s}};
    for (const auto& [bytes, text] : both) {
        EXPECT_EQ(CodePage932::Decode(bytes), text) << bytes;
        EXPECT_EQ(CodePage932::Encode(text), bytes) << bytes;
        EXPECT_TRUE(CodePage932::IsRepresentable(text)) << bytes;
    }
    const std::pair<const char*, QString> foreign[] = {
        {"?a", u"éa"_s}, {"?", u"😀"_s}, {"\x82\xA0?+", u"あ\xD800+"_s}, {"\x82\xA0?", u"あ\xD83D"_s}};
    for (const auto& [bytes, text] : foreign) {
        EXPECT_EQ(CodePage932::Encode(text), bytes);
        EXPECT_FALSE(CodePage932::IsRepresentable(text)) << bytes;
    }
    EXPECT_TRUE(CodePage932::IsRepresentable(u""));
    EXPECT_EQ(CodePage932::Decode("a\x81"), u"a\uFFFD"_s);
    EXPECT_EQ(CodePage932::Decode("\x81,b"), u"\uFFFD,b"_s) << "a lone lead byte takes no neighbour with it";
    EXPECT_EQ(CodePage932::CompletePrefix("\x82\xA0\x82"), QByteArrayView("\x82\xA0"));
    EXPECT_EQ(CodePage932::CompletePrefix("\x82\x82"), QByteArrayView("\x82\x82"));
    EXPECT_EQ(CodePage932::CompletePrefix("\xB6"), QByteArrayView("\xB6"));
}

TEST(CodePage932, EverySequenceSurvives)
{
    for (unsigned code = 0; code <= 0xFFFF; ++code) {
        const unsigned lead = code >> 8;
        QByteArray bytes(1, static_cast<char>(code & 0xFF));
        bytes.prepend(lead == 0 ? "" : QByteArray(1, static_cast<char>(lead)));
        const QString text = CodePage932::Decode(bytes);
        if (text.contains(QChar::ReplacementCharacter))
            continue;
        EXPECT_EQ(CodePage932::Encode(text) == bytes, !IsDuplicate(lead, code & 0xFF)) << std::hex << code;
        EXPECT_EQ(CodePage932::Decode(CodePage932::Encode(text)), text) << std::hex << code;
    }
    QString mixed;
    QByteArray expected;
    for (int i = 0; i < 20000; ++i) { // beyond any buffer of the converter
        mixed += i % 3 == 0 ? u"日本"_s : i % 3 == 1 ? u"😀"_s : u"x"_s;
        expected += i % 3 == 0 ? "\x93\xFA\x96{" : i % 3 == 1 ? "?" : "x";
    }
    EXPECT_EQ(CodePage932::Encode(mixed), expected);
}

TEST(Number, ReadsAndWritesLikeTheCLibrary)
{
    // A text, the number at its head and the whole number at its head.
    const QStringList numbers =
        u"12abc>12>12|+5>5>5| \t\r\n-5.5 6>-5.5>-5|1e9>1e9>1|1.5e+3x>1500>1|2e>2>2|0x10>0>0|1,5>1>1|-0>0>0|"
        u"1-2>1>1|007>7>7|99999999999>99999999999>2147483647|-99999999999>-99999999999>-2147483648"_s.split(u'|');
    const QStringList others = u"|   |-|.|+-5|- 5|inf|-inf|nan|１２|\u0661|e5"_s.split(u'|');
    const QByteArray before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "de_DE.UTF-8", "fr_FR.UTF-8", "ja_JP.UTF-8"}) { // those missing change nothing
        std::setlocale(LC_ALL, locale);
        for (const QString& row : numbers) {
            const QString text = row.section(u'>', 0, 0);
            const double real = row.section(u'>', 1, 1).toDouble();
            const int whole = row.section(u'>', 2).toInt();
            const QByteArray bytes = text.toLatin1();
            EXPECT_EQ(Number::FindLeadingDouble(text), real) << row.toStdString();
            EXPECT_EQ(Number::LeadingInt(QStringView(text)), whole) << row.toStdString();
            EXPECT_EQ(Number::LeadingDouble(QByteArrayView(bytes)), real) << row.toStdString();
            EXPECT_EQ(Number::FindLeadingInt(QByteArrayView(bytes)), whole) << row.toStdString();
        }
        for (const QString& text : others) {
            EXPECT_FALSE(Number::FindLeadingDouble(text)) << text.toStdString();
            EXPECT_EQ(Number::LeadingDouble(QStringView(text)), 0.0) << text.toStdString();
            EXPECT_FALSE(Number::FindLeadingInt(QByteArrayView(CodePage932::Encode(text)))) << text.toStdString();
        }
        EXPECT_EQ(Number::LeadingDouble(QStringView(u".5")), 0.5);
        EXPECT_FALSE(Number::FindLeadingDouble(QStringView(u"1e400")));
        EXPECT_EQ(Number::LeadingDouble(QString(1'000'000, u'1')), 0.0) << "more digits than a double holds";
        EXPECT_EQ(Number::Format("%.0f %.0f %.0f %.1f %.2f", 0.5, 1.5, 2.5, 0.25, 1.005), u"0 2 2 0.2 1.00"_s);
        EXPECT_EQ(Number::Format("%.1f %s %02d", -0.0, "秒", 5), u"-0.0 秒 05"_s);
        EXPECT_EQ(Number::Format("%f", 1e300).size(), 308);
    }
    std::setlocale(LC_ALL, before);
}

TEST(Number, AppendsLikePrintf)
{
    std::mt19937_64 random(3);
    for (int i = 0; i < 20000; ++i) {
        const double value = static_cast<double>(random() % 360'000'000'000) / (i % 2 ? 1e9 : 1e3 * 512);
        QByteArray bytes;
        Number::AppendFixed(bytes, value, 7, 11);
        Number::AppendFixed(bytes, value, 2, 5, '0');
        Number::AppendInt(bytes, static_cast<int>(value) - 180, 7);
        ASSERT_EQ(QString::fromLatin1(bytes),
                  Number::Format("%11.7f%05.2f%7d", value, value, static_cast<int>(value) - 180));
    }
    QByteArray bytes;
    Number::AppendFixed(bytes, -std::numeric_limits<double>::max(), 7, 11);
    EXPECT_EQ(bytes.size(), 318);
}

TEST(KivFile, ReadsLinesOfAnyEnding)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"lines.txt"_s);
    const QByteArray huge(1'000'000, 'x');
    WriteFile(path, "a\r\nb\n\r\n\n" + huge + "\n" + QByteArray("z\0\r", 3));
    CKivFile file;
    ASSERT_TRUE(file.OpenRead(path));
    QByteArray line;
    QByteArrayList lines;
    while (file.ReadLine(line))
        lines += line;
    EXPECT_EQ(lines, (QByteArrayList{"a", "b", "", "", huge, QByteArray("z\0", 2)}));
    EXPECT_TRUE(file.Seek(3));
    EXPECT_TRUE(file.ReadLine(line));
    EXPECT_EQ(line, "b");
    EXPECT_FALSE(file.OpenRead(folder.filePath(u"missing"_s)));
    EXPECT_FALSE(file.ReadLine(line));
    EXPECT_FALSE(file.OpenRead(folder.path())) << "a folder is no file";
}

TEST(KivFile, ReplacesWholeOrNotAtAll)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"saved.txt"_s);
    const QByteArray whole = "#head\r\n\x93\xFA\x96{\r\nend";
    for (qint64 room = 0; room <= whole.size(); ++room) {
        WriteFile(path, "old");
        CKivFile file([room](const QString& name) { return std::make_unique<CFillingFile>(name, room); });
        ASSERT_TRUE(file.OpenCreate(path));
        file.SetUnicode(false, true);
        file.WriteBytes("#head\r\n");
        file.Write(u"日本\r\n");
        const bool isWritten = file.Write(u"end");
        EXPECT_EQ(isWritten, room == whole.size()) << room;
        EXPECT_EQ(file.Close(), room == whole.size()) << room;
        EXPECT_EQ(ReadFile(path), room == whole.size() ? whole : "old") << room;
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "nothing is left beside it";
    }
    {
        CKivFile abandoned;
        ASSERT_TRUE(abandoned.OpenCreate(path));
        abandoned.Write(u"half");
    }
    EXPECT_EQ(ReadFile(path), whole);
    for (const QString& bad : {folder.filePath(u"none/x"_s), folder.path(), path + u"/x"_s, u"/proc/x"_s}) {
        CKivFile file;
        EXPECT_FALSE(file.OpenCreate(bad)) << bad.toStdString();
        EXPECT_FALSE(file.Write(u"x"));
    }
}

TEST(KivFile, KeepsTheOldFileWhenTheDiskRefusesAtTheEnd)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"saved.txt"_s);
    WriteFile(path, "old");
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{100, limit.rlim_max};
    CKivFile file;
    ASSERT_TRUE(file.OpenCreate(path));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    file.WriteBytes(QByteArray(1000, 'n')); // held in memory until the file is closed
    const bool isClosed = file.Close();
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, previous);
    EXPECT_FALSE(isClosed);
    EXPECT_EQ(ReadFile(path), "old");
}
