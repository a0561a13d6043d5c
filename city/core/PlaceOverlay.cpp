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
        MakePassable(cursor);
        cursor.Holder = &cursor.Entry()[Key::Next].get<picojson::array>();
    }
    GetCurrentNodeObject(*cursor.Holder, name, cursor.Path);
    Adopt(cursor, item, name);
    return cursor;
}

/// The name that an entry looks for; null when it has none. The key is not added: the index would not hear of it.
QString CPlaceOverlay::OriginalName(const CCursor& cursor)
{
    const auto name = cursor.Entry().find(Key::OriginalName);
    return name == cursor.Entry().end() ? QString() : Text(name->second);
}

/// A renaming that met nothing at the replay, but whose new name the shipped list has taken over since, becomes the
/// entry of that item; else what is recorded in it would never be found again.
void CPlaceOverlay::Adopt(const CCursor& cursor, const CPlaceItem* item, const QString& name)
{
    if (item->IsUpdated() || !Is(cursor.Entry(), Key::Action, Action::Update) || OriginalName(cursor) == name)
        return;
    const CPlaceItem* sibling = item->Parent() ? item->Parent()->FirstChild() : m_list.Tree().Root();
    for (; sibling; sibling = sibling->Next()) {
        if (sibling->IsUpdated() && sibling->Text() == name)
            return; // it met this one, which has the name, too
    }
    SetKey(cursor, Key::OriginalName, String(name));
}

/// Makes of an entry that a replay would not follow, as only a damaged or foreign file has it, one that it follows;
/// what is recorded below it would be lost.
void CPlaceOverlay::MakePassable(const CCursor& cursor)
{
    const std::initializer_list<const std::string*> followed{&Action::Path, &Action::Add, &Action::Update};
    if (std::none_of(followed.begin(), followed.end(),
                     [&cursor](const std::string* action) { return Is(cursor.Entry(), Key::Action, *action); }))
        SetKey(cursor, Key::Action, picojson::value(Action::Path));
    if (!HoldsArray(cursor.Entry(), Key::Next))
        SetKey(cursor, Key::Next, picojson::value(picojson::array_type, false));
}

/// An addition that took the place of an entry that had met nothing must come behind the entry that gives its
/// neighbour in front a name, for the replay to find that neighbour.
void CPlaceOverlay::KeepBehindAnchor(CCursor& cursor, const CPlaceItem* item)
{
    const QString anchor = item->Previous() ? item->Previous()->Text() : QString();
    const auto givesName = [&anchor](const picojson::value& element) {
        if (!element.is<picojson::object>())
            return false;
        const auto& node = element.get<picojson::object>();
        const bool isAdded = Is(node, Key::Action, Action::Add);
        if (!isAdded && !Is(node, Key::Action, Action::Update))
            return false;
        const auto name = node.find(isAdded ? Key::OriginalName : Key::LatestName);
        return name != node.end() && Text(name->second) == anchor;
    };
    const auto behind = cursor.Holder->begin() + static_cast<std::ptrdiff_t>(cursor.Position()) + 1;
    if (std::any_of(behind, cursor.Holder->end(), givesName))
        PutLast(cursor);
}

/// An entry that gives its item a name must come behind those that take this name from a shipped item: they look for
/// the name, and must not meet this item. A renaming stays where it is when the tree's order keeps the two apart; where
/// an addition stands after a replay hangs on its neighbour, which may go later.
void CPlaceOverlay::KeepBehindClaims(CCursor& cursor, const CPlaceItem* item)
{
    const bool isAdded = Is(cursor.Entry(), Key::Action, Action::Add);
    for (const size_t position : m_index.ClaimsBehind(*cursor.Holder, cursor.Position(), item->Text())) {
        const auto& claim = (*cursor.Holder)[position].get<picojson::object>();
        const auto latest = claim.find(Key::LatestName);
        const bool isRenaming = Is(claim, Key::Action, Action::Update) && latest != claim.end();
        const CPlaceItem* claimed =
            isRenaming ? m_list.Tree().SearchNodeItem(item->Parent(), Text(latest->second)) : nullptr;
        if (!isAdded && claimed && claimed->Order() < item->Order())
            continue;
        PutLast(cursor);
        if (isAdded)
            SetAnchor(cursor, item); // what stood in front then may be gone by now
        else
            KeepOwnClaim(cursor, item);
        return;
    }
}

/// A renaming that went to the end still looks for its shipped item: the entry that gives that name to an addition, or
/// to an item further up, goes behind it. Each renaming so moved stands further up than the last, so this ends. The
/// cursor may point elsewhere afterwards.
void CPlaceOverlay::KeepOwnClaim(const CCursor& cursor, const CPlaceItem* item)
{
    const QString claimed = OriginalName(cursor);
    const CPlaceItem* bearer = m_list.Tree().SearchNodeItem(item->Parent(), claimed);
    if (!bearer || bearer == item)
        return;
    CCursor given = TrackJsonCursor(bearer, claimed);
    const bool isAdded = Is(given.Entry(), Key::Action, Action::Add);
    if (given.Position() > cursor.Position() || (!isAdded && bearer->Order() > item->Order()))
        return;
    PutLast(given);
    if (isAdded)
        SetAnchor(given, bearer);
    else if (Is(given.Entry(), Key::Action, Action::Update))
        KeepOwnClaim(given, bearer);
}

void CPlaceOverlay::SetAnchor(const CCursor& cursor, const CPlaceItem* item)
{
    SetKey(cursor, Key::VerticalOffset, String(item->Previous() ? item->Previous()->Text() : QString()));
}

void CPlaceOverlay::PutLast(CCursor& cursor)
{
    picojson::value entry = (*cursor.Holder)[cursor.Position()];
    Erase(cursor);
    cursor.Holder->push_back(std::move(entry));
    m_index.Appended(*cursor.Holder);
    cursor.Path.back() = cursor.Holder->size() - 1;
    m_change.m_steps.push_back({CChange::Kind::Appended, cursor.Path, {}, {}, false, 0});
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

/// Runs an edit and answers what it changed; an edit that throws leaves the document as it was.
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
