// At the replay, each entry of the overlay meets the item that it was recorded for: walks of edits in which names
// change hands all the time, over one shipped list and over lists that change between the sessions.

#include "OverlayScript.h"
#include "city/core/PlaceModel.h"

#include <QAbstractItemModelTester>

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <set>

using namespace Qt::StringLiterals;

namespace
{
// Few, so that they change hands; with what code page 932 and JSON make difficult.
const QStringList FolderNames{u"F"_s, u"G"_s, u"能登"_s, u"I"_s, u"～－"_s};
const QStringList PlaceNames{u"A"_s, u"ソ"_s, u"\"/\\"_s, u"D"_s, u"E"_s};

/// A shipped list: places below folders, each with a longitude of its own.
using CShipped = std::map<QString, std::map<QString, int>>;

QString ModelOutline(const QAbstractItemModel& model, const QModelIndex& parent = {})
{
    QStringList items;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString children = ModelOutline(model, index);
        items += children.isEmpty() ? index.data().toString() : index.data().toString() + u'(' + children + u')';
    }
    return items.join(u' ');
}

/// What came of a session.
struct CResult
{
    bool IsLost = false;       ///< opened again, something is not as it was left
    bool IsReordered = false;  ///< only the order differs
    bool HadNamesakes = false; ///< there were siblings of one name, of which the entries mean the first
};

class CNameWalk
{
public:
    explicit CNameWalk(unsigned seed) : m_random(seed)
    {
        for (qsizetype folder = 0; folder < 3; ++folder) {
            for (qsizetype place = 0; place < 3; ++place)
                m_shipped[FolderNames[folder]][PlaceNames[place]] = ++m_lastValue;
        }
        Ship();
        if (seed % 2 == 0)
            m_folder.PutOverlay(OverlayScript::Document(uR"(update x, 3, {"next":7}, {"action":"path","next":4})"_s));
    }

    /// Another edition of the shipped list: folders and places are renamed, dropped and added.
    void ShipAnother()
    {
        for (int change = 0; change < 2; ++change) {
            const auto folder = std::next(m_shipped.begin(), Number(m_shipped.size()));
            const QString to = Name(true);
            const int kind = Number(5);
            if (kind == 0 && !m_shipped.contains(to)) {
                m_shipped[to] = std::move(folder->second);
                m_shipped.erase(folder);
            } else if (kind == 2) {
                folder->second.try_emplace(Name(false), ++m_lastValue);
            } else if (kind != 0 && !folder->second.empty()) {
                const auto place = std::next(folder->second.begin(), Number(folder->second.size()));
                const int value = place->second;
                folder->second.erase(place);
                if (kind > 2)
                    folder->second[Name(false)] = value;
            }
        }
        Ship();
    }

    /// A session of edits, all undone and done again, then saved and opened.
    CResult Session()
    {
        CPlaceDocument& document = m_folder.Open();
        const bool hadNamesakes = Lines(false).removeDuplicates() > 0;
        EditUndoAndRedo(document);
        QStringList before = Lines();
        EXPECT_TRUE(document.SaveCityList().IsAll());
        const QByteArray overlay = m_folder.OverlayBytes();
        const QByteArray list = ReadFile(m_folder.Paths().UserListFilePath);
        m_folder.Open();
        QStringList after = Lines();
        EXPECT_TRUE(m_folder.Document().SaveCityList().IsAll());
        EXPECT_EQ(m_folder.OverlayBytes(), overlay) << "saved again without an edit";
        EXPECT_EQ(ReadFile(m_folder.Paths().UserListFilePath) == list, before == after);
        EXPECT_TRUE(before == after || !m_isOrderCertain) << overlay.toStdString();
        m_isOrderCertain = false; // from now on there are neighbours of earlier sessions
        const bool isSame = before == after;
        before.sort();
        after.sort();
        return {before != after, !isSame && before == after, hadNamesakes};
    }

    [[nodiscard]] QByteArray Overlay() const { return m_folder.OverlayBytes(); }

private:
    void EditUndoAndRedo(CPlaceDocument& document)
    {
        CPlaceModel model(document);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        const auto state = [&] {
            EXPECT_EQ(ModelOutline(model), Outline(document.Tree().Root()));
            return document.Overlay().Bytes().toStdString() + '\n' + TreeText(document).toStdString();
        };
        std::vector<std::string> states{state()};
        for (int edit = Number(12); edit >= 0; --edit) {
            if (Edit(document))
                states.push_back(state());
        }
        size_t at = states.size() - 1;
        const auto undo = [&] {
            document.Undo();
            EXPECT_EQ(state(), states[--at]);
        };
        while (document.CanUndo())
            undo();
        EXPECT_EQ(at, 0U);
        while (document.CanRedo()) {
            document.Redo();
            EXPECT_EQ(state(), states[++at]);
        }
        if (Number(4) > 0 || at == 0)
            return;
        undo();
        m_isOrderCertain = false;
        const bool isEdited = Edit(document);
        EXPECT_NE(document.CanRedo(), isEdited) << "another edit leaves nothing to do again";
    }

    template <typename Size> int Number(Size below)
    {
        return static_cast<int>(m_random() % static_cast<unsigned>(below));
    }

    QString Name(bool isFolder)
    {
        const QStringList& names = isFolder ? FolderNames : PlaceNames;
        return names[Number(names.size())];
    }

    void Ship()
    {
        QByteArray list;
        for (const auto& [folder, places] : m_shipped) {
            list += '@' + CodePage932::Encode(folder) + '\n';
            for (const auto& [name, value] : places)
                list += CodePage932::Encode(name) + ',' + QByteArray::number(value) + "E,1N,1,+9,0,0,0\n";
            list += "#\n";
        }
        m_folder.Put(list);
    }

    /// Each item with the names above it, places with their values.
    [[nodiscard]] QStringList Lines(bool withValues = true)
    {
        QStringList lines;
        const CPlaceDocument& document = m_folder.Document();
        for (const CPlaceItem* item = document.Tree().Root(); item; item = item->Following()) {
            QString line = item->Text();
            for (const CPlaceItem* above = item->Parent(); above; above = above->Parent())
                line.prepend(above->Text() + u'|');
            if (withValues && !item->IsFolder())
                line += document.List().GetLocationData(item->Data());
            lines += line;
        }
        return lines;
    }

    CPlaceItem* Any(bool isFolder)
    {
        std::vector<CPlaceItem*> all;
        for (CPlaceItem* item = m_folder.Document().Tree().Root()->FirstChild(); item; item = item->Following()) {
            if (item->IsFolder() == isFolder)
                all.push_back(item);
        }
        return all.empty() ? nullptr : all[static_cast<size_t>(Number(all.size()))];
    }

    /// One edit such as the city list allows: no two siblings of one name. Returns whether there was one.
    bool Edit(CPlaceDocument& document)
    {
        CPlaceItem* folder = Any(true);
        CPlaceItem* item = Any(Number(3) == 0);
        if (Number(40) == 0)
            return document.Reset();
        if (!folder || !item)
            return false;
        const int kind = Number(6);
        const bool isMove = kind == 3;
        const QString name = isMove ? item->Text() : Name(kind < 2 ? Number(6) == 0 : item->IsFolder());
        CPlaceItem* parent = kind > 3 ? item->Parent() : folder;
        const bool isKept = kind > 3 && name == item->Text();
        if (kind != 2 && !isKept && document.IsDuplicateItemName(parent, name, QString()))
            return false;
        CPlaceItem* after = Number(2) ? folder->LastChild() : nullptr;
        if (kind < 2) {
            m_anchors.insert(after);
            if (FolderNames.contains(name))
                document.AddFolder(folder, after, name);
            else
                document.AddPlace(folder, after, name, Value());
            return true;
        }
        m_isOrderCertain = m_isOrderCertain && !m_anchors.contains(item);
        if (kind == 2) {
            document.Delete(item);
        } else if (isMove) {
            for (const CPlaceItem* above = folder; above; above = above->Parent()) {
                if (above == item)
                    return false;
            }
            after = after == item ? nullptr : after;
            m_anchors.insert(after);
            m_isOrderCertain = m_isOrderCertain && !item->IsFolder(); // its places stand behind each other then
            document.Move(item, folder, after);
        } else if (item->IsFolder()) {
            document.UpdateFolder(item, name);
        } else {
            document.UpdatePlace(item, name, Value());
        }
        return true;
    }

    CCityList Value()
    {
        CCityList values = Values(++m_lastValue, 2, 3, 4);
        values.IsAutoAltitude = m_lastValue % 2;
        return values;
    }

    std::mt19937 m_random;
    CPlacesInFolder m_folder;
    CShipped m_shipped;
    std::set<const CPlaceItem*> m_anchors; ///< that something recorded stands behind
    bool m_isOrderCertain = true;          ///< no anchor was renamed, moved or deleted
    int m_lastValue = 0;
};

struct CCount
{
    int Sessions = 0;
    int Lost = 0; ///< sessions after which something was not as it had been left
    int Reordered = 0;
};

CCount Walk(int walks, bool isListChanging)
{
    CCount count;
    for (int seed = 1; seed <= walks; ++seed) {
        CNameWalk walk(static_cast<unsigned>(seed));
        for (int session = 0; session < 4; ++session, ++count.Sessions) {
            const CResult result = walk.Session();
            count.Lost += result.IsLost && !result.HadNamesakes ? 1 : 0;
            count.Reordered += result.IsReordered ? 1 : 0;
            if (result.IsLost && !isListChanging)
                ADD_FAILURE() << "seed " << seed << ", session " << session << ": " << walk.Overlay().toStdString();
            if (isListChanging)
                walk.ShipAnother();
        }
    }
    std::printf("%d sessions: contents lost in %d, order alone changed in %d\n", count.Sessions, count.Lost,
                count.Reordered);
    return count;
}
} // namespace

TEST(PlaceOverlayWalk, EachEntryMeetsItsItem)
{
    const int walks = std::max(100, qEnvironmentVariableIntValue("KIV_WALKS"));
    EXPECT_EQ(Walk(walks, false).Lost, 0);
    const CCount changing = Walk(walks, true);
    // Entries that an earlier edition left without a target come to life again when their names return.
    EXPECT_LE(changing.Lost * 100, changing.Sessions);
}
