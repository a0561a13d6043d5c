#include "obs/SiteMaps.h"

#include "host/control/ControlNumbers.h"
#include "host/dialog/ThemedControls.h"
#include "host/observer/BodyTable.h"
#include "host/system/CommonFile.h"
#include "obs/ControlIds.h"
#include "obs/core/EngineLines.h"
#include "obs/core/SiteModel.h"

#include <QLayout>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

CSiteMaps::CSiteMaps(CKivDialog& dialog, CSiteModel& model) : m_dialog(dialog), m_model(model) {}

CKivDialog::MessageMap CSiteMaps::Messages()
{
    return {{CKivDialog::Notice::Scroll, ObsId::SliderMagnification, [this](int) { OnVScroll(); }}};
}

CKivDialog::EventSinkMap CSiteMaps::Events()
{
    using namespace ControlNumber;
    return {
        {ObsId::EmbeddedEngine, Engine::EventMouseUp, [this](const QVariantList&) { OnMapMouseUp(); }},
        {ObsId::EmbeddedEngine, Engine::EventTouch, [this](const QVariantList& a) { OnTouch(a); }},
        {ObsId::GlobeMap, GlobeMap::EventObsPosition,
         [this](const QVariantList& a) { OnSetObsPosition(a.value(0).toDouble(), a.value(1).toDouble()); }},
        {ObsId::GlobeMap, GlobeMap::EventMagnification,
         [this](const QVariantList& a) { OnSetMag(a.value(0).toDouble()); }},
    };
}

void CSiteMaps::AttachSlider()
{
    MagnificationSlider = m_dialog.Item<CKivSlider>(ObsId::SliderMagnification);
    if (!MagnificationSlider)
        return;
    m_dialog.WithoutNotices([this] { MagnificationSlider->setRange(0, Magnification::SliderMax); });
    MagnificationSlider->setTickInterval(Magnification::TickStep);
    MoveSlider();
}

/// Both maps follow the place that the template keeps for them.
void CSiteMaps::Place()
{
    const QWidget* placeholder = m_dialog.Item(ObsId::MapPlaceholder);
    if (!placeholder)
        return;
    for (QWidget* widget : {static_cast<QWidget*>(&m_dialog), placeholder->parentWidget()}) {
        if (!m_dialog.isVisible() && widget->layout())
            widget->layout()->activate(); // before the first showing nothing has its size yet
    }
    MapRect = QRect(placeholder->mapTo(&m_dialog, QPoint()), placeholder->size());
    EmbeddedEngine.setGeometry(MapRect);
    GlobeMap.setGeometry(MapRect);
}

bool CSiteMaps::CreateEmbeddedEngine()
{
    EmbeddedEngine.SetVariant(ObsSettings::ReadEngineVariant());
    if (!EmbeddedEngine.Create(EmbeddedEngine.Variant(), &m_dialog, MapRect, ObsId::EmbeddedEngine)) {
        m_dialog.MessageBox(u"Can't create map control"_s);
        return false;
    }
    m_dialog.ConnectEvents(EmbeddedEngine);
    EmbeddedEngine.SetActive(true);
    const QString& index = m_model.LandscapeIndexFile;
    for (const QString& line : EngineLines::SetUp(index.isEmpty() ? QString() : CCommonFile::GetShortPath(index)))
        EmbeddedEngine.Command(line);
    return true;
}

bool CSiteMaps::CreateGlobeMap()
{
    if (!GlobeMap.Create(&m_dialog, MapRect, ObsId::GlobeMap)) {
        m_dialog.MessageBox(u"Can't create corkivmap control"_s);
        return false;
    }
    m_dialog.ConnectEvents(GlobeMap);
    // The eye goes from the map over its slider to the fields.
    QWidget::setTabOrder(EmbeddedEngine.Control()->Window(), GlobeMap.Control()->Window());
    QWidget::setTabOrder(GlobeMap.Control()->Window(), MagnificationSlider);
    using namespace ControlNumber::GlobeMap;
    for (const int display : {Switch29, Switch18, Switch12})
        GlobeMap.SetSwitch(display, true);
    return true;
}

void CSiteMaps::SetLandmarks(const QString& listPath, bool exists)
{
    GlobeMap.SetLandmarkFile(listPath);
    GlobeMap.SetLandmarkFileExists(exists);
}

void CSiteMaps::SetFeatureVisible(const ObsSettings::Layers& layers)
{
    // Eight flags whatever the map reports; a map with more layers finds zeros behind them.
    const int slots = std::clamp(GlobeMap.FeatureCount(), ObsSettings::LayerCount, 0xFFFF);
    std::vector<int> flags(static_cast<size_t>(slots), 0);
    std::copy(layers.begin(), layers.end(), flags.begin());
    GlobeMap.SetFeatureFlags(flags.data());
}

void CSiteMaps::KeepSlider(int position)
{
    SliderPosition = Magnification::ClampSlider(position);
    MoveSlider();
}

void CSiteMaps::SetSlider(int position)
{
    KeepSlider(position);
    UpdateViewAngle();
}

/// The Earth is drawn by the globe map, every other body by the embedded engine.
void CSiteMaps::ShowMapOfBody()
{
    const bool isEarth = m_model.BodyIndex == BodyTable::Earth;
    if (isEarth)
        GlobeMap.Redraw();
    CControlWindow& shown = isEarth ? static_cast<CControlWindow&>(GlobeMap) : EmbeddedEngine;
    CControlWindow& hidden = isEarth ? static_cast<CControlWindow&>(EmbeddedEngine) : GlobeMap;
    if (shown.isHidden() && shown.IsCreated())
        shown.show();
    hidden.hide();
}

void CSiteMaps::PutObserver(double longitude, double latitude)
{
    GlobeMap.SetCenter(longitude, latitude);
    GlobeMap.SetObsPosition(longitude, latitude);
    Repaint();
}

void CSiteMaps::SetCenterOfProjection(double longitude, double latitude)
{
    EmbeddedEngine.Command(EngineLines::CenterAt(longitude, latitude));
}

void CSiteMaps::Repaint()
{
    GlobeMap.Redraw();
    GlobeMap.RepaintNow();
}
