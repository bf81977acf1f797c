#pragma once

// Sound out: a device asks for samples when it needs them, and its sink tells how much of them has been heard, which is
// the clock that pictures follow.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace twcore {

/// Samples a second of all that is played.
inline constexpr int kPlayRate = 48000;
/// Samples that a device asks for at once.
inline constexpr int kAudioBlock = 1024;

/// What gives a device its samples.
class AudioSource {
public:
    /// Fills `out`, two floats a sample, and answers how many samples are sound; behind them is silence. The device's
    /// thread: it takes no lock and no memory.
    virtual std::int64_t pull(std::span<float> out) noexcept = 0;

protected:
    ~AudioSource() = default;
};

/// An open device. One thread starts and stops it.
class AudioSink {
public:
    virtual ~AudioSink() = default;

    /// From now on the source is asked for samples, counted anew.
    virtual void start() = 0;
    /// When this returns, the source is not being asked and will not be.
    virtual void stop() = 0;
    /// Samples of sound heard since the start; never more than were given. Any thread.
    virtual double heard() const = 0;
    /// False when the device has been pulled out: open another.
    virtual bool isAlive() const = 0;
};

/// Opens a device for a source, which outlives it. Never null.
using AudioMaker = std::function<std::unique_ptr<AudioSink>(AudioSource&)>;

/// What has been heard, by counting what was given: less the device's buffer, plus the time since it asked last.
class DeliveryClock {
public:
    void restart() noexcept { given_ = 0; }
    /// The device's thread, once a block. What was given before it is being heard from now on.
    void give(std::int64_t count) noexcept
    {
        if (count > 0) {
            const std::int64_t before = given_.load(std::memory_order_relaxed);
            beginNs_ = nowNs() - before * kNsPerSecond / kPlayRate;
            given_ = before + count;
        }
    }
    double heard() const noexcept
    {
        const auto given = static_cast<double>(given_.load());
        const double run = static_cast<double>(nowNs() - beginNs_.load()) * kPlayRate / kNsPerSecond;
        return given <= 0 || run <= 0 ? 0 : run < given ? run : given;
    }

private:
    static constexpr std::int64_t kNsPerSecond = 1'000'000'000;
    static std::int64_t nowNs() noexcept
    {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
    }

    std::atomic<std::int64_t> given_ = 0;
    std::atomic<std::int64_t> beginNs_ = 0; // when the first sample would have been heard
};

} // namespace twcore
