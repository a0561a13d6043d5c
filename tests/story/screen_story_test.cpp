// Small screens: every window fits or scrolls, and nothing that is written in it is cut.

#include "host/dialog/ScreenFit.h"
#include "host/dialog/TemplateLoader.h"
#include "tests/story/StoryFixture.h"

#include <QLayout>
#include <QScrollArea>

namespace
{
// What 1024x600 and, at factor 2, 1600x1000 leave inside a window's frame.
constexpr QSize Rooms[] = {{1016, 566}, {792, 466}};

/// The name of the first text that its control is too small for; empty when there is none.
std::string CutText(const QWidget& content)
{
    for (const QWidget* item : content.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(item);
        const auto* button = qobject_cast<const QAbstractButton*>(item);
        if (item->isHidden() || (!label && !button) || (label && label->wordWrap()))
            continue;
        const QString text = QString(label ? label->text() : button->text()).remove(u'&');
        if (item->width() < item->fontMetrics().horizontalAdvance(text) ||
            (!text.isEmpty() && item->height() < item->fontMetrics().ascent()))
            return text.toStdString();
    }
    return {};
}

class CSmallScreen : public ::testing::TestWithParam<int>
{
};
} // namespace

TEST_P(CSmallScreen, HoldsTheWholeTemplateOrScrollsIt)
{
    for (const QSize room : Rooms) {
        QWidget window;
        QWidget* content = TemplateLoader::Load(GetParam(), &window);
        ASSERT_NE(content, nullptr);
        QWidget* shown = ScreenFit::Scrolled(content, room);
        shown->resize(room);
        window.resize(room);
        window.show();
        QApplication::processEvents();
        const QSize least = shown->minimumSizeHint().expandedTo(shown->minimumSize());
        EXPECT_LE(least.width(), room.width());
        EXPECT_LE(least.height(), room.height());
        EXPECT_EQ(shown, content) << "needs " << content->minimumSizeHint().width() << "x"
                                  << content->minimumSizeHint().height();
        EXPECT_EQ(CutText(*content), "") << "at " << room.width();
        for (const QWidget* item : TemplateLoader::NumberedItems(content)) {
            const QRect place(item->mapTo(content, QPoint()), item->size());
            EXPECT_TRUE(item->isHidden() || content->rect().contains(place)) << item->objectName().toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Templates, CSmallScreen, ::testing::Range(7300, 7309));

/// A room that nothing helps in: what takes the focus comes into sight.
TEST(SmallScreen, FollowsTheFocusWhereItScrolls)
{
    QWidget window;
    QWidget* content = TemplateLoader::Load(ObsId::Template, &window);
    ASSERT_NE(content, nullptr);
    const QSize room(400, 200);
    auto* area = qobject_cast<QScrollArea*>(ScreenFit::Scrolled(content, room));
    ASSERT_NE(area, nullptr);
    area->resize(room);
    window.resize(room);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    QWidget* box = TemplateLoader::NumberedItems(content).value(ObsId::EditTzMin);
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(area->viewport()->rect().contains(box->mapTo(area->viewport(), QPoint())));
    box->setFocus();
    QApplication::processEvents();
    EXPECT_TRUE(area->viewport()->rect().contains(box->mapTo(area->viewport(), box->rect().center())));
}

TEST(SmallScreen, AWindowComesUpBesideAnother)
{
    const QSize size(870, 600);
    for (const auto& [other, wish, screen, place] :
         {std::tuple(QRect(0, 50, 1000, 700), QPoint(600, 99), QSize(1920, 1080), QPoint(1000, 50)), // to the right
          {QRect(920, 500, 1000, 700), QPoint(1500, 549), QSize(1920, 1080), QPoint(50, 480)},       // left, on screen
          {QRect(300, 50, 1060, 660), QPoint(900, 99), QSize(1600, 1000), QPoint(30, 99)},           // over the sky
          {QRect(0, 0, 800, 600), QPoint(500, 49), QSize(800, 600), QPoint(0, 0)}})                  // no room at all
        EXPECT_EQ(ScreenFit::Beside(other, wish, size, {QPoint(), screen}), place) << other.x();
}
