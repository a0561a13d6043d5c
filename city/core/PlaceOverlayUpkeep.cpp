// What an edit does beyond its own entry, so that this stays true: at the replay, each entry meets the item that it was
// recorded for.

#include "city/core/PlaceOverlay.h"

#include <algorithm>
#include <utility>

using namespace OverlayJson;

namespace
{
bool StandsBefore(const CPlaceItem* item, const CPlaceItem* sibling)
{
    while (item && item != sibling)
        item = item->Next();
    return item != nullptr;
}
} // namespace

/// A rename whose target was missing at the replay, but whose new name the shipped list has now, becomes the entry of
/// that item; else what is recorded in it would never be found again.
void CPlaceOverlay::Adopt(COverlayNode& entry, const QString& name)
{
    if (entry.IsMissed() && entry.Is(Key::Action, Action::Update) && entry.Text(Key::OriginalName) != name)
        m_change.SetKey(entry, Key::OriginalName, String(name));
}

/// Entries that the replay did not reach, as those in a rename that was adopted since, come to life with it at the next
/// one. Those that look for the item of this entry would meet it first, and this entry nothing: what is recorded in
/// them goes into this entry, and they go.
void CPlaceOverlay::TakeOverDeadClaims(COverlayNode& entry)
{
    if (entry.Is(Key::Action, Action::Add) || entry.IsMissed())
        return;
    for (COverlayNode* dead : entry.Holder().Claims(entry.Text(Key::OriginalName))) {
        if (dead == &entry || !dead->IsMissed())
            continue;
        if (dead->Next() && entry.Next()) {
            for (const std::unique_ptr<COverlayNode>& buried : *dead->Next())
                m_change.Append(*entry.Next(), buried->Element()).SetMissed();
        }
        m_change.Erase(*dead);
    }
}

/// Makes of an entry that a replay would not follow, as only a damaged or foreign file has it, one that it follows;
/// what is recorded below it would be lost.
void CPlaceOverlay::MakePassable(COverlayNode& entry)
{
    if (!entry.Is(Key::Action, Action::Path) && !entry.Is(Key::Action, Action::Add) &&
        !entry.Is(Key::Action, Action::Update))
        m_change.SetKey(entry, Key::Action, picojson::value(Action::Path));
    if (!entry.Next())
        m_change.SetKey(entry, Key::Next, picojson::value(picojson::array_type, false));
}

/// An entry that gives its item a name must come behind those that take this name from a shipped item: they look for
/// the name, and must not meet this item. A rename stays where it is when the tree's order keeps the two apart; where
/// an addition stands after a replay hangs on its neighbour, which may go later.
void CPlaceOverlay::KeepBehindClaims(COverlayNode& entry, const CPlaceItem* item)
{
    const bool isAdded = entry.Is(Key::Action, Action::Add);
    for (const COverlayNode* claim : entry.Holder().Claims(item->Text())) {
        if (!claim->IsBehind(entry))
            continue;
        const bool isRename = claim->Is(Key::Action, Action::Update) && claim->Has(Key::LatestName);
        const CPlaceItem* claimed =
            isRename ? m_list.Tree().SearchNodeItem(item->Parent(), claim->Text(Key::LatestName)) : nullptr;
        if (!isAdded && claimed && claimed != item && StandsBefore(claimed, item) && !claim->IsMissed())
            continue;
        m_change.PutLast(entry);
        if (isAdded)
            SetAnchor(entry, item); // what stood in front then may be gone by now
        else
            KeepOwnClaim(entry, item);
        return;
    }
}

/// A rename that went to the end still looks for its shipped item: the entry that gives that name to an addition, or
/// to an item further up, goes behind it.
void CPlaceOverlay::KeepOwnClaim(COverlayNode& entry, const CPlaceItem* item)
{
    const QString claimed = entry.Has(Key::OriginalName) ? entry.Text(Key::OriginalName) : QString();
    const CPlaceItem* bearer = m_list.Tree().SearchNodeItem(item->Parent(), claimed);
    if (!bearer || bearer == item)
        return;
    COverlayNode& given = TrackJsonCursor(bearer, claimed);
    const bool isAdded = given.Is(Key::Action, Action::Add);
    if (given.IsBehind(entry) || (!isAdded && StandsBefore(item, bearer)))
        return;
    m_change.PutLast(given);
    if (isAdded)
        SetAnchor(given, bearer);
}

void CPlaceOverlay::SetAnchor(COverlayNode& entry, const CPlaceItem* item)
{
    m_change.SetKey(entry, Key::VerticalOffset, String(item->Previous() ? item->Previous()->Text() : QString()));
}
