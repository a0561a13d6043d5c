#pragma once

#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"
#include "host/system/HostContext.h"

#include <QTemporaryDir>

#include <optional>

/// The host's side of a test: files in a folder of its own, and no controls but those that the test registers.
class CTestHost
{
public:
    CTestHost() { ReadAnew(); }
    ~CTestHost()
    {
        for (const char16_t* name : {ControlClass::SkyEngine, ControlClass::SkyEngine3, ControlClass::SkyEngine4,
                                     ControlClass::GlobeMap, ControlClass::RoadMap})
            CControlRegister::Instance().Unregister(QString::fromUtf16(name));
    }
    CTestHost(const CTestHost&) = delete;
    CTestHost& operator=(const CTestHost&) = delete;

    [[nodiscard]] CHostContext& Context() { return *m_context; }
    /// The path of a file in the folder.
    [[nodiscard]] QString Path(const QString& name) const { return Folder.filePath(name); }
    [[nodiscard]] QString Settings() const { return Path(QStringLiteral("settings.ini")); }

    /// Saves the settings and reads them from the file again, as the next start of the program does; so for other
    /// files.
    void ReadAnew() { Use({Settings(), Path(QStringLiteral("components.xml")), Path(QStringLiteral("module"))}); }
    void Use(const CHostContext::CFiles& files)
    {
        QObject* const window = m_context ? m_context->MainWindow.data() : nullptr;
        IPrompts* const prompts = m_context ? m_context->Prompts : nullptr;
        const auto help = m_context ? m_context->Help : nullptr;
        m_context.reset();
        m_context.emplace(files);
        m_context->MainWindow = window;
        m_context->Prompts = prompts;
        m_context->Help = help;
    }

    const QTemporaryDir Folder;

private:
    std::optional<CHostContext> m_context;
};
