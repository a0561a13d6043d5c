#include "city/AddCty.h"
#include "city/EdtCty.h"
#include "city/EdtFld.h"
#include "tests/dialog/CityFixture.h"

#include <QFile>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace
{
class CityEdit : public CCityFixture
{
protected:
    static void SetName(const CKivDialog& editor, int id, const char* name)
    {
        editor.Item<QLineEdit>(id)->setText(QString::fromUtf8(name));
    }
    static void Enter() { Key(Qt::Key_Return); }

    /// Presses Insert and goes through both dialogs with OK; further values of the place by the steps.
    void AddPlace(const char* name, const std::function<void(CEdtCty&)>& steps = {})
    {
        InNext<CAddCty>([=, this](CAddCty& /*add*/) {
            InNext<CEdtCty>([=](CEdtCty& editor) {
                EXPECT_EQ(editor.Name, u"新規"_s);
                SetName(editor, EditCityId::EditName, name);
                if (steps)
                    steps(editor);
                Enter();
            });
            Enter();
        });
        Key(Qt::Key_Insert);
    }
    void AddFolder(const char* name)
    {
        InNext<CAddCty>([=, this](CAddCty& add) {
            InNext<CEdtFld>([=](CEdtFld& editor) {
                SetName(editor, EditFolderId::EditName, name);
                Enter();
            });
            add.Item<QAbstractButton>(AddCityId::RadioFolder)->click();
            Enter();
        });
        Key(Qt::Key_Insert);
    }
    void EditPlace(const std::function<void(CEdtCty&)>& steps)
    {
        InNext<CEdtCty>([=](CEdtCty& editor) {
            steps(editor);
            Enter();
        });
        Key(Qt::Key_F2);
    }
    void RenameFolder(const char* name)
    {
        InNext<CEdtFld>([=](CEdtFld& editor) {
            SetName(editor, EditFolderId::EditName, name);
            Enter();
        });
        Key(Qt::Key_F2);
    }
    void ExpectRefusal(const std::string& name)
    {
        Prompts.Expect((name + "はすでに存在しています。\n別の名称を指定してください。").c_str(),
                       IPrompts::Icon::Information);
    }
    [[nodiscard]] QString UserList() const { return CodePage932::Decode(ReadFile("kivpel_user.obs")); }
    [[nodiscard]] QString Overlay() const { return CodePage932::Decode(ReadFile("kivpel_user_obs.json")); }
};

TEST_F(CityEdit, AddsPlacesAndFoldersWhereTheSelectionSays)
{
    Run([this] {
        Select("日本/関東/東京");
        AddPlace("渋谷", [](CEdtCty& editor) {
            EXPECT_EQ(editor.Item<QComboBox>(EditCityId::ComboKind)->currentIndex(), 0);
            Type(editor, CoordinateId::EditLong1, "140");
            Type(editor, CoordinateId::EditAlt, "25");
            editor.Item<QComboBox>(EditCityId::ComboKind)->setCurrentIndex(3);
        });
        EXPECT_EQ(Selected(), "渋谷");
        EXPECT_EQ(TextOf(CoordinateId::EditLong1) + ' ' + TextOf(CoordinateId::EditAlt), "140 25");
        EXPECT_EQ(Enabled(), "eadi");
        Select("");
        AddFolder("新しい国");
        EXPECT_EQ(Selected(), "新しい国");
        AddPlace("港");
        EXPECT_EQ(TreeText(), "新しい国(港) 日本(関東(東京 渋谷 横浜) 東北(仙台) 富士山) 海外(Paris London)");
        Click(CityId::ButtonOk);
    });
    EXPECT_TRUE(UserList().contains(u"@新しい国\r\n港"_s)) << UserList().toStdString();
    EXPECT_TRUE(UserList().contains(
        u"渋谷                                    ,140.7500000E,35.5000000N,     25,+09.00, 0, 1, 3\r\n"_s))
        << UserList().toStdString();

    Renew();
    Run([this] {
        EXPECT_EQ(TreeText(), "新しい国(港) 日本(関東(東京 渋谷 横浜) 東北(仙台) 富士山) 海外(Paris London)");
    });
}

TEST_F(CityEdit, RefusesTheNameOfASibling)
{
    Run([this] {
        Select("日本/関東/東京");
        ExpectRefusal("都市名[横浜]");
        AddPlace("横浜", [](CEdtCty& editor) { Type(editor, CoordinateId::EditLong1, "100"); });
        EXPECT_EQ(TextOf(CoordinateId::EditLong1), "139"); // the boxes as they were
        EXPECT_EQ(Dialog->Coordinates.LongitudeDegrees, 100);
        ExpectRefusal("都市名[横浜]");
        EditPlace([](CEdtCty& editor) {
            SetName(editor, EditCityId::EditName, "横浜");
            Type(editor, CoordinateId::EditLong1, "101");
        });
        EXPECT_EQ(Dialog->Coordinates.LongitudeDegrees, 100);
        Select("日本");
        ExpectRefusal("フォルダ[関東]");
        AddFolder("関東");
        ExpectRefusal("フォルダ[海外]");
        RenameFolder("海外");
        EXPECT_EQ(TreeText(), "日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris London)");
        Click(CityId::ButtonOk);
    });
    EXPECT_EQ(Overlay(), u"(none)"_s); // nothing was changed
}

TEST_F(CityEdit, FollowsTheTerrainAfterAMoveAlone)
{
    // The box typed in, 0 for none, and the line from the altitude on.
    for (const auto& row : {std::tuple{CoordinateId::EditLong2, "1", u"      5,+09.00, 1, 1, 2"_s},
                            {CoordinateId::EditAlt, "6", u"      6,+09.00, 0, 1, 2"_s},
                            {CoordinateId::EditTzHour, "8", u"      5,+08.00, 0, 1, 2"_s},
                            {0, "", u"      5,+09.00, 0, 1, 2"_s}}) {
        QFile::remove(PathOf("kivpel_user_obs.json"));
        Renew();
        Run([&] {
            Select("日本/関東/横浜");
            EditPlace([&](CEdtCty& editor) {
                const auto& [id, text, rest] = row;
                EXPECT_EQ(editor.Item<QComboBox>(EditCityId::ComboKind)->currentText(), u"都市"_s);
                if (id != 0)
                    Type(editor, id, text);
            });
            Click(CityId::ButtonOk);
        });
        const QString list = UserList();
        const qsizetype line = list.indexOf(u"横浜"_s);
        EXPECT_TRUE(list.sliced(line).section(u"N,"_s, 1).startsWith(std::get<2>(row)))
            << list.sliced(line, 90).toStdString();
    }
}

TEST_F(CityEdit, DeletesAfterAQuestion)
{
    Run([this] {
        Select("日本/関東");
        for (const IPrompts::Answer answer : {IPrompts::Answer::Cancel, IPrompts::Answer::Ok}) {
            EXPECT_EQ(Selected(), "関東");
            Asks("\"関東\"フォルダとこのフォルダに含まれるすべての情報を消去します。", answer);
            Key(Qt::Key_Delete);
        }
        EXPECT_EQ(Selected(), "東北");
        EXPECT_EQ(Enabled(), "ead-");
        Select("海外/London");
        Asks("\"London\"を削除します");
        Key(Qt::Key_Delete);
        EXPECT_EQ(Selected(), "Paris"); // and its values
        EXPECT_EQ(TextOf(CoordinateId::EditLong1), "2");
        Asks("\"Paris\"を削除します");
        Key(Qt::Key_Delete);
        EXPECT_EQ(Selected(), "海外");
        EXPECT_EQ(TreeText(), "日本(東北(仙台) 富士山) 海外");

        Keys("Ctrl+Z");
        EXPECT_EQ(Selected(), "Paris");
        Keys("Ctrl+Z Ctrl+Z");
        EXPECT_EQ(Selected(), "関東");
        EXPECT_EQ(TreeText(), "日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris London)");
        Keys("Ctrl+Z Ctrl+Y"); // nothing is left to undo
        EXPECT_EQ(TreeText(), "日本(東北(仙台) 富士山) 海外(Paris London)");
        Click(CityId::ButtonOk);
    });
    EXPECT_FALSE(UserList().contains(u"東京"_s));
    EXPECT_TRUE(UserList().contains(u"London"_s));
}

TEST_F(CityEdit, ResetsToTheShippedListAndLosesTheEdits)
{
    constexpr char question[] = "都市名データを初期化します。\r\nこれまで編集したデータは全て失われます。";
    PutDeletion("海外");
    QFile::setPermissions(PathOf("kivpel.obs"), QFileDevice::ReadOwner | QFileDevice::ReadUser);
    Run([this, question] {
        Asks(question, IPrompts::Answer::Cancel);
        Click(CityId::ButtonReset);
        Select("日本/富士山");
        Asks(question);
        Click(CityId::ButtonReset);
        EXPECT_EQ(TreeText(), "日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris London)");
        EXPECT_EQ(Selected(), "");
        EXPECT_EQ(Enabled(), "ead-"); // the list is writable now
        // With nothing selected there is nothing to edit or delete, and the root to add to.
        Click(CityId::ButtonEdit);
        Click(CityId::ButtonDel);
        Item(CityId::Tree)->setFocus();
        Keys("Alt+Up Alt+Down Alt+Left Alt+Right");
        AddFolder("新規の国");
        EXPECT_EQ(TreeText(), "新規の国 日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris London)");
        Keys("Ctrl+Z");
        Click(CityId::ButtonOk);
    });
    EXPECT_TRUE(UserList().contains(u"Paris"_s));
    EXPECT_FALSE(Overlay().contains(u"海外"_s)) << Overlay().toStdString();

    PutDeletion("");
    Renew();
    Run([this, question] {
        Asks(question);
        Click(CityId::ButtonReset);
        Item(CityId::Tree)->setFocus();
        Keys("Ctrl+Z");
        EXPECT_EQ(Enabled(), "ead-");
        Click(CityId::ButtonAdd); // to a tree without a root
        EXPECT_EQ(Item<CKivTreeCtrl>(CityId::Tree)->model()->rowCount(), 0);
        QFile::remove(PathOf("kivpel.obs"));
        Asks(question);
        Prompts.Expect("地名の一覧のファイル（kivpel.obs）を読み込めないため、初期化できません。",
                       IPrompts::Icon::Exclamation);
        Click(CityId::ButtonReset);
    });
}

TEST_F(CityEdit, AsksInABoxThatWaitsForAKeyOfItsOwn)
{
    Run([this] {
        Select("海外/London");
        Machine.Context().Prompts = nullptr; // the real ones
        InNext<QMessageBox>([](QMessageBox& box) {
            for (const Qt::Key held : {Qt::Key_Return, Qt::Key_Escape}) {
                QKeyEvent again(QEvent::KeyPress, held, Qt::NoModifier, QString(), true);
                QApplication::sendEvent(QApplication::focusWidget(), &again);
                EXPECT_TRUE(box.isVisible());
            }
            Key(Qt::Key_Return);
        });
        Key(Qt::Key_Delete);
        Machine.Context().Prompts = &Prompts;
        EXPECT_EQ(TreeText(), "日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris)");
    });
}

TEST_F(CityEdit, ShowsWhatThereIsOfAListThatIsTooLongAndAddsNothing)
{
    QByteArray list = "#PLACE LIST\r\n@A\r\n";
    for (int i = 0; i <= CPlaceList::PlaceTableSize; ++i)
        list += "P" + QByteArray::number(i) + ",1E,2N,3,+09.00, 0, 0, 2\r\n";
    WriteFile("kivpel.obs", list + "#\r\n");
    Prompts.Expect("地名の数が上限（10,000 件）を超えているため、超えた分は読み込めません。",
                   IPrompts::Icon::Exclamation);
    Run([this] {
        EXPECT_EQ(Messages.last(), u"main 1136 2 0"_s);
        Select("A");
        Prompts.Expect("地名の数が上限（10,000 件）に達したため、追加できません。\n"
                       "不要な地名を「編集」で書き換えてください。",
                       IPrompts::Icon::Exclamation);
        InNext<CAddCty>([](CAddCty& /*add*/) { Enter(); });
        Key(Qt::Key_Insert);
        EXPECT_EQ(Item<CKivTreeCtrl>(CityId::Tree)->model()->rowCount(At("A")), CPlaceList::PlaceTableSize);
        EXPECT_EQ(Selected(), "A");
    });
}
} // namespace
