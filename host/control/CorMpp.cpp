#include "host/control/CorMpp.h"

#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"

namespace Number = ControlNumber::RoadMap;

bool CCorMpp::Create(QWidget* parent, const QRect& rect, int controlId)
{
    return CreateControl(QString::fromUtf16(ControlClass::RoadMap), parent, rect, controlId);
}

void CCorMpp::SetPosition(bool mark, double x, double y)
{
    Invoke(Number::SetPosition, {mark, x, y});
}

bool CCorMpp::Search(bool facility, const QString& text)
{
    return Invoke(Number::Search, {facility, text}).toBool();
}

qint64 CCorMpp::GetSearchResult()
{
    return Invoke(Number::GetSearchResult, {}).toLongLong();
}

void CCorMpp::SetScale(int denominator)
{
    Invoke(Number::SetScale, {denominator});
}

void CCorMpp::CenterMark()
{
    Invoke(Number::CenterMark, {});
}

void CCorMpp::OpenFile(const QString& path)
{
    Invoke(Number::OpenFile, {path});
}
