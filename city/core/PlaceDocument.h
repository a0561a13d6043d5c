#pragma once

#include "city/core/OverlayFile.h"
#include "city/core/PlaceList.h"
#include "city/core/PlaceOverlay.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

class CPlaceEdit;

/// Where the place list lies.
struct CPlacePaths
{
    static constexpr char16_t ListName[] = u"kivpel.obs";
    static constexpr char16_t UserListName[] = u"kivpel_user.obs";
    static constexpr char16_t OverlayName[] = u"kivpel_user_obs.json";

    QString ListFilePath;     ///< the shipped list; only read
    QString UserListFilePath; ///< the list with the user's changes, for others to read; only written
    QString OverlayFilePath;  ///< the user's changes

    /// All three in the user's data folder, which ends with its separator.
    [[nodiscard]] static CPlacePaths InFolder(const QString& dataFolder);
};

/// The place list with all that the user changed in it: the shipped list, the overlay on it, and edits that keep both
/// in step and can be undone. An edit that throws CInvalidArgument has changed nothing.
class CPlaceDocument
{
public:
    /// What came of saving the two files; each is replaced whole or stays as it was.
    struct CSaved
    {
        bool UserList = false;
        bool Overlay = false;
        [[nodiscard]] bool IsAll() const { return UserList && Overlay; }
    };

    CPlaceDocument();
    CPlaceDocument(const CPlaceDocument&) = delete;
    CPlaceDocument& operator=(const CPlaceDocument&) = delete;
    ~CPlaceDocument();

    void SetPaths(const CPlacePaths& paths);
    void SetProgress(CPlaceList::Progress progress) { m_list.SetProgress(std::move(progress)); }
    /// Makes the devices that both files are written to.
    void SetSaveFileFactory(const CKivFile::SaveFileFactory& factory);

    /// Read the shipped list, then replay the overlay onto it; once each, in this order. Throw CInvalidArgument when a
    /// table is full: what was taken in until then stays. The user list is not written from a list that was taken in
    /// only in part, or whose overlay is there and cannot be read.
    void LoadCityList();
    void LoadLocationTreeContext();

    /// Replaces the user list by what the tree holds. False, with the old file in place, when it cannot be written or
    /// the list was not wholly loaded.
    bool RefreshUserObs() { return m_list.RefreshUserObs(); }
    /// Replaces the user list, then the overlay.
    CSaved SaveCityList();

    [[nodiscard]] CPlaceTree& Tree() { return m_list.Tree(); }
    [[nodiscard]] const CPlaceTree& Tree() const { return m_list.Tree(); }
    /// A place's record; CInvalidArgument outside the table.
    [[nodiscard]] const CCityList& Place(int index) const { return m_list.Place(index); }
    [[nodiscard]] int PlaceCount() const { return m_list.PlaceCount(); }
    [[nodiscard]] const CPlaceList& List() const { return m_list; }
    [[nodiscard]] const CPlaceOverlay& Overlay() const { return m_overlay; }

    /// Whether the new name would clash with a child of the parent. An item that keeps its name does not clash with
    /// itself, unless it is the first child, which is never exempted; callers ask only when the name changes.
    [[nodiscard]] bool IsDuplicateItemName(const CPlaceItem* parent, const QString& newName,
                                           const QString& oldName) const;

    /// Add an item after a child of the parent, or as its first child when `after` is null. Of the place only the
    /// values count, Longitude to Kind.
    CPlaceItem* AddPlace(CPlaceItem* parent, CPlaceItem* after, const QString& name, const CCityList& values);
    CPlaceItem* AddFolder(CPlaceItem* parent, CPlaceItem* after, const QString& name);
    /// Give a place a name and values, a folder a name; recorded also when they are those it has.
    void UpdatePlace(CPlaceItem* item, const QString& newName, const CCityList& values);
    void UpdateFolder(CPlaceItem* item, const QString& newName);
    /// Removes the item with everything below it.
    void Delete(CPlaceItem* item);
    /// Moves the item with everything below it. CInvalidArgument when the new place lies in it or is none. Returns the
    /// item that stands in the new place, a copy of the moved one, which is gone.
    CPlaceItem* Move(CPlaceItem* item, CPlaceItem* newParent, CPlaceItem* after);
    /// Goes back to the shipped list and empties the overlay; places are numbered on after those in use,
    /// as long as the table has room for that. False, with nothing changed, when the shipped list cannot be read.
    bool Reset();

    /// Renames the item in the tree alone, for a view that lets its user edit the text in place.
    void SetItemText(CPlaceItem* item, const QString& text) { m_list.Tree().SetText(item, text); }

    /// Take the last edit back, or make the last one taken back again. They return the item to show: the one that the
    /// edit was about, or its folder where that item is gone; null when there is nothing to undo or redo, or after a
    /// reset.
    [[nodiscard]] bool CanUndo() const { return m_doneCount > 0; }
    [[nodiscard]] bool CanRedo() const { return m_doneCount < m_edits.size(); }
    CPlaceItem* Undo();
    CPlaceItem* Redo();

private:
    CPlaceItem* Run(std::unique_ptr<CPlaceEdit> edit);
    void Keep(std::unique_ptr<CPlaceEdit> edit);

    CPlaceList m_list;
    CPlaceOverlay m_overlay{m_list};
    QString m_overlayFilePath;
    COverlayFile m_overlayFile;
    std::vector<std::unique_ptr<CPlaceEdit>> m_edits;
    size_t m_doneCount = 0; ///< edits from the front that are done; the others are undone
};
