#include "city/AddCty.h"
#include "city/ControlIds.h"
#include "city/DlgCityMoveTo.h"
#include "city/EdtCty.h"
#include "city/EdtFld.h"
#include "tests/dialog/DialogDriver.h"

using namespace Qt::StringLiterals;

namespace
{
class PlaceEditor : public CDialogDriver
{
protected:
    PlaceEditor()
    {
        m_script.Register(QString::fromUtf16(ControlClass::GlobeMap));
        m_script.FeatureCount = 3;
        m_script.FeatureNames = {u"観測地"_s, u"市区町村"_s, u"都市"_s};
        EXPECT_TRUE(m_map.Create(&m_parent, QRect(), 1));
    }

    static void Enter(QWidget& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); }
    CTranscript m_transcript;
    ControlScript m_script{u"M"_s, m_transcript};
    QWidget m_parent;
    CCorKivMap m_map;
};

CoordinateBlock Somewhere()
{
    CoordinateBlock block;
    block.LongitudeHemisphere = block.LatitudeHemisphere = block.TimeZoneSign = 0;
    block.LongitudeDegrees = 10;
    block.LatitudeDegrees = 20;
    block.LatitudeMinutes = 30;
    block.LatitudeSeconds = 5.5;
    block.TimeZoneHours = 9;
    return block;
}

constexpr char LongMin[] = "経度の分には 0 から 59 までの値を入力してください。";
constexpr char LongSec[] = "経度の秒には 0 から 59.9 までの値を入力してください。";
constexpr char LatDeg[] = "緯度の度には 0 から 90 までの値を入力してください。";
constexpr char Alt[] = "標高には -9999 から 999999 までの値を入力してください。";
constexpr char TzHour[] = "タイムゾーンの時には 0 から 14 までの値を入力してください。";

TEST_F(PlaceEditor, ChecksWhileTheUserTypes)
{
    using namespace CoordinateId;
    const std::tuple<int, const char*, const char*, const char*> entries[]{
        {EditLong1, "180", nullptr, "180"},
        {EditLong1, "-1", "経度の度には 0 から 180 までの値を入力してください。", "0"},
        {EditLong2, "60", LongMin, "0"},
        {EditLong3, "60", LongSec, " 0.0"},
        {EditLong3, "12.", nullptr, "12."},
        {EditLat1, "95", LatDeg, "0"},
        {EditLat1, "90", nullptr, "90"},
        {EditLat2, "75", LongMin, "0"}, // the longitude's text, on purpose; and taken at the pole too
        {EditLat3, "59.9", nullptr, "59.9"},
        {EditLat3, "-1", LongSec, " 0.0"},
        {EditAlt, "-10000", Alt, "-9999"},
        {EditAlt, "1000000", Alt, "999999"},
        {EditTzHour, "15", TzHour, "0"},
        {EditTzMin, "60", "タイムゾーンの分には 0 から 59 までの値を入力してください。", "0"},
    };
    CEdtCty editor(&m_parent);
    editor.Coordinates = Somewhere();
    RunModal(editor, [&] {
        EXPECT_EQ(TextOf(editor, EditLat3), " 5.5");
        for (const auto& [id, typed, prompt, text] : entries) {
            if (prompt)
                Prompts.Expect(prompt, IPrompts::Icon::Information);
            Type(editor, id, typed);
            EXPECT_EQ(TextOf(editor, id), text) << id << ' ' << typed;
        }
        QTest::keyClick(editor.Item(EditLong3), Qt::Key_Up);
        EXPECT_EQ(TextOf(editor, EditLong3), "12.1");
        editor.Item<QAbstractButton>(RadioWest)->click();
        EXPECT_EQ(editor.Coordinates.LongitudeHemisphere, 1);
        EXPECT_EQ(editor.Coordinates.LatitudeHemisphere, 0);
    });
}

TEST_F(PlaceEditor, SaysAllThatIsWrongAtOnceAndStaysOpen)
{
    CEdtCty editor(&m_parent);
    editor.MapControl = &m_map;
    editor.Coordinates = Somewhere();
    editor.Kind = 2;
    const int result = RunModal(editor, [&] {
        using namespace CoordinateId;
        EXPECT_EQ(editor.Item<QComboBox>(EditCityId::ComboKind)->currentText(), u"都市"_s);
        Paste(editor, EditCityId::EditName, u" 　 "_s);
        Type(editor, EditLong1, "180");
        Type(editor, EditLong3, "0.1");
        Type(editor, EditLat1, "90");
        Type(editor, EditTzHour, "14");
        Type(editor, EditTzMin, "1");
        Prompts.Expect("都市名を入力してください。\n"
                       "経度には 0.0 から 180.0 までの値を入力してください\n"
                       "緯度には 0.0 から 90.0 までの値を入力してください\n"
                       "タイムゾーンには 0 から 14 までの値を入力してください\n",
                       IPrompts::Icon::None);
        Enter(editor);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(TextOf(editor, EditCityId::EditName), "");

        Type(editor, EditLong3, "59.95"); // not refused while it is typed
        Type(editor, EditLong1, "1");
        Type(editor, EditLat1, "89");
        Type(editor, EditTzMin, "0");
        Paste(editor, EditCityId::EditName, u"#a,b"_s);
        Prompts.Expect("経度の秒には 0 から 59.9 までの値を入力してください\n"
                       "地名には半角のコンマ「,」を使えません。全角の「，」などを使ってください。\n"
                       "地名の先頭には半角の「@」と「#」を使えません。\n",
                       IPrompts::Icon::None);
        Enter(editor);
        EXPECT_TRUE(editor.isVisible());

        Type(editor, EditLong3, "59.9");
        Paste(editor, EditCityId::EditName, u"  新しい 場所　"_s);
        Enter(editor);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(editor.Name.toStdString(), "新しい 場所");
    EXPECT_EQ(editor.Kind, 2);
    EXPECT_EQ(editor.Coordinates.TimeZoneHours, 14);
    EXPECT_EQ(editor.Coordinates.LongitudeSeconds, 59.9);
}

TEST_F(PlaceEditor, HasNoKindsWithoutAMapAndNoneForAnUnknownOne)
{
    for (CCorKivMap* map : {static_cast<CCorKivMap*>(nullptr), &m_map}) {
        CEdtCty editor(&m_parent);
        editor.SetCorMapPtr(map);
        editor.Name = u"x"_s;
        editor.Coordinates = Somewhere();
        editor.Kind = map ? 99 : 0;
        EXPECT_EQ(RunModal(editor, [&] { Enter(editor); }), QDialog::Accepted);
        EXPECT_EQ(editor.Kind, -1);
        EXPECT_EQ(editor.Coordinates, Somewhere());
    }
    m_script.FeatureCount = 2'000'000'000;
    CEdtCty editor(&m_parent);
    editor.SetCorMapPtr(&m_map);
    editor.Kind = 1;
    EXPECT_EQ(RunModal(editor, [&] { QTest::keyClick(&editor, Qt::Key_Escape); }), QDialog::Rejected);
    EXPECT_EQ(editor.Kind, 1);
}

TEST_F(PlaceEditor, NamesAFolder)
{
    CEdtFld editor(&m_parent);
    editor.Name = u"元の名前"_s;
    const int result = RunModal(editor, [&] {
        EXPECT_EQ(TextOf(editor, EditFolderId::EditName), "元の名前");
        EXPECT_EQ(editor.focusWidget(), editor.Item(EditFolderId::EditName));
        Paste(editor, EditFolderId::EditName, u" 　 "_s);
        Prompts.Expect("フォルダ名を入力してください。\n", IPrompts::Icon::None);
        Enter(editor);
        EXPECT_EQ(TextOf(editor, EditFolderId::EditName), "");
        Paste(editor, EditFolderId::EditName, u"a\nb"_s);
        Prompts.Expect("フォルダ名には改行やタブなどの制御文字を使えません。\n", IPrompts::Icon::None);
        Enter(editor);
        Paste(editor, EditFolderId::EditName, u" \u301C\u2212 abc　"_s); // as many input methods give them
        Enter(editor);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(editor.Name, u"\uFF5E\uFF0D abc"_s);
}

TEST_F(PlaceEditor, AsksWhatToAddAndWhereToMove)
{
    CAddCty add(&m_parent);
    add.AddKind = CAddCty::AddPlace;
    const auto chooseFolder = [&] {
        EXPECT_EQ(add.focusWidget(), add.Item(AddCityId::RadioCity));
        QTest::keyClick(add.focusWidget(), Qt::Key_Down);
        Enter(add);
    };
    EXPECT_EQ(RunModal(add, chooseFolder), QDialog::Accepted);
    EXPECT_EQ(add.AddKind, CAddCty::AddFolder);

    CDlgCityMoveTo move(u"50% & %s"_s, &m_parent);
    const auto chooseInto = [&] {
        EXPECT_TRUE(move.Item<QAbstractButton>(MoveToId::RadioAfter)->isChecked());
        EXPECT_EQ(TextOf(move, MoveToId::RadioAfter), "[50% && %s] フォルダの後ろに挿入");
        EXPECT_EQ(TextOf(move, MoveToId::RadioInto), "[50% && %s] フォルダの中に移動");
        move.Item<QAbstractButton>(MoveToId::RadioInto)->click();
        Enter(move);
    };
    EXPECT_EQ(RunModal(move, chooseInto), QDialog::Accepted);
    EXPECT_EQ(move.MoveMode, CDlgCityMoveTo::MoveInto);
}
} // namespace
