#include "tools/ListChecker.h"

#include <QFile>

#include <cstdio>
#include <exception>

// check_list <list file> <tables>: exit code 0 when the list is right, 1 when it is not.
int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: check_list <list file> <tables>\n");
        return 2;
    }
    try {
        QFile file(QString::fromLocal8Bit(argv[1]));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", argv[1]);
            return 1;
        }
        CListChecker checker(QString::fromLocal8Bit(argv[2]));
        const std::vector<ListFault> faults = checker.Check(file.readAll());
        for (const ListFault& fault : faults) {
            std::printf("%s:%d: %s\n", argv[1], fault.Line, qUtf8Printable(fault.Reason));
        }
        std::printf("%d places, %d folders with the root, %zu faults; zone farthest from its longitude: %.2f h (%s)\n",
                    checker.PlaceCount(), checker.FolderCount(), faults.size(), checker.WorstZoneDeviation(),
                    qUtf8Printable(checker.WorstZoneName()));
        return faults.empty() && checker.PlaceCount() > 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
