#include "tools/LineWriter.h"
#include "tools/ShoreBins.h"

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

namespace
{
constexpr ShoreBox Japan{122, 20, 154, 46};
// Millionths of a degree: about 40 metres, and 400 metres for maps of wide areas.
constexpr double Tolerance = 350;
constexpr double WideTolerance = 3500;
constexpr std::size_t LeastRing = 4;

std::vector<MapLine> Simplified(const std::vector<MapLine>& lines, double tolerance, std::size_t least)
{
    std::vector<MapLine> result;
    for (const MapLine& line : lines) {
        MapLine simple = ShoreBins::Simplified(line, tolerance);
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
        const std::vector<MapLine> shores = ShoreBins::ReadShores(argument(1) + u"/binned_GSHHS_f.nc"_s, Japan);
        const std::vector<MapLine> rivers = ShoreBins::ReadRivers(argument(1) + u"/binned_river_f.nc"_s, Japan);
        LineWriter::WriteLines(argument(2) + u"/coast.kol"_s, Simplified(shores, Tolerance, LeastRing));
        LineWriter::WriteLines(argument(2) + u"/coastwide.kol"_s, Simplified(shores, WideTolerance, LeastRing));
        LineWriter::WriteLines(argument(2) + u"/rivers.kol"_s, Simplified(rivers, Tolerance, 2));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
