#include "city/core/PlaceOverlay.h"

using namespace OverlayJson;

void CPlaceOverlay::Replay()
{
    m_index.ForgetUnmet();
    if (m_overlay.is<picojson::array>())
        AnalyzeNodeContext(Top(), nullptr, 1);
}

void CPlaceOverlay::CCarried::Take(picojson::object& node)
{
    const QString type = Text(node, Key::Type);
    if (type == QLatin1StringView(Type::Node.c_str())) {
        IsFolder = true;
    } else if (type == QLatin1StringView(Type::Leaf.c_str())) {
        IsFolder = false;
        Data = Text(node, Key::Data);
    }
}

/// Replays the node objects onto the children of the parent (null: the top level), which lie at the given depth.
void CPlaceOverlay::AnalyzeNodeContext(picojson::array& nodes, CPlaceItem* parent, int depth)
{
    CCarried carried; // kept from one element to the next, on purpose: an unknown type is that of the element before
    for (picojson::value& element : nodes) {
        if (!element.is<picojson::object>())
            continue;
        auto& node = element.get<picojson::object>();
        const QString name = Text(node, Key::OriginalName);
        if (!node[Key::Action].is<std::string>()) {
            m_index.SetUnmet(node, name);
            continue;
        }
        const std::string& action = node[Key::Action].get<std::string>();

        CPlaceItem* item = nullptr;
        bool isDeletion = false;
        if (action == Action::Path) {
            if (node[Key::Next].is<picojson::array>())
                item = m_list.Tree().SearchNodeItem(parent, name);
        } else if (action == Action::Add) {
            carried.Take(node);
            item = AddTreeViewFromContextData(parent, name, Text(node, Key::VerticalOffset), carried, depth);
            if (!item && node[Key::Next].is<picojson::array>())
                return;
        } else if (action == Action::Update) {
            item = m_list.Tree().SearchNodeItem(parent, name);
            if (item) {
                carried.Take(node);
                UpdTreeViewFromContextData(item, Text(node, Key::LatestName), carried);
            }
        } else if (action == Action::Delete) {
            if (CPlaceItem* deleted = m_list.Tree().SearchNodeItem(parent, name)) {
                m_list.Tree().Remove(deleted);
                isDeletion = true;
            }
        }

        if (!item && !isDeletion) {
            m_index.SetUnmet(node, name);
            if (const auto next = node.find(Key::Next); next != node.end())
                m_index.SetUnmetWithin(next->second);
        } else if (item && node[Key::Next].is<picojson::array>()) {
            AnalyzeNodeContext(node[Key::Next].get<picojson::array>(), item, depth + 1);
        }
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
    PlaceFormat::ParseDataString(values.Data, place);
    return m_list.Tree().InsertAfter(parent, after, name, m_list.AddPlaceRecord(place));
}

void CPlaceOverlay::UpdTreeViewFromContextData(CPlaceItem* item, const QString& name, const CCarried& values)
{
    m_list.Tree().SetText(item, name);
    CPlaceTree::SetUpdated(item, true);
    if (!values.IsFolder && !item->IsFolder()) // a newer list may hold a folder where the user changed a place
        m_list.SetLocationData(item->Data(), values.Data);
}
