#include "city/core/PlaceEdits.h"

#include <utility>

CAddEdit::CAddEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* parent, CPlaceItem* after, QString name,
                   std::optional<CCityList> values)
    : CPlaceEdit(list, overlay), m_parent(parent), m_after(after), m_name(std::move(name)), m_values(std::move(values))
{
}

CPlaceItem* CAddEdit::Do()
{
    const int data = m_values ? m_list.AddPlaceRecord(*m_values) : CPlaceItem::FolderData;
    m_item = m_held.Item() ? Tree().Attach(std::move(m_held), m_parent, m_after)
                           : Tree().InsertAfter(m_parent, m_after, m_name, data);
    try {
        m_change = m_overlay.AddNodeContext(m_item);
    } catch (...) {
        TakeOut();
        throw;
    }
    return m_item;
}

CPlaceItem* CAddEdit::Undo()
{
    m_change.Revert();
    TakeOut();
    return m_after ? m_after : m_parent;
}

void CAddEdit::TakeOut()
{
    m_held = Tree().Detach(m_item);
    if (m_values)
        m_list.GiveBackPlaceRecord();
}

CUpdateEdit::CUpdateEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* item, QString newName,
                         std::optional<CCityList> values)
    : CPlaceEdit(list, overlay), m_item(item), m_oldName(item->Text()), m_newName(std::move(newName)),
      m_newValues(std::move(values))
{
    if (m_newValues)
        m_oldValues = m_list.Place(item->Data());
}

CPlaceItem* CUpdateEdit::Do()
{
    Apply(m_newName, m_newValues);
    try {
        m_change = m_overlay.UpdateNodeContext(m_item, m_oldName, m_newName, m_newValues.has_value());
    } catch (...) {
        Apply(m_oldName, m_oldValues);
        throw;
    }
    return m_item;
}

CPlaceItem* CUpdateEdit::Undo()
{
    m_change.Revert();
    Apply(m_oldName, m_oldValues);
    return m_item;
}

void CUpdateEdit::Apply(const QString& name, const std::optional<CCityList>& values)
{
    Tree().SetText(m_item, name);
    if (values)
        m_list.Place(m_item->Data()).SetValues(*values);
}

CDeleteEdit::CDeleteEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* item)
    : CPlaceEdit(list, overlay), m_item(item), m_parent(item->Parent()), m_after(item->Previous())
{
}

CPlaceItem* CDeleteEdit::Do()
{
    m_change = m_overlay.DeleteNodeContext(m_item);
    m_held = Tree().Detach(m_item);
    return m_after ? m_after : m_parent;
}

CPlaceItem* CDeleteEdit::Undo()
{
    Tree().Attach(std::move(m_held), m_parent, m_after);
    m_change.Revert();
    return m_item;
}

CMoveEdit::CMoveEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* item, CPlaceItem* newParent,
                     CPlaceItem* after)
    : CPlaceEdit(list, overlay), m_item(item), m_oldParent(item->Parent()), m_oldAfter(item->Previous()),
      m_newParent(newParent), m_newAfter(after)
{
}

CPlaceItem* CMoveEdit::Do()
{
    m_change = m_overlay.DropNodeContext(m_item, m_newParent, m_newAfter);
    CPlaceSubtree copy = m_heldCopy.Item() ? std::move(m_heldCopy) : CPlaceTree::Copy(m_item);
    m_copy = Tree().Attach(std::move(copy), m_newParent, m_newAfter);
    m_heldItem = Tree().Detach(m_item);
    return m_copy;
}

CPlaceItem* CMoveEdit::Undo()
{
    m_heldCopy = Tree().Detach(m_copy);
    Tree().Attach(std::move(m_heldItem), m_oldParent, m_oldAfter);
    m_change.Revert();
    return m_item;
}

CPlaceItem* CResetEdit::Do()
{
    if (m_reset) {
        m_former = m_list.Exchange(std::move(m_reset));
    } else {
        m_former = m_list.Reload();
        m_isWhole = m_list.IsComplete();
    }
    m_formerOverlay = m_overlay.Exchange(std::make_unique<COverlayNodes>());
    return nullptr;
}

CPlaceItem* CResetEdit::Undo()
{
    m_reset = m_list.Exchange(std::move(m_former));
    m_overlay.Exchange(std::move(m_formerOverlay));
    return nullptr;
}
