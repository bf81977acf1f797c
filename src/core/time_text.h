#pragma once

// Times as the person reads them. Pure routines; interface thread only, since what goes wrong is reported.

#include <cstdint>
#include <string>

namespace time_text {

/// A time in pieces. The pieces of a time below 0 are all below 0.
struct TimeType {
    std::int16_t Hour = 0;
    std::int16_t Minute = 0;
    std::int16_t Second = 0;
    std::int16_t Millisecond = 0;

    bool operator==(const TimeType&) const = default;
};

/// Seconds are counted in 16 bits, so a time of 32,768,000 ms (nine hours and six minutes) or more, or as far below 0,
/// gives the record of four zeros. Raises nothing.
TimeType MilliSecondsToTimetype(std::int32_t ms);

/// "0:01:01.250" of 61250 ms. Asked at every slider step: it allocates nothing but its result.
std::string MilliSecondsToTimetypeAsString(std::int32_t ms);

/// "0:01:01" of 61250 ms: milliseconds are dropped, not rounded.
std::string MilliSecondsToTimetypeAsString2(std::int32_t ms);

} // namespace time_text
