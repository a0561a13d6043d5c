// At the replay, each entry of the overlay meets the item that it was recorded for: walks of edits in which names
// change hands all the time, over one shipped list and over lists that change between the sessions.

#include "PlaceFixture.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>

using namespace Qt::StringLiterals;

namespace
{
/// A shipped list: places below folders, each with a longitude of its own.
using CShipped = std::map<QString, std::map<QString, int>>;

class CNameWalk
{
public:
    explicit CNameWalk(unsigned seed) : m_random(seed)
    {
        for (const QString& folder : {u"F"_s, u"G"_s, u"H"_s}) {
            for (const QString& name : {u"A"_s, u"B"_s, u"C"_s})
                m_shipped[folder][name] = ++m_lastValue;
        }
        Ship();
    }

    /// Another edition of the shipped list: folders and places are renamed, dropped and added.
    void ShipAnother()
    {
        for (int change = 0; change < 2; ++change) {
            const auto folder = std::next(m_shipped.begin(), Number(m_shipped.size()));
            const QString to = Name(true);
            switch (Number(5)) {
            case 0:
                if (!m_shipped.contains(to)) {
                    m_shipped[to] = std::move(folder->second);
                    m_shipped.erase(folder);
                }
                break;
            case 1:
                if (!folder->second.empty())
                    folder->second.erase(std::next(folder->second.begin(), Number(folder->second.size())));
                break;
            case 2:
                folder->second.try_emplace(Name(false), ++m_lastValue);
                break;
            default:
                if (!folder->second.empty()) {
                    const auto place = std::next(folder->second.begin(), Number(folder->second.size()));
                    const int value = place->second;
                    folder->second.erase(place);
                    folder->second[Name(false)] = value;
                }
            }
        }
        Ship();
    }

    /// A session of edits, saved. Returns how many lines of the tree are not there as they were when it is opened
    /// again, and whether only their order differs.
    struct CResult
    {
        int Lost = 0;
        bool IsReordered = false;
        bool HadNamesakes = false; ///< siblings of one name, of which the entries mean the first
    };
    CResult Session()
    {
        m_folder.Open();
        const bool hasNamesakes = Lines(false).removeDuplicates() > 0;
        const int edits = 1 + static_cast<int>(Number(8));
        for (int edit = 0; edit < edits; ++edit)
            Edit();
        const QStringList before = Lines();
        const bool isSaved = m_folder.Document().SaveCityList().IsAll();
        m_folder.Open();
        const QStringList after = Lines();
        QStringList sortedBefore = before;
        QStringList sortedAfter = after;
        sortedBefore.sort();
        sortedAfter.sort();
        QStringList lost;
        std::set_symmetric_difference(sortedBefore.begin(), sortedBefore.end(), sortedAfter.begin(), sortedAfter.end(),
                                      std::back_inserter(lost));
        return {isSaved ? static_cast<int>(lost.size()) : 1000, lost.isEmpty() && before != after, hasNamesakes};
    }

    [[nodiscard]] QByteArray Overlay() const { return m_folder.OverlayBytes(); }

private:
    template <typename Size> int Number(Size below)
    {
        return static_cast<int>(m_random() % static_cast<unsigned>(below));
    }

    QString Name(bool isFolder)
    {
        const QString& names = isFolder ? u"FGHIJ"_s : u"ABCDE"_s;
        return names.sliced(Number(names.size()), 1);
    }

    void Ship()
    {
        QByteArray list;
        for (const auto& [folder, places] : m_shipped) {
            list += '@' + folder.toUtf8() + '\n';
            for (const auto& [name, value] : places)
                list += name.toUtf8() + ',' + QByteArray::number(value) + "E,1N,1,+9,0,0,0\n";
            list += "#\n";
        }
        m_folder.Put(list);
    }

    /// Each item with the names above it, places with their longitude.
    [[nodiscard]] QStringList Lines(bool withValues = true)
    {
        QStringList lines;
        const CPlaceDocument& document = m_folder.Document();
        for (const CPlaceItem* item = document.Tree().Root(); item; item = item->Following()) {
            QString line = item->Text();
            for (const CPlaceItem* above = item->Parent(); above; above = above->Parent())
                line.prepend(above->Text() + u'/');
            lines += item->IsFolder() || !withValues
                         ? line
                         : line + QString::number(document.Place(item->Data()).Longitude, 'f', 0);
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

    /// One edit such as the city list allows: no two siblings of one name.
    void Edit()
    {
        CPlaceDocument& document = m_folder.Document();
        CPlaceItem* folder = Any(true);
        CPlaceItem* item = Any(Number(3) == 0);
        if (!folder || !item)
            return;
        const QString name = Name(item->IsFolder());
        switch (Number(6)) {
        case 0:
            if (!document.IsDuplicateItemName(folder, Name(false), QString()))
                break;
            [[fallthrough]];
        case 1: {
            const QString added = Name(false);
            if (!document.IsDuplicateItemName(folder, added, QString()))
                document.AddPlace(folder, Number(2) ? folder->LastChild() : nullptr, added, Value());
            break;
        }
        case 2:
            document.Delete(item);
            break;
        case 3:
            if (!item->IsFolder() && !document.IsDuplicateItemName(folder, item->Text(), QString()))
                document.Move(item, folder, nullptr);
            break;
        default:
            if (name != item->Text() && document.IsDuplicateItemName(item->Parent(), name, item->Text()))
                return;
            if (item->IsFolder())
                document.UpdateFolder(item, name);
            else
                document.UpdatePlace(item, name, Value());
        }
    }

    CCityList Value() { return Values(++m_lastValue, 2, 3, 4); }

    std::mt19937 m_random;
    CPlacesInFolder m_folder;
    CShipped m_shipped;
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
            const CNameWalk::CResult result = walk.Session();
            count.Lost += result.Lost > 0 && !result.HadNamesakes ? 1 : 0;
            count.Reordered += result.IsReordered ? 1 : 0;
            if (result.Lost > 0 && !isListChanging)
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
