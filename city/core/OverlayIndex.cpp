#include "city/core/OverlayIndex.h"

#include <algorithm>
#include <numeric>

COverlayIndex::CArrayIndex& COverlayIndex::Of(const picojson::array& nodes)
{
    std::shared_ptr<CArrayIndex>& index = m_arrays[&nodes];
    if (!index) {
        index = std::make_shared<CArrayIndex>();
        index->Numbers.resize(nodes.size());
        std::iota(index->Numbers.begin(), index->Numbers.end(), quint64(1));
        index->LastNumber = nodes.size();
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

std::optional<size_t> COverlayIndex::Find(picojson::array& nodes, const QString& name, std::vector<CAddedKey>& added)
{
    using namespace OverlayJson;
    CArrayIndex& index = Of(nodes);
    if (const auto known = index.ByName.find(name); known != index.ByName.end()) {
        const auto at = std::lower_bound(index.Numbers.begin(), index.Numbers.end(), *known->second.begin());
        return static_cast<size_t>(at - index.Numbers.begin());
    }
    while (index.ReadCount < nodes.size()) {
        const size_t position = index.ReadCount++;
        if (!nodes[position].is<picojson::object>())
            continue;
        auto& node = nodes[position].get<picojson::object>();
        const bool isUpdate = Is(node, Key::Action, Action::Update);
        for (const std::string& key : {Key::Action, isUpdate ? Key::LatestName : Key::OriginalName}) {
            if (node.try_emplace(key).second)
                added.push_back({position, key});
        }
        const std::optional<QString> found = NameOf(nodes[position]);
        if (!found)
            continue;
        index.ByName[*found].insert(index.Numbers[position]);
        if (*found == name)
            return position;
    }
    return std::nullopt;
}

void COverlayIndex::Appended(const picojson::array& nodes)
{
    CArrayIndex& index = Of(nodes);
    if (index.Numbers.size() < nodes.size())
        index.Numbers.push_back(++index.LastNumber);
}

void COverlayIndex::BeforeErase(const picojson::array& nodes, size_t position)
{
    BeforeChange(nodes, position);
    CArrayIndex& index = Of(nodes);
    index.Numbers.erase(index.Numbers.begin() + static_cast<std::ptrdiff_t>(position));
    if (position < index.ReadCount)
        --index.ReadCount;
    Drop(nodes[position]);
}

void COverlayIndex::BeforeChange(const picojson::array& nodes, size_t position)
{
    CArrayIndex& index = Of(nodes);
    if (position >= index.ReadCount)
        return;
    if (const std::optional<QString> name = NameOf(nodes[position])) {
        const auto entry = index.ByName.find(*name);
        entry->second.erase(index.Numbers[position]);
        if (entry->second.empty())
            index.ByName.erase(entry);
    }
}

void COverlayIndex::AfterChange(const picojson::array& nodes, size_t position)
{
    CArrayIndex& index = Of(nodes);
    if (position >= index.ReadCount)
        return;
    if (const std::optional<QString> name = NameOf(nodes[position]))
        index.ByName[*name].insert(index.Numbers[position]);
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
