#include "twcore/save/sound_line.h"

#include "twcore/trace.h"

#include <algorithm>

namespace twcore {

namespace {

constexpr std::size_t kMaxWaitingPackets = 256;
constexpr std::int64_t kMixBlock = 4096;

} // namespace

SoundLine::SoundLine(PlanPtr plan, int rate, std::int64_t first, std::int64_t end,
                     std::unique_ptr<SoundEncoder> encoder, const std::atomic<bool>& cancelled, ReadFaults& faults)
    : plan_(std::move(plan)), rate_(rate), cancelled_(cancelled), faults_(faults), encoder_(std::move(encoder)),
      worker_([this, first, end] { work(first, end); })
{}

SoundLine::~SoundLine()
{
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    worker_.join();
}

void SoundLine::work(std::int64_t first, std::int64_t end)
{
    Trace::nameThread("sound");
    try {
        SoundMixer mixer(plan_, rate_, Patience{.cancelled = &stopping_, .faults = &faults_});
        std::vector<float> block;
        std::vector<PacketPtr> packets;
        for (std::int64_t at = first; at < end && !stopping_; at += kMixBlock) {
            block.resize(static_cast<std::size_t>(std::min(kMixBlock, end - at)) * 2);
            {
                const TraceSpan span("mix");
                mixer.read(at, block);
            }
            {
                const TraceSpan span("encode sound");
                encoder_->encode(block, packets);
            }
            if (!hand(packets)) {
                return;
            }
        }
        encoder_->finish(packets);
        hand(packets);
        const std::lock_guard lock(mutex_);
        done_ = true;
        changed_.notify_all();
    } catch (...) {
        const std::lock_guard lock(mutex_);
        failure_ = std::current_exception();
        changed_.notify_all();
    }
}

bool SoundLine::hand(std::vector<PacketPtr>& packets)
{
    std::unique_lock lock(mutex_);
    const TraceSpan span("wait for room");
    changed_.wait(lock, [&] { return stopping_ || ready_.size() < kMaxWaitingPackets; });
    if (stopping_) {
        return false;
    }
    std::ranges::move(packets, std::back_inserter(ready_));
    packets.clear();
    changed_.notify_all();
    return true;
}

const AVPacket* SoundLine::peek()
{
    std::unique_lock lock(mutex_);
    // A cancel comes without a note to the waiting.
    while (!changed_.wait_for(lock, std::chrono::milliseconds(50),
                              [&] { return failure_ || cancelled_ || done_ || !ready_.empty(); })) {
    }
    if (failure_) {
        std::rethrow_exception(failure_);
    }
    return cancelled_ || ready_.empty() ? nullptr : ready_.front().get();
}

PacketPtr SoundLine::take()
{
    const std::lock_guard lock(mutex_);
    auto packet = std::move(ready_.front());
    ready_.pop_front();
    changed_.notify_all();
    return packet;
}

} // namespace twcore
