#include "city/core/PlaceOverlay.h"

#include <algorithm>
#include <utility>

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
    m_index.Clear();
    m_overlay = document.is<picojson::array>() ? std::move(document) : picojson::value(picojson::array_type, false);
}

picojson::value CPlaceOverlay::Clear()
{
    m_index.Clear();
    return std::exchange(m_overlay, picojson::value(picojson::array_type, false));
}

QByteArray CPlaceOverlay::Bytes() const
{
    return QByteArray::fromStdString(m_overlay.serialize());
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

/// Extends the path by the element that stands for the item of that name, adding a mere path when there is none.
void CPlaceOverlay::GetCurrentNodeObject(picojson::array& nodes, const QString& name, std::vector<size_t>& path)
{
    std::vector<COverlayIndex::CAddedKey> added;
    const std::optional<size_t> found = m_index.Find(nodes, name, added);
    path.push_back(0);
    for (COverlayIndex::CAddedKey& key : added) {
        path.back() = key.Position;
        m_change.m_steps.push_back({CChange::Kind::KeySet, path, {}, std::move(key.Key), true, 0});
    }
    path.back() = found ? *found : nodes.size();
    if (found)
        return;
    nodes.push_back(GenerateNewJsonObject(name, Action::Path, Type::Node, QString(), QString()));
    m_index.Appended(nodes);
    m_change.m_steps.push_back({CChange::Kind::Appended, path, {}, {}, false, 0});
}

/// The entry of the item, looked for under the given name; entries above it are found by the items' texts.
CPlaceOverlay::CCursor CPlaceOverlay::TrackJsonCursor(const CPlaceItem* item, const QString& name)
{
    if (!m_overlay.is<picojson::array>())
        throw CInvalidArgument("the overlay was not loaded");
    RequireDepth(DepthOf(item));
    std::vector<const CPlaceItem*> ancestors;
    for (const CPlaceItem* above = item->Parent(); above; above = above->Parent())
        ancestors.push_back(above);

    CCursor cursor{&Top(), {}};
    for (size_t level = ancestors.size(); level-- > 0;) {
        const CPlaceItem* above = ancestors[level];
        GetCurrentNodeObject(*cursor.Holder, above->Text(), cursor.Path);
        Adopt(cursor, above, above->Text());
        TakeOverDeadClaims(cursor);
        MakePassable(cursor);
        cursor.Holder = &cursor.Entry()[Key::Next].get<picojson::array>();
    }
    GetCurrentNodeObject(*cursor.Holder, name, cursor.Path);
    Adopt(cursor, item, name);
    TakeOverDeadClaims(cursor);
    return cursor;
}

void CPlaceOverlay::Erase(const CCursor& cursor)
{
    const quint64 number = m_index.BeforeErase(*cursor.Holder, cursor.Position());
    const auto erased = cursor.Holder->begin() + static_cast<std::ptrdiff_t>(cursor.Position());
    m_change.m_steps.push_back({CChange::Kind::Erased, cursor.Path, std::move(*erased), {}, false, number});
    cursor.Holder->erase(erased);
}

void CPlaceOverlay::SetKey(const CCursor& cursor, const std::string& key, picojson::value value)
{
    m_index.BeforeChange(*cursor.Holder, cursor.Position());
    picojson::object& entry = cursor.Entry();
    const bool wasMissing = !entry.contains(key);
    picojson::value& slot = entry[key];
    m_index.Drop(slot);
    slot.swap(value);
    m_change.m_steps.push_back({CChange::Kind::KeySet, cursor.Path, std::move(value), key, wasMissing, 0});
    m_index.AfterChange(*cursor.Holder, cursor.Position());
}

/// Runs an edit and returns what it changed; an edit that throws leaves the document as it was.
template <typename Edit> CPlaceOverlay::CChange CPlaceOverlay::Record(const Edit& edit)
{
    try {
        edit();
    } catch (...) {
        Revert(std::exchange(m_change, {}));
        throw;
    }
    return std::exchange(m_change, {});
}

CPlaceOverlay::CChange CPlaceOverlay::AddNodeContext(const CPlaceItem* item)
{
    return Record([&] {
        CCursor cursor = TrackJsonCursor(item, item->Text());
        picojson::value entry = GetNewNodeItem(item, item->Text());
        picojson::value& element = (*cursor.Holder)[cursor.Position()];
        m_index.BeforeChange(*cursor.Holder, cursor.Position());
        m_index.Drop(element);
        element.swap(entry);
        m_change.m_steps.push_back({CChange::Kind::Replaced, cursor.Path, std::move(entry), {}, false, 0});
        m_index.AfterChange(*cursor.Holder, cursor.Position());
        KeepBehindAnchor(cursor, item);
        KeepBehindClaims(cursor, item);
    });
}

CPlaceOverlay::CChange CPlaceOverlay::UpdateNodeContext(CPlaceItem* item, const QString& oldName,
                                                        const QString& newName, bool isPlace)
{
    return Record([&] {
        CCursor cursor = TrackJsonCursor(item, oldName);
        if (Is(cursor.Entry(), Key::Action, Action::Add)) {
            SetKey(cursor, Key::OriginalName, String(newName));
        } else {
            SetKey(cursor, Key::Action, picojson::value(Action::Update));
            SetKey(cursor, Key::LatestName, String(newName));
        }
        if (isPlace) {
            SetKey(cursor, Key::Type, picojson::value(Type::Leaf));
            SetKey(cursor, Key::Data, String(m_list.GetLocationData(item->Data())));
        }
        if (newName != oldName)
            KeepBehindClaims(cursor, item);
        CPlaceTree::SetUpdated(item, true);
    });
}

void CPlaceOverlay::Delete(const CPlaceItem* item)
{
    const CCursor cursor = TrackJsonCursor(item, item->Text());
    if (!Is(cursor.Entry(), Key::Action, Action::Add)) {
        SetKey(cursor, Key::Action, picojson::value(Action::Delete));
        SetKey(cursor, Key::Next, picojson::value(std::string()));
        return;
    }
    Erase(cursor);
}

CPlaceOverlay::CChange CPlaceOverlay::DeleteNodeContext(const CPlaceItem* item)
{
    return Record([&] { Delete(item); });
}

CPlaceOverlay::CChange CPlaceOverlay::DropNodeContext(const CPlaceItem* item, const CPlaceItem* newParent,
                                                      const CPlaceItem* after)
{
    return Record([&] {
        RequireMove(item, newParent, after);
        RequireDepth(DepthOf(newParent) + HeightOf(item));
        Delete(item);
        picojson::value moved = GenerateWholeNodeObjects(item);
        CCursor cursor = TrackJsonCursor(newParent, newParent->Text());
        MakePassable(cursor);
        moved.get<picojson::object>()[Key::VerticalOffset] = String(after ? after->Text() : QString());
        auto& next = cursor.Entry()[Key::Next].get<picojson::array>();
        next.push_back(std::move(moved));
        m_index.Appended(next);
        cursor.Path.push_back(next.size() - 1);
        m_change.m_steps.push_back({CChange::Kind::Appended, cursor.Path, {}, {}, false, 0});
    });
}

/// The array that holds the last element of the path.
picojson::array& CPlaceOverlay::HolderOf(const std::vector<size_t>& path)
{
    picojson::array* holder = &Top();
    for (size_t level = 0; level + 1 < path.size(); ++level)
        holder = &(*holder)[path[level]].get<picojson::object>()[Key::Next].get<picojson::array>();
    return *holder;
}

void CPlaceOverlay::Revert(CChange change)
{
    for (size_t step = change.m_steps.size(); step-- > 0;)
        RevertStep(std::move(change.m_steps[step]));
}

void CPlaceOverlay::RevertStep(CChange::CStep&& step)
{
    picojson::array& holder = HolderOf(step.Path);
    const size_t position = step.Path.back();
    switch (step.What) {
    case CChange::Kind::Appended:
        m_index.BeforeErase(holder, position);
        holder.pop_back();
        break;
    case CChange::Kind::Erased:
        holder.insert(holder.begin() + static_cast<std::ptrdiff_t>(position), std::move(step.Old));
        m_index.Inserted(holder, position, step.Number);
        break;
    case CChange::Kind::PutLast: {
        m_index.BeforeErase(holder, holder.size() - 1);
        picojson::value entry = std::move(holder.back());
        holder.pop_back();
        holder.insert(holder.begin() + static_cast<std::ptrdiff_t>(position), std::move(entry));
        m_index.Inserted(holder, position, step.Number);
        break;
    }
    case CChange::Kind::Replaced:
        m_index.BeforeChange(holder, position);
        m_index.Drop(holder[position]);
        holder[position] = std::move(step.Old);
        m_index.AfterChange(holder, position);
        break;
    case CChange::Kind::KeySet: {
        m_index.BeforeChange(holder, position);
        auto& entry = holder[position].get<picojson::object>();
        m_index.Drop(entry[step.Key]);
        if (step.WasMissing)
            entry.erase(step.Key);
        else
            entry[step.Key] = std::move(step.Old);
        m_index.AfterChange(holder, position);
        if (step.WasMissing)
            m_index.Forget(holder); // a search must find the key missing again
    }
    }
}
