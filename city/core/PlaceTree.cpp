#include "city/core/PlaceTree.h"

#include <limits>
#include <utility>

namespace
{
constexpr quint64 OrderStep = quint64(1) << 32;
constexpr quint64 FirstOrder = quint64(1) << 63;
constexpr quint64 LastOrder = std::numeric_limits<quint64>::max();
} // namespace

CPlaceItem* CPlaceItem::Following() const
{
    if (m_firstChild)
        return m_firstChild;
    const CPlaceItem* item = this;
    while (item && !item->m_next)
        item = item->Parent();
    return item ? item->m_next : nullptr;
}

void CPlaceItem::AddToIndex(CPlaceItem* child)
{
    if (!m_childrenByText)
        return;
    CNamesakes& namesakes = (*m_childrenByText)[child->m_text];
    if (!namesakes.First) {
        namesakes.First = child;
        return;
    }
    if (!namesakes.All) {
        namesakes.All = std::make_unique<CNamesakes::CByOrderSet>();
        namesakes.All->insert(namesakes.First);
    }
    namesakes.All->insert(child);
    namesakes.First = *namesakes.All->begin();
}

void CPlaceItem::RemoveFromIndex(const CPlaceItem* child)
{
    if (!m_childrenByText)
        return;
    const auto found = m_childrenByText->find(child->m_text);
    CNamesakes& namesakes = found->second;
    if (namesakes.All && namesakes.All->size() > 1) {
        namesakes.All->erase(const_cast<CPlaceItem*>(child));
        namesakes.First = *namesakes.All->begin();
    } else
        m_childrenByText->erase(found);
}

CPlaceSubtree::~CPlaceSubtree()
{
    if (m_item)
        CPlaceTree::Destroy(m_item);
}

CPlaceTree::CPlaceTree() = default;

CPlaceTree::~CPlaceTree()
{
    m_listener = nullptr;
    Clear();
}

void CPlaceTree::BeginReset()
{
    if (CPlaceTreeListener* listener = Listener())
        listener->BeforeReset();
    ++m_resetDepth;
}

void CPlaceTree::EndReset()
{
    --m_resetDepth;
    if (CPlaceTreeListener* listener = Listener())
        listener->AfterReset();
}

CPlaceItem* CPlaceTree::Append(CPlaceItem* parent, const QString& text, int data)
{
    return InsertAfter(parent, Holder(parent).m_lastChild, text, data);
}

CPlaceItem* CPlaceTree::InsertAfter(CPlaceItem* parent, CPlaceItem* after, const QString& text, int data)
{
    CPlaceSubtree subtree(std::make_unique<CPlaceItem>().release());
    subtree.m_item->m_text = text;
    subtree.m_item->m_data = data;
    return Attach(std::move(subtree), parent, after);
}

CPlaceItem* CPlaceTree::Attach(CPlaceSubtree subtree, CPlaceItem* parent, CPlaceItem* after)
{
    CPlaceTreeListener* listener = Listener();
    if (listener)
        listener->BeforeInsert(parent, after);
    CPlaceItem* item = std::exchange(subtree.m_item, nullptr); // the links own it from here on
    item->m_isTopLevel = parent == nullptr;
    Link(Holder(parent), after, item);
    if (listener)
        listener->AfterInsert(item);
    return item;
}

CPlaceSubtree CPlaceTree::Detach(CPlaceItem* item)
{
    CPlaceTreeListener* listener = Listener();
    if (listener)
        listener->BeforeRemove(item);
    Unlink(item);
    if (listener)
        listener->AfterRemove(item);
    return CPlaceSubtree(item);
}

std::vector<CPlaceSubtree> CPlaceTree::DetachAll()
{
    std::vector<CPlaceSubtree> all;
    BeginReset();
    while (m_top.m_firstChild)
        all.push_back(Detach(m_top.m_firstChild));
    EndReset();
    return all;
}

void CPlaceTree::Clear()
{
    (void)DetachAll();
}

CPlaceSubtree CPlaceTree::Copy(const CPlaceItem* source)
{
    const auto copyOf = [](const CPlaceItem* item) {
        auto copy = std::make_unique<CPlaceItem>();
        copy->m_text = item->m_text;
        copy->m_data = item->m_data;
        return copy.release();
    };
    CPlaceSubtree subtree(copyOf(source));
    CPlaceItem* holder = subtree.m_item; // the copy of `from`
    const CPlaceItem* from = source;
    while (true) {
        if (from->m_firstChild) {
            from = from->m_firstChild;
        } else {
            while (from != source && !from->m_next) {
                from = from->m_parent;
                holder = holder->m_parent;
            }
            if (from == source)
                return subtree;
            from = from->m_next;
            holder = holder->m_parent;
        }
        CPlaceItem* copy = copyOf(from);
        Link(*holder, holder->m_lastChild, copy);
        holder = copy;
    }
}

void CPlaceTree::Link(CPlaceItem& holder, CPlaceItem* after, CPlaceItem* item)
{
    item->m_parent = &holder;
    item->m_previous = after;
    item->m_next = after ? after->m_next : holder.m_firstChild;
    (item->m_previous ? item->m_previous->m_next : holder.m_firstChild) = item;
    (item->m_next ? item->m_next->m_previous : holder.m_lastChild) = item;
    AssignOrder(holder, *item);
    holder.AddToIndex(item);
}

/// Gives the item a number between its neighbours'.
void CPlaceTree::AssignOrder(CPlaceItem& holder, CPlaceItem& item)
{
    if (holder.m_firstChild == holder.m_lastChild) {
        item.m_order = FirstOrder;
        return;
    }
    const quint64 low = item.m_previous ? item.m_previous->m_order : 0;
    const quint64 high = item.m_next ? item.m_next->m_order : LastOrder;
    if (!item.m_next && high - low > OrderStep)
        item.m_order = low + OrderStep;
    else if (!item.m_previous && high - low > OrderStep)
        item.m_order = high - OrderStep;
    else if (high - low > 1)
        item.m_order = low + (high - low) / 2;
    else
        MakeRoom(item);
}

/// Spreads the numbers around an item that has none yet: over the smallest stretch of numbers, doubled step by step,
/// that its items fill thinly enough. A longer stretch must be thinner, which makes the cost of insertions, all
/// together, grow hardly faster than their count.
void CPlaceTree::MakeRoom(CPlaceItem& item)
{
    constexpr double growth = 1.5; // items allowed in a stretch twice as long, as against 2 for the same density
    const quint64 around = item.m_previous ? item.m_previous->m_order : item.m_next->m_order;
    CPlaceItem* first = &item;
    CPlaceItem* last = &item;
    quint64 count = 1;
    double allowed = 1.0;
    for (int bits = 1; bits < 64; ++bits) {
        allowed *= growth;
        const quint64 low = around >> bits << bits;
        const quint64 high = low + ((quint64(1) << bits) - 1);
        for (; first->m_previous && first->m_previous->m_order >= low; ++count)
            first = first->m_previous;
        for (; last->m_next && last->m_next->m_order <= high; ++count)
            last = last->m_next;
        const quint64 step = (high - low) / (count + 1);
        if (static_cast<double>(count) > allowed || step < 2)
            continue;
        quint64 order = low;
        for (CPlaceItem* sibling = first;; sibling = sibling->m_next) {
            sibling->m_order = order += step;
            if (sibling == last)
                return;
        }
    }
}

void CPlaceTree::Unlink(CPlaceItem* item)
{
    CPlaceItem& holder = *item->m_parent;
    holder.RemoveFromIndex(item);
    (item->m_previous ? item->m_previous->m_next : holder.m_firstChild) = item->m_next;
    (item->m_next ? item->m_next->m_previous : holder.m_lastChild) = item->m_previous;
    item->m_parent = item->m_next = item->m_previous = nullptr;
}

void CPlaceTree::SetText(CPlaceItem* item, const QString& text)
{
    item->m_parent->RemoveFromIndex(item);
    item->m_text = text;
    item->m_parent->AddToIndex(item);
    if (CPlaceTreeListener* listener = Listener())
        listener->TextChanged(item);
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

CPlaceItem* CPlaceTree::SearchNodeItem(const CPlaceItem* parent, const QString& name) const
{
    CPlaceItem& holder = parent ? const_cast<CPlaceItem&>(*parent) : m_top; // only its index is touched
    if (!holder.m_firstChild)
        return nullptr;
    if (!holder.m_childrenByText) {
        holder.m_childrenByText = std::make_unique<CPlaceItem::CChildrenByText>();
        holder.m_childrenByText->reserve(16);
        for (CPlaceItem* child = holder.m_firstChild; child; child = child->m_next)
            holder.AddToIndex(child);
    }
    const auto found = holder.m_childrenByText->find(name);
    return found == holder.m_childrenByText->end() ? nullptr : found->second.First;
}
