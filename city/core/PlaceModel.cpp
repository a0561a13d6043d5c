#include "city/core/PlaceModel.h"

#include <algorithm>

using namespace Qt::StringLiterals;

CPlaceModel::CPlaceModel(CPlaceDocument& document, QObject* parent) : QAbstractItemModel(parent), m_document(document)
{
    m_document.Tree().SetListener(this);
}

CPlaceModel::~CPlaceModel()
{
    m_document.Tree().SetListener(nullptr);
}

CPlaceItem* CPlaceModel::Item(const QModelIndex& index)
{
    return static_cast<CPlaceItem*>(index.internalPointer());
}

QModelIndex CPlaceModel::Index(const CPlaceItem* item) const
{
    return item ? createIndex(RowOf(item), 0, const_cast<CPlaceItem*>(item)) : QModelIndex();
}

const CPlaceItem* CPlaceModel::FirstChild(const CPlaceItem* parent) const
{
    return parent ? parent->FirstChild() : m_document.Tree().Root();
}

CPlaceModel::CChildren& CPlaceModel::ChildrenOf(const CPlaceItem* parent) const
{
    const auto [entry, isNew] = m_children.try_emplace(parent);
    if (isNew) {
        for (const CPlaceItem* child = FirstChild(parent); child; child = child->Next())
            entry->second.push_back(const_cast<CPlaceItem*>(child)); // a model hands out what its views edit
    }
    return entry->second;
}

int CPlaceModel::RowOf(const CPlaceItem* item) const
{
    const CChildren& children = ChildrenOf(item->Parent());
    const auto at = std::find(children.begin(), children.end(), item);
    return static_cast<int>(at - children.begin());
}

QModelIndex CPlaceModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column != 0 || row >= rowCount(parent))
        return {};
    return createIndex(row, 0, ChildrenOf(Item(parent))[static_cast<size_t>(row)]);
}

QModelIndex CPlaceModel::parent(const QModelIndex& index) const
{
    const CPlaceItem* item = Item(index);
    return item ? Index(item->Parent()) : QModelIndex();
}

int CPlaceModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(ChildrenOf(Item(parent)).size());
}

int CPlaceModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool CPlaceModel::hasChildren(const QModelIndex& parent) const
{
    return parent.column() <= 0 && FirstChild(Item(parent)) != nullptr;
}

QVariant CPlaceModel::data(const QModelIndex& index, int role) const
{
    const CPlaceItem* item = Item(index);
    if (!item)
        return {};
    if (role == Qt::DisplayRole)
        return item->Text();
    if (role == Qt::ToolTipRole) { // a long name does not fit; as marked-up text it wraps
        constexpr qsizetype mostShown = 500;
        return u"<span>%1</span>"_s.arg(item->Text().left(mostShown).toHtmlEscaped());
    }
    return role == DataRole ? item->Data() : QVariant();
}

void CPlaceModel::BeforeInsert(CPlaceItem* parent, CPlaceItem* after)
{
    const int row = after ? RowOf(after) + 1 : 0;
    beginInsertRows(Index(parent), row, row);
}

void CPlaceModel::AfterInsert(CPlaceItem* item)
{
    const auto known = m_children.find(item->Parent());
    if (known != m_children.end()) {
        CChildren& children = known->second;
        const int row = item->Previous() ? RowOf(item->Previous()) + 1 : 0;
        children.insert(children.begin() + row, item);
    }
    endInsertRows();
}

void CPlaceModel::BeforeRemove(CPlaceItem* item)
{
    const int row = RowOf(item);
    beginRemoveRows(Index(item->Parent()), row, row);
    CChildren& children = ChildrenOf(item->Parent());
    children.erase(children.begin() + row);
}

void CPlaceModel::AfterRemove(CPlaceItem* item)
{
    std::vector<const CPlaceItem*> gone{item};
    while (!gone.empty()) {
        const CPlaceItem* next = gone.back();
        gone.pop_back();
        m_children.erase(next);
        for (const CPlaceItem* child = next->FirstChild(); child; child = child->Next())
            gone.push_back(child);
    }
    endRemoveRows();
}

void CPlaceModel::TextChanged(CPlaceItem* item)
{
    const QModelIndex index = Index(item);
    Q_EMIT dataChanged(index, index, {Qt::DisplayRole});
}

void CPlaceModel::AfterReset()
{
    m_children.clear();
    endResetModel();
}
