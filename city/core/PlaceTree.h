#pragma once

#include <QHash>
#include <QString>

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

class CPlaceTree;

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
    /// The next item of the tree as it is read from top to bottom; null after the last.
    [[nodiscard]] CPlaceItem* Following() const;

private:
    friend class CPlaceTree;

    /// The children of one text. Of several the first is looked for when it is asked for.
    struct CNamesakes
    {
        CPlaceItem* First = nullptr;
        int Count = 0;
    };
    using CChildrenByText = std::unordered_map<QString, CNamesakes>;

    void AddToIndex(CPlaceItem* child);
    void RemoveFromIndex(const CPlaceItem* child);

    QString m_text;
    int m_data = FolderData;
    bool m_isTopLevel = false;
    CPlaceItem* m_parent = nullptr;
    CPlaceItem* m_firstChild = nullptr;
    CPlaceItem* m_lastChild = nullptr;
    CPlaceItem* m_next = nullptr;
    CPlaceItem* m_previous = nullptr;
    /// Children by text; made at the first look-up and kept up to date from then on.
    std::unique_ptr<CChildrenByText> m_childrenByText;
};

/// An item with everything below it that is in no tree; owns what it holds.
class CPlaceSubtree
{
public:
    CPlaceSubtree() = default;
    CPlaceSubtree(CPlaceSubtree&& other) noexcept : m_item(std::exchange(other.m_item, nullptr)) {}
    CPlaceSubtree& operator=(CPlaceSubtree&& other) noexcept
    {
        std::swap(m_item, other.m_item);
        return *this;
    }
    ~CPlaceSubtree();

    /// The item at its top; null for none.
    [[nodiscard]] CPlaceItem* Item() const { return m_item; }

private:
    friend class CPlaceTree;

    explicit CPlaceSubtree(CPlaceItem* item) : m_item(item) {}

    CPlaceItem* m_item = nullptr;
};

/// Is notified of the tree's changes; a view's model, for example.
class CPlaceTreeListener
{
public:
    CPlaceTreeListener() = default;
    CPlaceTreeListener(const CPlaceTreeListener&) = delete;
    CPlaceTreeListener& operator=(const CPlaceTreeListener&) = delete;
    virtual ~CPlaceTreeListener() = default;

    /// An item, perhaps with items below it, comes after a child of the parent (null: first). A null parent is the top.
    virtual void BeforeInsert(CPlaceItem* parent, CPlaceItem* after) = 0;
    virtual void AfterInsert(CPlaceItem* item) = 0;
    virtual void BeforeRemove(CPlaceItem* item) = 0;
    virtual void AfterRemove(CPlaceItem* item) = 0; ///< the item is out of the tree, and still whole
    virtual void TextChanged(CPlaceItem* item) = 0;
    virtual void BeforeReset() = 0;
    virtual void AfterReset() = 0;
};

/// The tree of folders and places: ordered siblings, several top-level items possible. Inserting, removing and
/// finding a child by its text take a time that does not grow with the number of siblings, as long as few of them have
/// the same text.
class CPlaceTree
{
public:
    CPlaceTree();
    CPlaceTree(const CPlaceTree&) = delete;
    CPlaceTree& operator=(const CPlaceTree&) = delete;
    ~CPlaceTree();

    /// One listener, null for none; not owned.
    void SetListener(CPlaceTreeListener* listener) { m_listener = listener; }

    /// As long as one of these is about, the listener hears of nothing but a reset of the whole tree.
    class CReset
    {
    public:
        explicit CReset(CPlaceTree& tree);
        ~CReset();
        CReset(const CReset&) = delete;
        CReset& operator=(const CReset&) = delete;

    private:
        CPlaceTree& m_tree;
    };

    /// First top-level item, null in an empty tree.
    [[nodiscard]] CPlaceItem* Root() const { return m_top.m_firstChild; }

    /// Adds an item as the last child of the parent; a null parent means the top level. Owned by the tree.
    CPlaceItem* Append(CPlaceItem* parent, const QString& text, int data);

    /// Adds an item after a child of the parent, or as its first child when `after` is null.
    CPlaceItem* InsertAfter(CPlaceItem* parent, CPlaceItem* after, const QString& text, int data);

    void SetText(CPlaceItem* item, const QString& text);

    /// Removes the item with everything below it.
    void Remove(CPlaceItem* item) { (void)Detach(item); }
    void Clear();

    /// Takes the item with everything below it out of the tree.
    [[nodiscard]] CPlaceSubtree Detach(CPlaceItem* item);
    /// Takes out all top-level items, in order.
    [[nodiscard]] std::vector<CPlaceSubtree> DetachAll();
    /// Puts a subtree in after a child of the parent, or as its first child when `after` is null.
    CPlaceItem* Attach(CPlaceSubtree subtree, CPlaceItem* parent, CPlaceItem* after);
    /// A copy of the item and everything below it, in order; places keep their records.
    [[nodiscard]] static CPlaceSubtree Copy(const CPlaceItem* source);

    /// First child of the parent (null: of the top level) in tree order whose text equals the name exactly; null when
    /// there is none.
    [[nodiscard]] CPlaceItem* SearchNodeItem(const CPlaceItem* parent, const QString& name) const;

private:
    friend class CPlaceSubtree;

    [[nodiscard]] CPlaceItem& Holder(CPlaceItem* parent) { return parent ? *parent : m_top; }
    [[nodiscard]] CPlaceTreeListener* Listener() const { return m_resetDepth == 0 ? m_listener : nullptr; }
    static void Link(CPlaceItem& holder, CPlaceItem* after, CPlaceItem* item);
    static void Unlink(CPlaceItem* item);
    static void Destroy(CPlaceItem* subtree);

    mutable CPlaceItem m_top; ///< holds the top-level items
    CPlaceTreeListener* m_listener = nullptr;
    int m_resetDepth = 0;
};
