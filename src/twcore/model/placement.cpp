#include "twcore/model/placement.h"

#include <algorithm>
#include <cmath>

namespace twcore {

void Placement::setTimes(TimeRange range) noexcept
{
    mediaBarred = range.empty();
    if (mediaBarred) {
        return;
    }
    time = range;
    ranged = true;
    timesSet = true;
}

void Placement::setMedia(TimeRange range) noexcept
{
    if (mediaBarred) {
        mediaBarred = false;
        return;
    }
    media = range;
    mediaSet = true;
}

void Placement::shift(Ms deltaMs) noexcept
{
    for (TimeRange* range : {&time, &settledTime}) {
        range->startMs += deltaMs;
        range->stopMs += deltaMs;
    }
}

void Placement::settle(Ms endAheadMs) noexcept
{
    if (standing && timesSet) {
        Ms startMs = startWithinMedia();
        if (endAheadMs < time.stopMs) {
            startMs = std::max(startMs, endAheadMs);
        }
        cutHead(startMs);
    }
    if (time.startMs < endAheadMs) {
        time = {endAheadMs, endAheadMs + time.lengthMs()};
    }
    becomeStanding();
}

void Placement::squeeze(Ms limitMs) noexcept
{
    time.stopMs = limitMs;
    time.startMs = std::min(time.startMs, limitMs - 1);
    becomeStanding();
}

/// Where the item starts once it has lost what lies before the beginning of its medium. Only a start that was drawn out
/// to the left by itself is drawn back, and not past where it stood: black that was there before stays.
Ms Placement::startWithinMedia() const noexcept
{
    const bool drawnOut = mediaSet && time.stopMs == settledTime.stopMs && time.startMs < settledTime.startMs;
    if (!drawnOut || media.startMs >= 0 || media.empty()) {
        return time.startMs;
    }
    // Wide enough for the product to be exact.
    const auto lengthMs = static_cast<long double>(time.lengthMs());
    const auto mediaMs = static_cast<long double>(media.lengthMs());
    const auto headMs = static_cast<Ms>(std::ceil(static_cast<long double>(-media.startMs) * lengthMs / mediaMs));
    // The caller rounded the media start to a millisecond, which is more than one of the timeline in slow motion.
    const Ms slackMs = std::max(Ms{1}, static_cast<Ms>(std::llrint(lengthMs / mediaMs)));
    const Ms startMs = time.startMs + headMs;
    return startMs + slackMs >= settledTime.startMs ? settledTime.startMs : startMs;
}

void Placement::cutHead(Ms newStartMs) noexcept
{
    if (newStartMs <= time.startMs) {
        return;
    }
    const TimeRange left{newStartMs, time.stopMs};
    if (left == settledTime) {
        media = settledMedia; // not computed: rounding would make it creep
    } else {
        const auto share =
            static_cast<long double>(newStartMs - time.startMs) * static_cast<long double>(media.lengthMs());
        media.startMs += std::llrint(share / static_cast<long double>(time.lengthMs()));
    }
    time = left;
}

void Placement::becomeStanding() noexcept
{
    settledTime = time;
    settledMedia = media;
    standing = true;
    appended = timesSet = mediaSet = false;
}

} // namespace twcore
