#include "controls/globe_map/GlobePainter.h"

#include "controls/globe_map/EclipseLayer.h"
#include "controls/sphere/Graticule.h"
#include "controls/sphere/LineDrawing.h"
#include "controls/sphere/LineMask.h"
#include "controls/sphere/MapFurniture.h"

#include <QDir>
#include <QPainter>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr double NearAngle = 30;     // below it the finer lines are drawn
constexpr double FullTintAngle = 10; // from here on land and sea are wholly tinted
const QColor Space(9, 12, 19);
const QColor Sea(24, 52, 92);
const QColor Air(118, 168, 240);
const QColor NearSea(13, 38, 74);
const QColor NearLand(58, 76, 50);
const QColor CoastColor(226, 238, 248, 150);
const QColor BorderColor(255, 226, 170, 105);

// The relief picture grows blurred from near: land and sea then get colours of their own, the nearer the fuller.
void TintGround(QImage& picture, const QPainterPath& land, QSizeF size, double viewAngle)
{
    const double share = std::clamp((NearAngle - viewAngle) / (NearAngle - FullTintAngle), 0.0, 1.0);
    const auto shaded = [share](QColor color, double most) {
        color.setAlphaF(static_cast<float>(share * most));
        return color;
    };
    QPainter painter(&picture);
    QPainterPath sea = land;
    sea.addRect(QRectF(QPointF(0, 0), size).adjusted(-1, -1, 1, 1));
    // Hard edges: ten times as quick, and the coastline drawn on them is smooth.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillPath(sea, shaded(NearSea, 0.85));
    painter.fillPath(land, shaded(NearLand, 0.72));
}
} // namespace

bool CGlobePainter::GroundKey::Serves(const GroundKey& other) const
{
    return View.LooksLike(other.View) && Pixels == other.Pixels && HasGraticule == other.HasGraticule &&
           HasCoast == other.HasCoast && IsDraft == other.IsDraft;
}

CGlobePainter::CGlobePainter(QString dataFolder) : m_dataFolder(std::move(dataFolder)) {}

void CGlobePainter::LoadOnce()
{
    LoadTexture();
    if (std::exchange(m_isLoaded, true))
        return;
    m_coast.Load(m_dataFolder + u"/earth/coast.kol"_s);
    m_borders.Load(m_dataFolder + u"/earth/borders.kol"_s);
}

/// The same picture as the sky engine's, where there is one.
void CGlobePainter::LoadTexture()
{
    if (std::exchange(m_hasTexture, true))
        return;
    const QString file = QDir::cleanPath(m_dataFolder + u"/earth/relief.jpg"_s);
    if (auto texture = CSphereTexture::Shared(file, [&file] { return CSphereTexture::ReadPicture(file); }))
        m_renderer.SetTexture(std::move(texture));
    else
        m_renderer.SetColor(Sea);
}

void CGlobePainter::Release()
{
    m_renderer.SetColor(Sea);
    m_hasTexture = false;
    m_ground = QImage();
}

void CGlobePainter::LoadNearOnce()
{
    if (std::exchange(m_isNearLoaded, true))
        return;
    m_nearCoast.Load(m_dataFolder + u"/earth/coast10.kol"_s);
    m_nearBorders.Load(m_dataFolder + u"/earth/borders10.kol"_s);
}

void CGlobePainter::PaintGround(QImage& picture, const CSphereView& view, double viewAngle, const GlobeScene& scene,
                                bool isDraft)
{
    LoadOnce();
    if (viewAngle < NearAngle)
        LoadNearOnce();
    const double scale = picture.devicePixelRatioF();
    SphereLook look;
    look.Background = Space;
    look.Atmosphere = Air;
    look.LimbDarkening = 0.45;
    look.Brightness = 0.92;
    m_renderer.Render(picture, view.Scaled(scale), look);

    const QSizeF size = picture.deviceIndependentSize();
    if (viewAngle < NearAngle && !m_nearCoast.IsEmpty())
        TintGround(picture, LineDrawing::Inside(m_nearCoast, view, size), size, viewAngle);
    if (scene.IsCoastVisible) {
        const bool isNear = viewAngle < NearAngle;
        const double tolerance = isDraft ? 3 : viewAngle > 90 ? 2 : 1.4;
        CLineMask mask(picture.size(), scale);
        LineDrawing::Add(mask, isNear && !m_nearCoast.IsEmpty() ? m_nearCoast : m_coast, view, size, tolerance);
        mask.Draw(picture, CoastColor);
        LineDrawing::Add(mask, isNear && !m_nearBorders.IsEmpty() ? m_nearBorders : m_borders, view, size, tolerance);
        mask.Draw(picture, BorderColor);
    }
    m_groundItems = scene.IsGraticuleVisible ? DrawGraticule(picture, QFont(), view) : DrawnItems();
}

void CGlobePainter::Paint(QImage& picture, const CSphereView& view, double viewAngle, const GlobeScene& scene,
                          bool isDraft)
{
    const GroundKey key{view.Scaled(picture.devicePixelRatioF()), picture.size(), scene.IsGraticuleVisible,
                        scene.IsCoastVisible, isDraft};
    if (m_ground.isNull() || !m_groundKey.Serves(key)) {
        if (m_ground.size() != picture.size())
            m_ground = QImage(picture.size(), QImage::Format_ARGB32_Premultiplied);
        m_ground.setDevicePixelRatio(picture.devicePixelRatio());
        PaintGround(m_ground, view, viewAngle, scene, isDraft);
        m_groundKey = key;
    }
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPointF(0, 0), m_ground);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    EclipseLayer::Draw(painter, view, scene.Eclipse, scene.EclipseColor, scene.HasEclipseLimits);

    const auto observer =
        scene.Observer ? view.ToScreen(scene.Observer->Longitude, scene.Observer->Latitude) : std::nullopt;
    const QSizeF size = picture.deviceIndependentSize();
    QList<QRectF> keptFree = {scene.ReadOut};
    if (scene.IsGraticuleVisible && HasGraticuleLabels(view, size)) {
        const double strip = QFontMetricsF(painter.font()).height() + 4;
        keptFree.append(QRectF(0, size.height() - strip, size.width(), strip));
        keptFree.append(QRectF(0, 0, 2.5 * strip, size.height()));
    }
    m_landmarks.SetNamesVisible(scene.IsNamesVisible);
    m_landmarks.Draw(painter, view, size.toSize(), viewAngle, keptFree, observer);
    if (observer)
        MapFurniture::DrawObserver(painter, *observer);
    m_observer = observer;
}

DrawnItems CGlobePainter::Drawn() const
{
    DrawnItems items = m_groundItems;
    items.insert(items.end(), m_landmarks.Drawn().begin(), m_landmarks.Drawn().end());
    if (m_observer)
        items.push_back({QString::fromUtf16(DrawnLayer::Observer), QString(), *m_observer, QRectF()});
    return items;
}
