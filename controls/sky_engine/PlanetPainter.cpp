#include "controls/sky_engine/PlanetPainter.h"

#include "controls/core/EngineBody.h"
#include "controls/sky_engine/BodyTexture.h"
#include "controls/sphere/Graticule.h"
#include "controls/sphere/MapFurniture.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{
const QColor Background(11, 14, 20);
const QColor CaptionColor(214, 220, 230, 200);
const QColor MarkerColor(255, 176, 64);
const QColor MarkerHalo(0, 0, 0, 215);
const QColor GridGround(0, 0, 0, 46); // on the Sun and the giants white lines alone would be lost
constexpr double MarkerReach = 11.0;
constexpr QPointF CaptionInset(10.0, 8.0);

bool IsSame(const GeoPoint& a, const GeoPoint& b)
{
    return a.Longitude == b.Longitude && a.Latitude == b.Latitude;
}

/// Whether both show the same ground from the same distance, from wherever.
bool IsSameGround(const PlanetScene& a, const PlanetScene& b)
{
    return a.Body == b.Body && a.Angle == b.Angle && IsSame(a.Sun, b.Sun) && a.Brightness == b.Brightness &&
           a.HasGrid == b.HasGrid;
}

SphereLook Look(const PlanetScene& scene)
{
    SphereLook look;
    look.Background = Background;
    look.Brightness = scene.Brightness;
    if (scene.Body == BodyTable::Sun) {
        look.LimbDarkening = 0.55;
        look.Atmosphere = QColor(255, 150, 60);
        return look;
    }
    look.Sun = scene.Sun;
    look.NightBrightness = 0.34;
    look.LimbDarkening = 0.25;
    if (scene.Body == BodyTable::Earth)
        look.Atmosphere = QColor(120, 170, 255);
    return look;
}

/// The observer's marker, a ring with four arms.
void DrawMarker(QPainter& painter, QPointF at)
{
    constexpr double Ring = 6.0;
    painter.setBrush(Qt::NoBrush);
    for (const QPen& pen :
         {QPen(MarkerHalo, 4.5, Qt::SolidLine, Qt::RoundCap), QPen(MarkerColor, 1.8, Qt::SolidLine, Qt::RoundCap)}) {
        painter.setPen(pen);
        painter.drawEllipse(at, Ring, Ring);
        for (const QPointF direction : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
            painter.drawLine(at + direction * Ring, at + direction * MarkerReach);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(MarkerColor);
    painter.drawEllipse(at, 1.6, 1.6);
}
} // namespace

bool PlanetScene::operator==(const PlanetScene& other) const
{
    return Body == other.Body && IsSame(Center, other.Center) && Angle == other.Angle && IsSame(Sun, other.Sun) &&
           IsSame(Observer, other.Observer) && Brightness == other.Brightness && HasGrid == other.HasGrid &&
           HasNames == other.HasNames && HasLeadlines == other.HasLeadlines;
}

CSphereView CPlanetPainter::View(const PlanetScene& scene, QSizeF size)
{
    return CSphereView::ForAngle(scene.Center, scene.Angle, size);
}

void CPlanetPainter::LoadBody(int body)
{
    if (m_body == body)
        return;
    m_renderer.SetTexture(BodyTexture::Load(body, m_dataFolder));
    m_names.Load(m_dataFolder.isEmpty()
                     ? QString()
                     : m_dataFolder + u'/' + QString::fromUtf16(EngineBodies::Of(body).Folder) + u"/features.csv"_s);
    m_body = body;
}

void CPlanetPainter::DrawGround(const PlanetScene& scene, const CSphereView& view, const QFont& font)
{
    LoadBody(scene.Body);
    m_renderer.Render(m_ground, view.Scaled(m_ground.devicePixelRatio()), Look(scene));
    m_groundScene = scene;
    m_groundFont = font;
    m_groundItems.clear();
    if (!scene.HasGrid)
        return;
    GraticuleStyle style;
    style.HasFullTurn = scene.Body != BodyTable::Moon && scene.Body != BodyTable::Earth;
    style.CountsWest = !EngineBodies::CountsEast(scene.Body);
    style.Ground = GridGround;
    style.Line.setAlpha(110);
    style.Equator.setAlpha(170);
    style.Label.setAlpha(225);
    style.TopMargin = QFontMetricsF(font).height() + CaptionInset.y(); // the caption's
    m_groundItems = DrawGraticule(m_ground, font, view, style);
}

void CPlanetPainter::Draw(QImage& frame, const PlanetScene& scene, const QFont& font)
{
    if (frame.isNull())
        return;
    const double ratio = frame.devicePixelRatio();
    const QSizeF size = QSizeF(frame.size()) / ratio;
    const CSphereView view = View(scene, size);
    if (m_ground.size() != frame.size() || m_ground.devicePixelRatio() != ratio) {
        m_ground = QImage(frame.size(), QImage::Format_ARGB32_Premultiplied);
        m_ground.setDevicePixelRatio(ratio);
        DrawGround(scene, view, font);
    } else if (!IsSameGround(scene, m_groundScene) || font != m_groundFont ||
               !view.Scaled(ratio).LooksLike(View(m_groundScene, size).Scaled(ratio))) {
        DrawGround(scene, view, font);
    }

    QPainter painter(&frame);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPointF(0.0, 0.0), m_ground);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    const auto observer = view.ToScreen(scene.Observer.Longitude, scene.Observer.Latitude);
    const QPointF reach(MarkerReach, MarkerReach);
    const QRectF marker = observer ? QRectF(*observer - reach, *observer + reach) : QRectF();
    m_items = scene.HasNames ? m_names.Draw(painter, view, size, marker, scene.HasLeadlines) : DrawnItems();
    if (observer) {
        DrawMarker(painter, *observer);
        m_items.push_back({QString::fromUtf16(DrawnLayer::Observer), QString(), *observer, QRectF()});
    }
    painter.setPen(CaptionColor);
    MapFurniture::DrawOutlined(painter, CaptionInset, BodyTable::Label(scene.Body));
}

void CPlanetPainter::Release()
{
    m_body.reset();
    m_renderer.SetColor(Background);
    m_ground = QImage();
}

DrawnItems CPlanetPainter::Drawn() const
{
    DrawnItems items = m_groundItems;
    items.insert(items.end(), m_items.begin(), m_items.end());
    return items;
}
