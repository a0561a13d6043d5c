#include "host/system/CurrentDirectory.h"

#include <QDir>

void CCurrentDirectory::SwitchTo(const QString& folder)
{
    constexpr int longestPath = 260;
    const QString present = QDir::currentPath();
    if (present.isEmpty() || present.size() > longestPath || !QDir::setCurrent(folder) || DirectoryChanged)
        return;
    SavedDirectory = present;
    DirectoryChanged = true;
}

void CCurrentDirectory::Restore()
{
    if (DirectoryChanged)
        QDir::setCurrent(SavedDirectory);
    DirectoryChanged = false;
}
