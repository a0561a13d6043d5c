#include "tools/LineWriter.h"
#include "tools/ShoreBins.h"

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

namespace
{
constexpr ShoreBox Japan{122, 20, 154, 46};
constexpr double Tolerance = 350; // millionths of a degree, about 40 metres
constexpr std::size_t LeastRing = 4;

std::vector<MapLine> Simplified(const std::vector<MapLine>& lines, std::size_t least)
{
    std::vector<MapLine> result;
    for (const MapLine& line : lines) {
        MapLine simple = ShoreBins::Simplified(line, Tolerance);
        if (simple.size() >= least) {
            result.push_back(std::move(simple));
        }
    }
    return result;
}
} // namespace

// make_shores <folder of the GSHHG data> <output folder>
int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_shores <folder of the GSHHG data> <output folder>\n");
        return 2;
    }
    const auto argument = [argv](int index) { return QString::fromLocal8Bit(argv[index]); };
    try {
        LineWriter::WriteLines(
            argument(2) + u"/coast.kol"_s,
            Simplified(ShoreBins::ReadShores(argument(1) + u"/binned_GSHHS_f.nc"_s, Japan), LeastRing));
        LineWriter::WriteLines(argument(2) + u"/rivers.kol"_s,
                               Simplified(ShoreBins::ReadRivers(argument(1) + u"/binned_river_f.nc"_s, Japan), 2));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
