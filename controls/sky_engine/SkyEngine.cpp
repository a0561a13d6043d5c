#include "controls/sky_engine/SkyEngine.h"

#include "controls/core/Angle.h"
#include "controls/core/EngineBody.h"
#include "controls/sphere/MapFurniture.h"
#include "host/control/ControlNumbers.h"
#include "host/text/FontFamilies.h"
#include "host/text/Number.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTouchEvent>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto CenterLongitude = u"View.PlanetaryGlobe.Center.Longitude";
constexpr auto CenterLatitude = u"View.PlanetaryGlobe.Center.Latitude";
constexpr auto ViewAngle = u"View.Angle";
constexpr double NarrowestAngle = 2.0;
constexpr double WidestAngle = 180.0;
constexpr double KeyStepsAcross = 36.0; ///< strokes of an arrow key from one edge of the picture to the other
constexpr double KeyZoomFactor = 1.25;
/// Brightness of the Moon's property at which its picture is shown as it is. The site dialog asks for 0.6: a little
/// brighter, for the seas are dark.
constexpr double PlainMoonBrightness = 0.5;
const QColor FocusColor(255, 176, 64, 200);
const QColor NoticeColor(150, 160, 176);
const QColor BackColor(11, 14, 20);

QFont JapaneseFont(QFont font)
{
    font.setFamilies(JapaneseFontFamilies() + font.families());
    return font;
}

/// Which surface names belong to the body: the Moon has switches of its own.
QString NamePath(int body, const QString& what)
{
    return (body == BodyTable::Moon ? u"Solar.Moon.Surface.Name."_s : u"Solar.Planet.Surface.Name."_s) + what;
}

QString GridPath(int body)
{
    if (body == BodyTable::Sun)
        return u"Solar.Sun.Disk.Grid.Visible"_s;
    if (body == BodyTable::Moon)
        return u"Solar.Planet.Earth.Satellite.Moon.Disk.Grid.Visible"_s;
    return u"Solar.Planet.Disk.Grid.Visible"_s;
}

/// A longitude of the body's location in words: either way from 0 on the Earth and the Moon, one full turn elsewhere.
QString LongitudeText(int body, double longitude, bool hasSeconds)
{
    if (body == BodyTable::Earth || body == BodyTable::Moon)
        return MapFurniture::LongitudeText(WrapLongitude(longitude), hasSeconds);
    const double turn = EngineBodies::FullTurn(longitude);
    return MapFurniture::LongitudeText(EngineBodies::CountsEast(body) ? turn : -turn, hasSeconds);
}

short ButtonNumber(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::RightButton:
        return 2;
    case Qt::MiddleButton:
        return 4;
    default:
        return 0;
    }
}

short ShiftState(Qt::KeyboardModifiers modifiers)
{
    const int state = (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) |
                      (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) | (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
    return static_cast<short>(state);
}
} // namespace

CSkyEngine::CSkyEngine(QWidget* parent, QString dataFolder) : QWidget(parent), m_painter(std::move(dataFolder))
{
    // Opaque: a repaint must not make the dialog below paint itself, which would ask for the sky again.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_AcceptTouchEvents);
    setFocusPolicy(Qt::StrongFocus);
    setFont(JapaneseFont(font()));
    MapAccessible::Install();
    setAccessibleName(u"空の表示"_s);
    setAccessibleDescription(
        u"矢印キーで回し、＋・－キーで拡大・縮小し、Enter キーまたはスペースキーで中央の地点を選びます。"_s);
}

QString CSkyEngine::Command(const QString& line)
{
    QString answer = m_state.Command(line);
    if (m_state.TakeShowRequest() || m_state.Properties().IsTrue(u"System.Loop"))
        ShowSky();
    if (m_log)
        m_log(line, answer);
    return answer;
}

bool CSkyEngine::Assign(QStringView path, QStringView value)
{
    return m_state.Assign(path, value);
}

QVariant CSkyEngine::Invoke(int method, const QVariantList& arguments)
{
    if (method != ControlNumber::Engine::MethodCommand || arguments.size() != 1 ||
        arguments.first().typeId() != QMetaType::QString)
        return {};
    return Command(arguments.first().toString());
}

void CSkyEngine::SetControlProperty(int property, const QVariant& value)
{
    if (property != ControlNumber::Engine::PropertyActive || !value.canConvert<bool>())
        return;
    m_isActive = value.toBool();
    if (!m_isActive)
        m_press.reset();
}

PlanetScene CSkyEngine::Scene() const
{
    const CPropertyTree& properties = m_state.Properties();
    PlanetScene scene;
    scene.Body = m_state.Body();
    scene.Center = {EngineBodies::ToEast(scene.Body, properties.NumberOf(CenterLongitude)),
                    std::clamp(properties.NumberOf(CenterLatitude), -90.0, 90.0)};
    scene.Angle = std::clamp(properties.NumberOf(ViewAngle), NarrowestAngle, WidestAngle);
    scene.Sun = EngineBodies::SubsolarPoint(scene.Body, m_state.Time().JulianDay());
    scene.Observer = {EngineBodies::ToEast(scene.Body, m_state.Longitude()), m_state.Latitude()};
    scene.HasGrid = properties.IsTrue(GridPath(scene.Body));
    scene.HasNames = properties.IsTrue(NamePath(scene.Body, u"Visible"_s));
    scene.HasLeadlines = properties.IsTrue(NamePath(scene.Body, u"Leadline.Visible"_s));
    if (scene.Body == BodyTable::Moon)
        scene.Brightness = std::clamp(properties.NumberOf(u"Solar.Moon.Brightness") / PlainMoonBrightness, 0.2, 2.0);
    return scene;
}

bool CSkyEngine::IsGlobe() const
{
    return m_state.Properties().Value(u"View.Projection").compare(u"PlanetaryGlobe", Qt::CaseInsensitive) == 0;
}

void CSkyEngine::ShowSky()
{
    const PlanetScene scene = Scene();
    const bool isGlobe = IsGlobe();
    // The dialog asks for the sky whenever it paints itself; nothing new must not start a painting of its own.
    if (isGlobe && m_isGlobeShown && scene == m_shown)
        return;
    m_shown = scene;
    m_isGlobeShown = isGlobe;
    const QString name = isGlobe ? BodyTable::Label(scene.Body) + u"の地図"_s : u"空の表示"_s;
    if (name != accessibleName())
        setAccessibleName(name);
    update();
}

void CSkyEngine::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_isGlobeShown) {
        const double ratio = devicePixelRatioF();
        const QSize pixels = (QSizeF(size()) * ratio).toSize();
        const bool fits = m_frame.size() == pixels && m_frame.devicePixelRatio() == ratio;
        if (!fits) {
            m_frame = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
            m_frame.setDevicePixelRatio(ratio);
        }
        if (!fits || m_drawn != m_shown) {
            m_painter.Draw(m_frame, m_shown, font());
            m_drawn = m_shown;
            ++m_drawnCount;
        }
        painter.drawImage(0, 0, m_frame);
    } else {
        PaintNotice(painter);
    }
    if (hasFocus()) {
        painter.setPen(QPen(FocusColor, 2.0));
        painter.drawRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
    }
}

void CSkyEngine::PaintNotice(QPainter& painter)
{
    painter.fillRect(rect(), BackColor);
    painter.setPen(NoticeColor);
    const EngineTime& time = m_state.Time();
    const QString text = BodyTable::Label(m_state.Body()) + u'\n' +
                         LongitudeText(m_state.Body(), m_state.Longitude(), true) + u'\n' +
                         MapFurniture::LatitudeText(m_state.Latitude(), true) + u'\n' +
                         Number::Format("%04d年%02d月%02d日  %02d:%02d:%02d UT", time.Year, time.Month, time.Day,
                                        time.Hour, time.Minute, time.Second);
    painter.drawText(rect(), Qt::AlignCenter, text);
}

void CSkyEngine::Pick(QPointF at)
{
    if (!m_isGlobeShown)
        return;
    const auto point = CPlanetPainter::View(m_shown, size()).FromScreen(at);
    // The picture may still show the body before the last line.
    if (!point || m_shown.Body != m_state.Body())
        return;
    m_state.MoveTo(EngineBodies::FromEast(m_state.Body(), point->Longitude), point->Latitude);
    ShowSky();
}

void CSkyEngine::RaiseMouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at)
{
    RaiseEvent(ControlNumber::Engine::EventMouseUp,
               {QVariant::fromValue(ButtonNumber(button)), QVariant::fromValue(ShiftState(modifiers)),
                static_cast<int>(at.x()), static_cast<int>(at.y())});
}

void CSkyEngine::mousePressEvent(QMouseEvent* event)
{
    event->setAccepted(m_isActive);
    if (m_isActive)
        m_press = Press{event->position(), event->position()};
}

void CSkyEngine::mouseMoveEvent(QMouseEvent* event)
{
    event->setAccepted(m_press.has_value());
    if (m_press && event->buttons().testFlag(Qt::LeftButton))
        Drag(event->position());
}

void CSkyEngine::mouseReleaseEvent(QMouseEvent* event)
{
    event->setAccepted(m_press.has_value());
    const auto press = std::exchange(m_press, std::nullopt);
    if (!press || press->IsDrag)
        return;
    if (event->button() == Qt::LeftButton)
        Pick(event->position());
    RaiseMouseUp(event->button(), event->modifiers(), event->position());
}

void CSkyEngine::Drag(QPointF to)
{
    if (!m_press->IsDrag && (to - m_press->Start).manhattanLength() < QApplication::startDragDistance())
        return;
    m_press->IsDrag = true;
    const QPointF step = to - std::exchange(m_press->Last, to);
    if (!m_isGlobeShown)
        return;
    // The surface follows the pointer; near a pole a step would else spin the globe round.
    const double degreesPerPixel = DegreesPerRadian / CPlanetPainter::View(m_shown, size()).Radius();
    const double shrink = std::max(std::cos(m_shown.Center.Latitude * RadiansPerDegree), 0.2);
    Turn(-step.x() * degreesPerPixel / shrink, step.y() * degreesPerPixel);
}

void CSkyEngine::Turn(double east, double north)
{
    if (!m_isGlobeShown || !m_state.Properties().IsTrue(u"Operation.MoveView"))
        return;
    const double longitude = EngineBodies::FromEast(m_shown.Body, m_shown.Center.Longitude + east);
    const double latitude = std::clamp(m_shown.Center.Latitude + north, -90.0, 90.0);
    m_state.Assign(CenterLongitude, Number::Format("%.8f", longitude));
    m_state.Assign(CenterLatitude, Number::Format("%.8f", latitude));
    ShowSky();
}

void CSkyEngine::Zoom(double factor)
{
    const double angle = std::clamp(m_shown.Angle * factor, NarrowestAngle, WidestAngle);
    m_state.Assign(ViewAngle, Number::Format("%f", angle));
    ShowSky();
}

void CSkyEngine::keyPressEvent(QKeyEvent* event)
{
    if (!m_isActive) {
        event->ignore();
        return;
    }
    const double step = m_shown.Angle / KeyStepsAcross;
    switch (event->key()) {
    case Qt::Key_Left:
        Turn(-step, 0.0);
        break;
    case Qt::Key_Right:
        Turn(step, 0.0);
        break;
    case Qt::Key_Up:
        Turn(0.0, step);
        break;
    case Qt::Key_Down:
        Turn(0.0, -step);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Semicolon: // the plus of a Japanese keyboard without Shift
        Zoom(1.0 / KeyZoomFactor);
        break;
    case Qt::Key_Minus:
        Zoom(KeyZoomFactor);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space: {
        if (event->isAutoRepeat()) // held since it closed another window, perhaps
            break;
        const QPointF center = QRectF(rect()).center();
        Pick(center);
        RaiseMouseUp(Qt::LeftButton, event->modifiers(), center);
        break;
    }
    default:
        QWidget::keyPressEvent(event);
    }
}

QString CSkyEngine::SpokenCenter() const
{
    if (!m_isGlobeShown) // the sky's own middle is the observer's zenith
        return LongitudeText(m_state.Body(), m_state.Longitude(), true) + u"  "_s +
               MapFurniture::LatitudeText(m_state.Latitude(), true);
    return LongitudeText(m_shown.Body, EngineBodies::FromEast(m_shown.Body, m_shown.Center.Longitude), false) +
           u"  "_s + MapFurniture::LatitudeText(m_shown.Center.Latitude, false);
}

bool CSkyEngine::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return MapAccessible::TellAfterKey(*this, [this, event] { return QWidget::event(event); });
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        if (m_isActive) {
            HandleTouch(static_cast<QTouchEvent*>(event));
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void CSkyEngine::HandleTouch(QTouchEvent* event)
{
    event->accept();
    if (event->type() == QEvent::TouchCancel || event->points().isEmpty()) {
        m_press.reset();
        return;
    }
    const QPointF at = event->points().first().position();
    if (event->type() == QEvent::TouchBegin)
        m_press = Press{at, at};
    if (!m_press)
        return;
    m_press->HasManyFingers = m_press->HasManyFingers || event->points().size() > 1;
    if (!m_press->HasManyFingers)
        Drag(at);
    if (event->type() != QEvent::TouchEnd)
        return;
    const Press press = *std::exchange(m_press, std::nullopt);
    if (press.IsDrag || press.HasManyFingers)
        return;
    Pick(at);
    TouchInput input{static_cast<int>(at.x()), static_cast<int>(at.y()), ControlNumber::Engine::TouchFlagUp};
    RaiseEvent(ControlNumber::Engine::EventTouch, {QVariant::fromValue<quint32>(ControlNumber::Engine::TouchKindInput),
                                                   QVariant::fromValue(&input), 1, 0, 0, 0});
}

void CSkyEngine::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_frame = QImage();
        m_painter.Release();
    }
    QWidget::hideEvent(event);
}

void CSkyEngine::focusInEvent(QFocusEvent* /*event*/)
{
    MapAccessible::Introduce(*this);
    update();
}

void CSkyEngine::focusOutEvent(QFocusEvent* /*event*/)
{
    m_press.reset();
    update();
}
