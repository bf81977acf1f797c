#pragma once

// Where the stamps of picture and sound jump: read as they are stored, counted on over the end of the format's counter,
// and cleared of single damaged stamps. What a jump means, a new clock or a hole, is judged in `stamp_breaks`.

#include "twcore/media/stamp_breaks.h"

#include <array>
#include <cstdint>
#include <vector>

namespace twcore {

/// Picture and sound of one moment are stored within this time of each other.
inline constexpr double kInterleaveSeconds = 2.5;
/// Both streams meet a new clock within this time of each other.
inline constexpr double kApartSeconds = 10;

/// How a file counts its stamps.
struct StampClock {
    std::int64_t second;  // in ticks
    std::int64_t counter; // stamps a counter of the format has, before it begins anew

    std::int64_t ticks(double seconds) const
    {
        return static_cast<std::int64_t>(seconds * static_cast<double>(second));
    }
    /// The way from one stored stamp to another, round the counter's end where that is shorter.
    std::int64_t way(std::int64_t from, std::int64_t to) const
    {
        const std::int64_t ahead = ((to - from) % counter + counter) % counter;
        return ahead < counter / 2 ? ahead : ahead - counter;
    }
    /// Whether that way is one within a clock.
    bool goesOn(std::int64_t from, std::int64_t to) const;
};

/// Where the stamps of one stream jump, still with every jump in them.
struct StampJump {
    std::size_t first;   // packet behind the jump
    std::int64_t before; // stamp of the packet ahead of it
    std::int64_t after;  // and of its own
};

struct StampJumps {
    std::array<std::vector<std::int64_t>, 2> stored; // the stamps of decoding before anything was changed
    std::array<std::vector<StampJump>, 2> parts;     // behind the first
    bool hasDamage = false;                          // some stamps fit no clock, and were passed over
};

/// Drops packets without a stamp, counts the others on, and lists the jumps that are left.
StampJumps countOn(StampedStreams& streams, const StampClock& clock);

/// Packets of one stream.
struct PacketRange {
    std::size_t first;
    std::size_t end;
};
/// Those that begin at bytes from `from` up to `to`.
PacketRange packetsBetween(const std::vector<StampedPacket>& packets, std::int64_t from, std::int64_t to);

} // namespace twcore
