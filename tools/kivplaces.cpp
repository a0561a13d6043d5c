#include "city/core/OverlayReport.h"
#include "city/core/PlaceDocument.h"
#include "tools/ListChecker.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <cstring>
#include <exception>

namespace
{
constexpr char Usage[] = "kivplaces: place lists without the planetarium\n"
                         "  kivplaces refresh <shipped list> <overlay> <user list>\n"
                         "      write the user list: the shipped list with the changes of the overlay\n"
                         "  kivplaces explain <overlay>\n"
                         "      tell what an overlay changes, one line for each item\n"
                         "  kivplaces check <list> [<tables>]\n"
                         "      check a list file; with tables also where the places of a folder may lie\n"
                         "exit code 0: done, nothing wrong; 1: something is wrong; 2: wrong usage\n";

int Refresh(const QString& list, const QString& overlay, const QString& userList)
{
    if (!QFileInfo(list).isReadable()) {
        std::fprintf(stderr, "cannot read %s\n", qUtf8Printable(list));
        return 1;
    }
    for (const QString& source : {list, overlay}) {
        if (QFileInfo::exists(userList) &&
            QFileInfo(userList).canonicalFilePath() == QFileInfo(source).canonicalFilePath()) {
            std::fprintf(stderr, "the user list must be a file of its own\n");
            return 1;
        }
    }
    const QByteArray changes = COverlayFile::Read(overlay);
    if (QFileInfo::exists(overlay) && !OverlayJson::Parse(changes).IsWhole &&
        !(changes.isEmpty() && QFileInfo(overlay).size() == 0)) {
        std::fprintf(stderr, "%s is damaged; nothing was written\n", qUtf8Printable(overlay));
        return 1;
    }
    CPlaceDocument document;
    document.SetPaths({list, userList, overlay});
    document.LoadCityList();
    document.LoadLocationTreeContext();
    if (!document.RefreshUserObs()) {
        std::fprintf(stderr, "cannot read all of the list or cannot write %s\n", qUtf8Printable(userList));
        return 1;
    }
    return 0;
}

int Explain(const QString& overlay)
{
    QFile file(overlay);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qUtf8Printable(overlay));
        return 1;
    }
    const OverlayJson::CParsed parsed = OverlayJson::Parse(file.readAll());
    for (const QString& line : OverlayReport::Lines(parsed.Document))
        std::printf("%s\n", qUtf8Printable(line));
    if (!parsed.IsWhole)
        std::fprintf(stderr, "the file is damaged; the above is what can still be read\n");
    return parsed.IsWhole ? 0 : 1;
}

int Check(const QString& list, const QString& tables)
{
    QFile file(list);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qUtf8Printable(list));
        return 1;
    }
    CListChecker checker(tables);
    const std::vector<ListFault> faults = checker.Check(file.readAll());
    for (const ListFault& fault : faults)
        std::printf("%s:%d: %s\n", qUtf8Printable(list), fault.Line, qUtf8Printable(fault.Reason));
    std::printf("%d places, %d folders with the root, %zu faults; zone farthest from its longitude: %.2f h (%s)\n",
                checker.PlaceCount(), checker.FolderCount(), faults.size(), checker.WorstZoneDeviation(),
                qUtf8Printable(checker.WorstZoneName()));
    return faults.empty() && checker.PlaceCount() > 0 ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    const auto argument = [argc, argv](int index) { return index < argc ? QFile::decodeName(argv[index]) : QString(); };
    const char* command = argc > 1 ? argv[1] : "";
    try {
        if (std::strcmp(command, "refresh") == 0 && argc == 5)
            return Refresh(argument(2), argument(3), argument(4));
        if (std::strcmp(command, "explain") == 0 && argc == 3)
            return Explain(argument(2));
        if (std::strcmp(command, "check") == 0 && (argc == 3 || argc == 4))
            return Check(argument(2), argument(3));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    std::fputs(Usage, stderr);
    return 2;
}
