#pragma once

#include "host/control_window/ControlWindow.h"

/// The road-map control. Every call does nothing, or returns false or null, while the control does not exist.
/// Positions are in milliseconds of arc (see ControlNumber::RoadMap), longitude first.
class CCorMpp : public CControlWindow
{
    Q_OBJECT

public:
    using CControlWindow::CControlWindow;

    /// Creates the host's one road-map class as a hidden child. False when there is none or it refuses.
    [[nodiscard]] bool Create(QWidget* parent, const QRect& rect, int controlId);

    /// Moves the map to the position; with `mark` the position becomes the marked observation site.
    void SetPosition(bool mark, double x, double y);
    /// Starts a search; its end is reported by an event. False when the map does not start it.
    [[nodiscard]] bool Search(bool facility, const QString& text);
    /// The number of the list of the last finished search, for CRoadMapResults::Find; 0 for none.
    [[nodiscard]] qint64 GetSearchResult();
    void SetScale(int denominator);
    void CenterMark();
    void OpenFile(const QString& path);
};
