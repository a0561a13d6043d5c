#pragma once

#include <QString>

/// Keeps the process in another current directory until it is restored, at the latest when the object goes.
class CCurrentDirectory
{
public:
    CCurrentDirectory() = default;
    CCurrentDirectory(const CCurrentDirectory&) = delete;
    CCurrentDirectory& operator=(const CCurrentDirectory&) = delete;
    ~CCurrentDirectory() { Restore(); }

    /// Makes the folder the current directory. While a switch is in force the directory remembered stays the first one.
    /// Nothing happens when the present directory is unknown or too long to remember.
    void SwitchTo(const QString& folder);

    /// Goes back to the directory before the switch; nothing happens without one.
    void Restore();

private:
    QString SavedDirectory;
    bool DirectoryChanged = false;
};
