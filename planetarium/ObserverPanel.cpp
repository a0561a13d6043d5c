#include "planetarium/ObserverPanel.h"

#include "host/observer/BodyTable.h"
#include "host/observer/KPDateObs.h"
#include "host/text/Number.h"
#include "obs/core/SiteLocation.h"

#include <QAction>
#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
QString TimeText(const QDateTime& time)
{
    return Number::Format("%04d年%02d月%02d日  %02d:%02d:%02d", time.date().year(), time.date().month(),
                          time.date().day(), time.time().hour(), time.time().minute(), time.time().second());
}

const char* SystemName(int system)
{
    switch (static_cast<TimeSystem>(system)) {
    case TimeSystem::Universal:
        return "世界時";
    case TimeSystem::LocalMean:
        return "地方平時";
    case TimeSystem::Zone:
        break;
    }
    return "標準時";
}

/// Leaves a text as it is that is right: somebody may have marked a part of it to copy.
void Show(QLabel* label, const QString& text)
{
    if (label->text() != text)
        label->setText(text);
}
} // namespace

CObserverPanel::CObserverPanel(QWidget* parent) : QWidget(parent)
{
    auto* form = new QFormLayout(this);
    form->setContentsMargins(4, 4, 4, 4);
    form->setHorizontalSpacing(18);
    form->setVerticalSpacing(5);
    m_body = AddRow(u"天体"_s);
    m_longitude = AddRow(u"経度"_s);
    m_latitude = AddRow(u"緯度"_s);
    m_altitude = AddRow(u"標高"_s);
    m_zone = AddRow(u"時刻系"_s);
    m_displayed = AddRow(u"表示時刻"_s);
    m_universal = AddRow(u"世界時"_s);
}

QLabel* CObserverPanel::AddRow(const QString& caption)
{
    auto* value = new QLabel(this);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Of one size, so that a new text does not lay out the whole window anew.
    value->setFixedSize(value->fontMetrics().horizontalAdvance(u"0000年00月00日  00:00:00  "_s),
                        value->fontMetrics().height());
    static_cast<QFormLayout*>(layout())->addRow(caption, value);
    return value;
}

void CObserverPanel::Refresh(const CKPDateObs& observer)
{
    const int body = observer.GetBody();
    SiteFields fields;
    SiteLocationFormat::SplitLongitude(SiteLocationFormat::PositiveLongitude(observer.GetLongitude()), body, fields);
    SiteLocationFormat::SplitLatitude(observer.GetLatitude(), fields);
    const char* hemisphere = "";
    if (SiteLocationFormat::HasHemisphereChoice(body))
        hemisphere = fields.LongitudeHemisphere ? "西経 " : "東経 ";
    Show(m_body, BodyTable::Label(body));
    Show(m_longitude, Number::Format("%s%d° %02d′ %04.1f″", hemisphere, fields.LongitudeDegrees,
                                     fields.LongitudeMinutes, fields.LongitudeSeconds));
    Show(m_latitude, Number::Format("%s %d° %02d′ %04.1f″", fields.LatitudeHemisphere ? "南緯" : "北緯",
                                    fields.LatitudeDegrees, fields.LatitudeMinutes, fields.LatitudeSeconds));
    const bool isSmall = observer.IsSmallObject(body) != 0;
    Show(m_altitude, Number::Format("%.0f %s", SiteLocationFormat::DisplayFromMetres(observer.GetHeight(), isSmall),
                                    isSmall ? "m" : "km"));
    Show(m_zone, TimeSystemText(observer));
    Show(m_displayed, TimeText(observer.GetInstant().addMSecs(std::llround(observer.GetTz() * 3600.0 * 1000.0))));
    Show(m_universal, TimeText(observer.GetInstant()));
}

QString CObserverPanel::TimeSystemText(const CKPDateObs& observer)
{
    const double offset = observer.GetTz();
    const auto minutes = static_cast<int>(std::lround(std::fabs(offset) * 60));
    return Number::Format("%s（UT%s%d:%02d）", SystemName(observer.GetTimeSys()), offset < 0 ? "-" : "+", minutes / 60,
                          minutes % 60);
}

void CObserverPanel::SetClockSwitch(QAction* action)
{
    auto* box = new QCheckBox(u"進める"_s, this);
    box->setToolTip(u"外すと、時刻が止まります。"_s);
    box->setAccessibleName(u"時計を進める"_s);
    box->setChecked(action->isChecked());
    connect(box, &QCheckBox::clicked, action, &QAction::trigger);
    connect(action, &QAction::toggled, box, &QCheckBox::setChecked);
    static_cast<QFormLayout*>(layout())->addRow(u"時計"_s, box);
}
