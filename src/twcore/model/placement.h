#pragma once

// Where one item lies: its place on the timeline, what it shows there of its medium, and what became of both since
// the track was last settled.
//
// A command tells its change in several calls, in the middle of which items overlap or are half told. So a placement
// takes what it is told, remembers how it was told it, and only when somebody reads times does it make room:
//
//     ahead   |=======|                       ahead   |=======|
//     item        |..........|   set      ->  item            |.....|        loses its head at its own rate
//     item        |..........|   not set  ->  item            |..........|   moves whole
//
// Times are held in 64 bits, so that nothing between two settlings can overflow; what is read fits 32.

#include <cstdint>
#include <limits>

namespace twcore {

using Ms = std::int64_t;

/// The last millisecond that a caller can be told.
inline constexpr Ms kLastMs = std::numeric_limits<std::int32_t>::max();

/// Half open.
struct TimeRange {
    Ms startMs = 0;
    Ms stopMs = 0;

    constexpr Ms lengthMs() const noexcept { return stopMs - startMs; }
    constexpr bool empty() const noexcept { return stopMs <= startMs; }
    friend constexpr bool operator==(const TimeRange&, const TimeRange&) noexcept = default;
};

struct Placement {
    TimeRange time;
    TimeRange media;        // of sources only
    TimeRange settledTime;  // as of the last settling; shifts carry it along
    TimeRange settledMedia; // as of the last settling
    bool selected = false;
    bool ranged = true;    // false: its length is found when it is settled
    bool standing = false; // has been settled
    bool appended = false; // came in behind the last item and has not been settled since
    bool timesSet = false; // since the last settling
    bool mediaSet = false; // since the last settling
    bool mediaBarred =
        false; // the timeline range told last made no sense, so neither does the media range told with it

    /// A range that is empty or reversed is not taken, nor the media range that comes with it.
    void setTimes(TimeRange range) noexcept;
    void setMedia(TimeRange range) noexcept;
    void shift(Ms deltaMs) noexcept;

    /// Makes room for the item ahead, which ends at endAheadMs, and takes the outcome as the new standing.
    void settle(Ms endAheadMs) noexcept;
    /// Ends at limitMs at the latest, at the cost of its length. For the far end of time only.
    void squeeze(Ms limitMs) noexcept;

private:
    Ms startWithinMedia() const noexcept;
    void cutHead(Ms newStartMs) noexcept;
    void becomeStanding() noexcept;
};

} // namespace twcore
