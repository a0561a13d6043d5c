#include "city/core/PlaceTree.h"

#include <utility>

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
    namesakes.First = ++namesakes.Count == 1 ? child : nullptr;
}

void CPlaceItem::RemoveFromIndex(const CPlaceItem* child)
{
    if (!m_childrenByText)
        return;
    const auto found = m_childrenByText->find(child->m_text);
    CNamesakes& namesakes = found->second;
    if (--namesakes.Count == 0)
        m_childrenByText->erase(found);
    else if (namesakes.First == child)
        namesakes.First = nullptr;
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

CPlaceTree::CReset::CReset(CPlaceTree& tree) : m_tree(tree)
{
    if (CPlaceTreeListener* listener = m_tree.Listener())
        listener->BeforeReset();
    ++m_tree.m_resetDepth;
}

CPlaceTree::CReset::~CReset()
{
    --m_tree.m_resetDepth;
    if (CPlaceTreeListener* listener = m_tree.Listener())
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
    const CReset reset(*this);
    std::vector<CPlaceSubtree> all;
    while (m_top.m_firstChild)
        all.push_back(Detach(m_top.m_firstChild));
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
    holder.AddToIndex(item);
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
    if (found == holder.m_childrenByText->end())
        return nullptr;
    CPlaceItem*& first = found->second.First;
    for (CPlaceItem* child = holder.m_firstChild; !first; child = child->m_next) {
        if (child->m_text == name)
            first = child;
    }
    return first;
}
