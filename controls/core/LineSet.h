#pragma once

#include "controls/core/SphereView.h"

#include <QList>
#include <QString>

#include <functional>
#include <numbers>
#include <vector>

/// A set of lines on the globe, such as coastlines, kept as directions and cut into short pieces, so that those out of
/// sight cost almost nothing.
class CLineSet
{
public:
    /// Reads a line file: "KOL1", then little-endian 32-bit numbers: the count of lines, and for each line the count
    /// of its points and their longitudes and latitudes in millionths of a degree. False, and nothing is kept, when
    /// the file is missing, damaged or larger than 64 MiB.
    bool Load(const QString& path);

    [[nodiscard]] bool IsEmpty() const { return m_pieces.empty(); }

    using Run = QList<QPointF>; ///< pixels, two at least
    using Pen = std::function<void(const Run&)>;

    /// Hands the pen each stretch of a line that an area of that size (from the origin) shows. Points nearer than the
    /// tolerance (pixels) to the last one are left out, and so are pieces smaller than it.
    void Trace(const CSphereView& view, QSizeF size, double tolerance, const Pen& pen) const;

    /// The area inside the lines, each closed from its end to its beginning, as far as an area of that size (from the
    /// origin) shows it: outlines to be filled by the odd-even rule, as inside two lines counts as outside, like a lake
    /// in a continent. Right only while the north pole lies outside, as with coastlines.
    [[nodiscard]] QList<Run> Inside(const CSphereView& view, QSizeF size) const;

    /// Whether a place (degrees) lies inside an odd number of the lines, taken as closed.
    [[nodiscard]] bool IsInside(const GeoPoint& place) const;

private:
    struct Point
    {
        float X = 0;
        float Y = 0;
        float Z = 0;
    };

    // Consecutive points and the cap of the sphere that holds them.
    struct Piece
    {
        std::size_t First = 0;
        std::size_t Count = 0;
        UnitVector Middle;
        double CapAngle = 0; // radians
        double CapSine = 0;
        double CapCosine = 1;
        bool BeginsLine = false;
    };

    // Finds which pieces an area of that size (from the origin) may show.
    class CSight
    {
    public:
        CSight(const CSphereView& view, QSizeF size);
        [[nodiscard]] bool Has(const Piece& piece) const
        {
            return m_reach + piece.CapAngle >= std::numbers::pi ||
                   Dot(piece.Middle, m_viewer) >= m_cosine * piece.CapCosine - m_sine * piece.CapSine;
        }

    private:
        UnitVector m_viewer;
        double m_reach; // radians
        double m_sine;
        double m_cosine;
    };

    template <typename T> void TraceIn(const CSphereView& view, QSizeF size, double tolerance, const Pen& pen) const;
    [[nodiscard]] std::size_t LineEnd(std::size_t firstPiece) const;
    void AddPieces(std::size_t first, std::size_t count);

    std::vector<Point> m_points;
    std::vector<Piece> m_pieces;
};
