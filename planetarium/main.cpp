#include "host/dialog/Theme.h"
#include "host/system/CommonFile.h"
#include "host/system/Registry.h"
#include "planetarium/CommandLine.h"
#include "planetarium/ControlClasses.h"
#include "planetarium/Guide.h"
#include "planetarium/MainWindow.h"
#include "planetarium/Screenshots.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{
/// The toolkit's own texts, such as those of its file dialog, in the language of all others.
void SpeakJapanese(QApplication& application, QTranslator& texts)
{
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    if (texts.load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(&texts);
}

int Print(const CommandLine& line)
{
    const QByteArray text = line.Message.toLocal8Bit();
    std::fputs(text.constData(), line.Status == 0 ? stdout : stderr);
    return line.Status;
}
} // namespace

int main(int argc, char** argv)
{
    // Before the toolkit looks for a display, which help and version do without.
    for (int i = 1; i < argc; ++i) {
        if (const CommandLine line = CommandLine::Parse({QString(), QString::fromLocal8Bit(argv[i])});
            line.Status == 0 && !line.Message.isEmpty())
            return Print(line);
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"planetarium-site"_s);
    const CommandLine line = CommandLine::Parse(QApplication::arguments());
    if (!line.Message.isEmpty())
        return Print(line);
    QTranslator japanese;
    SpeakJapanese(application, japanese);
    Theme::Install(application);

    DataFolders folders = DataFolders::Default();
    if (line.Data)
        folders.UseShipped(*line.Data);
    if (line.Terrain)
        folders.TerrainIndex = *line.Terrain;
    // A picture run keeps its hands off the user's own places and settings.
    const QString own = line.Pictures ? *line.Pictures + u"user/"_s : QString();
    if (line.User || line.Pictures)
        folders.User = line.User.value_or(own);
    if (line.Settings || line.Pictures)
        CRegistry::UseFile(line.Settings.value_or(own + u"settings.ini"_s));

    CCommonFile::SetModulePath(folders.Shipped);
    ControlClasses::Register(folders.Shipped);
    Guide::Install(folders.Shipped + u"../docs/guide.ja.md"_s);

    CMainWindow window(folders, line.IsDeveloper ? Audience::Developer : Audience::Astronomer);
    window.show();
    int result = 0;
    if (line.Pictures)
        result = CScreenshots::Take(window, *line.Pictures) ? 0 : 1;
    else {
        window.Host().RunClock(true);
        result = QApplication::exec();
    }
    CRegistry::Flush();
    return result;
}
