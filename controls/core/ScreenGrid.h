#pragma once

#include <QRectF>
#include <QSize>

#include <vector>

/// Which parts of an area are taken: a grid of small cells, for placing things side by side quickly.
class CScreenGrid
{
public:
    explicit CScreenGrid(QSize area);

    /// Whether the rectangle lies wholly in the area and all of it is free.
    [[nodiscard]] bool IsFree(const QRectF& rectangle) const;

    /// Takes the part of the rectangle that lies in the area, free or not.
    void Block(const QRectF& rectangle);

private:
    // Inclusive columns and rows.
    struct Cells
    {
        int Left = 0;
        int Top = 0;
        int Right = -1;
        int Bottom = -1;
    };
    [[nodiscard]] Cells CellsOf(const QRectF& rectangle) const;

    QSize m_area;
    int m_columns;
    int m_rows;
    std::vector<char> m_cells;
};
