#include "tools/ShoreBins.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <netcdf.h>
#include <numbers>
#include <stdexcept>
#include <string>
#include <utility>

namespace
{
constexpr int Columns = 360;
constexpr int Rows = 180;
constexpr std::int64_t StepsPerDegree = 65535; // of a bin's own coordinates

/// A point in steps from 0 E, 90 S: exact, so that pieces of neighbouring bins meet.
using Step = std::pair<std::int64_t, std::int64_t>;
using Chain = std::vector<Step>;

class CDataFile
{
public:
    explicit CDataFile(const QString& path) { Check(nc_open(path.toUtf8().constData(), NC_NOWRITE, &m_id)); }
    CDataFile(const CDataFile&) = delete;
    CDataFile& operator=(const CDataFile&) = delete;
    ~CDataFile() { nc_close(m_id); }

    [[nodiscard]] std::vector<int> Numbers(const char* name) const
    {
        int variable = 0;
        int dimension = 0;
        std::size_t count = 0;
        Check(nc_inq_varid(m_id, name, &variable));
        Check(nc_inq_vardimid(m_id, variable, &dimension));
        Check(nc_inq_dimlen(m_id, dimension, &count));
        std::vector<int> numbers(count);
        Check(nc_get_var_int(m_id, variable, numbers.data()));
        return numbers;
    }

private:
    static void Check(int status)
    {
        if (status != NC_NOERR) {
            throw std::runtime_error(nc_strerror(status));
        }
    }

    int m_id = 0;
};

/// The points of all bins.
struct PointTable
{
    explicit PointTable(const CDataFile& file)
        : X(file.Numbers("Relative_longitude_from_SW_corner_of_bin")),
          Y(file.Numbers("Relative_latitude_from_SW_corner_of_bin"))
    {
        if (file.Numbers("Bin_size_in_minutes").at(0) != 60) {
            throw std::runtime_error("the bins are not of one degree");
        }
    }

    [[nodiscard]] Chain Take(int column, int row, int first, int count) const
    {
        Chain chain;
        for (int number = first; number < first + count; ++number) {
            const auto index = static_cast<std::size_t>(number);
            // Stored as signed 16-bit numbers, meant as unsigned ones.
            chain.emplace_back(column * StepsPerDegree + (X.at(index) & 0xFFFF),
                               (Rows - 1 - row) * StepsPerDegree + (Y.at(index) & 0xFFFF));
        }
        return chain;
    }

    std::vector<int> X;
    std::vector<int> Y;
};

template <typename Taker> void ForEachBin(const ShoreBox& box, const Taker& take)
{
    for (int north = box.South + 1; north <= box.North; ++north) {
        for (int west = box.West; west < box.East; ++west) {
            const int row = Rows / 2 - north;
            take(west, row, row * Columns + west);
        }
    }
}

MapLine ToLine(const Chain& chain)
{
    MapLine line;
    const auto millionths = [](std::int64_t steps, int origin) {
        return static_cast<std::int32_t>(std::llround((static_cast<double>(steps) / StepsPerDegree - origin) * 1e6));
    };
    for (const Step& step : chain) {
        line.push_back({millionths(step.first, 0), millionths(step.second, Rows / 2)});
    }
    return line;
}

double TwiceArea(const Chain& ring)
{
    double area = 0;
    for (std::size_t index = 0; index + 1 < ring.size(); ++index) {
        const auto x = [&ring](std::size_t at) { return static_cast<double>(ring[at].first - ring[0].first); };
        const auto y = [&ring](std::size_t at) { return static_cast<double>(ring[at].second - ring[0].second); };
        area += x(index) * y(index + 1) - x(index + 1) * y(index);
    }
    return area;
}

/// Joins chains whose end is another's beginning; closed ones repeat their first point.
std::vector<Chain> Joined(std::vector<Chain> pieces)
{
    std::multimap<Step, std::size_t> beginnings;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        beginnings.emplace(pieces[index].front(), index);
    }
    std::vector<bool> isTaken(pieces.size(), false);
    std::map<Step, int> ends;
    for (const Chain& piece : pieces) {
        ++ends[piece.back()];
    }
    std::vector<Chain> chains;
    const auto follow = [&](std::size_t index) {
        Chain chain;
        while (true) {
            isTaken[index] = true;
            chain.insert(chain.end(), pieces[index].begin() + (chain.empty() ? 0 : 1), pieces[index].end());
            const auto [first, last] = beginnings.equal_range(chain.back());
            const auto next = std::find_if(first, last, [&](const auto& entry) { return !isTaken[entry.second]; });
            if (chain.front() == chain.back() || next == last) {
                break;
            }
            index = next->second;
        }
        chains.push_back(std::move(chain));
    };
    // Open ones first, from their beginnings.
    for (const bool isOpen : {true, false}) {
        for (std::size_t index = 0; index < pieces.size(); ++index) {
            if (!isTaken[index] && isOpen == !ends.contains(pieces[index].front())) {
                follow(index);
            }
        }
    }
    return chains;
}

/// The way around the edge of a box, counter-clockwise from its south-western corner.
class CEdge
{
public:
    explicit CEdge(const ShoreBox& box)
        : m_west(box.West * StepsPerDegree), m_south((box.South + Rows / 2) * StepsPerDegree),
          m_width((box.East - box.West) * StepsPerDegree), m_height((box.North - box.South) * StepsPerDegree)
    {
    }

    [[nodiscard]] std::int64_t Length() const { return 2 * (m_width + m_height); }

    /// How far along a point of the edge is; -1 for a point inside.
    [[nodiscard]] std::int64_t Along(const Step& step) const
    {
        const std::int64_t x = step.first - m_west;
        const std::int64_t y = step.second - m_south;
        if (y == 0) {
            return x;
        }
        if (x == m_width) {
            return m_width + y;
        }
        if (y == m_height) {
            return 2 * m_width + m_height - x;
        }
        return x == 0 ? Length() - y : -1;
    }

    /// The corners passed on the way from one point of the edge on to another.
    [[nodiscard]] Chain Corners(std::int64_t from, std::int64_t to) const
    {
        const std::pair<std::int64_t, Step> corners[] = {
            {0, {m_west, m_south}},
            {m_width, {m_west + m_width, m_south}},
            {m_width + m_height, {m_west + m_width, m_south + m_height}},
            {2 * m_width + m_height, {m_west, m_south + m_height}},
        };
        std::vector<std::pair<std::int64_t, Step>> passed;
        const std::int64_t way = (to - from + Length()) % Length();
        for (const auto& [along, corner] : corners) {
            const std::int64_t distance = (along - from + Length()) % Length();
            if (distance > 0 && distance < way) {
                passed.emplace_back(distance, corner);
            }
        }
        std::sort(passed.begin(), passed.end());
        Chain chain;
        for (const auto& [distance, corner] : passed) {
            chain.push_back(corner);
        }
        return chain;
    }

private:
    std::int64_t m_west;
    std::int64_t m_south;
    std::int64_t m_width;
    std::int64_t m_height;
};

/// Closes chains that leave the box along its edge, the land on their left; returns closed rings only.
std::vector<Chain> Closed(std::vector<Chain> chains, const CEdge& edge)
{
    std::vector<Chain> rings;
    std::vector<Chain> open;
    for (Chain& chain : chains) {
        if (chain.front() == chain.back()) {
            rings.push_back(std::move(chain));
        } else if (edge.Along(chain.front()) >= 0 && edge.Along(chain.back()) >= 0) {
            open.push_back(std::move(chain));
        } else {
            throw std::runtime_error("a shore ends inside the box");
        }
    }
    while (!open.empty()) {
        Chain ring = std::move(open.back());
        open.pop_back();
        while (true) {
            const std::int64_t end = edge.Along(ring.back());
            const auto way = [&](const Chain& to) {
                return (edge.Along(to.front()) - end + edge.Length()) % edge.Length();
            };
            const auto next = std::min_element(open.begin(), open.end(),
                                               [&way](const Chain& a, const Chain& b) { return way(a) < way(b); });
            const bool isOwn = next == open.end() || way(ring) <= way(*next);
            const Step target = isOwn ? ring.front() : next->front();
            const Chain corners = edge.Corners(end, edge.Along(target));
            ring.insert(ring.end(), corners.begin(), corners.end());
            if (isOwn) {
                ring.push_back(target);
                break;
            }
            ring.insert(ring.end(), next->begin(), next->end());
            open.erase(next);
        }
        rings.push_back(std::move(ring));
    }
    return rings;
}
} // namespace

std::vector<MapLine> ShoreBins::ReadShores(const QString& path, const ShoreBox& box)
{
    const CDataFile file(path);
    const PointTable points(file);
    const std::vector<int> firstSegments = file.Numbers("Id_of_first_segment_in_a_bin");
    const std::vector<int> segmentCounts = file.Numbers("N_segments_in_a_bin");
    const std::vector<int> infos = file.Numbers("Embedded_npts_levels_exit_entry_for_a_segment");
    const std::vector<int> firstPoints = file.Numbers("Id_of_first_point_in_a_segment");
    std::map<int, std::vector<Chain>> levels;
    ForEachBin(box, [&](int column, int row, int binNumber) {
        const auto bin = static_cast<std::size_t>(binNumber);
        for (int segment = 0; segment < segmentCounts.at(bin); ++segment) {
            const int number = firstSegments.at(bin) + segment;
            const auto index = static_cast<std::size_t>(number);
            const auto info = static_cast<std::uint32_t>(infos.at(index));
            constexpr std::uint32_t closed = 4;
            Chain chain = points.Take(column, row, firstPoints.at(index), static_cast<int>(info >> 9));
            if ((info & 7) == closed && chain.front() != chain.back()) {
                chain.push_back(chain.front());
            }
            if (chain.size() > 1) {
                levels[static_cast<int>((info >> 6) & 7)].push_back(std::move(chain));
            }
        }
    });
    std::vector<MapLine> lines;
    for (auto& [level, pieces] : levels) {
        std::vector<Chain> chains = Joined(std::move(pieces));
        double area = 0;
        for (const Chain& chain : chains) {
            area += chain.front() == chain.back() ? TwiceArea(chain) : 0;
        }
        if (area < 0) {
            for (Chain& chain : chains) {
                std::reverse(chain.begin(), chain.end());
            }
        }
        for (const Chain& ring : Closed(std::move(chains), CEdge(box))) {
            lines.push_back(ToLine(ring));
        }
    }
    return lines;
}

std::vector<MapLine> ShoreBins::ReadRivers(const QString& path, const ShoreBox& box)
{
    constexpr int LastRiverLevel = 4; // beyond: intermittent rivers and canals
    const CDataFile file(path);
    const PointTable points(file);
    const std::vector<int> firstSegments = file.Numbers("Id_of_first_segment_in_a_bin");
    const std::vector<int> segmentCounts = file.Numbers("N_segments_in_a_bin");
    const std::vector<int> pointCounts = file.Numbers("N_points_for_a_segment");
    const std::vector<int> levels = file.Numbers("Hierarchial_level_of_a_segment");
    const std::vector<int> firstPoints = file.Numbers("Id_of_first_point_in_a_segment");
    std::vector<Chain> pieces;
    ForEachBin(box, [&](int column, int row, int binNumber) {
        const auto bin = static_cast<std::size_t>(binNumber);
        for (int segment = 0; segment < segmentCounts.at(bin); ++segment) {
            const int number = firstSegments.at(bin) + segment;
            const auto index = static_cast<std::size_t>(number);
            if (pointCounts.at(index) > 1 && levels.at(index) <= LastRiverLevel) {
                pieces.push_back(points.Take(column, row, firstPoints.at(index), pointCounts.at(index)));
            }
        }
    });
    std::vector<MapLine> lines;
    for (const Chain& chain : Joined(std::move(pieces))) {
        lines.push_back(ToLine(chain));
    }
    return lines;
}

MapLine ShoreBins::Simplified(const MapLine& line, double tolerance)
{
    if (line.size() < 3) {
        return line;
    }
    const double narrowing = std::cos(line.front().Latitude * 1e-6 * std::numbers::pi / 180.0);
    const auto x = [&](std::size_t at) { return line[at].Longitude * narrowing; };
    const auto y = [&](std::size_t at) { return static_cast<double>(line[at].Latitude); };
    std::vector<bool> isKept(line.size(), false);
    isKept.front() = true;
    isKept.back() = true;
    std::vector<std::pair<std::size_t, std::size_t>> stretches = {{0, line.size() - 1}};
    while (!stretches.empty()) {
        const auto [first, last] = stretches.back();
        stretches.pop_back();
        const double alongX = x(last) - x(first);
        const double alongY = y(last) - y(first);
        const double length = std::hypot(alongX, alongY);
        double farthest = 0;
        std::size_t split = first;
        for (std::size_t index = first + 1; index < last; ++index) {
            const double toX = x(index) - x(first);
            const double toY = y(index) - y(first);
            double distance = std::hypot(toX, toY);
            if (length > 0) {
                // Beyond an end the distance to that end counts.
                const double share = std::clamp((toX * alongX + toY * alongY) / (length * length), 0.0, 1.0);
                distance = std::hypot(toX - share * alongX, toY - share * alongY);
            }
            if (distance > farthest) {
                farthest = distance;
                split = index;
            }
        }
        if (farthest > tolerance) {
            isKept[split] = true;
            stretches.emplace_back(first, split);
            stretches.emplace_back(split, last);
        }
    }
    MapLine result;
    for (std::size_t index = 0; index < line.size(); ++index) {
        if (isKept[index]) {
            result.push_back(line[index]);
        }
    }
    return result;
}
