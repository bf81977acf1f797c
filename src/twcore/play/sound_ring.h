#pragma once

// Samples on their way to the sound device: one thread writes, the device's thread reads, and neither ever waits.
//
//     read ....... keep ............. written            cutBack: what lies behind `keep` is forgotten and written
//       |-- heard --|--- forgotten ------|               anew, while the device goes on reading ahead of it
//
// Places are counted from the last `clear`; a sample is two floats.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace twcore {

class SoundRing {
public:
    /// The device reads at most so many samples ahead of what it has told.
    static constexpr std::int64_t kMaxPull = 1024;

    explicit SoundRing(std::int64_t capacity) : capacity_(capacity), samples_(static_cast<std::size_t>(capacity) * 2) {}

    /// Only while nobody reads.
    void clear() noexcept
    {
        read_ = 0;
        written_ = 0;
    }

    // The writing thread.
    std::int64_t writable() const noexcept { return capacity_ - (written_.load() - read_.load()); }
    std::int64_t written() const noexcept { return written_; }
    /// No more than `writable`.
    void write(std::span<const float> block) noexcept
    {
        const std::int64_t at = written_.load(std::memory_order_relaxed);
        const auto count = static_cast<std::int64_t>(block.size() / 2);
        const std::int64_t first = std::min(count, capacity_ - at % capacity_);
        std::copy_n(block.begin(), first * 2, samples_.begin() + at % capacity_ * 2);
        std::copy(block.begin() + first * 2, block.end(), samples_.begin());
        written_ = at + count;
    }
    /// Takes back what the device cannot have begun to read and what lies more than `keep` samples ahead of it;
    /// `keep` is at least twice kMaxPull.
    void cutBack(std::int64_t keep) noexcept
    {
        const std::int64_t all = written_;
        for (;;) {
            const std::int64_t cut = std::min(all, read_.load() + keep);
            written_ = cut;
            // Both sides write, then read, in one order that all agree on: so either the device sees the cut, or we
            // see how far it has come.
            if (cut == all || read_.load() + kMaxPull <= cut) {
                return;
            }
        }
    }

    // The device's thread.
    /// Fills `out` as far as there are samples, and answers how many.
    std::int64_t read(std::span<float> out) noexcept
    {
        std::int64_t done = 0;
        for (std::int64_t wanted = static_cast<std::int64_t>(out.size() / 2); wanted > 0;) {
            const std::int64_t at = read_.load(std::memory_order_relaxed);
            const std::int64_t count = std::min({wanted, written_.load() - at, kMaxPull, capacity_ - at % capacity_});
            if (count <= 0) {
                break;
            }
            std::copy_n(samples_.begin() + at % capacity_ * 2, count * 2, out.begin() + done * 2);
            read_ = at + count;
            done += count;
            wanted -= count;
        }
        return done;
    }

private:
    const std::int64_t capacity_;
    std::vector<float> samples_;
    std::atomic<std::int64_t> read_ = 0;
    std::atomic<std::int64_t> written_ = 0;
};

} // namespace twcore
