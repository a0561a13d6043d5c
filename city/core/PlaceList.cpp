#include "city/core/PlaceList.h"

#include "host/text/CodePage932.h"

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
template <typename Table> auto& At(Table& table, int index)
{
    if (index < 0 || static_cast<size_t>(index) >= table.size())
        throw CInvalidArgument("index outside the place list's table");
    return table[static_cast<size_t>(index)];
}

/// The next record to be taken of a table.
template <typename Table> auto& Next(Table& table, int count, const QString& fullText)
{
    if (static_cast<size_t>(count) >= table.size())
        throw CInvalidArgument("a table of the place list is full", fullText);
    return At(table, count);
}
} // namespace

CPlaceList::CPlaceList() : m_saveFileFactory([](const QString& path) { return std::make_unique<QSaveFile>(path); }) {}

CPlaceList::~CPlaceList() = default;

const CTagList& CPlaceList::Folder(int index) const
{
    return At(m_tables.Folders, index);
}

CCityList& CPlaceList::Place(int index)
{
    return At(m_tables.Places, index);
}

const CCityList& CPlaceList::Place(int index) const
{
    return At(m_tables.Places, index);
}

CTagList& CPlaceList::NextFolder()
{
    static_assert(FolderTableSize == 2000);
    return Next(m_tables.Folders, m_tables.FolderCount,
                u"フォルダの数が上限（1,999 件）を超えているため、超えた分は読み込めません。"_s);
}

CCityList& CPlaceList::NextPlace()
{
    static_assert(PlaceTableSize == 10'000);
    return Next(m_tables.Places, m_tables.PlaceCount,
                u"地名の数が上限（10,000 件）を超えているため、超えた分は読み込めません。"_s);
}

int CPlaceList::AddPlaceRecord(const CCityList& place)
{
    NextPlace() = place;
    return m_tables.PlaceCount++;
}

void CPlaceList::Report(int phase, const QVariant& value) const
{
    if (m_progress)
        m_progress(phase, value);
}

std::unique_ptr<CPlaceList::CContents> CPlaceList::Exchange(std::unique_ptr<CContents> contents)
{
    const CPlaceTree::CReset reset(m_tree);
    auto former = std::make_unique<CContents>();
    former->m_items = m_tree.DetachAll();
    CPlaceItem* last = nullptr;
    for (CPlaceSubtree& item : contents->m_items)
        last = m_tree.Attach(std::move(item), nullptr, last);
    former->m_tables = std::exchange(m_tables, std::move(contents->m_tables));
    return former;
}

std::unique_ptr<CPlaceList::CContents> CPlaceList::Reload()
{
    const CPlaceTree::CReset reset(m_tree);
    std::unique_ptr<CContents> former = Exchange(std::make_unique<CContents>());
    m_tables.Places = former->m_tables.Places;
    m_tables.PlaceCount = former->m_tables.PlaceCount;
    try {
        LoadCityList();
    } catch (const CInvalidArgument&) {
        (void)Exchange(std::make_unique<CContents>());
        try {
            LoadCityList();
        } catch (...) {
            (void)Exchange(std::move(former));
            throw;
        }
    }
    return former;
}

void CPlaceList::GetCityString(const CPlaceItem* item, QString& out) const
{
    QByteArray line;
    PlaceListFormat::AppendPlace(line, item->Text(), Place(item->Data()));
    out = CodePage932::Decode(line);
}

QString CPlaceList::GetLocationData(int placeIndex) const
{
    return PlaceData::Format(Place(placeIndex));
}

void CPlaceList::SetLocationData(int placeIndex, const QString& data)
{
    PlaceData::Parse(data, Place(placeIndex));
}

bool CPlaceList::RefreshUserObs()
{
    if (!m_tables.IsComplete)
        return false;
    CKivFile file(m_saveFileFactory);
    if (!file.OpenCreate(UserListFilePath))
        return false;
    file.SetUnicode(false, true);
    file.WriteBytes(UserListBytes());
    return file.Close();
}

QByteArray CPlaceList::UserListBytes() const
{
    constexpr int usualLineLength = 96;
    QByteArray bytes = m_listHeader;
    bytes.replace("\n", "\r\n");
    bytes.reserve(bytes.size() + qsizetype(m_tables.PlaceCount) * usualLineLength);

    int depth = 0;
    const CPlaceItem* item = m_tree.Root();
    while (item) {
        if (item->IsFolder()) {
            if (depth > 0)
                PlaceListFormat::AppendFolder(bytes, depth, item->Text());
            if (item->FirstChild()) {
                item = item->FirstChild();
                ++depth;
                continue;
            }
            if (depth > 0)
                PlaceListFormat::AppendClose(bytes);
        } else
            PlaceListFormat::AppendPlace(bytes, item->Text(), Place(item->Data()));

        while (item && !item->Next()) {
            item = item->Parent();
            --depth;
            if (item && depth > 0)
                PlaceListFormat::AppendClose(bytes);
        }
        if (item)
            item = item->Next();
    }
    return bytes;
}
