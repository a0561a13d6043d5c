#include "city/core/PlaceOverlay.h"

#include <algorithm>
#include <utility>
#include <vector>

using namespace OverlayJson;

namespace
{
/// How many levels the item lies below the top, itself included.
int DepthOf(const CPlaceItem* item)
{
    int depth = 0;
    for (; item; item = item->Parent())
        ++depth;
    return depth;
}

/// How many levels the subtree has, the item's own included.
int HeightOf(const CPlaceItem* item)
{
    int height = 1;
    int level = 1;
    const CPlaceItem* at = item;
    while (true) {
        if (at->FirstChild()) {
            at = at->FirstChild();
            height = std::max(height, ++level);
            continue;
        }
        while (at != item && !at->Next()) {
            at = at->Parent();
            --level;
        }
        if (at == item)
            return height;
        at = at->Next();
    }
}

void RequireMove(const CPlaceItem* item, const CPlaceItem* newParent, const CPlaceItem* after)
{
    if (!newParent || after == item || (after && after->Parent() != newParent))
        throw CInvalidArgument("no such place to move to");
    for (const CPlaceItem* above = newParent; above; above = above->Parent()) {
        if (above == item)
            throw CInvalidArgument("an item cannot be moved into itself");
    }
}

void RequireDepth(int depth)
{
    if (depth > MaximumItemDepth)
        throw CInvalidArgument("folders nest too deeply for the overlay");
}
} // namespace

void CPlaceOverlay::SetDefault()
{
    Take(picojson::value(picojson::array{GenerateNewJsonObject(QString::fromUtf16(CPlaceList::RootName), Action::Path,
                                                               Type::Node, QString(), QString())}));
}

void CPlaceOverlay::Take(picojson::value document)
{
    m_top = document.is<picojson::array>() ? std::make_unique<COverlayNodes>(std::move(document.get<picojson::array>()))
                                           : std::make_unique<COverlayNodes>();
}

std::unique_ptr<COverlayNodes> CPlaceOverlay::Exchange(std::unique_ptr<COverlayNodes> top)
{
    return std::exchange(m_top, std::move(top));
}

QByteArray CPlaceOverlay::Bytes() const
{
    std::string text;
    if (m_top)
        m_top->Write(text);
    return QByteArray::fromStdString(text);
}

picojson::value CPlaceOverlay::GenerateNewJsonObject(const QString& originalName, const std::string& action,
                                                     const std::string& type, const QString& verticalOffset,
                                                     const QString& data)
{
    picojson::object node;
    node[Key::OriginalName] = String(originalName);
    node[Key::LatestName] = picojson::value(std::string());
    node[Key::Action] = picojson::value(action);
    node[Key::Type] = picojson::value(type);
    node[Key::VerticalOffset] = String(verticalOffset);
    node[Key::Data] = String(data);
    node[Key::Next] = picojson::value(picojson::array_type, false);
    return picojson::value(std::move(node));
}

/// An addition that describes the item as it is now, without its children.
picojson::value CPlaceOverlay::GetNewNodeItem(const CPlaceItem* item, const QString& name) const
{
    const QString anchor = item->Previous() ? item->Previous()->Text() : QString();
    if (item->IsFolder())
        return GenerateNewJsonObject(name, Action::Add, Type::Node, anchor, QString());
    return GenerateNewJsonObject(name, Action::Add, Type::Leaf, anchor, m_list.GetLocationData(item->Data()));
}

/// An addition with additions for everything below the item.
picojson::value CPlaceOverlay::GenerateWholeNodeObjects(const CPlaceItem* item) const
{
    picojson::array next;
    for (const CPlaceItem* child = item->FirstChild(); child; child = child->Next())
        next.push_back(GenerateWholeNodeObjects(child));
    picojson::value node = GetNewNodeItem(item, item->Text());
    node.get<picojson::object>()[Key::Next] = picojson::value(std::move(next));
    return node;
}

/// The element that stands for the item of that name; a mere path is added when there is none.
COverlayNode& CPlaceOverlay::GetCurrentNodeObject(COverlayNodes& nodes, const QString& name)
{
    COverlayNode* found = nodes.Find(name);
    for (COverlayNode* lacking : nodes.LackingKeys(found)) {
        m_change.Provide(*lacking, Key::Action);
        m_change.Provide(*lacking, lacking->Is(Key::Action, Action::Update) ? Key::LatestName : Key::OriginalName);
    }
    if (found)
        return *found;
    return m_change.Append(nodes, GenerateNewJsonObject(name, Action::Path, Type::Node, QString(), QString()));
}

/// The entry of the item, looked for under the given name; entries above it are found by the items' texts.
COverlayNode& CPlaceOverlay::TrackJsonCursor(const CPlaceItem* item, const QString& name)
{
    if (!m_top)
        throw CInvalidArgument("the overlay was not loaded");
    RequireDepth(DepthOf(item));
    std::vector<const CPlaceItem*> ancestors;
    for (const CPlaceItem* above = item->Parent(); above; above = above->Parent())
        ancestors.push_back(above);

    COverlayNodes* nodes = m_top.get();
    for (size_t level = ancestors.size(); level-- > 0;) {
        const QString& text = ancestors[level]->Text();
        COverlayNode& entry = GetCurrentNodeObject(*nodes, text);
        Adopt(entry, text);
        TakeOverDeadClaims(entry);
        MakePassable(entry);
        nodes = entry.Next();
    }
    COverlayNode& entry = GetCurrentNodeObject(*nodes, name);
    Adopt(entry, name);
    TakeOverDeadClaims(entry);
    return entry;
}

/// Runs an edit and returns what it changed; an edit that throws leaves the document as it was.
template <typename Edit> COverlayChange CPlaceOverlay::Record(const Edit& edit)
{
    try {
        edit();
    } catch (...) {
        m_change.Revert();
        throw;
    }
    return std::exchange(m_change, {});
}

COverlayChange CPlaceOverlay::AddNodeContext(const CPlaceItem* item)
{
    return Record([&] {
        COverlayNode& found = TrackJsonCursor(item, item->Text());
        COverlayNode& entry = m_change.Replace(found, GetNewNodeItem(item, item->Text()));
        KeepBehindClaims(entry, item);
    });
}

COverlayChange CPlaceOverlay::UpdateNodeContext(const CPlaceItem* item, const QString& oldName, const QString& newName,
                                                bool isPlace)
{
    return Record([&] {
        COverlayNode& entry = TrackJsonCursor(item, oldName);
        if (entry.Is(Key::Action, Action::Add)) {
            m_change.SetKey(entry, Key::OriginalName, String(newName));
        } else {
            m_change.SetKey(entry, Key::Action, picojson::value(Action::Update));
            m_change.SetKey(entry, Key::LatestName, String(newName));
        }
        if (isPlace) {
            m_change.SetKey(entry, Key::Type, picojson::value(Type::Leaf));
            m_change.SetKey(entry, Key::Data, String(m_list.GetLocationData(item->Data())));
        }
        if (newName != oldName)
            KeepBehindClaims(entry, item);
    });
}

void CPlaceOverlay::Delete(const CPlaceItem* item)
{
    COverlayNode& entry = TrackJsonCursor(item, item->Text());
    if (!entry.Is(Key::Action, Action::Add)) {
        m_change.SetKey(entry, Key::Action, picojson::value(Action::Delete));
        m_change.SetKey(entry, Key::Next, picojson::value(std::string()));
        return;
    }
    m_change.Erase(entry);
}

COverlayChange CPlaceOverlay::DeleteNodeContext(const CPlaceItem* item)
{
    return Record([&] { Delete(item); });
}

COverlayChange CPlaceOverlay::DropNodeContext(const CPlaceItem* item, const CPlaceItem* newParent,
                                              const CPlaceItem* after)
{
    return Record([&] {
        RequireMove(item, newParent, after);
        RequireDepth(DepthOf(newParent) + HeightOf(item));
        Delete(item);
        picojson::value moved = GenerateWholeNodeObjects(item);
        moved.get<picojson::object>()[Key::VerticalOffset] = String(after ? after->Text() : QString());
        COverlayNode& entry = TrackJsonCursor(newParent, newParent->Text());
        MakePassable(entry);
        m_change.Append(*entry.Next(), std::move(moved));
    });
}
