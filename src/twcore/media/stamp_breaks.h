#pragma once

// Recordings and joined files in whose middle the clock of the stamps begins anew, forwards or backwards. What is
// added behind such a break makes the stamps run on, and is the same for picture and sound, so that they stay together.
//
//     stored     0 1 2 3 | 0 1 2 3        behind the break 4 is added
//     running    0 1 2 3   4 5 6 7

#include "twcore/media/ff.h"

#include <array>
#include <cstdint>
#include <vector>

namespace twcore {

/// All ticks are those of the streams, which share one time base in the formats that break.
struct StampBreaks {
    struct Shift {
        std::int64_t position; // from this byte of the file on
        std::int64_t ticks;    // is added to the stored stamps
    };
    struct Place {
        std::int64_t position; // where a packet begins
        std::int64_t ticks;    // its running stamp
    };

    std::array<std::vector<Shift>, 2> shifts; // of the picture and of the sound, by position
    bool hasDamage = false;                   // some stamps fit no clock, and were passed over
    std::vector<Place> soundPlaces;           // to jump to, since the format itself finds no time behind a break
};

/// The stamps of one packet as they are stored; AV_NOPTS_VALUE where one is missing. findBreaks makes them run on.
struct StampedPacket {
    std::int64_t position; // in the file; -1: as the packet before it
    std::int64_t decode;
    std::int64_t show;
    std::int64_t length;
};

/// Every packet of the picture and of the sound, each in the order of the file.
using StampedStreams = std::array<std::vector<StampedPacket>, 2>;

/// Finds the breaks, and makes the stamps run on. nullptr when they ran on before. `ticksPerSecond` and the width of
/// the format's counter, at whose end it begins anew, are those of the streams.
std::shared_ptr<const StampBreaks> findBreaks(StampedStreams& streams, std::int64_t ticksPerSecond, int counterBits);

/// Makes the stamps of one stream run on while it is read, from wherever the reading begins.
class RunningStamps {
public:
    RunningStamps() = default;
    /// `stream`: 0 for the picture, 1 for the sound. Without breaks every stamp stays as it is.
    RunningStamps(std::shared_ptr<const StampBreaks> breaks, std::size_t stream)
        : breaks_(std::move(breaks)), stream_(stream)
    {}

    /// True for the first packet behind a break.
    bool apply(AVPacket& packet);
    /// The reading goes on at this byte.
    void startAt(std::int64_t position) noexcept { position_ = position; }

private:
    std::shared_ptr<const StampBreaks> breaks_;
    std::size_t stream_ = 0;
    std::int64_t position_ = 0; // of the last packet that told its own
    std::int64_t shift_ = 0;    // of the last packet
};

} // namespace twcore
