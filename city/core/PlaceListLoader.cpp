#include "city/core/PlaceList.h"
#include "host/text/CodePage932.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>

using namespace Qt::StringLiterals;

namespace
{
/// The line without white space in front, the ideographic space (0x8140) included.
QByteArrayView WithoutLeadingBlanks(QByteArrayView line)
{
    while (!line.isEmpty()) {
        if (line.front() == ' ' || (line.front() >= '\t' && line.front() <= '\r'))
            line = line.sliced(1);
        else if (line.startsWith("\x81\x40"))
            line = line.sliced(2);
        else
            break;
    }
    return line;
}

QString WithoutTrailingBlanks(QString text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}
} // namespace

/// One load of a list file.
class CPlaceList::Loader
{
public:
    explicit Loader(CPlaceList& list) : m_list(list) {}

    /// Whether the whole file was taken in.
    [[nodiscard]] bool Load()
    {
        m_list.Report(PhaseStart, u"都市データの読み込み中"_s);
        AddRoot();
        if (!m_file.OpenRead(m_list.ListFilePath))
            return false; // without the report of the end: the host relies on a start alone for a missing list
        ReadHeader();
        QByteArray line;
        while (m_file.ReadLine(line)) {
            if (!line.isEmpty())
                TakeLine(line);
        }
        m_list.Report(PhaseEnd, 0);
        return !m_file.HasReadError();
    }

private:
    struct OpenFolder
    {
        CPlaceItem* Item = nullptr;
        int Index = 0;
    };

    void AddRoot()
    {
        CTagList& root = m_list.NextFolder();
        root = {nullptr, 0, QString::fromUtf16(RootName)};
        CPlaceItem* item = m_list.m_tree.Append(nullptr, root.Name, CPlaceItem::FolderData);
        m_levels[0] = {item, m_list.m_tables.FolderCount};
        m_list.m_tables.FolderCount += 1;
    }

    /// Reads the comment lines at the head and estimates from the first line after them how many lines follow.
    void ReadHeader()
    {
        const bool isFirstLoad = m_list.m_listHeader.isEmpty(); // a reload must not write the header twice
        QByteArray line;
        qint64 start = m_file.Position();
        qsizetype sampleLength = 0;
        while (m_file.ReadLine(line)) {
            if (!line.startsWith(PlaceListFormat::CloseMark)) {
                sampleLength = CodePage932::Decode(line).size();
                break;
            }
            if (isFirstLoad)
                m_list.m_listHeader += line + '\n';
            start = m_file.Position();
        }
        m_file.Seek(start);
        m_estimate = sampleLength > 0 ? m_file.Length() / sampleLength : 0;
        m_progressStep = m_estimate / 100;
    }

    void TakeLine(const QByteArray& line)
    {
        const QByteArrayView text = WithoutLeadingBlanks(line);
        if (const qsizetype marks = PlaceListFormat::CountMarks(text); marks > 0)
            AddFolder(marks, text.sliced(marks));
        else if (text.startsWith(PlaceListFormat::CloseMark))
            m_level = std::max(m_level - 1, 0);
        else
            AddPlace(text);

        m_lineCount += 1;
        if (m_progressStep > 0 && m_lineCount % m_progressStep == 0) {
            // Divided before it is multiplied, so the figure stays 0 until the estimate is reached; displays rely on
            // it.
            const qint64 share = (m_list.m_tables.PlaceCount + m_list.m_tables.FolderCount) / m_estimate;
            m_list.Report(PhasePercent, static_cast<int>(std::clamp<qint64>(share * 100, 0, 100)));
        }
    }

    void AddFolder(qsizetype marks, QByteArrayView nameBytes)
    {
        const int level = static_cast<int>(std::min<qsizetype>(marks, std::numeric_limits<int>::max()));
        CTagList& folder = m_list.NextFolder();
        const QString name = WithoutTrailingBlanks(PlaceListFormat::DecodeName(nameBytes));
        CPlaceItem* item = m_list.m_tree.Append(LastUpTo(level - 1).Item, name, CPlaceItem::FolderData);
        folder = {item, level, name};
        m_levels[level] = {item, m_list.m_tables.FolderCount};
        m_list.m_tables.FolderCount += 1;
        m_level = level;
    }

    void AddPlace(QByteArrayView text)
    {
        CCityList place;
        if (!PlaceListFormat::ParsePlace(text, place))
            return;
        CCityList& record = m_list.NextPlace();
        place.TagIndex = LastUpTo(m_level).Index;
        // The root's record holds no item, so a place outside all folders stands beside the root, not in it.
        place.Item = m_list.m_tree.Append(m_list.Folder(place.TagIndex).Item, place.Name, m_list.m_tables.PlaceCount);
        record = place;
        m_list.m_tables.PlaceCount += 1;
    }

    /// The last folder seen at this level, or at the deepest level above it that has had one.
    [[nodiscard]] OpenFolder LastUpTo(int level) const { return std::prev(m_levels.upper_bound(level))->second; }

    CPlaceList& m_list;
    CKivFile m_file;
    std::map<int, OpenFolder> m_levels;
    int m_level = 0;
    qint64 m_estimate = 0;
    qint64 m_progressStep = 0;
    qint64 m_lineCount = 0;
};

void CPlaceList::LoadCityList()
{
    m_tables.IsComplete = false;
    m_tables.IsComplete = Loader(*this).Load();
}
