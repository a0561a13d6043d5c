#include "planetarium/StartUp.h"

#include "host/dialog/Theme.h"
#include "planetarium/CommandLine.h"
#include "planetarium/ControlClasses.h"
#include "planetarium/Guide.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

CStartUp::CStartUp(QApplication& application, const CommandLine& line) : m_folders(DataFolders::Default())
{
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    if (m_japanese.load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(&m_japanese);
    Theme::Install(application);

    if (line.Data)
        m_folders.UseShipped(*line.Data);
    if (line.Terrain)
        m_folders.TerrainIndex = *line.Terrain;
    if (line.User)
        m_folders.User = *line.User;
    m_context.emplace(m_folders.HostFiles(line.Settings.value_or(QString())));
    ControlClasses::Register(m_folders.Shipped);
    Guide::Install(*m_context, m_folders.Shipped + u"../docs/guide.ja.md"_s);
}
