// The search window: what it sends to the map, lists, selects and focuses, and how it survives a map that misbehaves.

#include "host/system/CommonFile.h"
#include "tests/dialog/MappleFixture.h"

#include <QHeaderView>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace MappleFindId;
namespace RoadMap = ControlNumber::RoadMap;

namespace
{
constexpr auto Information = IPrompts::Icon::Information;
constexpr int Address = RoadMap::EventAddressKeyEnd;
constexpr int LandMark = RoadMap::EventLandMarkEnd;

class MappleFindTest : public CMappleFixture
{
protected:
    CKivEdit& Edit() { return *FindItem<CKivEdit>(EditSearchChar); }
    CKivListCtrl& List() { return *FindItem<CKivListCtrl>(ListResult); }

    // Types a text and starts the search, which the map accepts.
    void Start(const QString& text, bool landMark = false)
    {
        Map.Results[RoadMap::Search] = true;
        Click(FindItem(landMark ? RadioLandMark : RadioAddressKey));
        Edit().setFocus();
        Edit().setText(text);
        Key(Qt::Key_Return);
    }
    void Search(const QStringList& results, bool landMark = false)
    {
        Start(u"x"_s, landMark);
        GiveResults(results);
        Raise(landMark ? LandMark : Address, {0});
        Transcript.Take();
    }
    // Headings with widths, then the rows.
    std::string ListText()
    {
        const QAbstractItemModel& model = *List().model();
        QStringList lines{QString()};
        for (int column = 0; column < model.columnCount(); ++column) {
            lines[0] += (column ? u"|"_s : QString()) + model.headerData(column, Qt::Horizontal).toString();
        }
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells += model.index(row, column).data().toString();
            lines += cells.join(u'|');
        }
        return lines.join(u'\n').toStdString();
    }
    // The numbers of the disabled controls.
    std::vector<int> Disabled()
    {
        std::vector<int> ids;
        for (const int id : {LabelSearchChar, EditSearchChar, GroupRule, RadioAddressKey, RadioLandMark, ListResult,
                             ButtonSearch, ButtonMoveMap, ButtonSetObs, ButtonClose, ButtonHelp}) {
            if (!FindItem(id)->isEnabled())
                ids.push_back(id);
        }
        return ids;
    }
    bool IsInModuleFolder() const { return QDir::currentPath() == QDir(CCommonFile::GetModulePath()).canonicalPath(); }
};

const std::vector<int> Nothing;
const std::vector<int> OnlyMoves{ButtonMoveMap, ButtonSetObs};
const std::vector<int> WhileSearching{LabelSearchChar, EditSearchChar, GroupRule,     RadioAddressKey, RadioLandMark,
                                      ListResult,      ButtonSearch,   ButtonMoveMap, ButtonSetObs};
} // namespace

/// Counts how often a window is painted.
class CPaintCounter : public QObject
{
public:
    explicit CPaintCounter(QWidget& window) { window.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        Count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int Count = 0;
};

TEST_F(MappleFindTest, ListsWhatWasFound)
{
    OpenFind();
    EXPECT_TRUE(Edit().hasFocus());
    EXPECT_EQ(Disabled(), OnlyMoves);
    Start(u"新宿"_s);
    EXPECT_EQ(Transcript.Take(), "R 2(false, 新宿)");
    EXPECT_EQ(Disabled(), WhileSearching);
    EXPECT_TRUE(IsInModuleFolder());
    GiveResults({u"|東京都新宿区"_s, u"|新宿町"_s});
    QString folderOfSelection;
    QObject listener;
    QObject::connect(List().selectionModel(), &QItemSelectionModel::selectionChanged, &listener,
                     [&] { folderOfSelection = QDir::currentPath(); });
    Raise(Address, {2});
    EXPECT_EQ(folderOfSelection, WorkingFolder);
    EXPECT_EQ(Transcript.Take(), "R 3()");
    EXPECT_EQ(ListText(), "住所\n東京都新宿区\n新宿町");
    EXPECT_EQ(List().header()->sectionSize(0), List().WidthBesideScrollBar());
    EXPECT_EQ(List().SelectedRow(), 0);
    EXPECT_TRUE(List().hasFocus());
    EXPECT_EQ(Disabled(), Nothing);
    EXPECT_EQ(QDir::currentPath(), WorkingFolder);

    Start(u"天文台"_s, true);
    EXPECT_EQ(Transcript.Take(), "R 2(true, 天文台)");
    GiveResults({u"国立天文台|三鷹市|天文台|文化|公共"_s, u"<b>\u05d0\u2028|||\U0001F52D|"_s});
    Raise(LandMark, {0});
    EXPECT_EQ(ListText(), QString(u"施設|住所|小分類|中分類|大分類\n国立天文台|三鷹市|天文台|文化|公共\n"
                                  u"<b>\u05d0\u2028|－||\U0001F52D|"_s)
                              .toStdString());
    const int width = List().WidthBesideScrollBar();
    for (int column = 0; column < 5; ++column)
        EXPECT_EQ(List().header()->sectionSize(column), column < 2 ? width / 2 : width / 4);
    Dialog->close();
    EXPECT_EQ(StoredText("Dialog\\MappleFind", "Rule"), "1");
    OpenFind();
    EXPECT_EQ(Edit().text(), u"天文台"_s) << "the last search is remembered";
    EXPECT_TRUE(FindItem<QAbstractButton>(RadioLandMark)->isChecked());
}

TEST_F(MappleFindTest, SaysWhyThereIsNothingToShow)
{
    OpenFind();
    for (const auto& [landMark, status, message, keepsList] : {
             std::tuple<bool, int, const char*, bool>{false, 0, "一致する住所がありませんでした。", false},
             {false, -1, "住所キーワード検索を中止しました。", true},
             {true, 2, "一致する施設がありませんでした。", false},
             {true, 3, "施設検索を中止しました。", true},
         }) {
        Search({u"a|b"_s});
        Start(u"どこか"_s, landMark);
        if (status == 0 || status == 2)
            GiveResults({});
        Prompts.Expect(message, Information);
        Raise(landMark ? LandMark : Address, {status});
        EXPECT_EQ(List().model()->rowCount(), keepsList ? 1 : 0) << message;
        EXPECT_EQ(Disabled(), keepsList ? Nothing : OnlyMoves) << message;
        EXPECT_TRUE(Edit().hasFocus());
        EXPECT_EQ(Edit().selectedText(), u"どこか"_s);
        EXPECT_EQ(QDir::currentPath(), WorkingFolder);
    }
}

TEST_F(MappleFindTest, NeedsATextAndAMapThatSearches)
{
    OpenFind();
    Prompts.Expect("検索する文字列を入力してください。", Information);
    Key(Qt::Key_Return);
    EXPECT_EQ(Transcript.Take(), "");

    Start(u"a"_s);
    GiveResults({u"|kept"_s});
    Raise(Address, {0});
    for (const QVariant& refusal : {QVariant(false), QVariant()}) {
        Map.Results[RoadMap::Search] = refusal;
        Edit().setFocus();
        Prompts.Expect("エラーが発生したため、検索ができませんでした。", Information);
        Key(Qt::Key_Return);
        EXPECT_EQ(Disabled(), Nothing);
        EXPECT_EQ(ListText(), "住所\nkept");
        EXPECT_TRUE(Edit().hasFocus());
        EXPECT_EQ(QDir::currentPath(), WorkingFolder);
    }
    Dialog->close();
    Store("Dialog\\MappleFind", "Rule", u"7"_s); // of no kind
    OpenFind();
    Prompts.Expect("エラーが発生したため、検索ができませんでした。", Information);
    Click(FindItem(ButtonSearch));
    EXPECT_EQ(Transcript.Take(), "");
}

TEST_F(MappleFindTest, StaysDisabledWithoutAList)
{
    for (const QVariant& answer : {QVariant(), QVariant(0), QVariant(qint64{-1}), QVariant(u"x"_s),
                                   QVariant(std::numeric_limits<qint64>::max())}) {
        OpenFind();
        Start(u"a"_s);
        Map.Results[RoadMap::GetSearchResult] = answer;
        Raise(Address, {0});
        EXPECT_EQ(Disabled(), WhileSearching);
        EXPECT_EQ(QDir::currentPath(), WorkingFolder);
        CPaintCounter paints(Find());
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents();
        EXPECT_LT(paints.Count, 10) << "the window paints itself again and again";
        Key(Qt::Key_Escape);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(Dialog.get(), &held);
        EXPECT_TRUE(Dialog->IsWindow()) << "the key is still held from the search window";
        Dialog->close();
    }
}

TEST_F(MappleFindTest, MovesTheMapOrTheSiteToTheSelectedMatch)
{
    OpenFind();
    Search({u"a|A"_s, u"b|B"_s, u"c|C"_s}, true);
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_EQ(Transcript.Take(), "R 1(false, 1000.000000, 500.000000)");
    Click(FindItem(ButtonMoveMap));
    EXPECT_EQ(Transcript.Take(), "R 1(false, 1000.000000, 500.000000)");
    const char* const set = "R 1(true, 1000.000000, 500.000000)\nO 4: 139.500000 35.250000 10.0\n"
                            "O 4: 0.000278 0.000139 10.0\nR 1(false, 1000.000000, 500.000000)";
    List().setFocus();
    Key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Transcript.Take(), set);
    Observer.UpdateObsByUI(139.5, 35.25, 10.0);
    Transcript.Take();
    Click(FindItem(ButtonSetObs));
    EXPECT_EQ(Transcript.Take(), set);
    EXPECT_EQ(SiteText(), "東経： 000 度 00 分  1.00 秒 北緯： 00 度 00 分  0.50 秒");

    const QPoint third = List().visualRect(List().model()->index(2, 1)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, third);
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, third);
    EXPECT_EQ(Transcript.Take(), "R 1(false, 2000.000000, 1000.000000)");
}

TEST_F(MappleFindTest, DoesNothingWithAListThatIsGoneOrShorter)
{
    OpenFind();
    Search({u"a|A"_s, u"b|B"_s});
    List().SelectRow(1);
    GiveResults({u"other|one"_s}); // the map threw its list away
    Click(FindItem(ButtonMoveMap));
    Click(FindItem(ButtonSetObs));
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, QPoint(10, 5));
    EXPECT_EQ(Transcript.Take(), "");
    EXPECT_EQ(ListText(), "住所\nA\nB");
    List().setFocus();
    Key(Qt::Key_Return); // nothing to move to: it searches
    EXPECT_EQ(Transcript.Take(), "R 2(false, x)");

    Search({u"a|A"_s, u"b|B"_s});
    Map.During = [this](int method) {
        if (method == RoadMap::SetPosition)
            Results.reset();
    };
    List().SelectRow(1);
    Click(FindItem(ButtonSetObs));
    EXPECT_TRUE(Transcript.Take().ends_with("\nR 1(false, 1000.000000, 500.000000)")) << "the row was copied";
}

TEST_F(MappleFindTest, EnterSearchesOrHidesAndNeverReachesTheRoadMap)
{
    OpenFind();
    Start(u"a"_s);
    GiveResults({u"|A"_s});
    Raise(Address, {0});
    Transcript.Take();
    for (const int id : {EditSearchChar, RadioAddressKey, ButtonSearch}) {
        FindItem(id)->setFocus();
        Key(Qt::Key_Enter);
        EXPECT_EQ(Transcript.Take(), "R 2(false, a)") << id;
        Raise(Address, {0});
        Transcript.Take();
    }
    const std::vector<std::function<void()>> ways{
        [this] {
            FindItem(ButtonClose)->setFocus();
            Key(Qt::Key_Return);
        },
        [] { Key(Qt::Key_Escape); },
        [this] { Find().close(); },
        [this] { Click(FindItem(ButtonClose)); },
        [this] { FindItem<QAbstractButton>(ButtonClose)->click(); },
        [this] { QTest::keyClick(&Edit(), Qt::Key_C, Qt::AltModifier); },
    };
    Key(Qt::Key_Escape);
    for (const auto& hide : ways) {
        Dialog->activateWindow();
        Click(Item(MappleId::ButtonFind));
        WaitForFind();
        Edit().setFocus();
        hide();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !Find().isVisible(); }));
        EXPECT_TRUE(Dialog->IsWindow());
        EXPECT_EQ(Transcript.Take(), "");
        EXPECT_EQ(ListText(), "住所\nA"); // kept while it is hidden
    }
}

TEST_F(MappleFindTest, SurvivesEventsAtAnyTime)
{
    OpenFind();
    GiveResults({u"a|A"_s});
    Raise(LandMark, {0}); // nobody asked
    EXPECT_EQ(ListText(), "施設|住所|小分類|中分類|大分類\na|A|||");
    EXPECT_TRUE(Edit().hasFocus());
    Prompts.Expect("住所キーワード検索を中止しました。", Information);
    Raise(Address, {});

    Map.During = [this](int method) { // the end comes before the answer
        if (method == RoadMap::Search)
            Raise(Address, {0});
    };
    Start(u"z"_s);
    EXPECT_EQ(ListText(), "住所\nA");
    EXPECT_TRUE(List().hasFocus());

    Map.During = [this](int method) { // the road map ends before the answer
        if (method == RoadMap::Search) {
            EXPECT_TRUE(IsInModuleFolder());
            Dialog->close();
        }
    };
    Edit().setFocus();
    Key(Qt::Key_Return);
    EXPECT_FALSE(Dialog->IsWindow());
    EXPECT_EQ(QDir::currentPath(), WorkingFolder);
    Raise(Address, {0});
}
