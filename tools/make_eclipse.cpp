#include "host/text/Number.h"
#include "tools/UmbraPath.h"

#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <libnova/julian_day.h>
#include <limits>
#include <vector>

namespace
{
constexpr double Second = 1.0 / 86400.0;

/// The moment between `inside` and `outside` at which the axis leaves the Earth, to a hundredth of a second.
double EdgeOfPath(const CUmbraPath& path, double inside, double outside)
{
    while (std::abs(inside - outside) > 0.01 * Second) {
        const double middle = (inside + outside) / 2.0;
        (path.Central(middle) ? inside : outside) = middle;
    }
    return inside;
}

/// The moments at which the path is computed: every half minute, and closer where the Sun rises or sets and the shadow
/// races over the ground. Empty when the axis of the shadow misses the Earth.
std::vector<double> Moments(const CUmbraPath& path, double start)
{
    constexpr double Step = 30.0 * Second;
    constexpr double FineStep = 2.0 * Second;
    constexpr double Race = 90.0 * Second;
    double first = start;
    while (first < start + 1.0 && !path.Central(first)) {
        first += Step;
    }
    if (first >= start + 1.0) {
        return {};
    }
    double last = first;
    while (path.Central(last + Step)) {
        last += Step;
    }
    first = EdgeOfPath(path, first, first - Step);
    last = EdgeOfPath(path, last, last + Step);
    std::vector<double> moments;
    for (double day = first - Race; day < last + Race;) {
        moments.push_back(day);
        const bool isRacing = std::abs(day - first) < Race || std::abs(day - last) < Race;
        // Both edges themselves belong to the path.
        const double next = day + (isRacing ? FineStep : Step);
        day = day < first && next > first ? first : day < last && next > last ? last : next;
    }
    return moments;
}

QByteArray Line(const char* name, const std::vector<GroundPoint>& points)
{
    QByteArray text = QByteArray(name) + '=';
    for (const GroundPoint& point : points) {
        if (!text.endsWith('=')) {
            text += ',';
        }
        text += Number::Format("%.4f %.4f", point.Longitude, point.Latitude).toLatin1();
    }
    return text;
}

void PrintFacts(const CUmbraPath& path, const std::vector<double>& times, const std::vector<GroundPoint>& north,
                const std::vector<GroundPoint>& south)
{
    double low = times.front();
    double high = times.back();
    while (high - low > 0.1 * Second) {
        const double third = (high - low) / 3.0;
        if (path.AxisDistance(low + third) < path.AxisDistance(high - third)) {
            high -= third;
        } else {
            low += third;
        }
    }
    const double greatest = (low + high) / 2.0;
    const GroundPoint place = *path.Central(greatest);
    double begin = greatest;
    while (path.DepthInUmbra(place, begin) > 0.0) {
        begin -= 0.1 * Second;
    }
    double end = greatest;
    while (path.DepthInUmbra(place, end) > 0.0) {
        end += 0.1 * Second;
    }
    const auto nearest = [&place](const std::vector<GroundPoint>& line) {
        double least = std::numeric_limits<double>::max();
        for (size_t index = 1; index < line.size(); ++index) {
            for (int part = 0; part < 100; ++part) {
                const double share = part / 100.0;
                const GroundPoint& a = line[index - 1];
                const GroundPoint& b = line[index];
                least = std::min(least, CUmbraPath::Distance(place, {a.Longitude + share * (b.Longitude - a.Longitude),
                                                                     a.Latitude + share * (b.Latitude - a.Latitude)}));
            }
        }
        return least;
    };
    const auto print = [](const char* name, double day) {
        ln_date date{};
        ln_get_date(day, &date);
        std::printf("%s %02d:%02d:%04.1f UT", name, date.hours, date.minutes, date.seconds);
    };
    print("greatest", greatest);
    std::printf(" at %.2f %.2f, axis distance %.4f, totality %.0f s, width %.1f km\n", place.Longitude, place.Latitude,
                path.AxisDistance(greatest), (end - begin) / Second, nearest(north) + nearest(south));
    print("central line from", times.front());
    print(" to", times.back());
    std::printf(", %zu points\n", times.size());
}
} // namespace

// make_eclipse <year> <month> <day> <delta T> <file>: the path of the total eclipse of that day (Universal Time).
int main(int argc, char** argv)
{
    if (argc != 6) {
        std::fprintf(stderr, "usage: make_eclipse <year> <month> <day> <delta T> <file>\n");
        return 2;
    }
    const auto number = [argv](int index) { return Number::LeadingInt(QByteArrayView(argv[index])); };
    ln_date midnight{number(1), number(2), number(3), 0, 0, 0.0};
    const double start = ln_get_julian_day(&midnight);
    const CUmbraPath path(Number::LeadingDouble(QByteArrayView(argv[4])));

    const std::vector<double> moments = Moments(path, start);
    if (moments.empty()) {
        std::fprintf(stderr, "no central eclipse on that day\n");
        return 1;
    }
    std::vector<double> times;
    std::vector<GroundPoint> central;
    std::vector<GroundPoint> north;
    std::vector<GroundPoint> south;
    for (const double day : moments) {
        if (const std::optional<GroundPoint> point = path.Central(day)) {
            times.push_back(day);
            central.push_back(*point);
        }
        const CUmbraPath::Limits limits = path.LimitsAt(day);
        if (limits.North) {
            north.push_back(*limits.North);
        }
        if (limits.South) {
            south.push_back(*limits.South);
        }
    }
    if (north.empty() || south.empty()) {
        std::fprintf(stderr, "the eclipse has not two limits\n");
        return 1;
    }
    PrintFacts(path, times, north, south);

    const QByteArray text = Line("central", central) + ';' + Line("north", north) + ';' + Line("south", south) + '\n';
    QSaveFile file(QString::fromLocal8Bit(argv[5]));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        std::fprintf(stderr, "cannot write %s\n", argv[5]);
        return 1;
    }
    return 0;
}
