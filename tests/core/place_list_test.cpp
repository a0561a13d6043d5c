#include "PlaceFixture.h"
#include "city/core/PlaceList.h"
#include "core_test.h"

using namespace Qt::StringLiterals;

namespace
{
QByteArray ListLine(const QString& name, const CCityList& place)
{
    QByteArray line;
    PlaceListFormat::AppendPlace(line, name, place);
    return line;
}

const QByteArray Example =
    "#PLACE LIST\r\n"
    "@Japan\r\n"
    "@@Kanto\r\n"
    "Sample Harbour                          ,135.2500000E,34.5000000N,     12,+09.00, 0, 0, 3\r\n"
    "#\r\n"
    "\x8D\x60\x8C\xA9\x91\xE4                                  ,139.7500000E,35.6250000N,      0,+09.50, 1, 1, 0\r\n"
    "#\r\n"
    "@Overseas\r\n"
    "Sample Ridge                            ,118.0575000W,33.2500000S,   1742,-08.00, 1, 1,12\r\n"
    "#\r\n";

constexpr char ValueFields[] = ",1E,2N,3,+9,0,0,0\n";

/// A list in a folder of its own, fed with bytes.
class CListInFolder
{
public:
    CListInFolder()
    {
        List.ListFilePath = m_folder.filePath(u"kivpel.obs"_s);
        List.UserListFilePath = m_folder.filePath(u"kivpel_user.obs"_s);
        List.SetProgress([this](int phase, const QVariant& value) {
            const QString report = QString::number(phase) + u':' + value.toString();
            if (Reports.isEmpty() || Reports.last().first != report)
                Reports.append({report, 0});
            ++Reports.last().second;
        });
    }

    void Load(const QByteArray& bytes)
    {
        WriteFile(List.ListFilePath, bytes);
        List.LoadCityList();
    }

    [[nodiscard]] QByteArray Saved()
    {
        return List.RefreshUserObs() ? ReadFile(List.UserListFilePath) : QByteArray("(refused)");
    }

    /// The tree, one item a line: a folder's text, or a place's index and text.
    [[nodiscard]] QString TreeText() const
    {
        return ::TreeText(List.Tree(), [](const CPlaceItem* item) {
            return item->IsFolder() ? item->Text() : QString::number(item->Data()) + u' ' + item->Text();
        });
    }

    /// "report*times" of all reports, equal neighbours counted together.
    [[nodiscard]] QString ReportText() const
    {
        QStringList texts;
        for (const auto& [report, times] : Reports)
            texts += report + u'*' + QString::number(times);
        return texts.join(u' ');
    }

    CPlaceList List;
    QList<std::pair<QString, int>> Reports;

private:
    QTemporaryDir m_folder;
};

QString RecordText(const CCityList& p)
{
    return p.Name + Number::Format("|%g|%g|%g|%g|%d|%d|%d", p.Longitude, p.Latitude, p.Altitude, p.TimeZone,
                                   p.IsAutoAltitude, p.IsUserEdited, p.Kind);
}
} // namespace

TEST(PlaceList, ReadsAndWritesTheSameBytes)
{
    CListInFolder f;
    f.Load(Example);
    EXPECT_EQ(f.TreeText(), u"場所\n Japan\n  Kanto\n   0 Sample Harbour\n  1 港見台\n Overseas\n  2 Sample Ridge\n"_s);
    EXPECT_EQ(RecordText(f.List.Place(0)), u"Sample Harbour|135.25|34.5|12|9|0|0|3"_s);
    EXPECT_EQ(RecordText(f.List.Place(1)), u"港見台|139.75|35.625|0|9.5|1|1|0"_s);
    EXPECT_EQ(RecordText(f.List.Place(2)), u"Sample Ridge|-118.058|-33.25|1742|-8|1|1|12"_s);
    EXPECT_EQ(f.List.Place(1).TagIndex, 1);
    EXPECT_EQ(f.List.Place(2).Item->Text(), u"Sample Ridge"_s);
    EXPECT_EQ(f.Saved(), Example);
    EXPECT_EQ(f.List.GetLocationData(2), u"-118.0575000,-33.2500000,1742,-8.00, 1, 1,12"_s);

    CListInFolder lf;
    QByteArray lines = Example;
    lf.Load(lines.replace("\r\n", "\n"));
    EXPECT_EQ(lf.Saved(), Example);
}

TEST(PlaceList, ShippedListIsReadWholeAndWrittenBack)
{
    CListInFolder f;
    const QByteArray shipped = ReadFile(QStringLiteral(KIV_SOURCE_DATA "kivpel.obs"));
    ASSERT_GT(shipped.size(), 100'000);
    f.Load(shipped);
    EXPECT_GT(f.List.PlaceCount(), 3000);
    EXPECT_TRUE(f.Saved() == shipped) << "the files differ";
}

TEST(PlaceList, BuildsTheTreeOfAnyFile)
{
    const QByteArray v = ValueFields;
    const QByteArray written = ",  1.0000000E, 2.0000000N,      3,+09.00, 0, 0, 0\r\n";
    const auto line = [&written](const QByteArray& name) { return name.leftJustified(40) + written; };
    for (const auto& [file, tree, saved] :
         {std::tuple<QByteArray, QString, QByteArray>{"", u"場所\n"_s, ""},
          {"#a\n#b \r\n", u"場所\n"_s, "#a\r\n#b \r\n"},
          {"p" + v + "@A\nq" + v, u"場所\n A\n  1 q\n0 p\n"_s, "@A\r\n" + line("q") + "#\r\n" + line("p")},
          {"\n#\n#\n@A\n#\n#\n#\n@B\n", u"場所\n A\n B\n"_s, "@A\r\n#\r\n@B\r\n#\r\n"},
          {"@A\n@@@C\np" + v + "#\nq" + v, u"場所\n A\n  C\n   0 p\n  1 q\n"_s,
           "@A\r\n@@C\r\n" + line("p") + "#\r\n" + line("q") + "#\r\n"},
          {"@A\n@@B\n#\n#\n@C\n@@@D\n", u"場所\n A\n  B\n   D\n C\n"_s,
           "@A\r\n@@B\r\n@@@D\r\n#\r\n#\r\n#\r\n@C\r\n#\r\n"},
          {QByteArray(1'000'000, '@') + "deep\np" + v, u"場所\n deep\n  0 p\n"_s, "@deep\r\n" + line("p") + "#\r\n"},
          {" \t\x81\x40@ A \x81\x40\r\n  \t p" + v, u"場所\n  A\n  0 p\n"_s, "@ A\r\n" + line("p") + "#\r\n"},
          {"@\np" + v, u"場所\n \n  0 p\n"_s, "@\r\n" + line("p") + "#\r\n"},
          {"@A\nfew,1E,2N,3,9,0,0\n   \n,,,,,,,\n,,,,,,,0\nq" + v, u"場所\n A\n  0 \n  1 q\n"_s,
           "@A\r\n" + QByteArray(40, ' ') + ",  0.0000000E, 0.0000000N,      0,+00.00, 0, 0, 0\r\n" + line("q") +
               "#\r\n"}}) {
        CListInFolder f;
        f.Load(file);
        EXPECT_EQ(f.TreeText(), tree) << file.left(60).constData();
        EXPECT_EQ(f.Saved(), saved) << file.left(60).constData();
    }
}

TEST(PlaceList, ReadsFieldsLeniently)
{
    // clang-format off
    for (const auto& [line, record] :
         {std::tuple<QByteArray, QString>{"a,139.7500000e,35.5n,12,9,1,0,3", u"a|139.75|35.5|12|9|1|0|3"_s},
         {"a,139.7500000w,35.5s,12.9,-9.5,2,5,-3", u"a|-139.75|-35.5|12|-9.5|0|5|-3"_s},
         {"a,139.75,35.52,12,+9,0,0,0", u"a|139.7|35.5|12|9|0|0|0"_s}, {"a,E,W,,,,,x", u"a|0|0|0|0|0|0|0"_s},
         {"a,W,S, x,1e999, 1 ,nan, 7 ", u"a|-0|-0|0|0|1|0|7"_s},
         {"\x81\x40 a b \x81\x40 , 1 E , 2 N , 3 , +9 , 1 , 1 , 1,rest,,,", u"a b|1|2|3|9|1|1|1"_s},
         {QByteArray("\0z,1E,2N,99999999999,9,0,0,0", 29), QString(QChar(0)) + u"z|1|2|2.14748e+09|9|0|0|0"_s},
         {"\x93\xFA\x96,1E,2N,3,9,0,0,0", u"日|1|2|3|9|0|0|0"_s}, {"\xFF,1E,2N,3,9,0,0,0", u"\uF8F3|1|2|3|9|0|0|0"_s},
         {QByteArray(1'000'000, 'n') + ",1E,2N,3,9,0,0,0", QString(1'000'000, u'n') + u"|1|2|3|9|0|0|0"_s},
         {"a,1E,2N,3,9,0,0", u"kept|0|0|0|0|0|0|0"_s}, {"a,1E,2N,3,9,0,0,", u"kept|0|0|0|0|0|0|0"_s},
         {"", u"kept|0|0|0|0|0|0|0"_s}}) {
        // clang-format on
        CCityList place;
        place.Name = u"kept"_s;
        EXPECT_EQ(PlaceListFormat::ParsePlace(line, place), !record.startsWith(u"kept"_s));
        EXPECT_TRUE(RecordText(place) == record)
            << line.left(60).constData() << RecordText(place).left(60).toStdString();
    }
}

TEST(PlaceList, CutsLongNamesWithoutTouchingTheComma)
{
    for (int ascii = 0; ascii < 3; ++ascii) { // the cut falls before, into and behind a character
        CListInFolder f;
        const QString name = QString(ascii, u'x') + QString(30, u'日');
        f.Load("@A\n" + CodePage932::Encode(name) + ValueFields);
        const QByteArray line = f.Saved().split('\n')[1];
        EXPECT_EQ(line.indexOf(','), 40);
        QString text;
        f.List.GetCityString(f.List.Place(0).Item, text);
        EXPECT_TRUE(text.endsWith(u",  1.0000000E, 2.0000000N,      3,+09.00, 0, 0, 0\r\n"_s)) << text.toStdString();
        CListInFolder again;
        again.Load(ReadFile(f.List.UserListFilePath));
        EXPECT_EQ(again.List.Place(0).Name, name.left(ascii + (40 - ascii) / 2));
        EXPECT_EQ(RecordText(again.List.Place(0)).section(u'|', 1), u"1|2|3|9|0|0|0"_s);
    }
}

TEST(PlaceList, DataStringsCarryARecord)
{
    CListInFolder f;
    for (const auto& [data, record, back] :
         {std::tuple<QString, QString, QString>{u"-118.0575000,-33.2500000,1742,-8.00, 1, 1,12"_s,
                                                u"|-118.058|-33.25|1742|-8|1|1|12"_s,
                                                u"-118.0575000,-33.2500000,1742,-8.00, 1, 1,12"_s},
          {u"1,2,12.9,9.5,7,-1,3"_s, u"|1|2|12.9|9.5|7|-1|3"_s, u"  1.0000000, 2.0000000,13,09.50, 0,-1, 3"_s},
          {u"1,,3,4,5,6,7"_s, u"|1|0|0|0|0|0|0"_s, u"  1.0000000, 0.0000000,0,00.00, 0, 0, 0"_s},
          {u",2,3,4,5,6,7"_s, u"|0|0|0|0|0|0|0"_s, u"  0.0000000, 0.0000000,0,00.00, 0, 0, 0"_s},
          {u"1,2"_s, u"|1|2|0|0|0|0|0"_s, u"  1.0000000, 2.0000000,0,00.00, 0, 0, 0"_s},
          {u"日,nan,inf,1e999,x,9x,1,8,9"_s, u"|0|0|0|0|0|9|1"_s, u"  0.0000000, 0.0000000,0,00.00, 0, 9, 1"_s},
          {u"-0.00000001,0,0.5,-0.5,1,0,0"_s, u"|-1e-08|0|0.5|-0.5|1|0|0"_s,
           u" -0.0000000, 0.0000000,0,-0.50, 1, 0, 0"_s},
          {u""_s, u"|0|0|0|0|0|0|0"_s, u"  0.0000000, 0.0000000,0,00.00, 0, 0, 0"_s}}) {
        f.List.SetLocationData(9999, data);
        EXPECT_EQ(RecordText(f.List.Place(9999)), record) << data.toStdString();
        EXPECT_EQ(f.List.GetLocationData(9999), back) << data.toStdString();
    }
    CCityList place;
    place.Altitude = -12.9;
    place.TimeZone = -0.0;
    place.Longitude = -0.0;
    EXPECT_EQ(ListLine(u"a"_s, place).mid(40), ",  0.0000000E, 0.0000000N,    -12,+00.00, 0, 0, 0\r\n");
    place.Altitude = 1e300;
    EXPECT_EQ(ListLine(u"a"_s, place).split(',')[3], "2147483647");
    for (const int index : {-1, 10000, std::numeric_limits<int>::min()}) {
        EXPECT_THROW((void)f.List.GetLocationData(index), CInvalidArgument);
        EXPECT_THROW(f.List.SetLocationData(index, u"1"_s), CInvalidArgument);
    }
    QString text;
    f.Load("@A\n");
    EXPECT_THROW(f.List.GetCityString(f.List.Tree().Root(), text), CInvalidArgument);
}

TEST(PlaceList, ReportsProgress)
{
    const QString start = u"0:都市データの読み込み中*1"_s;
    const auto repeated = [](const QByteArray& line, int times) { return line.repeated(times); };
    for (const auto& [file, reports] :
         {std::tuple<QByteArray, QString>{"#h\n", start + u" 2:0*1"_s},   // no line to estimate from
          {"\n" + repeated("@a\n", 900), start + u" 2:0*1"_s},            // an empty one
          {repeated("@abcdefgh\n", 80), start + u" 2:0*1"_s},             // below a hundred lines
          {repeated("@abcdefghi\n", 200), start + u" 1:0*100 2:0*1"_s},   // 220 lines expected, two a step
          {repeated("@abcdefghi\n\n", 200), start + u" 1:0*100 2:0*1"_s}, // empty lines do not count
          {"@" + QByteArray(29, 'x') + "\n" + repeated("@ab\n", 1000), start + u" 1:0*132 1:100*869 2:0*1"_s}}) {
        CListInFolder f;
        f.Load(file);
        EXPECT_EQ(f.ReportText(), reports) << file.left(40).constData();
    }
    CListInFolder missing;
    missing.List.LoadCityList();
    EXPECT_EQ(missing.ReportText(), start) << "no end for a missing list";
    EXPECT_EQ(missing.TreeText(), u"場所\n"_s);
}

TEST(PlaceList, ASecondLoadAppendsRecordsAndKeepsOneHeader)
{
    CListInFolder f;
    f.Load(Example);
    (void)f.List.Reload();
    EXPECT_EQ(f.TreeText(), u"場所\n Japan\n  Kanto\n   3 Sample Harbour\n  4 港見台\n Overseas\n  5 Sample Ridge\n"_s);
    EXPECT_EQ(f.List.FolderCount(), 4);
    EXPECT_EQ(f.Saved(), Example);
    f.List.UserListFilePath += u"/x"_s;
    EXPECT_EQ(f.Saved(), "(refused)");
}

TEST(PlaceList, AListCutAnywhereIsReadToItsLastWholeLine)
{
    for (qsizetype cut = 0; cut <= Example.size(); ++cut) {
        CListInFolder f;
        f.Load(Example.first(cut));
        EXPECT_TRUE(f.List.IsComplete()) << cut;
        const QByteArray saved = f.Saved();
        // Whatever the cut leaves of its own line, the lines before it are there unchanged.
        EXPECT_TRUE(saved.startsWith(Example.first(Example.first(cut).lastIndexOf('\n') + 1))) << cut;
    }
}
