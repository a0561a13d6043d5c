#include "city/core/OverlayChange.h"

#include <utility>

COverlayNode& COverlayChange::Append(COverlayNodes& nodes, picojson::value element)
{
    COverlayNode& node = nodes.Append(std::make_unique<COverlayNode>(std::move(element)));
    m_steps.push_back({Kind::Appended, &node, nullptr, 0, {}, {}});
    return node;
}

void COverlayChange::Erase(COverlayNode& node)
{
    m_steps.push_back({Kind::Erased, nullptr, node.Holder().Take(node), 0, {}, {}});
}

COverlayNode& COverlayChange::Replace(COverlayNode& node, picojson::value element)
{
    auto made = std::make_unique<COverlayNode>(std::move(element));
    COverlayNode& replacement = *made;
    COverlayNodes& holder = node.Holder();
    made->m_holder = &holder;
    made->m_number = node.m_number;
    m_steps.push_back({Kind::Replaced, &replacement, holder.Take(node), 0, {}, {}});
    holder.Insert(std::move(made));
    return replacement;
}

void COverlayChange::PutLast(COverlayNode& node)
{
    m_steps.push_back({Kind::PutLast, &node, nullptr, node.m_number, {}, {}});
    COverlayNodes& holder = node.Holder();
    holder.Append(holder.Take(node));
}

void COverlayChange::SetKey(COverlayNode& node, const std::string& key, picojson::value value)
{
    COverlayNode::CSlot slot{true, std::move(value), nullptr};
    if (key == OverlayJson::Key::Next && slot.Value.is<picojson::array>())
        slot.Nodes = std::make_unique<COverlayNodes>(std::move(slot.Value.get<picojson::array>()));
    m_steps.push_back({Kind::KeySet, &node, nullptr, 0, key, node.Exchange(key, std::move(slot))});
}

void COverlayChange::Provide(COverlayNode& node, const std::string& key)
{
    if (!node.Has(key))
        SetKey(node, key, picojson::value());
}

void COverlayChange::Revert()
{
    for (; !m_steps.empty(); m_steps.pop_back())
        Revert(std::move(m_steps.back()));
}

void COverlayChange::Revert(CStep&& step)
{
    switch (step.What) {
    case Kind::Appended:
        (void)step.Node->Holder().Take(*step.Node);
        break;
    case Kind::Erased: {
        COverlayNodes& holder = step.Taken->Holder();
        holder.Insert(std::move(step.Taken));
        break;
    }
    case Kind::Replaced: {
        COverlayNodes& holder = step.Taken->Holder();
        (void)holder.Take(*step.Node);
        holder.Insert(std::move(step.Taken));
        break;
    }
    case Kind::PutLast: {
        COverlayNodes& holder = step.Node->Holder();
        std::unique_ptr<COverlayNode> node = holder.Take(*step.Node);
        node->m_number = step.Number;
        holder.Insert(std::move(node));
        break;
    }
    case Kind::KeySet:
        step.Node->Exchange(step.Key, std::move(step.Old));
    }
}
