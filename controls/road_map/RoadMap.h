#pragma once

#include "controls/core/RoadMapCalls.h"
#include "controls/road_map/RoadMapPainter.h"
#include "controls/sphere/MapWidget.h"
#include "host/control/Control.h"
#include "host/control/RoadMapResults.h"

#include <memory>
#include <optional>

/// The road map: Japan with its municipalities and facilities at any scale, a marked observation site, a search and
/// the user's own marks. Dragging and the arrow keys move it; a click, or Enter or the space bar for the middle,
/// marks the site there and reports it (event 1). The scale is the window's: the wheel and other keys are left to it.
///
/// A search ends with an event (2 facilities, 3 addresses) from the event loop, status 0. A search that another one
/// follows before that ends with status 1, and leaves no list.
class CRoadMap : public CMapWidget, public IControl, private IRoadMapCalls
{
    Q_OBJECT

public:
    static constexpr int StatusFinished = 0;
    static constexpr int StatusCancelled = 1;

    // Limits of the scale's denominator.
    static constexpr int NearestScale = 1000;
    static constexpr int WidestScale = 9'999'999;

    /// A hidden child of the parent. The data folder (ends with a separator) holds "earth" and "roadmap"; what is
    /// missing there is left out.
    CRoadMap(QWidget* parent, QString dataFolder);
    ~CRoadMap() override;

    [[nodiscard]] QWidget* Window() override { return this; }
    QVariant Invoke(int method, const QVariantList& arguments) override;
    void SetControlProperty(int property, const QVariant& value) override;

    /// The marked site; none before the first.
    [[nodiscard]] std::optional<GeoPoint> Site() const { return m_site; }

    [[nodiscard]] DrawnItems Drawn() const override { return m_painter.Drawn(); }
    [[nodiscard]] QSize sizeHint() const override { return {640, 480}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 90}; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

    [[nodiscard]] CSphereView View() const override;
    /// The part from the upper left corner that no window beside it covers.
    [[nodiscard]] QSize OpenSize() const override;
    [[nodiscard]] bool HasSeconds() const override;
    void PaintMap(QImage& picture) override;
    void ApplyFont() override;
    void Drag(QPoint from, QPoint to) override { Shift(from - to); }
    void Pick(const GeoPoint& point) override;

private:
    void ShowPosition(const GeoPoint& position) override { MoveCenter(position); }
    void MarkPosition(const GeoPoint& position) override;
    bool Search(bool isFacility, const QString& text) override;
    [[nodiscard]] qint64 SearchResult() const override { return m_results ? m_results->Handle() : 0; }
    void SetScale(double denominator) override;
    void CenterMark() override;
    void OpenFile(const QString& path) override;

    void EndSearch(quint64 number, bool isFacility, const QString& text);
    [[nodiscard]] double MetersPerPixel() const;
    void Shift(QPointF pixels);

    CRoadMapPainter m_painter;
    std::optional<GeoPoint> m_site;
    int m_denominator = 8000;
    std::unique_ptr<CRoadMapResults> m_results;
    quint64 m_searchNumber = 0;
};
