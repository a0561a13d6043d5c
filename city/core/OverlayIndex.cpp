#include "city/core/OverlayIndex.h"

#include <algorithm>
#include <numeric>

namespace
{
void Add(std::unordered_map<QString, std::set<quint64>>& numbers, const std::optional<QString>& name, quint64 number)
{
    if (name)
        numbers[*name].insert(number);
}

void Remove(std::unordered_map<QString, std::set<quint64>>& numbers, const std::optional<QString>& name, quint64 number)
{
    if (!name)
        return;
    const auto entry = numbers.find(*name);
    if (entry == numbers.end())
        return;
    entry->second.erase(number);
    if (entry->second.empty())
        numbers.erase(entry);
}
} // namespace

COverlayIndex::CArrayIndex& COverlayIndex::Of(const picojson::array& nodes)
{
    std::shared_ptr<CArrayIndex>& index = m_arrays[&nodes];
    if (!index) {
        index = std::make_shared<CArrayIndex>();
        index->Numbers.resize(nodes.size());
        std::iota(index->Numbers.begin(), index->Numbers.end(), quint64(1));
        index->LastNumber = nodes.size();
        for (size_t position = 0; position < nodes.size(); ++position)
            Add(index->ByClaim, ClaimOf(nodes[position]), index->Numbers[position]);
    }
    return *index;
}

/// The name by which an element is found; none for a deletion and for what is no node object.
std::optional<QString> COverlayIndex::NameOf(const picojson::value& element)
{
    using namespace OverlayJson;
    if (!element.is<picojson::object>())
        return std::nullopt;
    const auto& node = element.get<picojson::object>();
    if (Is(node, Key::Action, Action::Delete))
        return std::nullopt;
    const std::string& key = Is(node, Key::Action, Action::Update) ? Key::LatestName : Key::OriginalName;
    const auto name = node.find(key);
    return Text(name != node.end() ? name->second : picojson::value());
}

/// The name of the shipped item that the element renames, deletes or leads into.
std::optional<QString> COverlayIndex::ClaimOf(const picojson::value& element)
{
    using namespace OverlayJson;
    if (!element.is<picojson::object>())
        return std::nullopt;
    const auto& node = element.get<picojson::object>();
    const auto name = node.find(Key::OriginalName);
    if (name == node.end() || Is(node, Key::Action, Action::Add))
        return std::nullopt;
    return Text(name->second);
}

bool COverlayIndex::IsUnmet(const picojson::value& element) const
{
    using namespace OverlayJson;
    if (m_unmet.isEmpty() || !element.is<picojson::object>())
        return false;
    const auto& node = element.get<picojson::object>();
    const auto unmet = m_unmet.constFind(&node);
    const auto name = node.find(Key::OriginalName);
    return unmet != m_unmet.constEnd() && name != node.end() && Text(name->second) == *unmet;
}

/// Where the element's name is kept.
COverlayIndex::CNumbersByName& COverlayIndex::NamesWith(CArrayIndex& index, const picojson::value& element) const
{
    return IsUnmet(element) ? index.UnmetByName : index.ByName;
}

std::optional<size_t> COverlayIndex::FirstOf(const CArrayIndex& index, const CNumbersByName& names, const QString& name)
{
    const auto known = names.find(name);
    if (known == names.end())
        return std::nullopt;
    const auto at = std::lower_bound(index.Numbers.begin(), index.Numbers.end(), *known->second.begin());
    return static_cast<size_t>(at - index.Numbers.begin());
}

std::vector<size_t> COverlayIndex::Claims(const picojson::array& nodes, const QString& name)
{
    const CArrayIndex& index = Of(nodes);
    std::vector<size_t> positions;
    const auto claims = index.ByClaim.find(name);
    if (claims == index.ByClaim.end())
        return positions;
    for (const quint64 number : claims->second) {
        const auto at = std::lower_bound(index.Numbers.begin(), index.Numbers.end(), number);
        positions.push_back(static_cast<size_t>(at - index.Numbers.begin()));
    }
    return positions;
}

std::vector<size_t> COverlayIndex::ClaimsBehind(const picojson::array& nodes, size_t position, const QString& name)
{
    std::vector<size_t> positions = Claims(nodes, name);
    std::erase_if(positions, [position](size_t claim) { return claim <= position; });
    return positions;
}

void COverlayIndex::SetUnmet(const picojson::value& element)
{
    if (!element.is<picojson::object>())
        return;
    const auto& node = element.get<picojson::object>();
    if (const auto name = node.find(OverlayJson::Key::OriginalName); name != node.end())
        SetUnmet(node, OverlayJson::Text(name->second));
    if (const auto next = node.find(OverlayJson::Key::Next); next != node.end())
        SetUnmetWithin(next->second);
}

void COverlayIndex::SetUnmetWithin(const picojson::value& value)
{
    if (!value.is<picojson::array>())
        return;
    for (const picojson::value& element : value.get<picojson::array>())
        SetUnmet(element);
}

std::optional<size_t> COverlayIndex::Find(picojson::array& nodes, const QString& name, std::vector<CAddedKey>& added)
{
    using namespace OverlayJson;
    CArrayIndex& index = Of(nodes);
    if (const std::optional<size_t> known = FirstOf(index, index.ByName, name))
        return known;
    while (index.ReadCount < nodes.size()) {
        const size_t position = index.ReadCount++;
        if (!nodes[position].is<picojson::object>())
            continue;
        auto& node = nodes[position].get<picojson::object>();
        const bool isUpdate = Is(node, Key::Action, Action::Update);
        Remove(index.ByClaim, ClaimOf(nodes[position]), index.Numbers[position]); // a key that is added may be a claim
        for (const std::string& key : {Key::Action, isUpdate ? Key::LatestName : Key::OriginalName}) {
            if (node.try_emplace(key).second)
                added.push_back({position, key});
        }
        Add(index.ByClaim, ClaimOf(nodes[position]), index.Numbers[position]);
        const std::optional<QString> found = NameOf(nodes[position]);
        Add(NamesWith(index, nodes[position]), found, index.Numbers[position]);
        if (found == name && !IsUnmet(nodes[position]))
            return position;
    }
    return FirstOf(index, index.UnmetByName, name);
}

void COverlayIndex::Appended(const picojson::array& nodes)
{
    CArrayIndex& index = Of(nodes);
    if (index.Numbers.size() == nodes.size())
        return; // made just now, with the element in it
    index.Numbers.push_back(++index.LastNumber);
    Add(index.ByClaim, ClaimOf(nodes.back()), index.LastNumber);
}

quint64 COverlayIndex::BeforeErase(const picojson::array& nodes, size_t position)
{
    BeforeChange(nodes, position);
    CArrayIndex& index = Of(nodes);
    const auto at = index.Numbers.begin() + static_cast<std::ptrdiff_t>(position);
    const quint64 number = *at;
    index.Numbers.erase(at);
    if (position < index.ReadCount)
        --index.ReadCount;
    Drop(nodes[position]);
    return number;
}

void COverlayIndex::Inserted(const picojson::array& nodes, size_t position, quint64 number)
{
    CArrayIndex& index = Of(nodes);
    if (index.Numbers.size() == nodes.size())
        return; // made just now, with the element in it
    const bool isBehind = position == 0 || index.Numbers[position - 1] < number;
    const bool isBefore =
        position == index.Numbers.size() ? number <= index.LastNumber : number < index.Numbers[position];
    if (!isBehind || !isBefore)
        return Forget(nodes); // made anew since the element was erased; its number means nothing here
    index.Numbers.insert(index.Numbers.begin() + static_cast<std::ptrdiff_t>(position), number);
    if (position < index.ReadCount)
        ++index.ReadCount;
    AfterChange(nodes, position);
}

void COverlayIndex::BeforeChange(const picojson::array& nodes, size_t position)
{
    CArrayIndex& index = Of(nodes);
    Remove(index.ByClaim, ClaimOf(nodes[position]), index.Numbers[position]);
    if (position < index.ReadCount)
        Remove(NamesWith(index, nodes[position]), NameOf(nodes[position]), index.Numbers[position]);
}

void COverlayIndex::AfterChange(const picojson::array& nodes, size_t position)
{
    CArrayIndex& index = Of(nodes);
    Add(index.ByClaim, ClaimOf(nodes[position]), index.Numbers[position]);
    if (position < index.ReadCount)
        Add(NamesWith(index, nodes[position]), NameOf(nodes[position]), index.Numbers[position]);
}

void COverlayIndex::Drop(const picojson::value& value)
{
    if (value.is<picojson::object>()) {
        for (const auto& [key, member] : value.get<picojson::object>())
            Drop(member);
    } else if (value.is<picojson::array>()) {
        m_arrays.remove(&value.get<picojson::array>());
        for (const picojson::value& element : value.get<picojson::array>())
            Drop(element);
    }
}
