#pragma once

// The sound of a movie in packets, mixed and encoded on a thread of its own ahead of whoever writes it.

#include "twcore/render/sound_mixer.h"
#include "twcore/save/sound_encoder.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

namespace twcore {

class SoundLine {
public:
    /// Samples of the mix from `first` to `end`.
    SoundLine(PlanPtr plan, int rate, std::int64_t first, std::int64_t end, std::unique_ptr<SoundEncoder> encoder,
              const std::atomic<bool>& cancelled, ReadFaults& faults);
    ~SoundLine();

    /// The packet that is next, still in the line; nullptr behind the last and after a cancel. Throws what the thread
    /// threw.
    const AVPacket* peek();
    /// Takes that packet out.
    PacketPtr take();

private:
    void work(std::int64_t first, std::int64_t end);
    bool hand(std::vector<PacketPtr>& packets);

    const PlanPtr plan_;
    const int rate_;
    const std::atomic<bool>& cancelled_;
    ReadFaults& faults_;
    std::unique_ptr<SoundEncoder> encoder_;
    std::atomic<bool> stopping_ = false;

    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    std::deque<PacketPtr> ready_;
    bool done_ = false;
    std::exception_ptr failure_;

    std::thread worker_;
};

} // namespace twcore
