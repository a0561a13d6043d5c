#include "host/text/Number.h"
#include "tools/PlaceListMaker.h"

#include <QSaveFile>

#include <cstdio>
#include <exception>

// make_places <packages> <tables> <list file> [most places]
int main(int argc, char** argv)
{
    constexpr int DefaultLimit = 8800;
    if (argc < 4) {
        std::fprintf(stderr, "usage: make_places <packages> <tables> <list file> [most places]\n");
        return 2;
    }
    try {
        const int limit = argc > 4 ? Number::LeadingInt(QByteArrayView(argv[4])) : DefaultLimit;
        CPlaceListMaker maker(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
        const CListWriter writer = maker.Make(limit);
        QSaveFile file(QString::fromLocal8Bit(argv[3]));
        if (!file.open(QIODevice::WriteOnly) || file.write(writer.Bytes()) != writer.Bytes().size() || !file.commit()) {
            std::fprintf(stderr, "cannot write %s\n", argv[3]);
            return 1;
        }
        std::printf("%d places, %d folders\n", writer.PlaceCount(), writer.FolderCount());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
