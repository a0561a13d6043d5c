#include "OverlayScript.h"
#include "city/core/OverlayReport.h"

using namespace Qt::StringLiterals;
using namespace OverlayScript;

namespace
{
constexpr char16_t Unchanged[] = u"Japan(Kanto(Harbour 港見台)) Overseas(Ridge)";

QString Shown(const CPlaceDocument& document)
{
    return Outline(document.Tree().Root()->FirstChild());
}
} // namespace

TEST(PlaceOverlay, RecordsEachKindOfEditAndReplaysIt)
{
    const struct
    {
        const char16_t* Before; ///< the root's elements; null for no file
        const char16_t* Edits;
        const char16_t* After;
        const char16_t* Shown; ///< now and after opening again
    } cases[] = {
        {nullptr, u"rename Japan/Kanto/Harbour Port; add Japan/Kanto/Port New; delete Overseas",
         u"path Japan(path Kanto(update Harbour>Port=H, add New<Port=S)), delete Overseas",
         u"Japan(Kanto(Port New 港見台))"},
        {u"path Japan(path Kanto(update Harbour>Port=H))", u"rename Japan/Kanto/Port Harbour",
         u"path Japan(path Kanto(update Harbour>Harbour=H))", Unchanged},
        // A name whose second byte JSON must escape.
        {nullptr, u"rename Overseas 海外; rename 海外 海外; folder 海外 能登", u"update Overseas>海外(add 能登)",
         u"Japan(Kanto(Harbour 港見台)) 海外(能登 Ridge)"},
        {u"path Japan(path Kanto(add Spot<Harbour=S))", u"value Japan/Kanto/Spot Place 1",
         u"path Japan(path Kanto(add Place<Harbour=\"  1.0000000, 2.0000000,3,09.00, 0, 1, 4\"))",
         u"Japan(Kanto(Harbour Place 港見台)) Overseas(Ridge)"},
        {u"path Japan(path Kanto(add Spot<Harbour=S))", u"delete Japan/Kanto/Spot", u"path Japan(path Kanto())",
         Unchanged},
        {u"path Japan(path Kanto(update Harbour>Port=H))", u"delete Overseas/Ridge; delete Japan/Kanto/Port",
         u"path Japan(path Kanto(delete Harbour>Port=H)), path Overseas(delete Ridge)",
         u"Japan(Kanto(港見台)) Overseas"},
        {nullptr, u"move Japan/Kanto/Harbour Overseas/Ridge",
         u"path Japan(path Kanto(delete Harbour)), "
         u"path Overseas(add Harbour<Ridge=\"135.2500000,34.5000000,12,09.00, 0, 0, 3\")",
         u"Japan(Kanto(港見台)) Overseas(Ridge Harbour)"},
        {nullptr, u"move Overseas .",
         u"delete Overseas, add Overseas(add Ridge=\"-118.0575000,-33.2500000,1742,-8.00, 1, 1,12\")",
         u"Overseas(Ridge) Japan(Kanto(Harbour 港見台))"},
        // The entry of an item that the shipped list no longer has gives way.
        {u"path Japan(path Kanto(update Gone>Spot=, update Harbour>Harbour=H))", u"add Japan/Kanto/Harbour Spot",
         u"path Japan(path Kanto(add Spot<Harbour=S, update Harbour>Harbour=H))",
         u"Japan(Kanto(Harbour Spot 港見台)) Overseas(Ridge)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(QString::fromUtf16(c.Edits).toStdString());
        CPlacesInFolder f;
        f.Put(SmallList);
        if (c.Before)
            f.PutOverlay(Document(QString::fromUtf16(c.Before)));
        f.Open();
        Edit(f, QString::fromUtf16(c.Edits));
        EXPECT_EQ(Shown(f.Document()), QString::fromUtf16(c.Shown));
        const QString tree = TreeText(f.Document());
        const QByteArray after = Document(QString::fromUtf16(c.After));
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.OverlayBytes().toStdString(), after.toStdString());
        EXPECT_EQ(TreeText(f.Open()), tree);
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.OverlayBytes(), after) << "saved again without an edit";
    }
}

TEST(PlaceOverlay, ReplaysWhatMatchesAndKeepsTheRest)
{
    const struct
    {
        const char16_t* Elements; ///< in the root
        const char16_t* Shown;
        const char16_t* Saved; ///< null for the same
    } cases[] = {
        {u"delete None, delete Overseas", u"Japan(Kanto(Harbour 港見台))", nullptr},
        {u"delete overseas", Unchanged, nullptr},
        {u"add A<None", u"A Japan(Kanto(Harbour 港見台)) Overseas(Ridge)", nullptr},
        // Unknown types are those of the element before.
        {uR"({"action":"add","next":[],"original_name":"A","type":"?","vertical_offset":""}, add B="1,2,3,4,0,1,5", )"
         uR"({"action":"add","next":[],"original_name":"C","type":"","vertical_offset":""})",
         u"C B A Japan(Kanto(Harbour 港見台)) Overseas(Ridge)", nullptr},
        {uR"({"action":"add","original_name":"A","next":[]})", u"A Japan(Kanto(Harbour 港見台)) Overseas(Ridge)",
         uR"({"action":"add","next":[],"original_name":"A","type":null,"vertical_offset":null})"},
        {uR"({}, 1, "x", [[]], drop Overseas)", Unchanged,
         uR"({"action":null,"original_name":null}, 1, "x", [[]], drop Overseas)"},
        {uR"({"action":"add","next":{},"original_name":12,"type":"node","vertical_offset":true})",
         u"12 Japan(Kanto(Harbour 港見台)) Overseas(Ridge)", nullptr},
        // Values for what is a folder now.
        {u"update Overseas>X=S", u"Japan(Kanto(Harbour 港見台)) X(Ridge)", nullptr},
        {uR"({"action":"path","next":7,"original_name":"Japan"}, {"action":"add","next":{"a":[]},)"
         uR"("original_name":"A","type":"node","vertical_offset":""})",
         u"A Japan(Kanto(Harbour 港見台)) Overseas(Ridge)", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(QString::fromUtf16(c.Elements).toStdString());
        CPlacesInFolder f;
        f.Put(SmallList);
        f.PutOverlay(Document(QString::fromUtf16(c.Elements)));
        EXPECT_EQ(Shown(f.Open()), QString::fromUtf16(c.Shown));
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.OverlayBytes().toStdString(),
                  Document(QString::fromUtf16(c.Saved ? c.Saved : c.Elements)).toStdString());
        // Whatever was there, an edit finds its way.
        f.Document().AddFolder(f.Document().Tree().Root()->LastChild(), nullptr, u"新"_s);
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.Open().Tree().Root()->LastChild()->FirstChild()->Text(), u"新"_s);
    }
}

TEST(PlaceOverlay, EachEditComesBackWhateverEntriesAreThere)
{
    const struct
    {
        const char16_t* Elements;
        const char16_t* Edits;
    } cases[] = {
        // Names change hands; the walks do more of it.
        {u"", u"value x/A T 1; value x/B A 2; value x/C B 3; value x/T C 4"},
        // Entries without a target take no edits.
        {u"path x(update None>P=S)", u"value x/A P 1; value x/P P 2"},
        {u"path None()", u"rename y None; folder None mine"},
        {u"path y(update None>A=S)", u"move x/A y; delete y/A"},
        {u"path y(), path None(delete D)", u"rename y None"},
        {u"path x(update C>C=S, update None>A=S)", u"value x/C None 1"},
        {u"{\"action\":\"path\",\"next\":\"\",\"original_name\":\"None\"}, odd None",
         u"rename y None; folder None mine; rename None Other"},
        {u"path x(path None(delete q)), update y>Abroad",
         u"rename x y; folder y z; rename y/z None; folder y/None mine"},
        {u"{\"action\":\"odd\",\"next\":[{\"action\":\"update\",\"latest_name\":\"D\"}],\"original_name\":\"y\"}",
         u"value y/D P 1"},
        {u"{\"action\":\"odd\",\"next\":[{\"action\":\"delete\"}],\"original_name\":\"y\"}", u"value y/D P 1"},
        // The shipped list took a rename over.
        {u"path x(update Old>A=S), update Abroad>y", u"value x/A P 1; undo; value x/A Q 1; folder y B"},
        // Undone edits leave nothing behind that the next ones meet.
        {u"", u"add y/D X; add y/X Y; delete y/X; delete y; undo; value y/Y Y2 1; undo; undo; value y/Y Y3 1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(QString::fromUtf16(c.Elements).toStdString() + " | " + QString::fromUtf16(c.Edits).toStdString());
        CPlacesInFolder f;
        f.Put("@x\nA,1E,1N,1,9,0,0,0\nB,2E,1N,1,9,0,0,0\nC,3E,1N,1,9,0,0,0\nX,4E,1N,1,9,0,0,0\n#\n"
              "@y\nD,5E,1N,1,9,0,0,0\n#\n");
        f.PutOverlay(Document(QString::fromUtf16(c.Elements)));
        const QByteArray opened = f.Open().Overlay().Bytes();
        Edit(f, QString::fromUtf16(c.Edits));
        const QString tree = TreeText(f.Document());
        while (f.Document().CanUndo())
            f.Document().Undo();
        EXPECT_EQ(f.Document().Overlay().Bytes(), opened);
        while (f.Document().CanRedo())
            f.Document().Redo();
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(TreeText(f.Open()), tree) << f.OverlayBytes().toStdString();
    }
}

TEST(PlaceOverlay, WhatComesToLifeWithAnAdoptedFolderTakesNoEditAway)
{
    const QByteArray cities = "Tokyo,139.75E,35.625N,0,9,0,0,0\nChiba,140E,35N,0,9,0,0,0\n#\n";
    for (const QString& first : {u"delete Kanto/Tokyo"_s, u"value Kanto/Tokyo Old 1"_s}) {
        CPlacesInFolder f;
        f.Put("@Kantou\n" + cities);
        f.Open();
        Edit(f, u"rename Kantou Kanto; "_s + first);
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        f.Put("@Kanto\n" + cities);
        EXPECT_EQ(Shown(f.Open()), u"Kanto(Tokyo Chiba)"_s);
        Edit(f, u"value Kanto/Tokyo Edo 5"_s);
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(Shown(f.Open()), u"Kanto(Edo Chiba)"_s) << f.OverlayBytes().toStdString();
    }
}

TEST(PlaceOverlay, ResetGoesBackToTheShippedListAndCanBeUndone)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.PutOverlay(Document(u"path Japan(path Kanto(delete Harbour))"_s));
    CPlaceDocument& document = f.Open();
    const QString edited = TreeText(document);
    ASSERT_TRUE(document.Reset());
    EXPECT_EQ(document.PlaceCount(), 6) << "numbered on";
    document.Delete(f.At({u"Overseas"_s}));
    EXPECT_EQ(Outline(document.Tree().Root()->FirstChild()), u"Japan(Kanto(Harbour 港見台))"_s);
    document.Undo();
    document.Undo();
    EXPECT_EQ(TreeText(document), edited);
    document.Redo();
    ASSERT_TRUE(document.SaveCityList().IsAll());
    EXPECT_EQ(f.OverlayBytes(), "[]");
    EXPECT_EQ(ReadFile(f.Paths().UserListFilePath), SmallList);

    QFile::remove(f.Paths().ListFilePath);
    document.Redo();
    const QString kept = TreeText(document);
    EXPECT_FALSE(document.Reset());
    EXPECT_EQ(TreeText(document), kept);

    // A list that cannot follow itself in the table takes it over.
    QByteArray large = "@f\n";
    for (int i = 0; i < 6000; ++i)
        large += "p" + QByteArray::number(i) + ",1E,2N,3,+9,0,0,0\n";
    f.Put(large);
    f.Open();
    ASSERT_TRUE(f.Document().Reset());
    EXPECT_EQ(f.Document().PlaceCount(), 6000);
    EXPECT_TRUE(f.Document().SaveCityList().IsAll());
}

TEST(PlaceOverlay, RefusesWholeEditsThatTheTablesOrTheDepthForbid)
{
    QByteArray list = "@f\n";
    for (int i = 0; i < 10000; ++i)
        list += "p" + QByteArray::number(i) + ",1E,2N,3,+9,0,0,0\n";
    for (int level = 2; level < 1200; ++level)
        list += QByteArray(level, '@') + "d\n";
    CPlacesInFolder f;
    f.Put(list);
    CPlaceDocument& document = f.Open();
    CPlaceItem* deep = f.At({u"f"_s});
    while (deep->LastChild())
        deep = deep->LastChild();
    const QString tree = TreeText(document);
    CPlaceItem* folder = f.At({u"f"_s});
    EXPECT_THROW(document.AddPlace(folder, nullptr, u"x"_s, Values(1, 2, 3, 4)), CInvalidArgument);
    EXPECT_THROW(document.AddFolder(deep, nullptr, u"x"_s), CInvalidArgument);
    EXPECT_THROW(document.UpdateFolder(deep, u"x"_s), CInvalidArgument);
    EXPECT_THROW(document.Delete(deep), CInvalidArgument);
    EXPECT_THROW(document.Move(f.At({u"f"_s, u"d"_s}), document.Tree().Root(), nullptr), CInvalidArgument);
    EXPECT_THROW(document.Move(folder, folder->FirstChild(), nullptr), CInvalidArgument) << "into itself";
    EXPECT_THROW(document.Move(folder, nullptr, nullptr), CInvalidArgument);
    EXPECT_THROW(document.Move(folder, document.Tree().Root(), folder), CInvalidArgument);
    EXPECT_EQ(TreeText(document), tree);
    EXPECT_FALSE(document.CanUndo());
    document.AddFolder(folder, nullptr, u"x"_s);
    EXPECT_TRUE(document.SaveCityList().IsAll());
}

TEST(PlaceOverlay, IsToldInWords)
{
    const auto told = [](const QString& elements) {
        return OverlayReport::Lines(OverlayJson::Parse(Document(elements)).Document).join(u'|');
    };
    EXPECT_EQ(
        told(u"path Japan(path Kanto(add Spot<Harbour=S))"_s),
        u"場所 / Japan / Kanto / 「Harbour」の次に地名「Spot」を追加 (東経135.3000度 北緯34.6000度 標高 5m タイムゾーン +9.00 時間)"_s);
    EXPECT_EQ(told(u"add New"_s), u"場所 / 先頭にフォルダ「New」を追加"_s);
    EXPECT_EQ(told(u"update A>B(delete x)"_s), u"場所 / 「A」を変更: 新しい名称「B」|場所 / B / 「x」を削除"_s);
    EXPECT_EQ(told(u"update A>A=\"-0.5,-1,2,-3.5,0,1,0\""_s),
              u"場所 / 「A」を変更 (西経0.5000度 南緯1.0000度 標高 2m タイムゾーン -3.50 時間)"_s);
    EXPECT_EQ(told(u"7, drop x"_s), u"場所 / 読み飛ばされる要素: 7|場所 / 「x」: 不明な操作「drop」"_s);
    EXPECT_EQ(OverlayReport::Lines(OverlayJson::Parse("{}").Document), QStringList());
}
