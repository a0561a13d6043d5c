#pragma once

#include "city/core/OverlayChange.h"
#include "city/core/OverlayNode.h"
#include "city/core/PlaceList.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <string>

/// The record of all that the user changed in the place tree: a JSON document of node objects, matched to the tree by
/// names alone, so that it survives a new shipped list. The edits read the tree as it is at the moment of the call.
class CPlaceOverlay
{
public:
    /// The list whose tree is edited; must outlive the overlay.
    explicit CPlaceOverlay(CPlaceList& list) : m_list(list) {}

    /// Whether there is a document: not before the first of the next three calls. Edits need one.
    [[nodiscard]] bool IsLoaded() const { return m_top != nullptr; }
    /// A root entry and nothing below it.
    void SetDefault();
    /// Takes a parsed document; what is no array counts as an empty one.
    void Take(picojson::value document);
    /// Puts another top-level array in the place of the one that is returned.
    std::unique_ptr<COverlayNodes> Exchange(std::unique_ptr<COverlayNodes> top);

    /// The document as the file holds it: one line in code page 932, keys in byte order.
    [[nodiscard]] QByteArray Bytes() const;

    /// Replays the document onto the tree of the shipped list. Throws CInvalidArgument when the place table is full;
    /// what was replayed until then stays.
    void Replay();

    /// Record an edit; see CPlaceDocument for the order of calls. The change is to be reverted to take it back.
    COverlayChange AddNodeContext(const CPlaceItem* item);
    COverlayChange UpdateNodeContext(const CPlaceItem* item, const QString& oldName, const QString& newName,
                                     bool isPlace);
    COverlayChange DeleteNodeContext(const CPlaceItem* item);
    /// A null `after` stands for the first position.
    COverlayChange DropNodeContext(const CPlaceItem* item, const CPlaceItem* newParent, const CPlaceItem* after);

private:
    /// What an element of unknown type takes over from the elements before it in its array.
    struct CCarried
    {
        bool IsFolder = true;
        QString Data;
        void Take(COverlayNode& node);
    };

    void AnalyzeNodeContext(COverlayNodes& nodes, CPlaceItem* parent, int depth);
    CPlaceItem* AddTreeViewFromContextData(CPlaceItem* parent, const QString& name, const QString& anchor,
                                           const CCarried& values, int depth);
    void UpdTreeViewFromContextData(CPlaceItem* item, const QString& name, const CCarried& values);

    [[nodiscard]] COverlayNode& TrackJsonCursor(const CPlaceItem* item, const QString& name);
    [[nodiscard]] COverlayNode& GetCurrentNodeObject(COverlayNodes& nodes, const QString& name);
    [[nodiscard]] static picojson::value GenerateNewJsonObject(const QString& originalName, const std::string& action,
                                                               const std::string& type, const QString& verticalOffset,
                                                               const QString& data);
    [[nodiscard]] picojson::value GetNewNodeItem(const CPlaceItem* item, const QString& name) const;
    [[nodiscard]] picojson::value GenerateWholeNodeObjects(const CPlaceItem* item) const;

    void MakePassable(COverlayNode& entry);
    void Adopt(COverlayNode& entry, const QString& name);
    void TakeOverDeadClaims(COverlayNode& entry);
    void KeepBehindClaims(COverlayNode& entry, const CPlaceItem* item);
    void KeepOwnClaim(COverlayNode& entry, const CPlaceItem* item);
    void SetAnchor(COverlayNode& entry, const CPlaceItem* item);
    void Delete(const CPlaceItem* item);
    template <typename Edit> [[nodiscard]] COverlayChange Record(const Edit& edit);

    CPlaceList& m_list;
    std::unique_ptr<COverlayNodes> m_top;
    COverlayChange m_change; ///< of the edit that runs
};
