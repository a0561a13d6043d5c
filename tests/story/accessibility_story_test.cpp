#include "controls/sphere/MapAccessible.h"
#include "tests/story/EveryWindow.h"

#include <QAccessible>
#include <QSet>

using namespace Qt::StringLiterals;

namespace
{
/// What assistive programs see of the windows, read from the tree that they read.
class AccessibilityStory : public CEveryWindow
{
protected:
    /// Visits what can be worked under a window: boxes, lists, buttons, sliders and all that takes the focus.
    static void ExpectNames(QWidget& window)
    {
        QSet<QString> names;
        int count = 0;
        Walk(*QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface& item) {
            static const QSet<QAccessible::Role> worked{
                QAccessible::EditableText, QAccessible::RadioButton, QAccessible::CheckBox, QAccessible::PushButton,
                QAccessible::ComboBox,     QAccessible::Slider,      QAccessible::Tree,     QAccessible::Table,
                QAccessible::Canvas,       QAccessible::ButtonMenu,  QAccessible::List};
            const bool isInBar = item.parent() && item.parent()->role() == QAccessible::ScrollBar;
            const bool isInCombo = item.parent() && item.parent()->role() == QAccessible::ComboBox;
            if (item.state().invisible || isInBar || isInCombo || !worked.contains(item.role()))
                return;
            ++count;
            const QString name = item.text(QAccessible::Name);
            const auto* object = item.object();
            EXPECT_FALSE(name.isEmpty()) << object->metaObject()->className() << ' '
                                         << object->objectName().toStdString();
            EXPECT_FALSE(names.contains(name)) << "twice: " << name.toStdString();
            EXPECT_FALSE(name.contains(u'&')) << name.toStdString();
            names.insert(name);
        });
        EXPECT_GT(count, 2);
        QString mnemonics;
        for (const QWidget* child : window.findChildren<QWidget*>()) {
            const QString text = child->property("text").toString() + child->property("title").toString();
            const qsizetype mark = text.indexOf(u'&');
            if (!child->isVisible() || mark < 0)
                continue;
            EXPECT_FALSE(mnemonics.contains(text.at(mark + 1))) << text.toStdString();
            mnemonics += text.at(mark + 1);
        }
    }

    static QString Told(QWidget& widget, QAccessible::Text kind)
    {
        return QAccessible::queryAccessibleInterface(&widget)->text(kind);
    }

private:
    static void Walk(QAccessibleInterface& item, const std::function<void(QAccessibleInterface&)>& visit)
    {
        visit(item);
        if (item.role() == QAccessible::Tree || item.role() == QAccessible::Table)
            return; // thousands of rows
        for (int i = 0; i < item.childCount(); ++i) {
            if (QAccessibleInterface* child = item.child(i))
                Walk(*child, visit);
        }
    }
};
} // namespace

TEST_F(AccessibilityStory, WhateverCanBeWorkedHasANameOfItsOwn)
{
    Visit(ExpectNames);
}

TEST_F(AccessibilityStory, TheListOfBodiesHasItsNameBesideItsValue)
{
    OpenSite();
    QWidget& bodies = *Item(ObsId::ComboPlanet);
    for (const auto& [body, label] : {std::pair{4, u"地球"_s}, {5, u"火星"_s}}) {
        ChooseBody(body);
        EXPECT_EQ(Told(bodies, QAccessible::Name), u"天体"_s);
        EXPECT_EQ(Told(bodies, QAccessible::Value), label);
    }
}

TEST_F(AccessibilityStory, AMapTurnedByKeysTellsItsMiddle)
{
    OpenSite();
    // Longitudes of Mars count to the west.
    const std::tuple<int, const char16_t*, const char16_t*, const char16_t*> cases[] = {
        {4, u"地球の地図", u"東経 179°10′  南緯 0°30′", u"東経 179°10′  南緯 0°20′"},
        {5, u"火星の地図", u"西経 178°57′  南緯 0°30′", u"西経 178°57′  南緯 0°27′"},
        {1, u"月の地図", u"東経 179°03′  南緯 0°30′", u"東経 179°03′  南緯 0°27′"}};
    for (const auto& [body, name, afterRight, afterUp] : cases) {
        ChooseBody(body);
        Host().MoveObserver(179.0, -0.5, 0);
        Settle();
        QWidget* map = nullptr;
        for (QWidget* child : Site().findChildren<QWidget*>()) {
            if (child->isVisible() && dynamic_cast<ISpokenMap*>(child))
                map = child;
        }
        ASSERT_NE(map, nullptr);
        map->setFocus();
        EXPECT_EQ(QAccessible::queryAccessibleInterface(map)->role(), QAccessible::Canvas);
        EXPECT_EQ(Told(*map, QAccessible::Name), QStringView(name));
        EXPECT_TRUE(Told(*map, QAccessible::Description).contains(u"矢印キー"_s)) << "on arrival the keys are told";
        for (const auto& [key, center] : {std::pair{Qt::Key_Right, afterRight}, {Qt::Key_Up, afterUp}}) {
            Key(key);
            const QString where = QString::fromUtf16(center);
            EXPECT_EQ(Told(*map, QAccessible::Value).toStdString(), where.toStdString());
            EXPECT_EQ(Told(*map, QAccessible::Description), u"中央は "_s + where + u"。"_s) << "at each step not";
        }
        // By the mouse it turns without an announcement; a new focus announces the keys again.
        Item(ObsId::SliderMagnification)->setFocus();
        map->setFocus();
        const QString before = Told(*map, QAccessible::Value);
        const QPoint middle = map->rect().center();
        QTest::mousePress(map, Qt::LeftButton, {}, middle);
        for (int step = 1; step < 10; ++step)
            QTest::mouseMove(map, middle + QPoint(5 * step, 0));
        EXPECT_NE(Told(*map, QAccessible::Value), before);
        EXPECT_TRUE(Told(*map, QAccessible::Description).contains(u"矢印キー"_s));
        QTest::mouseRelease(map, Qt::LeftButton, {}, middle + QPoint(50, 0));
    }
}
