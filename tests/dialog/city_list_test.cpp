#include "city/AddCty.h"
#include "city/EdtCty.h"
#include "tests/dialog/CityFixture.h"

#include <QFile>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace
{
using CityList = CCityFixture;

constexpr char Shipped[] = "日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris London)";

TEST_F(CityList, OpensWithTheRootSelected)
{
    PutDeletion("海外");
    const int result = Run([this] {
        EXPECT_EQ(TreeText(), "日本(関東(東京 横浜) 東北(仙台) 富士山)");
        EXPECT_EQ(Selected(), "場所");
        EXPECT_TRUE(Item<CKivTreeCtrl>(CityId::Tree)->isExpanded(At("")));
        EXPECT_EQ(QApplication::focusWidget(), Item(CityId::Tree));
        EXPECT_EQ(Enabled(), "-a-i");
        EXPECT_EQ(TextOf(CoordinateId::EditLong1), "10"); // the caller's
        EXPECT_EQ(Messages.first(), u"main 1136 0 0"_s);
        EXPECT_EQ(Messages.last(), u"main 1136 2 0"_s);
        Key(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(ReadFile("kivpel_user.obs"), "(none)");
    EXPECT_EQ(Transcript.Take(), "");
}

TEST_F(CityList, ShowsThePlaceSelected)
{
    Run([this] {
        Select("日本");
        EXPECT_EQ(Enabled(), "ead-");
        EXPECT_EQ(TextOf(CoordinateId::EditLong1), "10"); // a folder changes nothing
        Select("海外/London");
        EXPECT_EQ(Enabled(), "eadi");
        EXPECT_EQ(TextOf(CoordinateId::EditLong2), "30");
        EXPECT_TRUE(Item<QAbstractButton>(CoordinateId::RadioWest)->isChecked());
        EXPECT_EQ(TextOf(CoordinateId::EditAlt), "11");
        Key(Qt::Key_Up); // to Paris
        EXPECT_EQ(TextOf(CoordinateId::EditLat3), "0.0");
        EXPECT_EQ(TextOf(CoordinateId::EditTzHour), "1");
        EXPECT_TRUE(Item<QAbstractButton>(CoordinateId::RadioEast)->isChecked());
        Select("");
        EXPECT_EQ(Enabled(), "-a-i"); // as the place left them
        Prompts.Expect("緯度の度には 0 から 90 までの値を入力してください。", IPrompts::Icon::Information);
        Type(CoordinateId::EditLat1, "95");
        EXPECT_EQ(TextOf(CoordinateId::EditLat1) + ' ' + TextOf(CoordinateId::EditLat2), "90 0");
        QTest::keyClick(Item(CoordinateId::EditLat1), Qt::Key_Down);
        EXPECT_EQ(TextOf(CoordinateId::EditLat1), "89");
        Key(Qt::Key_Return);
    });
    EXPECT_EQ(Transcript.Take(), "");
    EXPECT_EQ(Dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Dialog->Coordinates.LongitudeDegrees, 2);
    EXPECT_EQ(Dialog->Coordinates.LatitudeDegrees, 89);
    EXPECT_EQ(Dialog->IsAltitudeFromTerrain, 0);
    EXPECT_EQ(ReadFile("kivpel_user.obs"), "(none)"); // nothing was changed
}

TEST_F(CityList, AsksTheTerrainForAltitudesAndPutsTheEngineBack)
{
    EngineScript.Answers = {{u"? Location.Longitude"_s, u"139.5"_s},
                            {u"? Location.Latitude"_s, u"-35.25 deg"_s},
                            {u"? Location.Altitude"_s, u"77.6"_s}};
    Dialog->SetMesh(1);
    EXPECT_EQ(Transcript.Take(), "E ? Location.Longitude\nE ? Location.Latitude\nE ? Location.Altitude");
    Run([this] {
        Select("日本/関東/横浜");
        EXPECT_EQ(
            Transcript.Take(),
            "E Location.Longitude = 139.500000; Location.Latitude = 35.250000; Calc Stellar\nE ? Location.Altitude");
        EXPECT_EQ(TextOf(CoordinateId::EditAlt), "78");
        EXPECT_EQ(Dialog->IsAltitudeFromTerrain, 1);
        Select("日本/関東/東京");
        EXPECT_EQ(TextOf(CoordinateId::EditAlt), "39");
        EXPECT_EQ(Dialog->IsAltitudeFromTerrain, 0);
    });
    EXPECT_EQ(Transcript.Take(),
              "E Location.Longitude = 139.500000; Location.Latitude = -35.250000; Location.Altitude = 77.600000");
}

TEST_F(CityList, EndsWithThePlaceThatIsClickedTwice)
{
    const int result = Run([this] {
        const auto clickTwice = [this](const char* path) {
            const QPoint point = PointOf(path);
            for (const QEvent::Type press : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
                Mouse(press, point, Qt::LeftButton, Qt::LeftButton);
                Mouse(QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton);
            }
        };
        clickTwice("日本");
        EXPECT_TRUE(Dialog->isVisible());
        EXPECT_EQ(Selected(), "日本");
        clickTwice("海外/London");
        EXPECT_FALSE(Dialog->isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(PlaceCoordinates::ComposeLongitude(Dialog->Coordinates), -0.5);
}

TEST_F(CityList, TellsWhenItCannotSave)
{
    Dialog->Paths.OverlayFilePath = PathOf("missing/overlay.json");
    Run([this] {
        Select("海外/London");
        Key(Qt::Key_Up, Qt::AltModifier);
        const QByteArray text =
            "地名の一覧の編集内容を保存できませんでした。保存先のフォルダと空き容量を確認してください。\n"
            "「OK」で編集内容を破棄して閉じ、「キャンセル」で一覧に戻ります。\n\n" +
            Dialog->Paths.OverlayFilePath.toUtf8();
        for (const IPrompts::Answer answer : {IPrompts::Answer::Cancel, IPrompts::Answer::Ok}) {
            EXPECT_TRUE(Dialog->isVisible());
            Prompts.Expect(text.constData(), IPrompts::Icon::Warning, IPrompts::Buttons::OkCancel, answer);
            Click(CityId::ButtonOk);
        }
    });
    EXPECT_EQ(Dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Transcript.Take(), "M 26(true)\nM 26(true)");
}

TEST_F(CityList, EditsNothingInAReadOnlyListBeyondWhatTheRootAllows)
{
    QFile::setPermissions(PathOf("kivpel.obs"), QFileDevice::ReadOwner | QFileDevice::ReadUser);
    Run([this] {
        EXPECT_EQ(Enabled(), "-a-i");
        InNext<CAddCty>([this](CAddCty&) {
            InNext<CEdtCty>([](CEdtCty&) {
                QTest::keyClicks(QApplication::focusWidget(), u"here"_s); // over the name proposed
                Key(Qt::Key_Return);
            });
            Key(Qt::Key_Return);
        });
        Click(CityId::ButtonAdd);
        EXPECT_EQ(Selected(), "here");
        Drag("海外/London", "日本/富士山");
        Select("海外/London");
        EXPECT_EQ(Enabled(), "---i");
        Keys("Alt+Up Alt+Down Alt+Left Alt+Right Ins F2 Del");
        EXPECT_EQ(TreeText(), std::string("here ") + Shipped);
        const QByteArray text = "地名の一覧のファイルが読み取り専用のため、一覧の編集内容は保存されません。\n"
                                "（選んだ観測地は反映されます。）\n\n" +
                                Dialog->Paths.ListFilePath.toUtf8();
        Prompts.Expect(text.constData(), IPrompts::Icon::Exclamation);
        Key(Qt::Key_Return);
    });
    EXPECT_EQ(Dialog->result(), QDialog::Accepted);
    EXPECT_EQ(ReadFile("kivpel_user_obs.json"), "(none)");
}

TEST_F(CityList, ScrollsSidewaysToWhatLiesDeep)
{
    QByteArray list = "#PLACE LIST\r\n";
    for (int level = 1; level <= 30; ++level)
        list += QByteArray(level, '@') + "F\r\n";
    WriteFile("kivpel.obs", list + "Deep place,1E,2N,3,+09.00, 0, 0, 2\r\n");
    Run([this] {
        auto* tree = Item<CKivTreeCtrl>(CityId::Tree);
        Dialog->resize(Dialog->minimumSizeHint());
        QModelIndex deep = At("");
        while (tree->model()->hasChildren(deep))
            deep = tree->model()->index(0, 0, deep);
        tree->Select(deep);
        EXPECT_TRUE(tree->viewport()->rect().contains(tree->visualRect(deep).topLeft() + QPoint(60, 5)));
        const QModelIndex folder = deep.parent();
        const QPoint name = tree->visualRect(folder).topLeft() + QPoint(25, 5);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, name);
        EXPECT_EQ(tree->indexAt(name), folder) << "a second click meets it again";
        tree->setFocus();
        Key(Qt::Key_Home);
        EXPECT_EQ(Selected(), "場所");
        EXPECT_EQ(tree->horizontalScrollBar()->value(), 0) << "its box is in sight";
    });
}

TEST_F(CityList, RecordsNothingOfANameEditedInPlace)
{
    Run([this] {
        auto* tree = Item<CKivTreeCtrl>(CityId::Tree);
        Q_EMIT tree->EndLabelEdit(At("海外"), u"外国"_s);
        Q_EMIT tree->EndLabelEdit(At("日本"), QString()); // cancelled
        EXPECT_EQ(TreeText(), "日本(関東(東京 横浜) 東北(仙台) 富士山) 外国(Paris London)");
        Click(CityId::ButtonOk);
    });
    EXPECT_TRUE(CodePage932::Decode(ReadFile("kivpel_user.obs")).contains(u"@外国"_s));
    EXPECT_FALSE(CodePage932::Decode(ReadFile("kivpel_user_obs.json")).contains(u"外国"_s));
}
} // namespace
