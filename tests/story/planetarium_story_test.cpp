// The main window, the guide and the command line, as a user meets them.

#include "city/ControlIds.h"
#include "host/observer/BodyTable.h"
#include "planetarium/Guide.h"
#include "planetarium/GuideWindow.h"
#include "tests/story/StoryFixture.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Mars = 5;

class PlanetariumStory : public CStory
{
protected:
    /// The visible entries of a menu and those below them, in one line; a separator is a bar.
    static std::string Entries(const QMenu& menu)
    {
        QStringList entries;
        for (const QAction* action : menu.actions())
            entries += action->isSeparator() ? u"|"_s : action->text().section(u"(&"_s, 0, 0);
        return entries.join(u' ').toStdString();
    }
    std::string Menus()
    {
        QStringList titles;
        for (const QAction* action : Window().menuBar()->actions())
            titles += action->text().section(u"(&"_s, 0, 0);
        return titles.join(u' ').toStdString();
    }
    QMenu& Menu(int index) { return *Window().menuBar()->actions().at(index)->menu(); }
    QAbstractButton* Button(const QString& start)
    {
        for (auto* button : Window().findChildren<QAbstractButton*>()) {
            if (button->text().startsWith(start))
                return button;
        }
        return nullptr;
    }
    bool Says(const QString& text)
    {
        const auto labels = Window().findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(),
                           [&text](const QLabel* label) { return label->isVisible() && label->text().contains(text); });
    }
};

TEST_F(PlanetariumStory, TheFirstScreenSaysHowToChooseTheSite)
{
    Start();
    EXPECT_TRUE(Says(u"左の地球をクリックした地点が観測地になります。"_s));
    EXPECT_TRUE(Says(u"東経 139° 41′ 30.4″"_s));
    QWidget& sky = *Host().Engine().Control()->Window();
    ClickAt(sky, QPointF(sky.rect().center()) + QPointF(0, 40));
    EXPECT_NEAR(Observer().GetLongitude(), 139.69, 0.5) << "straight below the middle";
    EXPECT_LT(Observer().GetLatitude(), 33.0);

    QAbstractButton* city = Button(u"都市名選択  Ctrl+T"_s);
    ASSERT_NE(city, nullptr);
    InNext<CKivDialog>([](CKivDialog& list) { EXPECT_EQ(list.TemplateNumber(), CityId::Template); });
    city->click();
    EXPECT_TRUE(Site().isVisible());
    Host().SetBody(Mars);
    EXPECT_FALSE(city->isEnabled());
    EXPECT_TRUE(Says(u"左の火星をクリック"_s));
    EXPECT_TRUE(Says(u"地名の一覧は、地球にいるときに使えます。"_s));
    Site().Show(0);
    ASSERT_NE(Button(u"場所を開く  Ctrl+L"_s), nullptr);
    Button(u"場所を開く  Ctrl+L"_s)->click();
    EXPECT_TRUE(Site().isVisible());
}

TEST_F(PlanetariumStory, TheKeysThatThePanelNamesWorkInTheSiteDialogToo)
{
    OpenSite();
    Enter(ObsId::EditLngDeg);
    const bool ran = Host().IsClockRunning();
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_NE(Host().IsClockRunning(), ran);
    InNext<CKivDialog>([](CKivDialog& list) { EXPECT_EQ(list.TemplateNumber(), CityId::Template); });
    Key(Qt::Key_T, Qt::ControlModifier);
}

TEST_F(PlanetariumStory, DeveloperCallsAndTheLogAreForDevelopers)
{
    Start();
    EXPECT_EQ(Menus(), "ファイル 場所 地図 時刻 日食 ヘルプ");
    EXPECT_EQ(Entries(Menu(1)), "場所を開く 都市名選択 「場所」を隠す | 天体");
    EXPECT_EQ(Entries(Menu(3)),
              "日時を変える 1時間進める 1時間戻す 現在の時刻にする 時計を進める | 標準時 世界時 地方平時");
    Host().SetInstant(QDateTime(QDate(2031, 12, 31), QTime(23, 30), Qt::UTC));
    Host().SetTimeSystem(TimeSystem::LocalMean);
    Menu(3).actions().at(1)->trigger();
    EXPECT_TRUE(Says(u"2032年01月01日  00:30:00"_s)) << "an hour on, universal time";
    EXPECT_TRUE(Says(u"2032年01月01日  09:48:46"_s)) << "and the mean time of Tokyo";
    EXPECT_TRUE(Says(u"地方平時（UT+9:19）"_s));
    Menu(3).actions().at(2)->trigger();
    EXPECT_TRUE(Says(u"2031年12月31日  23:30:00"_s)) << "an hour back";
    EXPECT_FALSE(Window().findChild<QPlainTextEdit*>()->isVisible());
    Quit();
    Start(Audience::Developer);
    EXPECT_EQ(Menus(), "ファイル 場所 地図 時刻 日食 開発 ヘルプ");
    EXPECT_TRUE(Window().findChild<QPlainTextEdit*>()->isVisible());
}

TEST_F(PlanetariumStory, TheLogFollowsItsNewestLineUnlessSomebodyReadsAbove)
{
    Start(Audience::Developer);
    QScrollBar& bar = *Window().findChild<QPlainTextEdit*>()->verticalScrollBar();
    const auto fill = [this] {
        for (int i = 0; i < 60; ++i)
            Host().MoveObserver(i, 0.0, 0.0);
        Settle();
    };
    fill();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    EXPECT_TRUE(Window().LogText().section(u'\n', -1).startsWith(u"[空] "_s)) << "the newest is the last";
    bar.setValue(3);
    fill();
    EXPECT_EQ(bar.value(), 3);
}

TEST_F(PlanetariumStory, TheClockRunsQuietlyAndCanBeHeld)
{
    Start(Audience::Developer);
    OpenSite();
    const QDateTime begin(QDate(2031, 12, 31), QTime(23, 59, 59), Qt::UTC);
    Host().SetInstant(begin);
    Enter(ObsId::EditLngSec);
    Type("12.");
    Window().ClearLog();
    int eclipseQueries = 0;
    QObject::connect(&Host().Engine(), &CCorKiv::CommandSent, &Window(), [&eclipseQueries](const QString& line) {
        eclipseQueries += line == u"? Solar.Planet.Earth.SolarEclipse.Path.Visible"_s ? 1 : 0;
    });
    auto* box = Window().centralWidget()->findChild<QCheckBox*>();
    EXPECT_FALSE(box->isChecked());
    QElapsedTimer real;
    real.start();
    box->click();
    EXPECT_TRUE(Host().IsClockRunning());
    EXPECT_TRUE(QTest::qWaitFor([this] { return Says(u"2032年01月01日  00:00:0"_s); }));
    EXPECT_EQ(TextOf(ObsId::EditLngSec), "12.") << "what is being typed is left alone";
    box->click();
    const auto gone = begin.msecsTo(Observer().GetInstant());
    EXPECT_NEAR(static_cast<double>(gone), static_cast<double>(real.elapsed()), 300.0);
    EXPECT_FALSE(Window().LogText().contains(u"Time = UT"_s)) << "the clock would bury all else";
    EXPECT_EQ(eclipseQueries, 1) << "at the new day, not at every second";
    EXPECT_FALSE(Host().IsClockRunning());
}

TEST_F(PlanetariumStory, AnInstantIsEnteredInTheTimeThatIsShown)
{
    Start();
    Host().SetInstant(QDateTime(QDate(2031, 12, 31), QTime(23, 30), Qt::UTC));
    InNext<QDialog>([](QDialog& dialog) {
        auto* edit = dialog.findChild<QDateTimeEdit*>();
        EXPECT_EQ(edit->text(), u"2032年01月01日 08:30:00"_s);
        edit->setDateTime(edit->dateTime().addSecs(60));
        Key(Qt::Key_Return);
    });
    Menu(3).actions().constFirst()->trigger();
    EXPECT_EQ(Observer().GetInstant(), QDateTime(QDate(2031, 12, 31), QTime(23, 31), Qt::UTC));
}

class GuideStory : public PlanetariumStory
{
protected:
    GuideStory() { Guide::Install(Machine.Context(), QStringLiteral(KIV_SOURCE_DATA) + u"../docs/guide.ja.md"_s); }

    static CGuideWindow* Guide()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* guide = qobject_cast<CGuideWindow*>(window); guide && guide->isVisible())
                return guide;
        }
        return nullptr;
    }
    /// The heading or the line of text at the cursor, and what is marked in it.
    static std::string At(CGuideWindow& guide)
    {
        const QTextCursor cursor = guide.findChild<QTextBrowser*>()->textCursor();
        return cursor.block().text().left(8).toStdString() + '/' + cursor.selectedText().toStdString();
    }
};

TEST_F(GuideStory, OpensAtTheDialogsPageHasContentsAndASearchAndEscClosesIt)
{
    OpenSite();
    Key(Qt::Key_F1);
    QPointer<CGuideWindow> guide = Guide();
    ASSERT_FALSE(guide.isNull());
    ASSERT_TRUE(QTest::qWaitFor([&guide] { return QApplication::activeWindow() == guide; }));
    EXPECT_EQ(At(*guide), "場所/");
    auto* contents = guide->findChild<QTreeWidget*>();
    const auto items = contents->findItems(u"数値で入れる"_s, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.constFirst()->parent()->text(0), u"場所"_s);
    contents->setCurrentItem(items.constFirst());
    EXPECT_EQ(At(*guide), "数値で入れる/");

    Key(Qt::Key_F, Qt::ControlModifier);
    auto* find = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(find, nullptr);
    QTest::keyClicks(find, u"ctrl"_s);
    const std::string first = At(*guide);
    EXPECT_EQ(first.substr(first.find('/')), "/Ctrl");
    Key(Qt::Key_Return);
    EXPECT_NE(At(*guide), first);
    Key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(At(*guide), first);
    QTest::keyClicks(find, u"zzz"_s);
    const auto labels = guide->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                            [](const QLabel* label) { return label->text() == u"見つかりません"_s; }));
    Key(Qt::Key_Escape);
    EXPECT_EQ(find->text(), QString());
    Key(Qt::Key_Escape);
    Settle();
    EXPECT_EQ(Guide(), nullptr);
    EXPECT_TRUE(Site().isVisible());
}

TEST_F(GuideStory, SaysThatItsFileIsMissing)
{
    Guide::Install(Machine.Context(), Folder.filePath(u"guide.ja.md"_s));
    Start();
    Prompts.Expect(("使い方のファイル（guide.ja.md）が見つかりません。\n「" + Folder.path().toStdString() +
                    "」にあるかどうか、確認してください。")
                       .c_str(),
                   IPrompts::Icon::Warning);
    QTest::keyClick(&Window(), Qt::Key_F1);
    Settle();
    EXPECT_EQ(Guide(), nullptr);
}

/// The program itself, started from a shell.
TEST(CommandLineStory, MistakesEndWithAMessageAndStatusTwo)
{
    const QTemporaryDir folder;
    const QString missing = folder.filePath(u"none"_s);
    const std::string none = missing.toStdString();
    const std::string noFolder = "フォルダ「" + none + "/」がありません";
    const std::string noFile = "ファイル「" + none + "」がありません";
    for (const auto& [arguments, status, output, error] :
         {std::tuple<QStringList, int, const char*, const char*>{
              {u"--help"_s}, 0, "地形データの索引ファイル（空の文字列で地形なし）", ""},
          {{u"--version"_s}, 0, "planetarium ", ""},
          {{u"--dat"_s}, 2, "", "オプション「--dat」はありません。"},
          {{u"sky"_s}, 2, "", "引数「sky」は使えません。"},
          {{u"--developer=1"_s, u"--data"_s, folder.path()}, 2, "", "オプション「--developer=1」の値の"},
          {{u"--data"_s}, 2, "", "オプション「--data」の値がありません。"},
          {{u"--user="_s}, 2, "", "オプション「--user」の値がありません。"},
          {{u"--data"_s, missing}, 2, "", noFolder.c_str()},
          {{u"--user"_s, missing}, 2, "", noFolder.c_str()},
          {{u"--terrain"_s, missing}, 2, "", noFile.c_str()},
          {{u"--settings"_s, folder.path()}, 2, "", "設定ファイル「"}}) {
        QProcess program;
        program.start(QStringLiteral(KIV_PLANETARIUM), arguments);
        ASSERT_TRUE(program.waitForFinished());
        const std::string name = arguments.join(u' ').toStdString();
        EXPECT_EQ(program.exitCode(), status) << name;
        const std::string printed = program.readAllStandardOutput().toStdString();
        const std::string errors = program.readAllStandardError().toStdString();
        EXPECT_NE(printed.find(output), std::string::npos) << name << ": " << printed;
        EXPECT_NE(errors.find(error), std::string::npos) << name << ": " << errors;
        EXPECT_EQ(printed.empty(), status != 0) << name;
    }
}
} // namespace
