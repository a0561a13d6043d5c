#include "controls/globe_map/GlobeMap.h"

#include "controls/sphere/MapFurniture.h"
#include "host/control/GlobeZoom.h"

#include <QEvent>
#include <QPainter>

#include <utility>

using namespace Qt::StringLiterals;

CGlobeMap::CGlobeMap(QWidget* parent, QString dataFolder) : CMapWidget(parent), m_painter(std::move(dataFolder))
{
    hide();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    grabGesture(Qt::PinchGesture);
    setAccessibleName(u"地球の地図"_s);
    setAccessibleDescription(
        u"矢印キーで地図を回し、Enter キーまたはスペースキーで中央の地点を選びます。"
        u"＋・－キーと Page Up・Page Down キーで拡大・縮小し、Home キーで観測地を中央に戻します。"_s);
    std::bitset<LandmarkKind::Count> kinds;
    m_painter.Landmarks().SetKinds(kinds.set());
    CGlobeMap::ApplyFont();
}

CGlobeMap::~CGlobeMap() = default;

QVariant CGlobeMap::Invoke(int method, const QVariantList& arguments)
{
    return GlobeMapCalls::Invoke(*this, method, arguments);
}

void CGlobeMap::SetControlProperty(int, const QVariant&) {}

void CGlobeMap::SetZoom(double zoom)
{
    m_viewAngle = GlobeZoom::ViewAngle(1 - zoom);
}

void CGlobeMap::SetLandmarkFile(const QString& path)
{
    m_landmarkFile = path;
    m_isLandmarkFileThere = false;
}

void CGlobeMap::SetLandmarkFileExists(bool exists)
{
    m_isLandmarkFileThere = exists;
    ReloadUserPlaces();
}

void CGlobeMap::ReloadUserPlaces()
{
    m_painter.Landmarks().SetPlaces(m_isLandmarkFileThere ? LandmarkList::Read(m_landmarkFile)
                                                          : std::vector<Landmark>());
}

void CGlobeMap::SetEclipseColor(quint32 color)
{
    m_scene.EclipseColor = QColor(static_cast<int>(color & 255), static_cast<int>((color >> 8) & 255),
                                  static_cast<int>((color >> 16) & 255));
}

CSphereView CGlobeMap::View() const
{
    return CSphereView::ForAngle(Center(), m_viewAngle, size());
}

void CGlobeMap::PaintMap(QImage& picture)
{
    m_scene.ReadOut = ReadOutPlace();
    m_painter.Paint(picture, View(), m_viewAngle, m_scene, IsDragging());
}

void CGlobeMap::ApplyFont()
{
    m_painter.Landmarks().SetFont(MapFurniture::NameFont(font()));
}
