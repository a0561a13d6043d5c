#pragma once

#include <functional>

/// Drawing on all cores.
namespace RowCrew
{
/// Does the work for all rows from 0 to `count` - 1 in slices, on this thread and idle ones beside it, and returns when
/// all are done. The work gets the first row and the one behind the last; it may run on any thread and must not throw.
void ForSlices(int count, const std::function<void(int first, int end)>& work);
} // namespace RowCrew
