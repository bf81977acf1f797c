#pragma once

// Where captured pictures and sound stand in the movie's time. Devices stamp what they give by the machine's clock, a
// little late and a little unevenly, and each runs by a crystal of its own. Here the two are told apart: what is drift
// is followed slowly, what is a hole stays a hole.

#include <cstdint>

namespace twcore {

/// Microseconds of the machine's steady clock.
using CaptureTime = std::int64_t;
inline constexpr CaptureTime kCaptureSecond = 1'000'000;

/// The steady clock, now.
CaptureTime captureNow();
/// What the wall clock called `stamp` a moment ago, by the steady clock; now, when that is not to be believed.
CaptureTime fromWallClock(std::int64_t stamp);

/// The clock that a microphone's samples are counted by.
class SampleClock {
public:
    /// Movie time 0 is at `start`.
    SampleClock(int rate, CaptureTime start) : rate_(rate), offset_(double(start)) {}

    /// The next block: so many samples, the first of them taken at `taken`. Answers how many samples of silence belong
    /// ahead of it, since the device lost them or began late; below 0, how many of its own have no place, since they
    /// lie ahead of the start or stand in place of silence that was filled in.
    std::int64_t place(std::int64_t count, CaptureTime taken);
    /// Samples of silence up to that moment, which count from now on, because the device has gone silent.
    std::int64_t fillUntil(CaptureTime moment);

    /// The movie time of a moment, by this clock.
    double secondsAt(CaptureTime moment) const { return (double(moment) - offset_) / double(kCaptureSecond); }
    /// The moment of the next sample.
    CaptureTime knownUntil() const { return static_cast<CaptureTime>(expected()); }
    /// Samples of the movie so far.
    std::int64_t samples() const noexcept { return samples_; }

private:
    double expected() const { return offset_ + double(samples_) * double(kCaptureSecond) / rate_; }
    std::int64_t samplesIn(double microseconds) const;

    int rate_;
    double offset_; // the moment of movie time 0, by this clock
    std::int64_t samples_ = 0;
    std::int64_t blocks_ = 0;
    std::int64_t filled_ = 0; // of silence, for which samples may still come
};

/// Frames of a movie that pictures fall on. Each picture takes the frame behind the one before for as long as that is
/// not far wrong, so that an uneven camera neither loses pictures nor leaves holes.
class FrameGrid {
public:
    explicit FrameGrid(double framesPerSecond) : rate_(framesPerSecond) {}

    /// The frame for a picture at this movie time; below 0 when its frame is taken, and the picture has none.
    std::int64_t place(double seconds);
    std::int64_t next() const noexcept { return last_ + 1; }

private:
    double rate_;
    std::int64_t last_ = -1;
};

/// The clock that a camera's pictures are counted by: it goes with the camera where that is a little quick or slow,
/// and with the machine where pictures are missing.
class PictureClock {
public:
    /// Movie time 0 is at `start`.
    PictureClock(double framesPerSecond, CaptureTime start) : rate_(framesPerSecond), offset_(double(start)) {}

    /// The movie time of a picture, which is also followed.
    double place(CaptureTime taken);
    double secondsAt(CaptureTime moment) const { return (double(moment) - offset_) / double(kCaptureSecond); }

private:
    double rate_;
    double offset_;
};

} // namespace twcore
