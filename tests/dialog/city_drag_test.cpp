#include "city/DlgCityMoveTo.h"
#include "tests/dialog/CityFixture.h"

using namespace Qt::StringLiterals;

namespace
{
class CityDrag : public CCityFixture
{
protected:
    [[nodiscard]] std::string Highlight() const
    {
        const QModelIndex index = Item<CKivTreeCtrl>(CityId::Tree)->DropHighlight();
        return index.data().toString().toStdString();
    }
    void Choose(int radio)
    {
        InNext<CDlgCityMoveTo>([radio](CDlgCityMoveTo& moveTo) {
            EXPECT_TRUE(moveTo.Item<QAbstractButton>(MoveToId::RadioAfter)->isChecked());
            if (radio != 0) {
                moveTo.Item<QAbstractButton>(radio)->click();
                Key(Qt::Key_Return);
            }
        });
    }
};

constexpr char Shipped[] = "日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris London)";

TEST_F(CityDrag, MovesByTheRules)
{
    // A number is a radio of the chooser; 0 cancels it, -1: it does not open.
    const std::tuple<const char*, const char*, int, const char*, const char*> cases[]{
        {"海外/London", "日本/関東/東京", -1, "日本(関東(東京 London 横浜) 東北(仙台) 富士山) 海外(Paris)", ""},
        {"海外/London", "日本/東北", -1, "日本(関東(東京 横浜) 東北(London 仙台) 富士山) 海外(Paris)", ""},
        {"日本/富士山", "日本/関東", -1, "日本(関東(富士山 東京 横浜) 東北(仙台)) 海外(Paris London)", ""},
        {"日本/東北", "日本/関東/東京", -1, "日本(関東(東京 東北(仙台) 横浜) 富士山) 海外(Paris London)", ""},
        {"日本/東北", "海外", MoveToId::RadioAfter, "日本(関東(東京 横浜) 富士山) 海外(Paris London) 東北(仙台)", ""},
        {"日本/東北", "海外", MoveToId::RadioInto, "日本(関東(東京 横浜) 富士山) 海外(東北(仙台) Paris London)", ""},
        {"日本/東北", "海外", 0, Shipped, ""},
        {"日本", "日本/関東", -1, Shipped, ""},
        {"日本", "日本/関東/東京", -1, Shipped, ""},
        {"日本", "", -1, Shipped, "場所"},
        {"海外/Paris", "海外/Paris", -1, Shipped, ""},
        {"", "海外/Paris", -1, Shipped, ""},
    };
    for (const auto& row : cases) {
        Renew();
        Run([&] {
            const auto& [from, to, radio, tree, highlight] = row;
            SCOPED_TRACE(std::string(from) + " -> " + to);
            if (radio >= 0)
                Choose(radio);
            Drag(from, to);
            EXPECT_EQ(TreeText(), tree);
            EXPECT_EQ(Highlight(), highlight);
            EXPECT_EQ(Selected(), "場所");
            EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
            Key(Qt::Key_Z, Qt::ControlModifier);
            EXPECT_EQ(TreeText(), Shipped);
        });
    }
}

TEST_F(CityDrag, CountsAsAChangeEvenWhenItIsCancelled)
{
    Run([this] {
        Select("海外/Paris");
        Drag("海外/London", "日本/富士山", true);
        EXPECT_EQ(TreeText(), Shipped);
        EXPECT_EQ(Highlight(), "富士山");
        EXPECT_EQ(Selected(), "Paris");
        const QPoint start = PointOf("海外/London");
        Mouse(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
        Mouse(QEvent::MouseMove, start + QPoint(0, 15), Qt::NoButton, Qt::LeftButton);
        EXPECT_EQ(QWidget::mouseGrabber(), Dialog.get());
        Key(Qt::Key_Delete); // no edit comes in between
        const QPoint outside(Dialog->width() - 5, Dialog->height() - 5);
        Mouse(QEvent::MouseMove, outside, Qt::NoButton, Qt::LeftButton);
        Mouse(QEvent::MouseButtonRelease, outside, Qt::LeftButton, Qt::NoButton);
        EXPECT_EQ(TreeText(), Shipped);
        Click(CityId::ButtonOk);
    });
    EXPECT_NE(ReadFile("kivpel_user_obs.json"), "(none)");
}

TEST_F(CityDrag, TakesTheSelectionAlongWithWhatIsMoved)
{
    Run([this] {
        Select("日本/東北/仙台");
        Type(CoordinateId::EditLong1, "12");
        Choose(MoveToId::RadioInto);
        Drag("日本/東北", "海外");
        EXPECT_EQ(Selected(), "仙台");
        EXPECT_EQ(TextOf(CoordinateId::EditLong1), "12");
        Drag("海外/東北/仙台", "海外/Paris");
        EXPECT_EQ(Selected(), "仙台");
        EXPECT_EQ(TreeText(), "日本(関東(東京 横浜) 富士山) 海外(東北 Paris 仙台 London)");
    });
}

TEST_F(CityDrag, MovesWithoutAMouse)
{
    constexpr char last[] = "日本(関東(東京 横浜)) 富士山 海外(東北(仙台) Paris London)";
    const std::tuple<const char*, const char*, const char*> steps[]{
        {"日本/富士山", "Alt+Up", "日本(関東(東京 横浜) 富士山 東北(仙台)) 海外(Paris London)"},
        {nullptr, "Alt+Right", "日本(関東(富士山 東京 横浜) 東北(仙台)) 海外(Paris London)"},
        {nullptr, "Alt+Up Alt+Right", "日本(関東(富士山 東京 横浜) 東北(仙台)) 海外(Paris London)"},
        {nullptr, "Alt+Down", "日本(関東(東京 富士山 横浜) 東北(仙台)) 海外(Paris London)"},
        {nullptr, "Alt+Left", "日本(関東(東京 横浜) 富士山 東北(仙台)) 海外(Paris London)"},
        {nullptr, "Alt+Left Alt+Left",
         "日本(関東(東京 横浜) 東北(仙台)) 富士山 海外(Paris London)"}, // not beside the root
        {"日本/東北", "Ctrl+X", "日本(関東(東京 横浜) 東北(仙台)) 富士山 海外(Paris London)"},
        {"海外", "Ctrl+V", last},
        {nullptr, "Ctrl+V", last}, // once only
        {"海外", "Ctrl+X", last},
        {"海外/東北", "Ctrl+V", last}, // not into itself
        {"海外/Paris", "Ctrl+X Esc", last},
        {"日本", "Ctrl+V", last}, // no longer cut
        {nullptr, "Ctrl+Z Ctrl+Z Ctrl+Z Ctrl+Z Ctrl+Z Ctrl+Z Ctrl+Z", Shipped}};
    Run([&] {
        Choose(MoveToId::RadioInto); // asked once, for the folder that is pasted on a folder
        for (const auto& [select, keys, tree] : steps) {
            if (select)
                Select(select);
            Keys(keys);
            EXPECT_EQ(TreeText(), tree) << keys;
            EXPECT_TRUE(Dialog->isVisible());
        }
    });
}
} // namespace
