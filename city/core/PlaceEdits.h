#pragma once

#include "city/core/PlaceList.h"
#include "city/core/PlaceOverlay.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

/// An edit of the place list: the tree, the records and the overlay change together, in the one order in which the
/// overlay sees the tree as it must. Done and undone in turn, and in the order of all edits; items that are out of the
/// tree meanwhile are kept here, so that later edits find them again.
class CPlaceEdit
{
public:
    CPlaceEdit(CPlaceList& list, CPlaceOverlay& overlay) : m_list(list), m_overlay(overlay) {}
    CPlaceEdit(const CPlaceEdit&) = delete;
    CPlaceEdit& operator=(const CPlaceEdit&) = delete;
    virtual ~CPlaceEdit() = default;

    /// Both return the item to show afterwards, null for none. Do may throw CInvalidArgument, having changed nothing.
    virtual CPlaceItem* Do() = 0;
    virtual CPlaceItem* Undo() = 0;

protected:
    [[nodiscard]] CPlaceTree& Tree() { return m_list.Tree(); }

    CPlaceList& m_list;
    CPlaceOverlay& m_overlay;
    COverlayChange m_change;
};

/// Adds a place, or a folder when no values are given.
class CAddEdit : public CPlaceEdit
{
public:
    CAddEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* parent, CPlaceItem* after, QString name,
             std::optional<CCityList> values);
    CPlaceItem* Do() override;
    CPlaceItem* Undo() override;

private:
    void TakeOut();

    CPlaceItem* m_parent;
    CPlaceItem* m_after;
    QString m_name;
    std::optional<CCityList> m_values;
    CPlaceItem* m_item = nullptr;
    CPlaceSubtree m_held;
};

/// Gives a folder a name, or a place a name and values.
class CUpdateEdit : public CPlaceEdit
{
public:
    CUpdateEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* item, QString newName,
                std::optional<CCityList> values);
    CPlaceItem* Do() override;
    CPlaceItem* Undo() override;

private:
    void Apply(const QString& name, const std::optional<CCityList>& values);

    CPlaceItem* m_item;
    QString m_oldName;
    QString m_newName;
    std::optional<CCityList> m_oldValues;
    std::optional<CCityList> m_newValues;
};

class CDeleteEdit : public CPlaceEdit
{
public:
    CDeleteEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* item);
    CPlaceItem* Do() override;
    CPlaceItem* Undo() override;

private:
    CPlaceItem* m_item;
    CPlaceItem* m_parent;
    CPlaceItem* m_after;
    CPlaceSubtree m_held;
};

/// Puts a copy in the new place and takes the old item out.
class CMoveEdit : public CPlaceEdit
{
public:
    CMoveEdit(CPlaceList& list, CPlaceOverlay& overlay, CPlaceItem* item, CPlaceItem* newParent, CPlaceItem* after);
    CPlaceItem* Do() override;
    CPlaceItem* Undo() override;

private:
    CPlaceItem* m_item;
    CPlaceItem* m_oldParent;
    CPlaceItem* m_oldAfter;
    CPlaceItem* m_newParent;
    CPlaceItem* m_newAfter;
    CPlaceItem* m_copy = nullptr;
    CPlaceSubtree m_heldItem;
    CPlaceSubtree m_heldCopy;
};

/// Loads the shipped list anew and empties the overlay.
class CResetEdit : public CPlaceEdit
{
public:
    CResetEdit(CPlaceList& list, CPlaceOverlay& overlay) : CPlaceEdit(list, overlay) {}
    CPlaceItem* Do() override;
    CPlaceItem* Undo() override;

    /// Whether the shipped list was wholly read.
    [[nodiscard]] bool IsWhole() const { return m_isWhole; }

private:
    bool m_isWhole = false;
    std::unique_ptr<CPlaceList::CContents> m_former;
    std::unique_ptr<CPlaceList::CContents> m_reset; ///< null until the reset is undone
    std::unique_ptr<COverlayNodes> m_formerOverlay;
};
