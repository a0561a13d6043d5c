#pragma once

#include "controls/core/LineSet.h"
#include "controls/core/MarksFile.h"
#include "controls/core/RoadMapData.h"
#include "controls/core/SphereView.h"
#include "controls/road_map/ReliefLayer.h"
#include "controls/sphere/LandmarkLayer.h"

#include <QFont>
#include <QString>

#include <optional>
#include <vector>

class QImage;
class QPainter;

/// What a picture of the road map shows.
struct RoadMapScene
{
    CSphereView View;
    int Denominator = 0; ///< of the scale
    double MetersPerPixel = 1;
    std::optional<GeoPoint> Site;
    QRectF ReadOut; ///< where names are not written, for the read-out of the pointer's position
};

/// Draws the road map's picture. Reads the data when they are first needed.
class CRoadMapPainter
{
public:
    /// The folder (ends with a separator) holds "earth/coast10.kol", "roadmap/prefectures.kol", the tables of
    /// CRoadMapData and their like; what is missing there is left out.
    explicit CRoadMapPainter(QString dataFolder);

    [[nodiscard]] const CRoadMapData& Data();

    void SetMarks(const RoadMapMarks& marks);
    void SetFonts(const QFont& names, const QFont& small);

    /// Draws onto a picture whose device pixel ratio is the screen's.
    void Paint(QImage& picture, const RoadMapScene& scene);

    /// What the last picture shows.
    [[nodiscard]] const DrawnItems& Drawn() const { return m_drawn; }

private:
    void LoadOnce();
    void ShowPlaces();
    [[nodiscard]] bool IsNear(const RoadMapScene& scene, QSizeF size) const;
    void PaintGround(QImage& picture, const RoadMapScene& scene, QSizeF size) const;
    [[nodiscard]] static std::vector<QPolygonF> RunsInSight(const std::vector<UnitVector>& way, const CSphereView& view,
                                                            const QRectF& area);
    void PaintWays(QPainter& painter, const RoadMapScene& scene, QSizeF size) const;
    [[nodiscard]] QString Surroundings(const RoadMapScene& scene) const;

    QString m_dataFolder;
    bool m_isLoaded = false;
    CLineSet m_coast;
    CLineSet m_nearCoast; // of Japan and around, finer
    CLineSet m_wideCoast; // the same, thinner
    CLineSet m_rivers;
    CReliefLayer m_relief;
    CLineSet m_borders;
    CLineSet m_prefectures;
    CRoadMapData m_data;
    CLandmarkLayer m_places;
    std::vector<Landmark> m_markPlaces;
    std::vector<std::vector<UnitVector>> m_ways;
    QFont m_smallFont;
    DrawnItems m_drawn;
};
