#include "planetarium/CommandLine.h"
#include "planetarium/MainWindow.h"
#include "planetarium/StartUp.h"

#include <QApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{
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
    CStartUp start(application, line);
    CMainWindow window(start.Context(), start.Folders(), line.IsDeveloper ? Audience::Developer : Audience::Astronomer);
    window.show();
    window.Host().RunClock(true);
    return QApplication::exec();
}
