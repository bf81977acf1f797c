#pragma once

// Which time a frame of a movie shows: frame n the time start + n / fps, exactly.

extern "C" {
#include <libavutil/rational.h>
}

#include <cstdint>

namespace twcore {

struct MovieClock {
    AVRational fps{25, 1};
    std::int32_t startMs = 0;
    std::int32_t stopMs = 0; // behind the last

    std::int64_t frameCount() const { return firstFrameAt(stopMs); }
    double timeMs(std::int64_t frame) const
    {
        return startMs + static_cast<double>(frame) * 1000.0 * fps.den / fps.num;
    }
    /// Number of the first frame that shows this time or a later one.
    std::int64_t firstFrameAt(std::int32_t timelineMs) const
    {
        const std::int64_t ticks = (std::int64_t{timelineMs} - startMs) * fps.num;
        const std::int64_t perFrame = std::int64_t{1000} * fps.den;
        return ticks <= 0 ? 0 : (ticks + perFrame - 1) / perFrame;
    }
};

} // namespace twcore
