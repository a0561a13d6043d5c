#pragma once

#include <QImage>
#include <QString>

#include <array>
#include <cstdint>
#include <vector>

/// The Earth's heights in metres as the SRTM tiles of a globe program's data package give them: a coarse grid of whole
/// metres, and a picture sixteen times as fine whose grey stands for the height.
class CHeightMap
{
public:
    static constexpr int Columns = 10800; ///< cells of 2 arc minutes, from 180 degrees west
    static constexpr int Rows = 5400;     ///< from the north pole

    /// `earth` is the folder of the package's Earth maps, `landMap` a TopoJSON map of the land.
    /// Throws std::runtime_error when a tile is missing or has another size.
    CHeightMap(const QString& earth, const QString& landMap);

    /// Metres above the sea of a cell; 0 on the sea, negative where the land or a lake lies below it.
    [[nodiscard]] double Height(int column, int row) const;

    /// The height at a place given in degrees, between the four cells around it.
    [[nodiscard]] double HeightAt(double longitude, double latitude) const;

    /// The mean height of the cells of a rectangle.
    [[nodiscard]] double Mean(int column, int row, int columns, int rows) const;

    /// The height that a grey stands for, and how many coarse cells say so.
    [[nodiscard]] double HeightOfGrey(int grey) const { return m_heights[static_cast<size_t>(grey)]; }
    [[nodiscard]] int WitnessesOfGrey(int grey) const { return m_witnesses[static_cast<size_t>(grey)]; }

private:
    void DrawLand(const QString& landMap);
    void Calibrate();
    [[nodiscard]] int Grey(int column, int row) const;
    [[nodiscard]] bool IsLand(int column, int row) const;
    [[nodiscard]] int Coarse(int column, int row) const; // metres, column and row in fine cells

    std::vector<std::uint8_t> m_grey;
    std::vector<std::int16_t> m_coarse;
    QImage m_land;
    std::array<double, 256> m_heights{};
    std::array<int, 256> m_witnesses{};
};
