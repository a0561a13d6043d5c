#pragma once

#include "city/core/OverlayJson.h"

#include <QHash>
#include <QString>

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

/// Finds node objects by name in arrays of any length without walking them twice. An array is read from its front only
/// as far as a search must go, exactly as a plain scan would, so a key that is missing there gains its null.
class COverlayIndex
{
public:
    /// A key that a search added to the element at that position.
    struct CAddedKey
    {
        size_t Position = 0;
        std::string Key;
    };

    /// Position of the first element of the array that stands for the item of that name: an update by its latest name,
    /// anything else but a deletion by its original name. One without a target counts only where there is no other:
    /// what is recorded in it would never be replayed.
    [[nodiscard]] std::optional<size_t> Find(picojson::array& nodes, const QString& name,
                                             std::vector<CAddedKey>& added);

    /// Positions of the elements that look for a shipped item of that name: all, or those behind a position.
    [[nodiscard]] std::vector<size_t> Claims(const picojson::array& nodes, const QString& name);
    [[nodiscard]] std::vector<size_t> ClaimsBehind(const picojson::array& nodes, size_t position, const QString& name);

    /// To be called after an element was appended, before one is erased, and around a change of an element's keys. An
    /// element that is put back where it was erased gets its number back, too.
    void Appended(const picojson::array& nodes);
    quint64 BeforeErase(const picojson::array& nodes, size_t position);
    void Inserted(const picojson::array& nodes, size_t position, quint64 number);
    void BeforeChange(const picojson::array& nodes, size_t position);
    void AfterChange(const picojson::array& nodes, size_t position);

    /// Notes an element whose target was missing at the replay. It counts as such as long as it looks for the same
    /// name.
    void SetUnmet(const picojson::object& node, const QString& name) { m_unmet.insert(&node, name); }
    /// The same for an element and all inside it, or for all elements of an array, which the replay did not reach.
    void SetUnmet(const picojson::value& element);
    void SetUnmetWithin(const picojson::value& value);
    [[nodiscard]] bool IsUnmet(const picojson::value& element) const;
    void ForgetUnmet() { m_unmet.clear(); }

    /// Forgets an array; the next search reads it from the front.
    void Forget(const picojson::array& nodes) { m_arrays.remove(&nodes); }
    /// Forgets all arrays inside the value.
    void Drop(const picojson::value& value);
    void Clear() { m_arrays.clear(); }

private:
    using CNumbersByName = std::unordered_map<QString, std::set<quint64>>;

    struct CArrayIndex
    {
        std::vector<quint64> Numbers; ///< ascending, one for each element
        quint64 LastNumber = 0;
        size_t ReadCount = 0; ///< elements from the front that the next two know
        CNumbersByName ByName;
        CNumbersByName UnmetByName;
        CNumbersByName ByClaim; ///< of all elements, by the name of the shipped item
    };

    [[nodiscard]] CArrayIndex& Of(const picojson::array& nodes);
    [[nodiscard]] static std::optional<QString> NameOf(const picojson::value& element);
    [[nodiscard]] static std::optional<QString> ClaimOf(const picojson::value& element);
    [[nodiscard]] CNumbersByName& NamesWith(CArrayIndex& index, const picojson::value& element) const;
    [[nodiscard]] static std::optional<size_t> FirstOf(const CArrayIndex& index, const CNumbersByName& names,
                                                       const QString& name);

    QHash<const picojson::array*, std::shared_ptr<CArrayIndex>> m_arrays;
    /// With the name that was looked for. Whatever an edit takes out of the document lives on to be put back, so these
    /// stay the same elements until the next replay.
    QHash<const picojson::object*, QString> m_unmet;
};
