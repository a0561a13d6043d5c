#pragma once

#include "controls/core/LandmarkList.h"
#include "controls/core/ScreenGrid.h"
#include "controls/core/SphereView.h"
#include "controls/sphere/DrawnItems.h"

#include <QCache>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>

#include <array>
#include <bitset>
#include <optional>
#include <vector>

class QPainter;

/// Draws the places of the list: a mark for each kind and the names there is room for, never one over another.
class CLandmarkLayer
{
public:
    CLandmarkLayer();

    /// The places, the most important first.
    void SetPlaces(std::vector<Landmark> places);

    /// Which kinds are shown.
    void SetKinds(std::bitset<LandmarkKind::Count> kinds) { m_kinds = kinds; }

    /// Whether the names are written beside the marks.
    void SetNamesVisible(bool isVisible) { m_isNamesVisible = isVisible; }

    void SetFont(const QFont& font);

    /// Draws what an area of that size (from the origin) shows at a view angle in degrees; no name is written over
    /// the kept-free rectangles nor over the observer's marker, beside which the places that it covers are named. Not
    /// const: names once drawn are kept as pictures.
    void Draw(QPainter& painter, const CSphereView& view, QSize size, double viewAngle, const QList<QRectF>& keptFree,
              std::optional<QPointF> marker);

    /// What the last drawing shows, the most important first.
    [[nodiscard]] const DrawnItems& Drawn() const { return m_drawn; }

private:
    [[nodiscard]] std::optional<std::size_t> PlaceBeneath(const CSphereView& view, double viewAngle, double lowest,
                                                          QPointF marker) const;
    struct Shown
    {
        std::size_t Place = 0;
        QPointF Screen;
        std::optional<QPointF> NameCorner;
        bool HasMark = true;
    };

    // Takes room for a name beside its mark, so far from the mark's middle, on the side that lies most
    // towards that direction if there is one; empty when there is none.
    std::optional<QPointF> FindNameCorner(CScreenGrid& grid, std::size_t place, QPointF mark, double gap, double margin,
                                          QPointF towards = {});
    const QImage& Mark(int kind, double scale);
    QImage NameImage(std::size_t place, double scale);
    [[nodiscard]] double NameWidth(std::size_t place);

    std::vector<Landmark> m_places;
    std::vector<float> m_widths; // of the names, 0 while unknown
    std::bitset<LandmarkKind::Count> m_kinds;
    bool m_isNamesVisible = true;
    QFont m_font;
    double m_height = 0; // of a name
    double m_scale = 0;  // of the pictures kept
    QCache<std::size_t, QImage> m_names;
    std::array<QImage, LandmarkKind::Count> m_marks;
    DrawnItems m_drawn;
};
