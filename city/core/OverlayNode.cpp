#include "city/core/OverlayNode.h"

#include <algorithm>
#include <iterator>

using namespace OverlayJson;

COverlayNode::COverlayNode(picojson::value element) : m_element(std::move(element))
{
    if (IsObject() && HoldsArray(Object(), Key::Next))
        m_next = std::make_unique<COverlayNodes>(std::move(Object()[Key::Next].get<picojson::array>()));
}

COverlayNode::~COverlayNode() = default;

bool COverlayNode::Has(const std::string& key) const
{
    return IsObject() && Object().contains(key);
}

bool COverlayNode::Is(const std::string& key, const std::string& text) const
{
    return IsObject() && OverlayJson::Is(Object(), key, text);
}

QString COverlayNode::Text(const std::string& key) const
{
    return OverlayJson::Text(Has(key) ? Object().at(key) : picojson::value());
}

QString COverlayNode::Read(const std::string& key)
{
    if (!Has(key))
        Exchange(key, {true, {}, nullptr});
    return Text(key);
}

void COverlayNode::SetMissed()
{
    m_holder->RemoveFromIndex(*this);
    m_missed = Sought();
    m_holder->AddToIndex(*this);
    if (m_next) {
        for (const std::unique_ptr<COverlayNode>& inner : *m_next)
            inner->SetMissed();
    }
}

bool COverlayNode::IsMissed() const
{
    return m_missed && Sought() == *m_missed;
}

/// The name that the element looks for; null for none.
QString COverlayNode::Sought() const
{
    return Has(Key::OriginalName) ? Text(Key::OriginalName) : QString();
}

/// The key by whose value the element is found.
const std::string& COverlayNode::NameKey() const
{
    return Is(Key::Action, Action::Update) ? Key::LatestName : Key::OriginalName;
}

/// The name by which the element is found; none for a deletion and for what is no node object.
std::optional<QString> COverlayNode::Name() const
{
    if (!IsObject() || Is(Key::Action, Action::Delete))
        return std::nullopt;
    return Text(NameKey());
}

/// The name of the shipped item that the element renames, deletes or leads into.
std::optional<QString> COverlayNode::Claim() const
{
    if (!Has(Key::OriginalName) || Is(Key::Action, Action::Add))
        return std::nullopt;
    return Text(Key::OriginalName);
}

bool COverlayNode::LacksKey() const
{
    return IsObject() && (!Has(Key::Action) || !Has(NameKey()));
}

/// Puts the slot in the key's place and returns what was there.
COverlayNode::CSlot COverlayNode::Exchange(const std::string& key, CSlot slot)
{
    m_holder->RemoveFromIndex(*this);
    CSlot old;
    const auto entry = Object().find(key);
    old.IsThere = entry != Object().end();
    if (old.IsThere)
        old.Value = std::move(entry->second);
    if (key == Key::Next)
        old.Nodes = std::exchange(m_next, std::move(slot.Nodes));
    if (slot.IsThere)
        Object()[key] = std::move(slot.Value);
    else if (old.IsThere)
        Object().erase(entry);
    m_holder->AddToIndex(*this);
    return old;
}

picojson::value COverlayNode::Element() const
{
    picojson::value element = m_element;
    if (m_next) {
        picojson::array next;
        for (const std::unique_ptr<COverlayNode>& inner : *m_next)
            next.push_back(inner->Element());
        element.get<picojson::object>()[Key::Next] = picojson::value(std::move(next));
    }
    return element;
}

void COverlayNode::Write(std::string& out) const
{
    if (!IsObject()) {
        m_element.serialize(std::back_inserter(out));
        return;
    }
    char separator = '{';
    for (const auto& [key, value] : Object()) {
        out += std::exchange(separator, ',');
        picojson::serialize_str(key, std::back_inserter(out));
        out += ':';
        if (m_next && key == Key::Next)
            m_next->Write(out);
        else
            value.serialize(std::back_inserter(out));
    }
    out += Object().empty() ? "{}" : "}";
}

COverlayNodes::COverlayNodes(picojson::array elements)
{
    m_nodes.reserve(elements.size());
    for (picojson::value& element : elements)
        Append(std::make_unique<COverlayNode>(std::move(element)));
}

COverlayNode* COverlayNodes::Find(const QString& name)
{
    const auto& names = Index().ByName;
    const auto found = names.lower_bound({name, false, 0});
    return found != names.end() && std::get<QString>(found->first) == name ? found->second : nullptr;
}

std::vector<COverlayNode*> COverlayNodes::LackingKeys(const COverlayNode* last)
{
    std::vector<COverlayNode*> lacking;
    for (const auto& [number, node] : Index().Lacking) {
        // A scan that ends at an element that was missed went to the end, in search of another.
        if (!last || last->IsMissed() || number <= last->m_number)
            lacking.push_back(node);
    }
    return lacking;
}

std::vector<COverlayNode*> COverlayNodes::Claims(const QString& name)
{
    const auto& claims = Index().ByClaim;
    std::vector<COverlayNode*> found;
    for (auto claim = claims.lower_bound({name, 0}); claim != claims.end() && claim->first.first == name; ++claim)
        found.push_back(claim->second);
    return found;
}

void COverlayNodes::Write(std::string& out) const
{
    char separator = '[';
    for (const std::unique_ptr<COverlayNode>& node : m_nodes) {
        out += std::exchange(separator, ',');
        node->Write(out);
    }
    out += m_nodes.empty() ? "[]" : "]";
}

COverlayNode& COverlayNodes::Append(std::unique_ptr<COverlayNode> node)
{
    node->m_holder = this;
    node->m_number = ++m_lastNumber;
    AddToIndex(*node);
    m_nodes.push_back(std::move(node));
    return *m_nodes.back();
}

/// Puts an element in where its number belongs.
void COverlayNodes::Insert(std::unique_ptr<COverlayNode> node)
{
    AddToIndex(*node);
    const CPlace place = PlaceOf(node->m_number);
    m_nodes.insert(place, std::move(node));
}

std::unique_ptr<COverlayNode> COverlayNodes::Take(COverlayNode& node)
{
    RemoveFromIndex(node);
    const CPlace place = PlaceOf(node.m_number);
    std::unique_ptr<COverlayNode> taken = std::move(*place);
    m_nodes.erase(place);
    return taken;
}

/// The first element with at least that number.
COverlayNodes::CPlace COverlayNodes::PlaceOf(quint64 number)
{
    return std::lower_bound(
        m_nodes.begin(), m_nodes.end(), number,
        [](const std::unique_ptr<COverlayNode>& node, quint64 bound) { return node->m_number < bound; });
}

COverlayNodes::CIndex& COverlayNodes::Index()
{
    if (!m_index) {
        m_index = std::make_unique<CIndex>();
        for (const std::unique_ptr<COverlayNode>& node : m_nodes)
            AddToIndex(*node);
    }
    return *m_index;
}

void COverlayNodes::AddToIndex(COverlayNode& node)
{
    if (!m_index)
        return;
    if (const std::optional<QString> name = node.Name())
        m_index->ByName[{*name, node.IsMissed(), node.m_number}] = &node;
    if (const std::optional<QString> claim = node.Claim())
        m_index->ByClaim[{*claim, node.m_number}] = &node;
    if (node.LacksKey())
        m_index->Lacking[node.m_number] = &node;
}

void COverlayNodes::RemoveFromIndex(const COverlayNode& node)
{
    if (!m_index)
        return;
    if (const std::optional<QString> name = node.Name())
        m_index->ByName.erase({*name, node.IsMissed(), node.m_number});
    if (const std::optional<QString> claim = node.Claim())
        m_index->ByClaim.erase({*claim, node.m_number});
    m_index->Lacking.erase(node.m_number);
}
