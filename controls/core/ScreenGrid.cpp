#include "controls/core/ScreenGrid.h"

#include <algorithm>

namespace
{
constexpr int CellSize = 4;
} // namespace

CScreenGrid::CScreenGrid(QSize area)
    : m_area(area), m_columns(std::max(0, area.width()) / CellSize + 1),
      m_rows(std::max(0, area.height()) / CellSize + 1),
      m_cells(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows), 0)
{
}

bool CScreenGrid::IsFree(const QRectF& rectangle) const
{
    if (!QRectF(QPointF(0, 0), m_area).contains(rectangle))
        return false;
    const Cells cells = CellsOf(rectangle);
    for (int row = cells.Top; row <= cells.Bottom; ++row) {
        const auto first = m_cells.begin() + static_cast<std::ptrdiff_t>(row) * m_columns;
        if (std::find(first + cells.Left, first + cells.Right + 1, 1) != first + cells.Right + 1)
            return false;
    }
    return true;
}

void CScreenGrid::Block(const QRectF& rectangle)
{
    const Cells cells = CellsOf(rectangle & QRectF(QPointF(0, 0), m_area));
    for (int row = cells.Top; row <= cells.Bottom; ++row) {
        const auto first = m_cells.begin() + static_cast<std::ptrdiff_t>(row) * m_columns;
        std::fill(first + cells.Left, first + cells.Right + 1, 1);
    }
}

CScreenGrid::Cells CScreenGrid::CellsOf(const QRectF& rectangle) const
{
    if (rectangle.isEmpty())
        return {};
    return {std::clamp(static_cast<int>(rectangle.left()) / CellSize, 0, m_columns - 1),
            std::clamp(static_cast<int>(rectangle.top()) / CellSize, 0, m_rows - 1),
            std::clamp(static_cast<int>(rectangle.right()) / CellSize, 0, m_columns - 1),
            std::clamp(static_cast<int>(rectangle.bottom()) / CellSize, 0, m_rows - 1)};
}
