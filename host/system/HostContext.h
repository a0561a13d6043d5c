#pragma once

#include "host/system/SettingsFile.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class IPrompts;
class QWidget;

/// What a host lends to the module, in one object: made before the module's first window, alive until its last one is
/// gone. Of several the one made last is in use, and after its end the one before it again. A program that makes none
/// has the files of the user and no main window.
class CHostContext
{
public:
    /// An empty path stands for the usual place.
    struct CFiles
    {
        QString Settings;     ///< "planetarium-site/settings.ini" in the user's configuration folder
        QString Components;   ///< "planetarium-site/components.xml" there
        QString ModuleFolder; ///< what is shipped with the module; the program's folder
    };

    explicit CHostContext(const CFiles& files = {});
    /// Saves the settings.
    ~CHostContext();
    CHostContext(const CHostContext&) = delete;
    CHostContext& operator=(const CHostContext&) = delete;

    [[nodiscard]] static CHostContext& Current();

    /// Receives the module's messages; null for none, not owned.
    QPointer<QObject> MainWindow;
    /// Brings the help page of a dialog template over the parent; there is none when empty.
    std::function<void(QWidget* parent, int templateNumber)> Help;
    /// Message boxes and file dialogs; the toolkit's when null. Not owned.
    IPrompts* Prompts = nullptr;

    /// Shows the help page of a template, if the host brings any.
    void ShowHelp(QWidget* parent, int templateNumber) const;

    [[nodiscard]] CSettingsFile& Settings() { return m_settings; }
    [[nodiscard]] const QString& ComponentsFile() const { return m_componentsFile; }
    /// Ends with a separator.
    [[nodiscard]] const QString& ModuleFolder() const { return m_moduleFolder; }

private:
    CSettingsFile m_settings;
    QString m_componentsFile;
    QString m_moduleFolder;
    CHostContext* m_former; ///< the one to be in use after this
};
