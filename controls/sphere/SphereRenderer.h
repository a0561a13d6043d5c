#pragma once

#include "controls/core/SphereView.h"
#include "controls/sphere/SphereTexture.h"

#include <QColor>
#include <QImage>

#include <memory>
#include <optional>

/// How a sphere is lit and coloured when it is drawn.
struct SphereLook
{
    std::optional<GeoPoint> Sun;         ///< the point with the Sun overhead; empty: lit evenly from the viewer
    double NightBrightness = 0.12;       ///< brightness of the dark side, 0 to 1; only with a Sun
    double Brightness = 1;               ///< factor on every colour, 0 to 4
    double LimbDarkening = 0.35;         ///< how much darker the edge of the disc is than its middle, 0 to 1
    QColor Atmosphere;                   ///< colour of a thin rim of air; invalid: none
    QColor Background = Qt::transparent; ///< what lies around the disc
};

/// Draws a textured sphere pixel by pixel.
class CSphereRenderer
{
public:
    /// Mid grey all over.
    CSphereRenderer();

    /// Not null.
    void SetTexture(std::shared_ptr<const CSphereTexture> texture) { m_texture = std::move(texture); }

    void SetColor(const QColor& color);

    /// Fills the whole target (made ARGB32 premultiplied when it has another format) with the sphere and what lies
    /// around it. The view counts in pixels of the target; a device pixel ratio of the image plays no part.
    void Render(QImage& target, const CSphereView& view, const SphereLook& look) const;

private:
    std::shared_ptr<const CSphereTexture> m_texture;
};
