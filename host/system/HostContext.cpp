#include "host/system/HostContext.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
/// The one in use; null when there is none.
CHostContext*& Latest()
{
    static CHostContext* latest = nullptr;
    return latest;
}

QString UserFile(const QString& path, const QString& name)
{
    if (!path.isEmpty())
        return path;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/planetarium-site/"_s + name;
}
} // namespace

CHostContext::CHostContext(const CFiles& files)
    : m_settings(UserFile(files.Settings, u"settings.ini"_s)),
      m_componentsFile(UserFile(files.Components, u"components.xml"_s)),
      m_moduleFolder(files.ModuleFolder.isEmpty() ? QCoreApplication::applicationDirPath() : files.ModuleFolder),
      m_former(std::exchange(Latest(), this))
{
    if (!m_moduleFolder.endsWith(u'/'))
        m_moduleFolder += u'/';
}

CHostContext::~CHostContext()
{
    CHostContext** link = &Latest();
    while (*link && *link != this)
        link = &(*link)->m_former;
    if (*link)
        *link = m_former;
}

CHostContext& CHostContext::Current()
{
    if (!Latest())
        static const CHostContext standard;
    return *Latest();
}

void CHostContext::ShowHelp(QWidget* parent, int templateNumber) const
{
    if (Help)
        Help(parent, templateNumber);
}
