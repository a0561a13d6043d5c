#include "roadmap/core/ScaleTable.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace
{
/// Mantissas in hundredths from `First`, `Steps` of them, `Step` apart.
struct Range
{
    int First;
    int Step;
    int Steps;
};
constexpr std::array Mantissas{Range{100, 5, 40}, Range{300, 10, 20}, Range{500, 20, 10}, Range{700, 10, 10},
                               Range{800, 20, 10}};

constexpr std::array<int, ScaleTable::Count> MakeScales()
{
    std::array<int, ScaleTable::Count> scales{};
    std::size_t index = 0;
    for (int unit = 10; unit <= 10'000; unit *= 10) {
        for (const Range& range : Mantissas) {
            for (int step = 0; step < range.Steps && index < ScaleTable::SliderCount; ++step)
                scales[index++] = (range.First + step * range.Step) * unit;
        }
    }
    scales[index++] = 5'000'000;
    scales[index] = 9'999'999;
    return scales;
}
constexpr std::array<int, ScaleTable::Count> Scales = MakeScales();
} // namespace

int ScaleTable::ClampIndex(int index)
{
    return std::clamp(index, 0, Count - 1);
}

int ScaleTable::Denominator(int index)
{
    return Scales[static_cast<std::size_t>(ClampIndex(index))];
}
