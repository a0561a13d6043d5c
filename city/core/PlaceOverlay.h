#pragma once

#include "city/core/OverlayIndex.h"
#include "city/core/OverlayJson.h"
#include "city/core/PlaceList.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <string>
#include <vector>

/// The record of all that the user changed in the place tree: a JSON document of node objects, matched to the tree by
/// names alone, so that it survives a new shipped list. The edits read the tree as it is at the moment of the call.
class CPlaceOverlay
{
public:
    /// The list whose tree is edited; must outlive the overlay.
    explicit CPlaceOverlay(CPlaceList& list) : m_list(list) {}

    /// One change of the document, to be taken back. Changes are taken back in the reverse order only.
    class CChange
    {
    public:
        [[nodiscard]] bool IsEmpty() const { return m_steps.empty(); }

    private:
        friend class CPlaceOverlay;
        enum class Kind
        {
            Appended, ///< an element at Position
            Erased,   ///< the element Old from Position
            PutLast,  ///< the element from Position went to the end
            Replaced, ///< the element Old at Position
            KeySet    ///< the key of the element at Position, which held Old or was missing
        };
        struct CStep
        {
            Kind What = Kind::Appended;
            std::vector<size_t> Path; ///< positions of the element and the elements above it, from the top
            picojson::value Old;
            std::string Key;
            bool WasMissing = false;
            quint64 Number = 0; ///< of an erased element in its array's index
        };
        std::vector<CStep> m_steps;
    };

    /// Null before the first of the next three calls; edits need an array.
    [[nodiscard]] const picojson::value& Overlay() const { return m_overlay; }
    /// A root entry and nothing below it.
    void SetDefault();
    /// Takes a parsed document; what is no array counts as an empty one.
    void Take(picojson::value document);
    /// Empties the top-level array and hands out the document that was.
    picojson::value Clear();

    /// The document as the file holds it: one line in code page 932, keys in byte order.
    [[nodiscard]] QByteArray Bytes() const;

    /// Replays the document onto the tree of the shipped list. Throws CInvalidArgument when the place table is full;
    /// what was replayed until then stays.
    void Replay();

    /// Record an edit; see CPlaceDocument for the order of calls. The change says how to take it back.
    CChange AddNodeContext(const CPlaceItem* item);
    CChange UpdateNodeContext(CPlaceItem* item, const QString& oldName, const QString& newName, bool isPlace);
    CChange DeleteNodeContext(const CPlaceItem* item);
    /// A null `after` stands for the first position.
    CChange DropNodeContext(const CPlaceItem* item, const CPlaceItem* newParent, const CPlaceItem* after);
    void Revert(CChange change);

private:
    /// Where a node object lies: the positions of the elements above it and its own, from the top-level array on.
    struct CCursor
    {
        picojson::array* Holder = nullptr;
        std::vector<size_t> Path;

        [[nodiscard]] size_t Position() const { return Path.back(); }
        [[nodiscard]] picojson::object& Entry() const { return (*Holder)[Position()].get<picojson::object>(); }
    };

    /// What an element of unknown type takes over from the elements before it in its array.
    struct CCarried
    {
        bool IsFolder = true;
        QString Data;
        void Take(picojson::object& node);
    };

    void AnalyzeNodeContext(picojson::array& nodes, CPlaceItem* parent, int depth);
    CPlaceItem* AddTreeViewFromContextData(CPlaceItem* parent, const QString& name, const QString& anchor,
                                           const CCarried& values, int depth);
    void UpdTreeViewFromContextData(CPlaceItem* item, const QString& name, const CCarried& values);

    [[nodiscard]] CCursor TrackJsonCursor(const CPlaceItem* item, const QString& name);
    void GetCurrentNodeObject(picojson::array& nodes, const QString& name, std::vector<size_t>& path);
    [[nodiscard]] static picojson::value GenerateNewJsonObject(const QString& originalName, const std::string& action,
                                                               const std::string& type, const QString& verticalOffset,
                                                               const QString& data);
    [[nodiscard]] picojson::value GetNewNodeItem(const CPlaceItem* item, const QString& name) const;
    [[nodiscard]] picojson::value GenerateWholeNodeObjects(const CPlaceItem* item) const;

    picojson::array& Top() { return m_overlay.get<picojson::array>(); }
    [[nodiscard]] picojson::array& HolderOf(const std::vector<size_t>& path);
    [[nodiscard]] static QString OriginalName(const CCursor& cursor);
    void MakePassable(const CCursor& cursor);
    void Adopt(const CCursor& cursor, const CPlaceItem* item, const QString& name);
    void TakeOverDeadClaims(CCursor& cursor);
    void KeepBehindAnchor(CCursor& cursor, const CPlaceItem* item);
    void KeepBehindClaims(CCursor& cursor, const CPlaceItem* item);
    void KeepOwnClaim(const CCursor& cursor, const CPlaceItem* item);
    void SetAnchor(const CCursor& cursor, const CPlaceItem* item);
    void PutLast(CCursor& cursor);
    void Erase(const CCursor& cursor);
    void SetKey(const CCursor& cursor, const std::string& key, picojson::value value);
    void Delete(const CPlaceItem* item);
    void RevertStep(CChange::CStep&& step);
    template <typename Edit> [[nodiscard]] CChange Record(const Edit& edit);

    CPlaceList& m_list;
    picojson::value m_overlay;
    COverlayIndex m_index;
    CChange m_change;
};
