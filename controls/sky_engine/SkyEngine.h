#pragma once

#include "controls/core/EngineState.h"
#include "controls/sky_engine/PlanetPainter.h"
#include "controls/sphere/MapAccessible.h"
#include "host/control/Control.h"

#include <QImage>
#include <QPointF>
#include <QWidget>

#include <functional>
#include <optional>

class QTouchEvent;

/// A sky engine: the command language and, with View.Projection = PlanetaryGlobe, the globe of the body that the
/// observer stands on. The picture follows "Show Sky" (with System.Loop = TRUE every line) and the user's hand at once.
///
/// While the control is active, a click or a tap on the globe moves the engine's own location there before the event
/// is raised; dragging and the arrow keys turn the globe when Operation.MoveView is TRUE, plus and minus change the
/// angle, Enter and Space pick the middle of the globe.
class CSkyEngine final : public QWidget, public IControl, public ISpokenMap
{
public:
    using CommandLog = std::function<void(const QString& line, const QString& answer)>;

    /// Pictures and surface names come from the data folder ("<folder>/moon/relief.jpg", "<folder>/moon/features.csv").
    CSkyEngine(QWidget* parent, QString dataFolder);

    /// Runs a line and returns the answer to its query, empty without one; see CEngineState::Command for what it
    /// refuses.
    QString Command(const QString& line);

    /// Assigns a property with any text as its value, quotes and semicolons included; false when it was refused.
    bool Assign(QStringView path, QStringView value);

    /// Is called with each line and its answer, after it ran; may be empty.
    void SetCommandLog(CommandLog log) { m_log = std::move(log); }

    /// How often the globe was drawn so far; for measurements.
    [[nodiscard]] int DrawnCount() const { return m_drawnCount; }
    /// What the globe that was drawn last shows, by name.
    [[nodiscard]] DrawnItems Drawn() const { return m_painter.Drawn(); }

    [[nodiscard]] QWidget* Window() override { return this; }
    /// The middle of the globe; the observer while no globe is shown.
    [[nodiscard]] QString SpokenCenter() const override;
    QVariant Invoke(int method, const QVariantList& arguments) override;
    void SetControlProperty(int property, const QVariant& value) override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    [[nodiscard]] QSize sizeHint() const override { return {480, 480}; }

private:
    /// A press that may become a click or a drag.
    struct Press
    {
        QPointF Start;
        QPointF Last;
        bool IsDrag = false;
        bool HasManyFingers = false;
    };

    [[nodiscard]] PlanetScene Scene() const;
    [[nodiscard]] bool IsGlobe() const;
    void ShowSky();
    void Pick(QPointF at);
    void RaiseMouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at);
    void Drag(QPointF to);
    void Turn(double east, double north);
    void Zoom(double factor);
    void HandleTouch(QTouchEvent* event);
    void PaintNotice(QPainter& painter);

    CEngineState m_state;
    CPlanetPainter m_painter;
    CommandLog m_log;
    bool m_isActive = false;
    std::optional<Press> m_press;
    bool m_isGlobeShown = false;
    PlanetScene m_shown; ///< what the picture is to show
    PlanetScene m_drawn; ///< what the frame shows
    QImage m_frame;      ///< null until the first drawing
    int m_drawnCount = 0;
};
