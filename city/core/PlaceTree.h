#pragma once

#include <QHash>
#include <QString>

#include <memory>
#include <vector>

/// An item of the place tree: a folder or a place. Belongs to its tree.
class CPlaceItem
{
public:
    static constexpr int FolderData = -1;

    [[nodiscard]] const QString& Text() const { return m_text; }
    /// FolderData, or the index of the place's record.
    [[nodiscard]] int Data() const { return m_data; }
    [[nodiscard]] bool IsFolder() const { return m_data == FolderData; }
    [[nodiscard]] CPlaceItem* Parent() const { return m_isTopLevel ? nullptr : m_parent; }
    [[nodiscard]] CPlaceItem* FirstChild() const { return m_firstChild; }
    [[nodiscard]] CPlaceItem* LastChild() const { return m_lastChild; }
    [[nodiscard]] CPlaceItem* Next() const { return m_next; }
    [[nodiscard]] CPlaceItem* Previous() const { return m_previous; }

private:
    friend class CPlaceTree;

    QString m_text;
    int m_data = FolderData;
    bool m_isTopLevel = false;
    quint64 m_order = 0; ///< ascending among siblings
    CPlaceItem* m_parent = nullptr;
    CPlaceItem* m_firstChild = nullptr;
    CPlaceItem* m_lastChild = nullptr;
    CPlaceItem* m_next = nullptr;
    CPlaceItem* m_previous = nullptr;
    /// Children by text; made at the first look-up and kept up to date from then on.
    std::unique_ptr<QMultiHash<QString, CPlaceItem*>> m_childrenByText;
};

/// The tree of folders and places: ordered siblings, several top-level items possible. Inserting, removing and
/// finding a child by its text take a time that does not grow with the number of siblings.
class CPlaceTree
{
public:
    CPlaceTree();
    CPlaceTree(const CPlaceTree&) = delete;
    CPlaceTree& operator=(const CPlaceTree&) = delete;
    ~CPlaceTree();

    /// First top-level item, null in an empty tree.
    [[nodiscard]] CPlaceItem* Root() const { return m_top.m_firstChild; }

    /// Adds an item as the last child of the parent; a null parent means the top level. Owned by the tree.
    CPlaceItem* Append(CPlaceItem* parent, const QString& text, int data);

    /// Adds an item after a child of the parent, or as its first child when `after` is null.
    CPlaceItem* InsertAfter(CPlaceItem* parent, CPlaceItem* after, const QString& text, int data);

    void SetText(CPlaceItem* item, const QString& text);

    /// Removes the item with everything below it.
    void Remove(CPlaceItem* item);
    void Clear();

    /// First child of the parent (null: of the top level) in tree order whose text equals the name exactly; null when
    /// there is none.
    [[nodiscard]] CPlaceItem* SearchNodeItem(const CPlaceItem* parent, const QString& name) const;

private:
    [[nodiscard]] CPlaceItem& Holder(CPlaceItem* parent) { return parent ? *parent : m_top; }
    static void AssignOrder(CPlaceItem& holder, CPlaceItem& item);
    static void Unlink(CPlaceItem* item);
    static void Destroy(CPlaceItem* subtree);

    mutable CPlaceItem m_top; ///< holds the top-level items
};
