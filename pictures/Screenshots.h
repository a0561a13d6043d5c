#pragma once

#include <QString>

class CMainWindow;

/// Drives the real windows and saves their pictures and the transcripts of the engine lines.
class CScreenshots
{
public:
    /// Pictures go into the folder, which is created; false when it cannot be or a picture cannot be written.
    [[nodiscard]] static bool Take(CMainWindow& window, const QString& folder);
};
