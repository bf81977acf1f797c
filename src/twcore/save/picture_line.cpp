#include "twcore/save/picture_line.h"

#include "twcore/media/key_frames.h"
#include "twcore/trace.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace twcore {

namespace {

constexpr std::size_t kMaxWaitingBytes = 64u << 20;
constexpr std::size_t kAlwaysReady = 4; // pictures of the chunk that is being written
constexpr std::int64_t kMinChunkFrames = 48;
constexpr int kMaxWorkers = 8;

int coreCount() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

std::size_t bytesOf(const AVFrame& frame)
{
    std::size_t bytes = 0;
    for (const auto* const buffer : frame.buf) {
        bytes += buffer != nullptr ? static_cast<std::size_t>(buffer->size) : 0;
    }
    return bytes;
}

/// Frames over which the lowest source plays on without a jump in its media, [first, end).
struct Scene {
    std::int64_t first = 0;
    std::int64_t end = 0;
    std::vector<const PlannedSource*> sources; // one after the other; more than one where a clip was only split
};

bool playsOn(const PlannedSource& source, const PlannedSource& next)
{
    constexpr double kSameSeconds = 0.002;
    return &source == &next
           || (source.media == next.media && source.stopMs == next.startMs
               && std::abs(source.mediaSecondsAt(next.startMs) - next.mediaSecondsAt(next.startMs)) < kSameSeconds);
}

std::vector<Scene> scenesOf(const Plan& plan, const MovieClock& clock)
{
    std::vector<Scene> scenes;
    for (const auto& stretch : plan.stretches) {
        const std::int64_t first = clock.firstFrameAt(stretch.startMs);
        const std::int64_t end = std::min(clock.frameCount(), clock.firstFrameAt(stretch.stopMs));
        if (first >= end) {
            continue;
        }
        const PlannedSource* const source = stretch.layers.empty() ? nullptr : stretch.layers.front();
        const PlannedSource* const last =
            scenes.empty() || scenes.back().sources.empty() ? nullptr : scenes.back().sources.back();
        if (source == nullptr || last == nullptr || !playsOn(*last, *source)) {
            scenes.push_back({first, end, {}});
        }
        scenes.back().end = end;
        if (source != nullptr && source != last) {
            scenes.back().sources.push_back(source);
        }
    }
    return scenes;
}

} // namespace

std::vector<std::int64_t> chunkStarts(const Plan& plan, const MovieClock& clock, const Patience& patience)
{
    const std::int64_t count = clock.frameCount();
    std::vector<std::int64_t> starts;
    std::map<const MediaFile*, std::vector<double>> keys;
    const auto add = [&](std::int64_t frame) {
        if (frame < count && (starts.empty() ? frame >= 0 : frame > starts.back())) {
            starts.push_back(frame);
        }
    };
    for (const Scene& scene : scenesOf(plan, clock)) {
        add(scene.first);
        if (scene.end - scene.first < 2 * kMinChunkFrames) {
            continue;
        }
        for (const PlannedSource* const source : scene.sources) {
            if (source->speed() <= 0) {
                continue;
            }
            const auto [known, isNew] = keys.try_emplace(source->media.get());
            if (isNew) {
                known->second = keyFrameTimes(source->media, patience);
            }
            for (const double key : known->second) {
                const double timelineMs = source->startMs + (key * 1000 - source->mediaStartMs) / source->speed();
                if (timelineMs <= source->startMs || timelineMs >= source->stopMs) {
                    continue;
                }
                const std::int64_t frame = clock.firstFrameAt(static_cast<std::int32_t>(timelineMs) + 1);
                if (frame - starts.back() >= kMinChunkFrames && scene.end - frame >= kMinChunkFrames) {
                    add(frame);
                }
            }
        }
    }
    if (starts.empty() || starts.front() != 0) {
        starts.insert(starts.begin(), 0);
    }
    return starts;
}

PictureLine::PictureLine(PlanPtr plan, MovieClock clock, VideoEncoding encoding, const std::atomic<bool>& cancelled)
    : plan_(std::move(plan)), clock_(clock), encoding_(std::move(encoding)), cancelled_(cancelled)
{
    const auto starts = chunkStarts(*plan_, clock_, Patience{.cancelled = &cancelled_});
    for (std::size_t i = 0; i < starts.size(); ++i) {
        chunks_.push_back({starts[i], i + 1 < starts.size() ? starts[i + 1] : clock_.frameCount(), {}, false});
    }
    const int workers = std::min({coreCount(), static_cast<int>(chunks_.size()), kMaxWorkers});
    decoderThreads_ = std::max(1, coreCount() / workers);
    for (int i = 0; i < workers; ++i) {
        workers_.emplace_back([this] { work(); });
    }
}

PictureLine::~PictureLine()
{
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    for (auto& worker : workers_) {
        worker.join();
    }
}

void PictureLine::work()
{
    Trace::nameThread("pictures");
    try {
        PictureRenderer renderer(plan_, clock_, encoding_.pictureFormat(), decoderThreads_,
                                 Patience{.cancelled = &stopping_});
        std::unique_ptr<VideoEncoder> encoder;
        if (encoding_.isIntraOnly()) {
            std::string why;
            encoder = VideoEncoder::open(encoding_, 1, why);
            if (!encoder) {
                throw std::runtime_error(why);
            }
        }
        for (;;) {
            std::size_t chunk = 0;
            {
                const std::lock_guard lock(mutex_);
                if (stopping_ || nextChunk_ >= chunks_.size()) {
                    return;
                }
                chunk = nextChunk_++;
            }
            makeChunk(chunk, renderer, encoder.get());
        }
    } catch (...) {
        const std::lock_guard lock(mutex_);
        failure_ = failure_ ? failure_ : std::current_exception();
        stopping_ = true;
        changed_.notify_all();
    }
}

void PictureLine::makeChunk(std::size_t chunk, PictureRenderer& renderer, VideoEncoder* encoder)
{
    const std::int64_t first = chunks_[chunk].first;
    const std::int64_t end = chunks_[chunk].end;
    renderer.expectUpTo(end);
    MadePicture last;
    for (std::int64_t number = first; number < end && !stopping_; ++number) {
        MadePicture made;
        made.frame = renderer.frame(number);
        if (encoder == nullptr) {
            made.byteCount = made.frame == last.frame ? 0 : bytesOf(*made.frame);
            last = made;
        } else if (made.frame == last.frame) {
            made = last; // the same picture is the same packet
            made.byteCount = 0;
        } else {
            const TraceSpan span("encode", number);
            std::vector<PacketPtr> packets;
            encoder->encode(made.frame.get(), number, packets);
            if (packets.size() != 1) {
                throw std::runtime_error("The encoder holds frames back that it should not.");
            }
            made.byteCount = static_cast<std::size_t>(packets.front()->size);
            made.packet = std::shared_ptr<const AVPacket>(packets.front().release(), FreeByAddress<av_packet_free>{});
            last = made;
        }
        if (encoder != nullptr) {
            made.frame.reset();
        }
        if (!hand(chunk, std::move(made))) {
            return;
        }
    }
    const std::lock_guard lock(mutex_);
    chunks_[chunk].done = true;
    changed_.notify_all();
}

bool PictureLine::hand(std::size_t chunk, MadePicture picture)
{
    std::unique_lock lock(mutex_);
    const TraceSpan span("wait for room");
    changed_.wait(lock, [&] {
        return stopping_ || waitingBytes_ < kMaxWaitingBytes
               || (chunk == current_ && chunks_[chunk].ready.size() < kAlwaysReady);
    });
    if (stopping_) {
        return false;
    }
    waitingBytes_ += picture.byteCount;
    chunks_[chunk].ready.push_back(std::move(picture));
    if (chunk == current_) {
        changed_.notify_all();
    }
    return true;
}

std::optional<MadePicture> PictureLine::next()
{
    std::unique_lock lock(mutex_);
    while (current_ < chunks_.size()) {
        auto& chunk = chunks_[current_];
        const TraceSpan span("wait for a picture");
        // A cancel comes without a note to the waiting.
        while (!changed_.wait_for(lock, std::chrono::milliseconds(50),
                                  [&] { return failure_ || cancelled_ || !chunk.ready.empty() || chunk.done; })) {
        }
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        if (cancelled_) {
            return std::nullopt;
        }
        if (!chunk.ready.empty()) {
            auto picture = std::move(chunk.ready.front());
            chunk.ready.pop_front();
            waitingBytes_ -= picture.byteCount;
            Trace::addValue("bytes of pictures ready", static_cast<std::int64_t>(waitingBytes_));
            changed_.notify_all();
            return picture;
        }
        ++current_;
        changed_.notify_all();
    }
    return std::nullopt;
}

} // namespace twcore
