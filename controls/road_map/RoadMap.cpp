#include "controls/road_map/RoadMap.h"

#include "controls/sphere/MapFurniture.h"
#include "host/control/ControlNumbers.h"
#include "host/dialog/Prompts.h"

#include <QEvent>
#include <QFileInfo>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
namespace Call = ControlNumber::RoadMap;

namespace
{
constexpr double EarthRadius = 6371000.0; // metres
constexpr double MetersPerInch = 0.0254;
constexpr int LargestScaleWithSeconds = 100'000;
} // namespace

CRoadMap::CRoadMap(QWidget* parent, QString dataFolder) : CMapWidget(parent), m_painter(std::move(dataFolder))
{
    hide();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    setAccessibleName(u"道路地図"_s);
    setAccessibleDescription(u"矢印キーで地図を動かし、Enter キーまたはスペースキーで中央の地点を観測地にします。"
                             u"Home キーで観測地を中央に戻します。"_s);
    CRoadMap::ApplyFont();
}

CRoadMap::~CRoadMap() = default;

QVariant CRoadMap::Invoke(int method, const QVariantList& arguments)
{
    return RoadMapCalls::Invoke(*this, method, arguments);
}

void CRoadMap::SetControlProperty(int, const QVariant&) {}

void CRoadMap::MarkPosition(const GeoPoint& position)
{
    m_site = position;
    MarkChanged();
}

void CRoadMap::CenterMark()
{
    if (m_site)
        MoveCenter(*m_site);
}

bool CRoadMap::Search(bool isFacility, const QString& text)
{
    if (m_painter.Data().IsEmpty())
        return false;
    const quint64 number = ++m_searchNumber;
    // The end is reported from the event loop, after the caller has put its window in order.
    QMetaObject::invokeMethod(
        this, [this, number, isFacility, text] { EndSearch(number, isFacility, text); }, Qt::QueuedConnection);
    return true;
}

void CRoadMap::EndSearch(quint64 number, bool isFacility, const QString& text)
{
    const int event = isFacility ? Call::EventLandMarkEnd : Call::EventAddressKeyEnd;
    if (number != m_searchNumber)
        return RaiseEvent(event, {StatusCancelled});
    const CRoadMapData& tables = m_painter.Data();
    m_results =
        std::make_unique<CRoadMapResults>(isFacility ? tables.FindFacilities(text) : tables.FindAddresses(text));
    RaiseEvent(event, {StatusFinished});
}

void CRoadMap::SetScale(double denominator)
{
    m_denominator =
        static_cast<int>(std::clamp(denominator, static_cast<double>(NearestScale), static_cast<double>(WidestScale)));
    MarkChanged();
}

void CRoadMap::OpenFile(const QString& path)
{
    const auto [marks, failure] = MarksFile::Read(path);
    if (!failure.isEmpty()) {
        // Reported from the event loop, as the end of a search is, so that the box does not block the caller.
        const QString text = u"「%1」を読み込めませんでした。\n%2\n\n"
                             u"読み込めるのは、地点・ルート・軌跡を含む GPX ファイル（16 MB まで）です。"_s.arg(
                                 QFileInfo(path).fileName(), failure);
        QMetaObject::invokeMethod(
            this,
            [this, text] {
                IPrompts::Current().Show(window(), text, IPrompts::Icon::Exclamation, IPrompts::Buttons::Ok);
            },
            Qt::QueuedConnection);
        return;
    }
    m_painter.SetMarks(marks);
    MoveCenter(marks.Points.empty() ? marks.Ways.front().front() : marks.Points.front().Position);
}

double CRoadMap::MetersPerPixel() const
{
    return m_denominator * MetersPerInch / std::max(1, logicalDpiX());
}

CSphereView CRoadMap::View() const
{
    const QSizeF open = OpenSize();
    return {Center(), EarthRadius / MetersPerPixel(), QPointF(open.width() / 2, open.height() / 2)};
}

QSize CRoadMap::OpenSize() const
{
    const QRect open = visibleRegion().boundingRect();
    return open.isEmpty() ? size() : QSize(open.right() + 1, open.bottom() + 1);
}

bool CRoadMap::HasSeconds() const
{
    return m_denominator <= LargestScaleWithSeconds;
}

void CRoadMap::PaintMap(QImage& picture)
{
    m_painter.Paint(picture, {View(), m_denominator, MetersPerPixel(), m_site, ReadOutPlace()});
}

void CRoadMap::ApplyFont()
{
    m_painter.SetFonts(MapFurniture::NameFont(font()), MapFurniture::SmallFont(font()));
}
