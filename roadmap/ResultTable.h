#pragma once

#include "roadmap/core/ResultColumns.h"

#include <QAbstractTableModel>

#include <vector>

/// The matches of a search as a list shows them: a copy, for the road map may replace its own at any time.
class CResultTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these columns, and a row for each match in their order.
    void Fill(std::span<const ResultColumn> columns, std::vector<CRoadMapResult> rows);
    /// Leaves neither columns nor rows.
    void Clear() { Fill({}, {}); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::span<const ResultColumn> m_columns; ///< of a table that lives as long as the program
    std::vector<CRoadMapResult> m_rows;
};
