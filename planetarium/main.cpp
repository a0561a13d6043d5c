#include "host/dialog/Theme.h"
#include "host/system/CommonFile.h"
#include "host/system/Registry.h"
#include "planetarium/ControlClasses.h"
#include "planetarium/Guide.h"
#include "planetarium/MainWindow.h"
#include "planetarium/Screenshots.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace
{
QString AsFolder(const QString& path)
{
    const QString absolute = QDir(path).absolutePath();
    return absolute.endsWith(u'/') ? absolute : absolute + u'/';
}

/// The toolkit's own texts, such as those of its file dialog, in the language of all others.
void SpeakJapanese(QApplication& application, QTranslator& texts)
{
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    if (texts.load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(&texts);
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"planetarium-site"_s);
    QTranslator japanese;
    SpeakJapanese(application, japanese);
    Theme::Install(application);

    QCommandLineParser parser;
    parser.setApplicationDescription(u"観測地モジュールのためのプラネタリウム"_s);
    parser.addHelpOption();
    const QCommandLineOption data(u"data"_s, u"出荷データのフォルダ"_s, u"folder"_s);
    const QCommandLineOption user(u"user"_s, u"利用者の観測地ファイルのフォルダ"_s, u"folder"_s);
    const QCommandLineOption settings(u"settings"_s, u"設定ファイル"_s, u"file"_s);
    const QCommandLineOption terrain(u"terrain"_s, u"地形データの索引ファイル（空なら地形なし）"_s, u"file"_s);
    const QCommandLineOption pictures(u"screenshot"_s, u"窓を動かして画像を保存し、終了する"_s, u"folder"_s);
    parser.addOptions({data, user, settings, terrain, pictures});
    parser.process(application);

    DataFolders folders = DataFolders::Default();
    if (parser.isSet(data))
        folders.UseShipped(AsFolder(parser.value(data)));
    if (parser.isSet(terrain))
        folders.TerrainIndex = parser.value(terrain);
    // A picture run keeps its hands off the user's own places and settings.
    const QString own = parser.isSet(pictures) ? AsFolder(parser.value(pictures)) + u"user/"_s : QString();
    if (parser.isSet(user))
        folders.User = AsFolder(parser.value(user));
    else if (!own.isEmpty())
        folders.User = own;
    if (parser.isSet(settings))
        CRegistry::UseFile(parser.value(settings));
    else if (!own.isEmpty())
        CRegistry::UseFile(own + u"settings.ini"_s);

    CCommonFile::SetModulePath(folders.Shipped);
    folders.InstallPlaceList();
    folders.InstallRoadMap();
    ControlClasses::Register(folders.Shipped);
    Guide::Install(folders.Shipped + u"../docs/guide.ja.md"_s);

    CMainWindow window(folders);
    window.show();
    int result = 0;
    if (parser.isSet(pictures))
        result = CScreenshots::Take(window, parser.value(pictures)) ? 0 : 1;
    else
        result = QApplication::exec();
    CRegistry::Flush();
    return result;
}
