#include "city/core/PlaceOverlay.h"

using namespace OverlayJson;

void CPlaceOverlay::Replay()
{
    if (m_top)
        AnalyzeNodeContext(*m_top, nullptr, 1);
}

void CPlaceOverlay::CCarried::Take(COverlayNode& node)
{
    (void)node.Read(Key::Type);
    if (node.Is(Key::Type, Type::Node)) {
        IsFolder = true;
    } else if (node.Is(Key::Type, Type::Leaf)) {
        IsFolder = false;
        Data = node.Read(Key::Data);
    }
}

/// Replays the elements onto the children of the parent (null: the top level), which lie at the given depth.
void CPlaceOverlay::AnalyzeNodeContext(COverlayNodes& nodes, CPlaceItem* parent, int depth)
{
    CCarried carried; // kept from one element to the next, on purpose: an unknown type is that of the element before
    for (const std::unique_ptr<COverlayNode>& element : nodes) {
        COverlayNode& node = *element;
        if (!node.IsObject())
            continue;
        const QString name = node.Read(Key::OriginalName);
        (void)node.Read(Key::Action);

        CPlaceItem* item = nullptr;
        bool isDeletion = false;
        if (node.Is(Key::Action, Action::Path)) {
            (void)node.Read(Key::Next);
            if (node.Next())
                item = m_list.Tree().SearchNodeItem(parent, name);
        } else if (node.Is(Key::Action, Action::Add)) {
            carried.Take(node);
            item = AddTreeViewFromContextData(parent, name, node.Read(Key::VerticalOffset), carried, depth);
            (void)node.Read(Key::Next);
            if (!item && node.Next())
                return;
        } else if (node.Is(Key::Action, Action::Update)) {
            item = m_list.Tree().SearchNodeItem(parent, name);
            if (item) {
                carried.Take(node);
                UpdTreeViewFromContextData(item, node.Read(Key::LatestName), carried);
                (void)node.Read(Key::Next);
            }
        } else if (node.Is(Key::Action, Action::Delete)) {
            if (CPlaceItem* deleted = m_list.Tree().SearchNodeItem(parent, name)) {
                m_list.Tree().Remove(deleted);
                isDeletion = true;
            }
        }

        if (item && node.Next())
            AnalyzeNodeContext(*node.Next(), item, depth + 1);
        else if (!item && !isDeletion)
            node.SetMissed();
    }
}

/// Null when the tree is as deep as it may be.
CPlaceItem* CPlaceOverlay::AddTreeViewFromContextData(CPlaceItem* parent, const QString& name, const QString& anchor,
                                                      const CCarried& values, int depth)
{
    if (depth > MaximumItemDepth)
        return nullptr;
    CPlaceItem* after = anchor.isEmpty() ? nullptr : m_list.Tree().SearchNodeItem(parent, anchor);
    if (values.IsFolder)
        return m_list.Tree().InsertAfter(parent, after, name, CPlaceItem::FolderData);
    CCityList place;
    PlaceData::Parse(values.Data, place);
    return m_list.Tree().InsertAfter(parent, after, name, m_list.AddPlaceRecord(place));
}

void CPlaceOverlay::UpdTreeViewFromContextData(CPlaceItem* item, const QString& name, const CCarried& values)
{
    m_list.Tree().SetText(item, name);
    if (!values.IsFolder && !item->IsFolder()) // a newer list may hold a folder where the user changed a place
        m_list.SetLocationData(item->Data(), values.Data);
}
