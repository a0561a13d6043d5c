#pragma once

#include "city/core/OverlayJson.h"

#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

class COverlayNodes;

/// An element of an overlay array: a node object, or what a foreign file holds in its place and is kept as it stands.
/// Belongs to its array; is changed by a COverlayChange only.
class COverlayNode
{
public:
    explicit COverlayNode(picojson::value element);
    ~COverlayNode();
    COverlayNode(const COverlayNode&) = delete;
    COverlayNode& operator=(const COverlayNode&) = delete;

    [[nodiscard]] bool IsObject() const { return m_element.is<picojson::object>(); }
    [[nodiscard]] bool Has(const std::string& key) const;
    /// Whether the key holds exactly this string.
    [[nodiscard]] bool Is(const std::string& key, const std::string& text) const;
    /// The text of the key's value, decoded; "null" when it is missing.
    [[nodiscard]] QString Text(const std::string& key) const;
    /// The array that "next" holds; null when it holds something else.
    [[nodiscard]] COverlayNodes* Next() const { return m_next.get(); }

    /// The array that the element lies in, or lay in before it was taken out.
    [[nodiscard]] COverlayNodes& Holder() const { return *m_holder; }
    [[nodiscard]] bool IsBehind(const COverlayNode& sibling) const { return m_number > sibling.m_number; }

    /// The same for the replay, which is not undone: a missing key is added with the value null.
    QString Read(const std::string& key);
    /// Notes that the replay found no item for this element, nor reached what is inside it. An element counts as
    /// missed as long as it looks for the same name.
    void SetMissed();
    [[nodiscard]] bool IsMissed() const;

    [[nodiscard]] picojson::value Element() const; ///< a copy
    void Write(std::string& out) const;

private:
    friend class COverlayNodes;
    friend class COverlayChange;

    /// What a key holds.
    struct CSlot
    {
        bool IsThere = false;
        picojson::value Value;
        std::unique_ptr<COverlayNodes> Nodes; ///< of "next", when it is an array
    };

    [[nodiscard]] picojson::object& Object() { return m_element.get<picojson::object>(); }
    [[nodiscard]] const picojson::object& Object() const { return m_element.get<picojson::object>(); }
    [[nodiscard]] QString Sought() const;
    [[nodiscard]] const std::string& NameKey() const;
    [[nodiscard]] std::optional<QString> Name() const;
    [[nodiscard]] std::optional<QString> Claim() const;
    [[nodiscard]] bool LacksKey() const;
    CSlot Exchange(const std::string& key, CSlot slot);

    picojson::value m_element;             ///< without the array of "next"
    std::unique_ptr<COverlayNodes> m_next; ///< null when "next" is no array
    COverlayNodes* m_holder = nullptr;
    quint64 m_number = 0;            ///< ascending in the array
    std::optional<QString> m_missed; ///< the name that the replay looked for in vain
};

/// An overlay array. Its elements are found by name in a time that hardly grows with their number.
class COverlayNodes
{
public:
    COverlayNodes() = default;
    explicit COverlayNodes(picojson::array elements);
    COverlayNodes(const COverlayNodes&) = delete;
    COverlayNodes& operator=(const COverlayNodes&) = delete;

    [[nodiscard]] auto begin() const { return m_nodes.begin(); }
    [[nodiscard]] auto end() const { return m_nodes.end(); }

    /// The first element that stands for the item of that name, null for none: an update by its latest name, anything
    /// else but a deletion by its original name. One that was missed counts only where there is no other: what is
    /// recorded in it would never be replayed.
    [[nodiscard]] COverlayNode* Find(const QString& name);
    /// The elements that a plain scan up to this one (null: to the end) would find without a key that it reads.
    [[nodiscard]] std::vector<COverlayNode*> LackingKeys(const COverlayNode* last);
    /// The elements that look for a shipped item of that name, in order.
    [[nodiscard]] std::vector<COverlayNode*> Claims(const QString& name);

    void Write(std::string& out) const;

private:
    friend class COverlayNode;
    friend class COverlayChange;

    using CPlace = std::vector<std::unique_ptr<COverlayNode>>::iterator;

    /// Made at the first search and kept up to date from then on.
    struct CIndex
    {
        std::map<std::tuple<QString, bool, quint64>, COverlayNode*> ByName; ///< name, is missed, number
        std::map<std::pair<QString, quint64>, COverlayNode*> ByClaim;
        std::map<quint64, COverlayNode*> Lacking;
    };

    COverlayNode& Append(std::unique_ptr<COverlayNode> node);
    void Insert(std::unique_ptr<COverlayNode> node);
    [[nodiscard]] std::unique_ptr<COverlayNode> Take(COverlayNode& node);

    [[nodiscard]] CPlace PlaceOf(quint64 number);
    [[nodiscard]] CIndex& Index();
    void AddToIndex(COverlayNode& node);
    void RemoveFromIndex(const COverlayNode& node);

    std::vector<std::unique_ptr<COverlayNode>> m_nodes;
    quint64 m_lastNumber = 0;
    std::unique_ptr<CIndex> m_index;
};
