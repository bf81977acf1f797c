#pragma once

// What the measures have in common.

#include <algorithm>
#include <ctime>
#include <vector>

namespace bench {

/// Seconds, of a clock of the processor's or of another one.
inline double secondsOf(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// That this process has had of the processor.
inline double processorSeconds() { return secondsOf(CLOCK_PROCESS_CPUTIME_ID); }

/// 0 of none.
inline double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

} // namespace bench
