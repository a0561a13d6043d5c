#pragma once

#include "controls/core/EclipsePath.h"
#include "controls/core/LineSet.h"
#include "controls/sphere/DrawnItems.h"
#include "controls/sphere/LandmarkLayer.h"
#include "controls/sphere/SphereRenderer.h"

#include <QImage>
#include <QString>

#include <optional>

/// What the globe map shows besides the ground.
struct GlobeScene
{
    std::optional<GeoPoint> Observer;
    QRectF ReadOut; ///< where names are not written, for the read-out of the pointer's position
    EclipsePath Eclipse;
    QColor EclipseColor = QColor(255, 196, 64);
    bool HasEclipseLimits = false;
    bool IsGraticuleVisible = true;
    bool IsCoastVisible = true;
    bool IsNamesVisible = true;
};

/// Draws the globe map's picture. Reads the ground's data when they are first needed and keeps the ground as a picture
/// while the view stays the same to the eye.
class CGlobePainter
{
public:
    explicit CGlobePainter(QString dataFolder);

    CLandmarkLayer& Landmarks() { return m_landmarks; }

    /// Draws onto a picture whose device pixel ratio is the screen's; a draft is coarser and quicker.
    void Paint(QImage& picture, const CSphereView& view, double viewAngle, const GlobeScene& scene, bool isDraft);

    /// Lets go of the pictures of the ground, which are large, until the next drawing.
    void Release();

    /// What the last picture shows.
    [[nodiscard]] DrawnItems Drawn() const;

private:
    // What the kept picture of the ground was made for.
    struct GroundKey
    {
        CSphereView View; ///< in pixels of the picture
        QSize Pixels;
        bool HasGraticule = false;
        bool HasCoast = false;
        bool IsDraft = false;
        [[nodiscard]] bool Serves(const GroundKey& other) const;
    };

    void LoadOnce();
    void LoadTexture();
    void LoadNearOnce();
    void PaintGround(QImage& picture, const CSphereView& view, double viewAngle, const GlobeScene& scene, bool isDraft);

    QString m_dataFolder;
    bool m_isLoaded = false;
    bool m_hasTexture = false;
    bool m_isNearLoaded = false;
    CSphereRenderer m_renderer;
    CLineSet m_coast;
    CLineSet m_borders;
    CLineSet m_nearCoast;
    CLineSet m_nearBorders;
    CLandmarkLayer m_landmarks;
    QImage m_ground;
    GroundKey m_groundKey;
    DrawnItems m_groundItems;          ///< on the kept picture
    std::optional<QPointF> m_observer; ///< where the last picture has the marker
};
