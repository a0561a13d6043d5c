// Saves the pictures of all windows and the transcripts of the engine lines into a folder, and ends.

#include "pictures/BodySheet.h"
#include "pictures/Screenshots.h"
#include "planetarium/CommandLine.h"
#include "planetarium/MainWindow.h"
#include "planetarium/StartUp.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: site_pictures FOLDER\n", stderr);
        return CommandLine::Mistaken;
    }
    // The user's own places and settings are left alone.
    const QString folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath() + u'/';
    CommandLine line;
    line.User = folder + u"user/"_s;
    line.Settings = *line.User + u"settings.ini"_s;
    if (!QDir().mkpath(*line.User))
        return 1;
    CStartUp start(application, line);
    CMainWindow window(start.Context(), start.Folders(), Audience::Astronomer);
    window.show();
    const bool isSheetWritten = BodySheet::Draw(start.Folders().Shipped).save(folder + u"bodies.png"_s);
    return CScreenshots::Take(window, folder) && isSheetWritten ? 0 : 1;
}
