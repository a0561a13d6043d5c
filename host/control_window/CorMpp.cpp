#include "host/control_window/CorMpp.h"

#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"

namespace Call = ControlNumber::RoadMap;

bool CCorMpp::Create(QWidget* parent, const QRect& rect, int controlId)
{
    return CreateControl(QString::fromUtf16(ControlClass::RoadMap), parent, rect, controlId);
}

void CCorMpp::SetPosition(bool mark, double x, double y)
{
    Invoke(Call::SetPosition, {mark, x, y});
}

bool CCorMpp::Search(bool facility, const QString& text)
{
    return Invoke(Call::Search, {facility, text}).toBool();
}

qint64 CCorMpp::GetSearchResult()
{
    return Invoke(Call::GetSearchResult, {}).toLongLong();
}

void CCorMpp::SetScale(int denominator)
{
    Invoke(Call::SetScale, {denominator});
}

void CCorMpp::CenterMark()
{
    Invoke(Call::CenterMark, {});
}

void CCorMpp::OpenFile(const QString& path)
{
    Invoke(Call::OpenFile, {path});
}
