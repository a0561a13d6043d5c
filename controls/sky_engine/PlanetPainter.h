#pragma once

#include "controls/core/SphereView.h"
#include "controls/sky_engine/SurfaceNames.h"
#include "controls/sphere/SphereRenderer.h"

#include <QFont>
#include <QImage>
#include <QString>

#include <cstddef>
#include <optional>

/// All that a picture of a planetary globe depends on. Points are degrees, longitude to the east.
struct PlanetScene
{
    int Body = 0;
    GeoPoint Center;
    double Angle = 180.0; ///< degrees of surface across the picture, 180 for the whole disc
    GeoPoint Sun;         ///< where the Sun is overhead; without meaning for the Sun
    GeoPoint Observer;
    double Brightness = 1.0;
    bool HasGrid = false;
    bool HasNames = false;
    bool HasLeadlines = false;

    [[nodiscard]] bool operator==(const PlanetScene& other) const;
};

/// Draws planetary globes; keeps the surface of the body that it drew last, and its lit picture while that stays the
/// same to the eye.
class CPlanetPainter
{
public:
    /// Pictures and names are looked for in the data folder; an empty one has none.
    explicit CPlanetPainter(QString dataFolder) : m_dataFolder(std::move(dataFolder)) {}

    /// How the scene lies in an area of that size, in the area's units.
    [[nodiscard]] static CSphereView View(const PlanetScene& scene, QSizeF size);

    /// Fills the frame; its device pixel ratio counts.
    void Draw(QImage& frame, const PlanetScene& scene, const QFont& font);

    /// Lets go of the body's pictures, which are large, until the next drawing.
    void Release();

    /// What the last frame shows, by name.
    [[nodiscard]] DrawnItems Drawn() const;

private:
    void LoadBody(int body);
    void DrawGround(const PlanetScene& scene, const CSphereView& view, const QFont& font);

    QString m_dataFolder;
    std::optional<std::size_t> m_body; ///< whose surface is loaded
    CSphereRenderer m_renderer;
    QImage m_ground; ///< the surface with its grid
    PlanetScene m_groundScene;
    QFont m_groundFont;
    CSurfaceNames m_names;
    DrawnItems m_groundItems; ///< on the kept ground
    DrawnItems m_items;       ///< over it
};
