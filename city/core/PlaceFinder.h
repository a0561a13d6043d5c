#pragma once

#include "city/core/PlaceTree.h"

#include <QString>

#include <vector>

/// Finds items of the place tree by a part of their names, whatever the letter case, the width of the characters and
/// the kind of kana. The names are taken over once; a search then costs one walk through them.
class CPlaceFinder
{
public:
    /// Where a walk through the matches starts.
    enum class Step
    {
        Here, ///< the item itself counts
        Next,
        Previous
    };

    /// Takes over the names of all items, in tree order. To be called again when the tree has changed; until then
    /// the matches may be items that are gone.
    void SetTree(const CPlaceTree& tree);

    /// Looks for a text; an empty one matches nothing.
    void Find(const QString& text);

    [[nodiscard]] int MatchCount() const { return static_cast<int>(m_matches.size()); }
    /// The match from an item on, in tree order and going round; null when nothing matches. A null item stands before
    /// the first one.
    [[nodiscard]] CPlaceItem* Match(const CPlaceItem* from, Step step) const;
    /// Which of the matches the item is, from 1; 0 when it is none.
    [[nodiscard]] int Ordinal(const CPlaceItem* item) const;

    /// The form in which texts are compared.
    [[nodiscard]] static QString Folded(QStringView text);

private:
    [[nodiscard]] int PositionOf(const CPlaceItem* item) const;

    std::vector<CPlaceItem*> m_items; ///< in tree order
    QString m_names;                  ///< folded, each followed by a line feed
    std::vector<qsizetype> m_starts;  ///< of the names
    std::vector<int> m_matches;       ///< positions of items, ascending
};
