#include "city/PlaceFindLine.h"
#include "tests/dialog/CityFixture.h"

#include <QInputMethodEvent>

using namespace Qt::StringLiterals;

namespace
{
class CityFind : public CCityFixture
{
protected:
    [[nodiscard]] CPlaceFindLine* Line() const { return Dialog->findChild<CPlaceFindLine*>(); }
    [[nodiscard]] std::string Count() const { return Line()->findChild<QLabel*>()->text().toStdString(); }
    /// Settles a text in the input method where the focus is.
    static void Compose(const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
};

TEST_F(CityFind, WalksThroughTheMatchesInTreeOrder)
{
    Run([this] {
        EXPECT_TRUE(Line()->isHidden());
        QTest::keyClicks(QApplication::focusWidget(), u"O"_s); // opens the line, which takes the next keys
        QTest::keyClicks(QApplication::focusWidget(), u"nd"_s);
        EXPECT_TRUE(Line()->isVisible());
        EXPECT_EQ(Line()->Text(), u"Ond"_s);
        EXPECT_EQ(Selected(), "London");
        EXPECT_EQ(Count(), "1 / 1");
        EXPECT_EQ(TextOf(CoordinateId::EditLong2), "30"); // selected like any other place
        EXPECT_TRUE(Item<CKivTreeCtrl>(CityId::Tree)->isExpanded(At("海外")));

        Key(Qt::Key_A, Qt::ControlModifier);
        Compose(u"ア"_s);
        EXPECT_EQ(Count(), "見つかりません");
        EXPECT_EQ(Selected(), "London");
        Key(Qt::Key_Escape);
        EXPECT_TRUE(Line()->isHidden());
        EXPECT_TRUE(Dialog->isVisible());
        EXPECT_EQ(QApplication::focusWidget(), Item(CityId::Tree));

        Select("日本/東北");
        EXPECT_TRUE(QApplication::focusWidget()->testAttribute(Qt::WA_InputMethodEnabled));
        Compose(u"東"_s); // typed into the tree by an input method
        EXPECT_EQ(Count(), "3 / 3");
        EXPECT_EQ(Selected(), "東北"); // where the selection is
        Key(Qt::Key_F3);
        EXPECT_EQ(Selected(), "関東");
        Key(Qt::Key_Return);
        EXPECT_EQ(Selected(), "東京");
        EXPECT_EQ(Count(), "2 / 3");
        Keys("Shift+F3 Up");
        EXPECT_EQ(Selected(), "東北");
        EXPECT_TRUE(Dialog->isVisible()); // Enter went on in the matches

        Item(CityId::Tree)->setFocus();
        Asks("\"東北\"フォルダとこのフォルダに含まれるすべての情報を消去します。");
        Keys("Del F3");
        EXPECT_EQ(Count(), "1 / 2"); // the tree as it is now
        Key(Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(Line()->findChild<QLineEdit*>()->selectedText(), u"東"_s);
    });
}

TEST_F(CityFind, TakesNoKeysOfTheTree)
{
    Run([this] {
        Select("日本");
        Keys("Space + - * Home");
        EXPECT_TRUE(Line()->isHidden());
        Key(Qt::Key_F3); // nothing was looked for yet
        EXPECT_TRUE(Line()->isVisible());
        EXPECT_EQ(Count(), "");
        const std::string tree = TreeText();
        QTest::keyClicks(QApplication::focusWidget(), u"London"_s);
        Keys("Alt+Left Alt+Right Alt+Up Ins F2"); // the tree's keys are not the line's
        EXPECT_EQ(TreeText(), tree);
        EXPECT_EQ(Line()->Text(), u"London"_s);
        Item(CityId::Tree)->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), u"P"_s);
        EXPECT_EQ(Line()->Text(), u"P"_s) << "typed anew";
        EXPECT_EQ(Count(), "1 / 1");
        Select("日本");
        EXPECT_EQ(Count(), "1 件") << "no longer at the match";
        Item(CityId::Tree)->setFocus();
        Key(Qt::Key_Space, Qt::ControlModifier);
        EXPECT_EQ(Selected(), "日本");
        Key(Qt::Key_Escape); // closes the line first
        EXPECT_TRUE(Line()->isHidden());
        for (const Qt::Key held : {Qt::Key_Escape, Qt::Key_Return}) {
            QKeyEvent again(QEvent::KeyPress, held, Qt::NoModifier, QString(), true);
            QApplication::sendEvent(QApplication::focusWidget(), &again);
        }
        EXPECT_TRUE(Dialog->isVisible()) << "each press ends one thing";
    });
}

TEST(PlaceFinder, ComparesWhatTheUserMeans)
{
    const std::pair<QString, QString> same[]{
        {u"トウキョウ"_s, u"とうきょう"_s},  {u"ﾊﾞﾝｺｸ"_s, u"バンコク"_s},       {u"ﾊﾟﾘ"_s, u"ぱり"_s},
        {u"ＴＯＫＹＯ　１"_s, u"tokyo 1"_s}, {u"ヴェネツィア"_s, u"ｳﾞｪﾈﾂｨｱ"_s}, {u"Ärger①"_s, u"ärgeR1"_s},
        {u"ｽﾞｰﾑﾃﾞ"_s, u"ずーむで"_s},        {u"〜−・—‖"_s, u"～－･―∥"_s},
    };
    for (const auto& [one, other] : same)
        EXPECT_EQ(CPlaceFinder::Folded(one), CPlaceFinder::Folded(other)) << one.toStdString();
    EXPECT_NE(CPlaceFinder::Folded(u"は"_s), CPlaceFinder::Folded(u"ば"_s));
    EXPECT_NE(CPlaceFinder::Folded(u"つ"_s), CPlaceFinder::Folded(u"っ"_s));
}
} // namespace
