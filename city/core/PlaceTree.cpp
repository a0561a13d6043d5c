#include "city/core/PlaceTree.h"

#include <limits>

namespace
{
constexpr quint64 OrderStep = quint64(1) << 32;
}

CPlaceTree::CPlaceTree() = default;

CPlaceTree::~CPlaceTree()
{
    Clear();
}

CPlaceItem* CPlaceTree::Append(CPlaceItem* parent, const QString& text, int data)
{
    return InsertAfter(parent, Holder(parent).m_lastChild, text, data);
}

CPlaceItem* CPlaceTree::InsertAfter(CPlaceItem* parent, CPlaceItem* after, const QString& text, int data)
{
    CPlaceItem& holder = Holder(parent);
    auto owned = std::make_unique<CPlaceItem>();
    owned->m_text = text;
    owned->m_data = data;
    owned->m_isTopLevel = parent == nullptr;
    if (holder.m_childrenByText)
        holder.m_childrenByText->insert(text, owned.get());

    CPlaceItem* item = owned.release(); // the links own it from here on
    item->m_parent = &holder;
    item->m_previous = after;
    item->m_next = after ? after->m_next : holder.m_firstChild;
    (item->m_previous ? item->m_previous->m_next : holder.m_firstChild) = item;
    (item->m_next ? item->m_next->m_previous : holder.m_lastChild) = item;
    AssignOrder(holder, *item);
    return item;
}

/// Gives the item a number between its neighbours'; when there is no room left all siblings are numbered anew.
void CPlaceTree::AssignOrder(CPlaceItem& holder, CPlaceItem& item)
{
    const quint64 low = item.m_previous ? item.m_previous->m_order : 0;
    const quint64 high = item.m_next ? item.m_next->m_order : std::numeric_limits<quint64>::max();
    if (!item.m_next && high - low > OrderStep)
        item.m_order = low + OrderStep;
    else if (high - low > 1)
        item.m_order = low + (high - low) / 2;
    else {
        quint64 order = 0;
        for (CPlaceItem* child = holder.m_firstChild; child; child = child->m_next)
            child->m_order = order += OrderStep;
    }
}

void CPlaceTree::SetText(CPlaceItem* item, const QString& text)
{
    if (auto* index = item->m_parent->m_childrenByText.get()) {
        index->remove(item->m_text, item);
        index->insert(text, item);
    }
    item->m_text = text;
}

void CPlaceTree::Unlink(CPlaceItem* item)
{
    CPlaceItem& holder = *item->m_parent;
    if (holder.m_childrenByText)
        holder.m_childrenByText->remove(item->m_text, item);
    (item->m_previous ? item->m_previous->m_next : holder.m_firstChild) = item->m_next;
    (item->m_next ? item->m_next->m_previous : holder.m_lastChild) = item->m_previous;
}

/// Frees an unlinked item and what is below it; without recursion, as a hostile list may nest without bound.
void CPlaceTree::Destroy(CPlaceItem* subtree)
{
    CPlaceItem* item = subtree;
    while (true) {
        while (item->m_firstChild)
            item = item->m_firstChild;
        const std::unique_ptr<CPlaceItem> owned(item);
        if (item == subtree)
            return;
        CPlaceItem* parent = item->m_parent;
        parent->m_firstChild = item->m_next;
        item = parent;
    }
}

void CPlaceTree::Remove(CPlaceItem* item)
{
    Unlink(item);
    Destroy(item);
}

void CPlaceTree::Clear()
{
    m_top.m_childrenByText.reset();
    CPlaceItem* item = m_top.m_firstChild;
    m_top.m_firstChild = nullptr;
    m_top.m_lastChild = nullptr;
    while (item) {
        CPlaceItem* next = item->m_next;
        Destroy(item);
        item = next;
    }
}

CPlaceItem* CPlaceTree::SearchNodeItem(const CPlaceItem* parent, const QString& name) const
{
    CPlaceItem& holder = parent ? const_cast<CPlaceItem&>(*parent) : m_top; // only its index is touched
    if (!holder.m_firstChild)
        return nullptr;
    if (!holder.m_childrenByText) {
        auto index = std::make_unique<QMultiHash<QString, CPlaceItem*>>();
        for (CPlaceItem* child = holder.m_firstChild; child; child = child->m_next)
            index->insert(child->m_text, child);
        holder.m_childrenByText = std::move(index);
    }
    CPlaceItem* first = nullptr;
    for (auto it = holder.m_childrenByText->constFind(name);
         it != holder.m_childrenByText->constEnd() && it.key() == name; ++it) {
        if (!first || it.value()->m_order < first->m_order)
            first = it.value();
    }
    return first;
}
