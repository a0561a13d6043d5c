// What an edit does beyond its own entry, so that the next replay follows every entry and each meets its own item.

#include "city/core/PlaceOverlay.h"

#include <algorithm>
#include <utility>

using namespace OverlayJson;

/// The name that an entry looks for; null when it has none. The key is not added: the index would not hear of it.
QString CPlaceOverlay::OriginalName(const CCursor& cursor)
{
    const auto name = cursor.Entry().find(Key::OriginalName);
    return name == cursor.Entry().end() ? QString() : Text(name->second);
}

/// A rename whose target was missing at the replay, but whose new name the shipped list has now, becomes the
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

/// Entries that the replay did not reach, as those in a rename that was adopted since, come to life with it at the next
/// one. Those that look for the item of this entry would meet it first, and this entry nothing: what is recorded in
/// them goes into this entry, and they go.
void CPlaceOverlay::TakeOverDeadClaims(CCursor& cursor)
{
    if (Is(cursor.Entry(), Key::Action, Action::Add) || m_index.IsUnmet((*cursor.Holder)[cursor.Position()]))
        return;
    const std::vector<size_t> claims = m_index.Claims(*cursor.Holder, OriginalName(cursor));
    for (size_t i = claims.size(); i-- > 0;) {
        const size_t position = claims[i];
        if (position == cursor.Position() || !m_index.IsUnmet((*cursor.Holder)[position]))
            continue;
        CCursor dead = cursor;
        dead.Path.back() = position;
        if (HoldsArray(dead.Entry(), Key::Next) && HoldsArray(cursor.Entry(), Key::Next)) {
            auto& next = cursor.Entry()[Key::Next].get<picojson::array>();
            for (const picojson::value& buried : dead.Entry()[Key::Next].get<picojson::array>()) {
                next.push_back(buried);
                m_index.SetUnmet(next.back()); // a copy has an address of its own
                m_index.Appended(next);
                std::vector<size_t> path = cursor.Path;
                path.push_back(next.size() - 1);
                m_change.m_steps.push_back({CChange::Kind::Appended, std::move(path), {}, {}, false, 0});
            }
        }
        Erase(dead);
        if (position < cursor.Position())
            --cursor.Path.back();
    }
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

/// An addition that took the place of an entry without a target must come behind the entry that gives its
/// neighbour in front a name, for the replay to find that neighbour.
void CPlaceOverlay::KeepBehindAnchor(CCursor& cursor, const CPlaceItem* item)
{
    const QString anchor = item->Previous() ? item->Previous()->Text() : QString();
    const auto givesName = [this, &anchor](const picojson::value& element) {
        if (!element.is<picojson::object>() || m_index.IsUnmet(element))
            return false;
        const auto& node = element.get<picojson::object>();
        const bool isAdded = Is(node, Key::Action, Action::Add);
        if (!isAdded && !Is(node, Key::Action, Action::Update))
            return false;
        const auto original = node.find(Key::OriginalName);
        const bool hasName = original != node.end() && Text(original->second) == anchor;
        const auto latest = node.find(Key::LatestName);
        return isAdded ? hasName : !hasName && latest != node.end() && Text(latest->second) == anchor;
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
        if (!isAdded && claimed && claimed->Order() < item->Order() && !m_index.IsUnmet((*cursor.Holder)[position]))
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
    picojson::array& nodes = *cursor.Holder;
    const quint64 number = m_index.BeforeErase(nodes, cursor.Position());
    m_change.m_steps.push_back({CChange::Kind::PutLast, cursor.Path, {}, {}, false, number});
    const auto at = nodes.begin() + static_cast<std::ptrdiff_t>(cursor.Position());
    picojson::value entry = std::move(*at); // the very element, as an entry without a target is known by its address
    nodes.erase(at);
    nodes.push_back(std::move(entry));
    m_index.Appended(nodes);
    cursor.Path.back() = nodes.size() - 1;
}
