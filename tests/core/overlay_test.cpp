#include "PlaceFixture.h"
#include "city/core/OverlayReport.h"

using namespace Qt::StringLiterals;

namespace
{
/// A node object as the file holds it; the text forms of "next" are given whole.
QByteArray Node(const char* action, const QByteArray& name, const QByteArray& next = "[]", const char* type = "node",
                const QByteArray& latest = "", const QByteArray& anchor = "", const QByteArray& data = "")
{
    return "{\"action\":\"" + QByteArray(action) + "\",\"data\":\"" + data + "\",\"latest_name\":\"" + latest +
           "\",\"next\":" + next + ",\"original_name\":\"" + name + "\",\"type\":\"" + type +
           "\",\"vertical_offset\":\"" + anchor + "\"}";
}

const QByteArray Root = CodePage932::Encode(u"場所");

QByteArray InRoot(const QByteArray& nodes)
{
    return '[' + Node("path", Root, '[' + nodes + ']') + ']';
}

QByteArray InKanto(const QByteArray& nodes)
{
    return Node("path", "Japan", '[' + Node("path", "Kanto", '[' + nodes + ']') + ']');
}

constexpr char Spot[] = "135.3000000,34.6000000,5,09.00, 0, 1, 0";

struct EditCase
{
    const char* What;
    QByteArray Before;
    std::function<void(CPlacesInFolder&)> Edit;
    QByteArray After;
    QString Outline; ///< of the root's children, now and after opening again
};

void AddSpot(CPlacesInFolder& f, const QString& name, const QStringList& after)
{
    CPlaceItem* item = f.At(after);
    f.Document().AddPlace(item->Parent(), item, name, Values(135.3, 34.6, 5, 0));
}

std::vector<EditCase> EditCases()
{
    const QByteArray harbour = "135.2500000,34.5000000,12,09.00, 0, 1, 3";
    const QString unchanged = u"Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s;
    const QByteArray renamed = Node("update", "Harbour", "[]", "leaf", "Port", "", harbour);
    const QByteArray revalued = Node("update", "Harbour", "[]", "leaf", "Harbour", "", harbour);
    const QByteArray added = Node("add", "Spot", "[]", "leaf", "", "Harbour", Spot);
    return {
        {"rename, add after it, delete a folder", "",
         [](CPlacesInFolder& f) {
             CCityList values = f.Document().Place(0);
             values.IsUserEdited = 1;
             f.Document().UpdatePlace(f.At({u"Japan"_s, u"Kanto"_s, u"Harbour"_s}), u"Port"_s, values);
             AddSpot(f, u"New Spot"_s, {u"Japan"_s, u"Kanto"_s, u"Port"_s});
             f.Document().Delete(f.At({u"Overseas"_s}));
         },
         InRoot(InKanto(renamed + ',' + Node("add", "New Spot", "[]", "leaf", "", "Port", Spot)) + ',' +
                Node("delete", "Overseas", "\"\"")),
         u"Japan(Kanto(Port New Spot 港見台))"_s},
        {"rename and back", InRoot(InKanto(renamed)),
         [](CPlacesInFolder& f) {
             CPlaceItem* item = f.At({u"Japan"_s, u"Kanto"_s, u"Port"_s});
             f.Document().UpdatePlace(item, u"Harbour"_s, f.Document().Place(item->Data()));
         },
         InRoot(InKanto(revalued)), unchanged},
        {"rename a folder, keep its name once more, then add in it", "",
         [](CPlacesInFolder& f) {
             f.Document().UpdateFolder(f.At({u"Overseas"_s}), u"海外"_s);
             f.Document().UpdateFolder(f.At({u"海外"_s}), u"海外"_s);
             f.Document().AddFolder(f.At({u"海外"_s}), nullptr, u"能登"_s); // a second byte that JSON must escape
         },
         InRoot(Node("update", "Overseas", '[' + Node("add", "\x94\\\\\x93o", "[]") + ']', "node",
                     CodePage932::Encode(u"海外"))),
         u"Japan(Kanto(Harbour 港見台)) 海外(能登 Ridge)"_s},
        {"rename an added place", InRoot(InKanto(added)),
         [](CPlacesInFolder& f) {
             f.Document().UpdatePlace(f.At({u"Japan"_s, u"Kanto"_s, u"Spot"_s}), u"Place"_s, Values(1, 2, 3, 4));
         },
         InRoot(InKanto(Node("add", "Place", "[]", "leaf", "", "Harbour", "  1.0000000, 2.0000000,3,09.00, 0, 1, 4"))),
         u"Japan(Kanto(Harbour Place 港見台)) Overseas(Ridge)"_s},
        {"delete an added place", InRoot(InKanto(added)),
         [](CPlacesInFolder& f) {
             f.Document().Delete(f.At({u"Japan"_s, u"Kanto"_s, u"Spot"_s}));
         },
         InRoot(InKanto("")), unchanged},
        {"delete a shipped place, plain and renamed", InRoot(InKanto(renamed)),
         [](CPlacesInFolder& f) {
             f.Document().Delete(f.At({u"Overseas"_s, u"Ridge"_s}));
             f.Document().Delete(f.At({u"Japan"_s, u"Kanto"_s, u"Port"_s}));
         },
         InRoot(InKanto(Node("delete", "Harbour", "\"\"", "leaf", "Port", "", harbour)) + ',' +
                Node("path", "Overseas", '[' + Node("delete", "Ridge", "\"\"") + ']')),
         u"Japan(Kanto(港見台)) Overseas"_s},
        {"move a place into another folder", "",
         [](CPlacesInFolder& f) {
             f.Document().Move(f.At({u"Japan"_s, u"Kanto"_s, u"Harbour"_s}), f.At({u"Overseas"_s}),
                               f.At({u"Overseas"_s, u"Ridge"_s}));
         },
         InRoot(InKanto(Node("delete", "Harbour", "\"\"")) + ',' +
                Node("path", "Overseas",
                     '[' +
                         Node("add", "Harbour", "[]", "leaf", "", "Ridge", "135.2500000,34.5000000,12,09.00, 0, 0, 3") +
                         ']')),
         u"Japan(Kanto(港見台)) Overseas(Ridge Harbour)"_s},
        {"move a folder within its folder, first", "",
         [](CPlacesInFolder& f) { f.Document().Move(f.At({u"Overseas"_s}), f.At({}), nullptr); },
         InRoot(Node("delete", "Overseas", "\"\"") + ',' +
                Node("add", "Overseas",
                     '[' + Node("add", "Ridge", "[]", "leaf", "", "", "-118.0575000,-33.2500000,1742,-8.00, 1, 1,12") +
                         ']')),
         u"Overseas(Ridge) Japan(Kanto(Harbour 港見台))"_s},
        {"add where an entry of that name matched nothing",
         InRoot(InKanto(Node("update", "Gone", "[]", "leaf", "Spot") + ',' + revalued)),
         [](CPlacesInFolder& f) {
             AddSpot(f, u"Spot"_s, {u"Japan"_s, u"Kanto"_s, u"Harbour"_s});
         },
         InRoot(InKanto(added + ',' + revalued)), u"Japan(Kanto(Harbour Spot 港見台)) Overseas(Ridge)"_s},
        {"edit after an empty document", "[]", [](CPlacesInFolder& f) { f.Document().Delete(f.At({u"Overseas"_s})); },
         InRoot(Node("delete", "Overseas", "\"\"")), u"Japan(Kanto(Harbour 港見台))"_s},
    };
}
} // namespace

TEST(PlaceOverlay, RecordsEachKindOfEditAndReplaysIt)
{
    for (const EditCase& c : EditCases()) {
        SCOPED_TRACE(c.What);
        CPlacesInFolder f;
        f.Put(SmallList);
        if (!c.Before.isEmpty())
            f.PutOverlay(c.Before);
        f.Open();
        c.Edit(f);
        EXPECT_EQ(Outline(f.Document().Tree().Root()->FirstChild()), c.Outline);
        const QString tree = TreeText(f.Document());
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.OverlayBytes().toStdString(), c.After.toStdString());
        EXPECT_EQ(TreeText(f.Open()), tree);
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.OverlayBytes(), c.After) << "saved again without an edit";
    }
}

TEST(PlaceOverlay, ReplaysWhatMatchesAndKeepsTheRest)
{
    const auto leaf = [](const char* action, const char* name, const char* more) {
        return QByteArray("{\"action\":\"") + action + "\",\"original_name\":\"" + name + "\"" + more + "}";
    };
    const struct
    {
        const char* What;
        QByteArray Nodes; ///< in the root
        QString Outline;
        QByteArray Gained; ///< what the saved document then holds, empty: the same
    } cases[] = {
        {"an unknown name, then a known one", Node("delete", "None", "\"\"") + ',' + Node("delete", "Overseas", "\"\""),
         u"Japan(Kanto(Harbour 港見台))"_s, ""},
        {"letter case counts", Node("delete", "overseas", "\"\""), u"Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s,
         ""},
        {"an unknown anchor puts first", Node("add", "A", "[]", "node", "", "None"),
         u"A Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s, ""},
        {"unknown types are those of the element before",
         Node("add", "A", "[]", "?") + ',' + Node("add", "B", "[]", "leaf", "", "", "1,2,3,4,0,1,5") + ',' +
             Node("add", "C", "[]", ""),
         u"C B A Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s, ""},
        {"missing keys become null", leaf("add", "A", ",\"next\":[]"),
         u"A Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s,
         "{\"action\":\"add\",\"next\":[],\"original_name\":\"A\",\"type\":null,\"vertical_offset\":null}"},
        {"no action, no object, unknown action", "{},1,\"x\",null,[[]]," + Node("drop", "Overseas"),
         u"Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s,
         "{\"action\":null,\"original_name\":null},1,\"x\",null,[[]]," + Node("drop", "Overseas")},
        {"numbers as names",
         "{\"action\":\"add\",\"type\":\"node\",\"original_name\":12,\"next\":{},\"vertical_offset\":true}",
         u"12 Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s,
         "{\"action\":\"add\",\"next\":{},\"original_name\":12,\"type\":\"node\",\"vertical_offset\":true}"},
        {"values for what is a folder now", Node("update", "Overseas", "[]", "leaf", "X", "", Spot),
         u"Japan(Kanto(Harbour 港見台)) X(Ridge)"_s, ""},
        {"other forms of next",
         Node("path", "Japan", "7") + ',' + Node("update", "Overseas", "null", "node", "O") + ',' +
             Node("add", "A", "{\"a\":[]}"),
         u"A Japan(Kanto(Harbour 港見台)) O(Ridge)"_s, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.What);
        CPlacesInFolder f;
        f.Put(SmallList);
        f.PutOverlay(InRoot(c.Nodes));
        f.Open();
        EXPECT_EQ(Outline(f.Document().Tree().Root()->FirstChild()), c.Outline);
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.OverlayBytes().toStdString(), InRoot(c.Gained.isEmpty() ? c.Nodes : c.Gained).toStdString());
        // Whatever was there, an edit finds its way.
        f.Document().AddFolder(f.Document().Tree().Root()->LastChild(), nullptr, u"新"_s);
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(f.Open().Tree().Root()->LastChild()->FirstChild()->Text(), u"新"_s);
    }
}

TEST(PlaceOverlay, NamesThatChangeHandsReplayExactly)
{
    // Each step: the child of the folder by name, and its new name ("" deletes; no child adds it first).
    using CSteps = QList<std::pair<QString, QString>>;
    const CSteps cases[] = {
        {{u"X"_s, u"X"_s}, {u"A"_s, u""_s}, {u"X"_s, u"A"_s}},
        {{u"X"_s, u"X"_s}, {u"A"_s, u"Z"_s}, {u"X"_s, u"A"_s}},
        {{u"A"_s, u"T"_s}, {u"B"_s, u"A"_s}, {u"T"_s, u"B"_s}},
        {{u"B"_s, u"T"_s}, {u"A"_s, u"B"_s}, {u"T"_s, u"A"_s}},
        {{u"A"_s, u"T"_s}, {u"B"_s, u"A"_s}, {u"C"_s, u"B"_s}, {u"T"_s, u"C"_s}},
        {{u"X"_s, u"X"_s}, {u"C"_s, u""_s}, {u"X"_s, u"C"_s}, {u"B"_s, u""_s}, {u"C"_s, u"B"_s}},
        {{u"A"_s, u"B2"_s}, {u"A"_s, u"A"_s}, {u"C"_s, u""_s}, {u"B2"_s, u"C"_s}},
    };
    for (const CSteps& steps : cases) {
        CPlacesInFolder f;
        f.Put("@x\n#\n");
        f.Open();
        for (const char16_t* name : {u"C", u"B", u"A"})
            f.Document().AddPlace(f.At({u"x"_s}), nullptr, QString::fromUtf16(name), Values(*name, 0, 0, 0));
        f.Document().SaveCityList();
        f.Put(ReadFile(f.Paths().UserListFilePath)); // now they are shipped
        QFile::remove(f.Paths().OverlayFilePath);
        CPlaceDocument& document = f.Open();
        double longitude = 1;
        for (const auto& [name, newName] : steps) {
            CPlaceItem* item = f.At({u"x"_s, name});
            if (!item)
                document.AddPlace(f.At({u"x"_s}), nullptr, newName, Values(++longitude, 1, 0, 0));
            else if (newName.isEmpty())
                document.Delete(item);
            else
                document.UpdatePlace(item, newName, Values(++longitude, 1, 0, 0));
        }
        const QString tree = TreeText(document);
        ASSERT_TRUE(document.SaveCityList().IsAll());
        const QByteArray saved = f.OverlayBytes();
        EXPECT_EQ(TreeText(f.Open()), tree) << saved.toStdString();
    }
}

TEST(PlaceOverlay, ARenamingThatTheShippedListTakesOverStaysAlive)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    const QByteArray overlay = InRoot(InKanto(Node("update", "Old", "[]", "leaf", "Harbour", "", Spot)) + ',' +
                                      Node("update", "Abroad", '[' + Node("add", "A", "[]") + ']', "node", "Overseas"));
    f.PutOverlay(overlay);
    CPlaceDocument& document = f.Open();
    document.UpdatePlace(f.At({u"Japan"_s, u"Kanto"_s, u"Harbour"_s}), u"Port"_s, Values(1, 2, 3, 4));
    document.Undo();
    document.UpdatePlace(f.At({u"Japan"_s, u"Kanto"_s, u"Harbour"_s}), u"Haven"_s, Values(1, 2, 3, 4));
    document.AddFolder(f.At({u"Overseas"_s}), nullptr, u"B"_s);
    ASSERT_TRUE(document.SaveCityList().IsAll());
    EXPECT_EQ(Outline(f.Open().Tree().Root()->FirstChild()), u"Japan(Kanto(Haven 港見台)) Overseas(B A Ridge)"_s);
}

TEST(PlaceOverlay, WhatComesToLifeWithAnAdoptedFolderTakesNoEditAway)
{
    const QByteArray city =
        "Tokyo                                   ,139.7500000E,35.6250000N,      0,+09.00, 0, 0, 0\r\n";
    for (const bool isDeleted : {true, false}) {
        CPlacesInFolder f;
        f.Put("@Kantou\r\n" + city + QByteArray(city).replace("Tokyo", "Chiba") + "#\r\n");
        f.Open();
        f.Document().UpdateFolder(f.At({u"Kantou"_s}), u"Kanto"_s);
        if (isDeleted)
            f.Document().Delete(f.At({u"Kanto"_s, u"Tokyo"_s}));
        else
            f.Document().UpdatePlace(f.At({u"Kanto"_s, u"Tokyo"_s}), u"Old"_s, Values(1, 2, 3, 4));
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        f.Put("@Kanto\r\n" + city + QByteArray(city).replace("Tokyo", "Chiba") + "#\r\n");
        EXPECT_EQ(Outline(f.Open().Tree().Root()->FirstChild()), u"Kanto(Tokyo Chiba)"_s);
        f.Document().UpdatePlace(f.At({u"Kanto"_s, u"Tokyo"_s}), u"Edo"_s, Values(5, 6, 7, 8));
        ASSERT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_EQ(Outline(f.Open().Tree().Root()->FirstChild()), u"Kanto(Edo Chiba)"_s)
            << f.OverlayBytes().toStdString();
    }
}

TEST(PlaceOverlay, EntriesWithoutATargetTakeNoEdits)
{
    const QStringList harbour{u"Japan"_s, u"Kanto"_s, u"Harbour"_s};
    const QStringList peak{u"Japan"_s, u"Kanto"_s, u"Peak"_s};
    const QStringList ridge{u"Overseas"_s, u"Ridge"_s};
    const auto update = [](CPlacesInFolder& f, const QStringList& path, const QString& name, double longitude) {
        f.Document().UpdatePlace(f.At(path), name, Values(longitude, 2, 3, 4));
    };
    const struct
    {
        const char* What;
        QByteArray Nodes;
        std::function<void(CPlacesInFolder&)> Edit;
    } cases[] = {
        {"a place gets the name of a renaming", InKanto(Node("update", "None", "[]", "leaf", "Peak", "", Spot)),
         [&](CPlacesInFolder& f) {
             update(f, harbour, u"Peak"_s, 1);
             update(f, peak, u"Peak"_s, 2);
         }},
        {"a folder gets the name of a path, and something below it", Node("path", "None", "[]"),
         [](CPlacesInFolder& f) {
             f.Document().UpdateFolder(f.At({u"Overseas"_s}), u"None"_s);
             f.Document().AddFolder(f.At({u"None"_s}), nullptr, u"mine"_s);
         }},
        {"a place is moved to the name and deleted",
         Node("path", "Overseas", '[' + Node("update", "None", "[]", "leaf", "Harbour", "", Spot) + ']'),
         [&](CPlacesInFolder& f) {
             f.Document().Move(f.At(harbour), f.At({u"Overseas"_s}), nullptr);
             f.Document().Delete(f.At({u"Overseas"_s, u"Harbour"_s}));
         }},
        {"a renamed folder meets no path behind it",
         Node("path", "Overseas", "[]") + ',' + Node("path", "None", '[' + Node("delete", "Ridge", "\"\"") + ']'),
         [](CPlacesInFolder& f) { f.Document().UpdateFolder(f.At({u"Overseas"_s}), u"None"_s); }},
        {"a renamed place meets no renaming behind it to a name further up",
         InKanto(Node("update", "\x8D\x60\x8C\xA9\x91\xE4", "[]", "leaf", "\x8D\x60\x8C\xA9\x91\xE4", "", Spot) + ',' +
                 Node("update", "None", "[]", "leaf", "Harbour", "", Spot)),
         [&](CPlacesInFolder& f) {
             update(f, {u"Japan"_s, u"Kanto"_s, u"港見台"_s}, u"None"_s, 1);
         }},
        {"a folder gets the name of what no replay follows", Node("path", "None", "\"\"") + ',' + Node("odd", "None"),
         [](CPlacesInFolder& f) {
             f.Document().UpdateFolder(f.At({u"Overseas"_s}), u"None"_s);
             f.Document().AddFolder(f.At({u"None"_s}), nullptr, u"mine"_s);
             f.Document().UpdateFolder(f.At({u"None"_s}), u"Other"_s);
         }},
        {"what met nothing below a renaming that goes to the end",
         Node("path", "Japan", '[' + Node("path", "None", '[' + Node("delete", "x", "\"\"") + ']') + ']') + ',' +
             Node("update", "Overseas", "[]", "node", "Abroad"),
         [](CPlacesInFolder& f) {
             f.Document().UpdateFolder(f.At({u"Japan"_s}), u"Overseas"_s);
             f.Document().UpdateFolder(f.At({u"Overseas"_s, u"Kanto"_s}), u"None"_s);
             f.Document().AddFolder(f.At({u"Overseas"_s, u"None"_s}), nullptr, u"mine"_s);
         }},
        {"an addition finds its neighbour", InKanto(Node("update", "None", "[]", "leaf", "Y", "", Spot)),
         [&](CPlacesInFolder& f) {
             AddSpot(f, u"X"_s, harbour);
             AddSpot(f, u"Y"_s, {u"Japan"_s, u"Kanto"_s, u"X"_s});
         }},
        {"a renaming that looks for no name", Node("odd", "Overseas", R"([{"action":"update","latest_name":"Ridge"}])"),
         [&](CPlacesInFolder& f) { update(f, ridge, u"Peak"_s, 1); }},
        {"a deletion that looks for no name", Node("odd", "Overseas", R"([{"action":"delete"}])"),
         [&](CPlacesInFolder& f) { update(f, ridge, u"Peak"_s, 1); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.What);
        CPlacesInFolder f;
        f.Put(SmallList);
        f.PutOverlay(InRoot(c.Nodes));
        const QByteArray opened = f.Open().Overlay().Bytes();
        c.Edit(f);
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

TEST(PlaceOverlay, EditsAfterAnUndoMeetTheirOwnEntries)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    CPlaceDocument& document = f.Open();
    AddSpot(f, u"X"_s, {u"Overseas"_s, u"Ridge"_s});
    AddSpot(f, u"Y"_s, {u"Overseas"_s, u"X"_s});
    document.Delete(f.At({u"Overseas"_s, u"X"_s}));
    document.Delete(f.At({u"Overseas"_s}));
    document.Undo();
    document.UpdatePlace(f.At({u"Overseas"_s, u"Y"_s}), u"Y2"_s, Values(1, 2, 3, 4));
    document.Undo();
    document.Undo();
    document.UpdatePlace(f.At({u"Overseas"_s, u"Y"_s}), u"Y3"_s, Values(1, 2, 3, 4));
    ASSERT_TRUE(document.SaveCityList().IsAll());
    EXPECT_EQ(Outline(f.Open().Tree().Root()->FirstChild()), u"Japan(Kanto(Harbour 港見台)) Overseas(Ridge X Y3)"_s);
}

TEST(PlaceOverlay, ARenamingThatMetItsItemIsNoOthers)
{
    CPlacesInFolder f;
    f.Put("@X\n#\n@Z\n#\n");
    f.PutOverlay(InRoot(Node("update", "X", '[' + Node("add", "Mine") + ']', "node", "Z")));
    CPlaceDocument& document = f.Open();
    document.AddFolder(f.At({})->LastChild(), nullptr, u"New"_s); // in the second Z: the entries mean the first
    ASSERT_TRUE(document.SaveCityList().IsAll());
    EXPECT_EQ(Outline(f.Open().Tree().Root()->FirstChild()), u"Z(New Mine) Z"_s);
}

TEST(PlaceOverlay, NamesClashAmongSiblingsOnly)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    const CPlaceDocument& document = f.Open();
    const CPlaceItem* kanto = f.At({u"Japan"_s, u"Kanto"_s});
    const struct
    {
        const CPlaceItem* Parent;
        QString NewName;
        QString OldName;
        bool IsDuplicate;
    } cases[] = {
        {nullptr, u"x"_s, u""_s, true},           {kanto, u"Harbour"_s, u"Harbour"_s, true},
        {kanto, u"港見台"_s, u""_s, true},        {kanto, u"港見台"_s, u"港見台"_s, false},
        {kanto, u"harbour"_s, u""_s, false},      {kanto, u"Ridge"_s, u""_s, false},
        {kanto, u"Harbour"_s, u"港見台"_s, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(document.IsDuplicateItemName(c.Parent, c.NewName, c.OldName), c.IsDuplicate)
            << c.NewName.toStdString() << " for " << c.OldName.toStdString();
}

TEST(PlaceOverlay, ResetGoesBackToTheShippedListAndCanBeUndone)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.PutOverlay(InRoot(InKanto(Node("delete", "Harbour", "\"\""))));
    CPlaceDocument& document = f.Open();
    const QString edited = TreeText(document);
    ASSERT_TRUE(document.Reset());
    EXPECT_EQ(document.PlaceCount(), 6) << "numbered on";
    document.Delete(f.At({u"Overseas"_s}));
    const QString after = TreeText(document);
    EXPECT_EQ(Outline(document.Tree().Root()->FirstChild()), u"Japan(Kanto(Harbour 港見台))"_s);
    document.Undo();
    document.Undo();
    EXPECT_EQ(TreeText(document), edited);
    document.Redo();
    document.Redo();
    EXPECT_EQ(TreeText(document), after);
    document.Undo();
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

    // Additions that the table has no room for: the documents stays, the user list is not written from it.
    const QByteArray overlay = InRoot(Node("add", "Spot", "[]", "leaf", "", "", Spot));
    f.PutOverlay(overlay);
    EXPECT_THROW(f.Open(), CInvalidArgument);
    const CPlaceDocument::CSaved saved = f.Document().SaveCityList();
    EXPECT_FALSE(saved.UserList);
    EXPECT_TRUE(saved.Overlay);
    EXPECT_EQ(f.OverlayBytes(), overlay);
}

TEST(PlaceOverlay, IsToldInWords)
{
    const auto told = [](const QByteArray& nodes) {
        return OverlayReport::Lines(OverlayJson::Parse(InRoot(nodes)).Document).join(u'|');
    };
    EXPECT_EQ(
        told(InKanto(Node("add", "Spot", "[]", "leaf", "", "Harbour", Spot))),
        u"場所 / Japan / Kanto / 「Harbour」の次に地名「Spot」を追加 (東経135.3000度 北緯34.6000度 標高 5m タイムゾーン +9.00 時間)"_s);
    EXPECT_EQ(told(Node("add", "New", "[]")), u"場所 / 先頭にフォルダ「New」を追加"_s);
    EXPECT_EQ(told(Node("update", "A", '[' + Node("delete", "x", "\"\"") + ']', "node", "B")),
              u"場所 / 「A」を変更: 新しい名称「B」|場所 / B / 「x」を削除"_s);
    EXPECT_EQ(told(Node("update", "A", "[]", "leaf", "A", "", "-0.5,-1,2,-3.5,0,1,0")),
              u"場所 / 「A」を変更 (西経0.5000度 南緯1.0000度 標高 2m タイムゾーン -3.50 時間)"_s);
    EXPECT_EQ(told("7," + Node("drop", "x")), u"場所 / 読み飛ばされる要素: 7|場所 / 「x」: 不明な操作「drop」"_s);
    EXPECT_EQ(OverlayReport::Lines(OverlayJson::Parse("{}").Document), QStringList());
}
