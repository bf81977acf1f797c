#include "twcore/capture/capture_clock.h"

extern "C" {
#include <libavutil/time.h>
}

#include <algorithm>
#include <chrono>
#include <cmath>

namespace twcore {

namespace {

constexpr double kHole = 0.1 * kCaptureSecond; // more than a stamp is ever wrong by
constexpr double kFollowSeconds = 2;           // over which drift is followed

} // namespace

CaptureTime captureNow()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

CaptureTime fromWallClock(std::int64_t stamp)
{
    // The wall clock may be set at any moment: only how long ago it was is taken from it.
    constexpr CaptureTime kOldest = 2 * kCaptureSecond;
    constexpr CaptureTime kAhead = kCaptureSecond / 10;
    const std::int64_t age = av_gettime() - stamp;
    return captureNow() - (age > kOldest || age < -kAhead ? 0 : age);
}

std::int64_t SampleClock::samplesIn(double microseconds) const
{
    return std::llround(microseconds * rate_ / double(kCaptureSecond));
}

std::int64_t SampleClock::place(std::int64_t count, CaptureTime taken)
{
    const double late = double(taken) - expected();
    std::int64_t missing = 0;
    if (blocks_ == 0 || late > kHole) {
        missing = samplesIn(late);
    } else if (filled_ > 0 && late < 0) {
        missing = std::max(-filled_, samplesIn(late));
    } else if (late < -kHole) {
        offset_ += late; // the device counts anew
    } else {
        // The first stamps after the opening of a device are the worst: their mean is taken.
        const double share = std::max(1.0 / double(blocks_ + 1), double(count) / rate_ / kFollowSeconds);
        offset_ += late * std::min(share, 1.0);
    }
    missing = std::max(missing, -count);
    filled_ = missing < 0 ? std::max<std::int64_t>(0, filled_ + missing) : 0;
    samples_ += missing + count;
    blocks_ += samples_ > 0 ? 1 : 0;
    return missing;
}

std::int64_t SampleClock::fillUntil(CaptureTime moment)
{
    const std::int64_t count = std::max<std::int64_t>(0, samplesIn(double(moment) - expected()));
    samples_ += count;
    filled_ += count;
    blocks_ = std::max<std::int64_t>(blocks_, 1);
    return count;
}

std::int64_t FrameGrid::place(double seconds)
{
    constexpr double kTolerance = 0.6; // of a frame
    const double at = seconds * rate_;
    const std::int64_t wanted =
        std::abs(at - double(next())) <= kTolerance ? next() : static_cast<std::int64_t>(std::llround(at));
    if (wanted <= last_) {
        return -1;
    }
    last_ = wanted;
    return wanted;
}

double PictureClock::place(CaptureTime taken)
{
    constexpr double kShare = 0.1;      // of what a picture is off by, followed at once
    constexpr double kQuickest = 0.002; // of a second in a second: no crystal is worse
    const double seconds = secondsAt(taken);
    const double off = seconds - std::round(seconds * rate_) / rate_;
    const double most = kQuickest / rate_;
    offset_ += std::clamp(off * kShare, -most, most) * double(kCaptureSecond);
    return secondsAt(taken);
}

} // namespace twcore
