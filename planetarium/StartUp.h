#pragma once

#include "planetarium/DataFolders.h"

#include <QTranslator>

#include <optional>

class QApplication;
struct CommandLine;

/// What comes before the main window in every program that shows it: the look, the language of the toolkit's own texts,
/// the controls, the guide, and where files are. It lives as long as the windows do.
class CStartUp
{
public:
    CStartUp(QApplication& application, const CommandLine& line);

    [[nodiscard]] const DataFolders& Folders() const { return m_folders; }
    [[nodiscard]] CHostContext& Context() { return *m_context; }

private:
    QTranslator m_japanese;
    DataFolders m_folders;
    std::optional<CHostContext> m_context; ///< once the folders are known
};
