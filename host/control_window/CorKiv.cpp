#include "host/control_window/CorKiv.h"

#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"

namespace
{
QString ClassOfVariant(int variant)
{
    switch (variant) {
    case 3:
        return QString::fromUtf16(ControlClass::SkyEngine3);
    case 4:
        return QString::fromUtf16(ControlClass::SkyEngine4);
    default:
        return QString::fromUtf16(ControlClass::SkyEngine);
    }
}
} // namespace

bool CCorKiv::Create(int variant, QWidget* parent, const QRect& rect, int controlId)
{
    m_variant = variant;
    return CreateControl(ClassOfVariant(variant), parent, rect, controlId);
}

QString CCorKiv::Command(const QString& line)
{
    if (!IsCreated())
        return {};
    const QString answer = Invoke(ControlNumber::Engine::MethodCommand, {line}).toString();
    Q_EMIT CommandSent(line, answer);
    return answer;
}

void CCorKiv::SetActive(bool active)
{
    if (IsCreated())
        Control()->SetControlProperty(ControlNumber::Engine::PropertyActive, active);
}
