#include "city/core/PlaceTree.h"
#include "core_test.h"

#include <random>

using namespace Qt::StringLiterals;

namespace
{
CPlaceItem* NaiveSearch(const CPlaceTree& tree, const CPlaceItem* parent, const QString& name)
{
    CPlaceItem* item = parent ? parent->FirstChild() : tree.Root();
    while (item && item->Text() != name)
        item = item->Next();
    return item;
}
} // namespace

TEST(PlaceTree, FindsTheFirstOfEqualNamesAfterAnyEdit)
{
    std::mt19937 random(7);
    CPlaceTree tree;
    std::vector<CPlaceItem*> holders{nullptr, tree.Append(nullptr, u"a"_s, -1), tree.Append(nullptr, u"b"_s, -1)};
    const QStringList names{u"x"_s, u"X"_s, u"場"_s, u""_s, u"a"_s};
    std::vector<CPlaceItem*> items;
    for (int step = 0; step < 20000; ++step) {
        const QString& name = names[static_cast<qsizetype>(random() % 5)];
        CPlaceItem* const holder = holders[random() % holders.size()];
        const size_t at = items.empty() ? 0 : random() % items.size();
        switch (random() % 5) {
        case 0:
            items.push_back(tree.Append(holder, name, step));
            break;
        case 1: // often at the very same gap, so that the room between neighbours runs out
            items.push_back(tree.InsertAfter(holder, nullptr, name, step));
            break;
        case 2:
            if (!items.empty())
                items.push_back(tree.InsertAfter(items[at]->Parent(), items[at], name, step));
            break;
        case 3:
            if (!items.empty())
                tree.SetText(items[at], name);
            break;
        default:
            if (items.size() > 60) {
                tree.Remove(items[at]);
                items.erase(items.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
        ASSERT_EQ(tree.SearchNodeItem(holder, name), NaiveSearch(tree, holder, name)) << "step " << step;
    }
    for (const CPlaceItem* item = tree.Root(); item; item = item->Following()) {
        EXPECT_TRUE(!item->Next() || (item->Next()->Previous() == item && item->Next()->Parent() == item->Parent()));
        EXPECT_TRUE(item->Next() || !item->Parent() || item->Parent()->LastChild() == item);
    }
}

TEST(PlaceTree, DestroysDeepNestingWithoutRecursion)
{
    CPlaceTree tree;
    CPlaceItem* item = nullptr;
    for (int level = 0; level < 100'000; ++level) {
        item = tree.Append(item, u"deep"_s, -1);
        ASSERT_EQ(tree.SearchNodeItem(item->Parent(), u"deep"_s), item);
    }
    tree.Remove(tree.Root()->FirstChild());
    EXPECT_EQ(tree.Root()->LastChild(), nullptr);
    EXPECT_EQ(tree.SearchNodeItem(tree.Root(), u"deep"_s), nullptr);
}
