#include "tools/ListChecker.h"
#include "tools/ListWriter.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{
/// A right list of one place in 日本 / 東京都, as the writer writes it.
QByteArray SoundList()
{
    CListWriter writer;
    writer.Comment(u" 地名の一覧"_s);
    writer.OpenFolder(u"日本"_s);
    writer.OpenFolder(u"東京都"_s);
    writer.Place({.Name = u"三鷹市"_s,
                  .Longitude = 139.5595,
                  .Latitude = 35.6836,
                  .Altitude = 60,
                  .TimeZone = 9.0,
                  .IsAutoAltitude = true,
                  .Kind = 1});
    writer.CloseFolder();
    writer.CloseFolder();
    return writer.Bytes();
}

QString FaultsOf(const QByteArray& bytes)
{
    CListChecker checker(QStringLiteral(TABLES_FOLDER));
    QStringList reasons;
    for (const ListFault& fault : checker.Check(bytes)) {
        reasons += u"%1: %2"_s.arg(fault.Line).arg(fault.Reason);
    }
    return reasons.join(u'\n');
}
} // namespace

TEST(ListChecker, PassesWhatTheWriterWrites)
{
    EXPECT_EQ(FaultsOf(SoundList()), QString());
}

TEST(ListChecker, FindsEachFault)
{
    struct Case
    {
        QByteArray Before;
        QByteArray After;
        const char* Reason;
    };
    const QByteArray twice = SoundList().split('\n').at(3) + '\n';
    const Case cases[] = {
        {",139.5595000E", ",139.559500E", "4: the fields after the name are not as the format prints them"},
        {",139.5595000E", ", 39.5595000E", "4: lies outside 東京都"},
        {",35.6836000N", ",35.6836000S", "4: lies outside 日本"},
        {",139.5595000E", ",239.5595000E", "4: longitude or latitude out of range"},
        {"     60,", "   9600,", "4: no such height on the Earth"},
        {"+09.00", "+02.00", "4: time zone 7.3 hours from the longitude"},
        {"+09.00", "+09.10", "4: no such time zone"},
        {" 1, 0, 1\r", " 1, 0, 8\r", "4: unknown kind"},
        {" 1, 0, 1\r", " 1, 1, 1\r", "4: a shipped place is not edited by the user"},
        {" 1, 0, 1\r", " 1, 0\r", "4: the line is no place"},
        {" 1, 0, 1\r\n", " 1, 0, 1\n", "4: the line does not end in CR LF"},
        {" 1, 0, 1\r\n", " 1, 0, 1\r\n\r\n", "5: empty line"},
        {" 1, 0, 1\r\n", " 1, 0, 1\r\n" + twice, "5: the folder has the name twice: 三鷹市"},
        {"#\r\n#\r\n", "#\r\n", "5: 1 folders are left open"},
        {"#\r\n#\r\n", "#\r\n#\r\n#\r\n", "7: closes a folder that is not open"},
        {"@@", "@@@", "3: folder of level 3 inside level 1"},
        {"\x8e\x73  ", "\x8e   ", "4: the name is not whole in the code page"},
    };
    for (const Case& broken : cases) {
        QByteArray bytes = SoundList();
        ASSERT_TRUE(bytes.contains(broken.Before)) << broken.Before.constData();
        bytes.replace(broken.Before, broken.After);
        EXPECT_TRUE(FaultsOf(bytes).contains(QString::fromUtf8(broken.Reason)))
            << broken.Reason << " not among: " << FaultsOf(bytes).toStdString();
    }
}

TEST(ListWriter, TakesOnlyNamesThatSurvive)
{
    EXPECT_TRUE(CListWriter::IsName(QString(20, u'市')));
    for (const QString& name : {QString(21, u'市'), u"@市"_s, u"#市"_s, u"市,町"_s, u" 市"_s, u"Ōsaka"_s, QString()}) {
        EXPECT_FALSE(CListWriter::IsName(name)) << name.toStdString();
    }
}
