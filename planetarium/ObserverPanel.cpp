#include "planetarium/ObserverPanel.h"

#include "host/observer/KPDateObs.h"
#include "host/text/Number.h"
#include "obs/core/BodyTable.h"
#include "obs/core/SiteLocation.h"

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
} // namespace

CObserverPanel::CObserverPanel(QWidget* parent) : QWidget(parent)
{
    auto* form = new QFormLayout(this);
    form->setContentsMargins(4, 4, 4, 4);
    form->setHorizontalSpacing(18);
    form->setVerticalSpacing(7);
    m_body = AddRow(u"天体"_s);
    m_longitude = AddRow(u"経度"_s);
    m_latitude = AddRow(u"緯度"_s);
    m_altitude = AddRow(u"標高"_s);
    m_zone = AddRow(u"時刻系"_s);
    m_universal = AddRow(u"世界時"_s);
    m_local = AddRow(u"地方時"_s);
}

QLabel* CObserverPanel::AddRow(const QString& caption)
{
    auto* value = new QLabel(this);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(u"0000年00月00日  00:00:00  "_s));
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
    m_body->setText(BodyTable::Label(body));
    m_longitude->setText(Number::Format("%s%d° %02d′ %04.1f″", hemisphere, fields.LongitudeDegrees,
                                        fields.LongitudeMinutes, fields.LongitudeSeconds));
    m_latitude->setText(Number::Format("%s %d° %02d′ %04.1f″", fields.LatitudeHemisphere ? "南緯" : "北緯",
                                       fields.LatitudeDegrees, fields.LatitudeMinutes, fields.LatitudeSeconds));
    const bool isSmall = observer.IsSmallObject(body) != 0;
    m_altitude->setText(Number::Format("%.0f %s", SiteLocationFormat::DisplayFromMetres(observer.GetHeight(), isSmall),
                                       isSmall ? "m" : "km"));
    const double offset = observer.GetTz();
    const auto minutes = static_cast<int>(std::lround(std::fabs(offset) * 60));
    m_zone->setText(Number::Format("%s（UT %s%d:%02d）", SystemName(observer.GetTimeSys()), offset < 0 ? "-" : "+",
                                   minutes / 60, minutes % 60));
    m_universal->setText(TimeText(observer.GetInstant()));
    m_local->setText(TimeText(observer.GetInstant().addMSecs(std::llround(offset * 3600.0 * 1000.0))));
}
