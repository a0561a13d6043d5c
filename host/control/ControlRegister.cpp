#include "host/control/ControlRegister.h"

CControlRegister& CControlRegister::Instance()
{
    static CControlRegister instance;
    return instance;
}

void CControlRegister::Register(const QString& className, const Factory& factory)
{
    m_factories.insert(className, factory);
}

void CControlRegister::Unregister(const QString& className)
{
    m_factories.remove(className);
}

std::unique_ptr<IControl> CControlRegister::Create(const QString& className, QWidget* parent) const
{
    const Factory factory = m_factories.value(className);
    return factory ? factory(parent) : nullptr;
}
