#pragma once

#include "city/core/PlaceRecord.h"
#include "city/core/PlaceTree.h"
#include "host/system/InvalidArgument.h"
#include "host/text/KivFile.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

/// The place list as a document: records, tree and files, without any window.
class CPlaceList
{
public:
    static constexpr int FolderTableSize = 2000; ///< the root included
    static constexpr int PlaceTableSize = 10000;
    static constexpr char16_t RootName[] = u"場所";

    /// Progress of a load: a text at the start, a percentage now and then, 0 at the end.
    static constexpr int PhaseStart = 0;
    static constexpr int PhasePercent = 1;
    static constexpr int PhaseEnd = 2;
    using Progress = std::function<void(int phase, const QVariant& value)>;

    CPlaceList();
    ~CPlaceList();
    CPlaceList(const CPlaceList&) = delete;
    CPlaceList& operator=(const CPlaceList&) = delete;

    /// The shipped list, which is only read, and the user list, which is only written.
    QString ListFilePath;
    QString UserListFilePath;

    void SetProgress(Progress progress) { m_progress = std::move(progress); }
    void SetSaveFileFactory(CKivFile::SaveFileFactory factory) { m_saveFileFactory = std::move(factory); }

    /// Reads the shipped list into the tree and the tables; a missing file leaves the root alone. The tree must be
    /// empty. Throws CInvalidArgument when a table is full: what was read until then stays, and IsComplete is false.
    void LoadCityList();

    /// Whether the last load took in the whole file. What could not be read, or not wholly, must not be saved.
    [[nodiscard]] bool IsComplete() const { return m_tables.IsComplete; }

    /// Replaces the user list by what the tree holds now. False, with the old file in place, when it cannot be
    /// written or the list is incomplete.
    bool RefreshUserObs();

    /// Counts the list as not wholly loaded.
    void SetIncomplete() { m_tables.IsComplete = false; }

    /// The tree with its records, put aside; only the header stays.
    class CContents;
    /// Puts other contents in the place of those that are returned.
    [[nodiscard]] std::unique_ptr<CContents> Exchange(std::unique_ptr<CContents> contents);
    /// Reads the shipped list in the place of the contents that are returned. Places are numbered on after those in
    /// use, as long as the table has room for that. Throws, with nothing changed, when a table is full even so.
    [[nodiscard]] std::unique_ptr<CContents> Reload();

    [[nodiscard]] CPlaceTree& Tree() { return m_tree; }
    [[nodiscard]] const CPlaceTree& Tree() const { return m_tree; }
    [[nodiscard]] int FolderCount() const { return m_tables.FolderCount; }
    [[nodiscard]] int PlaceCount() const { return m_tables.PlaceCount; }
    /// Records by index; CInvalidArgument outside the table.
    [[nodiscard]] const CTagList& Folder(int index) const;
    [[nodiscard]] CCityList& Place(int index);
    [[nodiscard]] const CCityList& Place(int index) const;
    /// Takes the next record of the place table and returns its index; CInvalidArgument when the table is full.
    int AddPlaceRecord(const CCityList& place);
    /// Gives the record back that was taken last; no item may use it any more.
    void GiveBackPlaceRecord() { --m_tables.PlaceCount; }
    /// The lines at the head of the shipped list, each ending with LF, in code page 932.
    [[nodiscard]] const QByteArray& ListHeader() const { return m_listHeader; }

    /// The list-file line of a place item, CR LF included. CInvalidArgument for a folder.
    void GetCityString(const CPlaceItem* item, QString& out) const;
    [[nodiscard]] QString GetLocationData(int placeIndex) const;
    void SetLocationData(int placeIndex, const QString& data);

private:
    class Loader;

    /// The folder and place records.
    struct CTables
    {
        std::vector<CTagList> Folders = std::vector<CTagList>(FolderTableSize);
        int FolderCount = 0;
        std::vector<CCityList> Places = std::vector<CCityList>(PlaceTableSize);
        int PlaceCount = 0;
        bool IsComplete = true;
    };

    [[nodiscard]] QByteArray UserListBytes() const;
    CTagList& NextFolder();
    CCityList& NextPlace();
    void Report(int phase, const QVariant& value) const;

    CTables m_tables;
    CPlaceTree m_tree;
    QByteArray m_listHeader;
    Progress m_progress;
    CKivFile::SaveFileFactory m_saveFileFactory;
};

/// The tree's items and the records of a list, apart from it.
class CPlaceList::CContents
{
private:
    friend class CPlaceList;

    std::vector<CPlaceSubtree> m_items;
    CTables m_tables;
};
