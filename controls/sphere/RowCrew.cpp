#include "controls/sphere/RowCrew.h"

#include <QSemaphore>
#include <QThreadPool>

#include <algorithm>
#include <atomic>

void RowCrew::ForSlices(int count, const std::function<void(int first, int end)>& work)
{
    constexpr int sliceRows = 24; // few enough that no core waits long for the last slice
    constexpr int mostHelpers = 3;
    QThreadPool& pool = *QThreadPool::globalInstance();
    std::atomic<int> next = 0;
    const auto run = [&] {
        for (int first = next.fetch_add(sliceRows); first < count; first = next.fetch_add(sliceRows))
            work(first, std::min(first + sliceRows, count));
    };
    QSemaphore ended;
    int helpers = 0;
    const int wanted = std::min({mostHelpers, pool.maxThreadCount() - 1, (count - 1) / sliceRows});
    while (helpers < wanted && pool.tryStart([&run, &ended] {
        run();
        ended.release();
    }))
        ++helpers;
    run();
    ended.acquire(helpers);
}
