#include "roadmap/ResultTable.h"

using namespace Qt::StringLiterals;

void CResultTable::Fill(std::span<const ResultColumn> columns, std::vector<CRoadMapResult> rows)
{
    beginResetModel();
    m_columns = columns;
    m_rows = std::move(rows);
    endResetModel();
}

int CResultTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CResultTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant CResultTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const ResultColumn& column = m_columns[static_cast<size_t>(index.column())];
    const QString text = column.Text(m_rows[static_cast<size_t>(index.row())]);
    // The tip shows what a narrow column cuts off; a text that looks like HTML is shown as it stands.
    return role == Qt::DisplayRole || text.isEmpty() ? text : u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s;
}

QVariant CResultTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    const bool isColumn = section >= 0 && section < columnCount();
    return role == Qt::DisplayRole && isColumn
               ? QVariant(QString::fromUtf16(m_columns[static_cast<size_t>(section)].Heading))
               : QVariant();
}
