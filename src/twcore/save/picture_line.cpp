#include "twcore/save/picture_line.h"

#include "twcore/trace.h"

#include <algorithm>
#include <stdexcept>

namespace twcore {

namespace {

constexpr std::size_t kMaxWaitingBytes = 64u << 20;
constexpr std::size_t kAlwaysReady = 4; // pictures of the chunk that is being written
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

} // namespace

PictureLine::PictureLine(PlanPtr plan, MovieClock clock, VideoEncoding encoding, const std::atomic<bool>& cancelled,
                         ReadFaults& faults)
    : plan_(std::move(plan)), clock_(clock), encoding_(encoding), cancelled_(cancelled), faults_(faults),
      cuts_(*plan_, clock_, Patience{.cancelled = &cancelled_, .faults = &faults_})
{
    const auto starts = cuts_.chunkStarts();
    for (std::size_t i = 0; i < starts.size(); ++i) {
        chunks_.push_back({.first = starts[i],
                           .end = i + 1 < starts.size() ? starts[i + 1] : clock_.frameCount(),
                           .toMake = starts[i],
                           .following = i + 1});
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
                                 Patience{.cancelled = &stopping_, .faults = &faults_});
        std::unique_ptr<VideoEncoder> encoder;
        if (encoding_.isIntraOnly()) {
            std::string why;
            encoder = VideoEncoder::open(encoding_, 1, why);
            if (!encoder) {
                throw std::runtime_error(why);
            }
        }
        while (const auto chunk = takeChunk()) {
            makeChunk(*chunk, renderer, encoder.get());
        }
    } catch (...) {
        const std::lock_guard lock(mutex_);
        failure_ = failure_ ? failure_ : std::current_exception();
        stopping_ = true;
        changed_.notify_all();
    }
}

std::optional<std::size_t> PictureLine::takeChunk()
{
    {
        const std::lock_guard lock(mutex_);
        if (stopping_) {
            return std::nullopt;
        }
        if (nextChunk_ < chunks_.size()) {
            return nextChunk_++;
        }
    }
    return takeOver();
}

/// No chunk is left: the worker that has most to do hands on the rest of its own.
std::optional<std::size_t> PictureLine::takeOver()
{
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        const auto most = std::ranges::max_element(chunks_, {}, &Chunk::framesLeft);
        const auto busy = static_cast<std::size_t>(most - chunks_.begin());
        const std::int64_t from = most->toMake + 1;
        const std::int64_t end = most->end;
        lock.unlock();
        const auto cut = cuts_.cutIn(from, end);
        lock.lock();
        if (!cut) {
            return std::nullopt;
        }
        Chunk& chunk = chunks_[busy];
        if (chunk.end != end || chunk.toMake >= *cut) {
            continue; // it went on meanwhile
        }
        chunks_.push_back({.first = *cut, .end = end, .toMake = *cut, .following = chunk.following});
        chunks_[busy].end = *cut;
        chunks_[busy].following = chunks_.size() - 1;
        nextChunk_ = chunks_.size();
        return chunks_.size() - 1;
    }
    return std::nullopt;
}

/// The frame that a worker makes next; nullopt behind the last of its chunk, which may have been cut meanwhile.
std::optional<std::int64_t> PictureLine::nextFrame(std::size_t number, PictureRenderer& renderer)
{
    const std::lock_guard lock(mutex_);
    Chunk& chunk = chunks_[number];
    if (stopping_ || chunk.toMake >= chunk.end) {
        return std::nullopt;
    }
    renderer.expectUpTo(chunk.end);
    return chunk.toMake++;
}

void PictureLine::makeChunk(std::size_t chunk, PictureRenderer& renderer, VideoEncoder* encoder)
{
    MadePicture last;
    while (const auto next = nextFrame(chunk, renderer)) {
        const std::int64_t number = *next;
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
    auto& ready = chunks_[chunk].ready;
    if (!ready.empty() && ready.back().frame == picture.frame && ready.back().packet == picture.packet) {
        ++ready.back().times; // hours of black take the room of one picture
    } else {
        ready.push_back(std::move(picture));
    }
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
            auto picture = chunk.ready.front();
            if (--chunk.ready.front().times == 0) {
                chunk.ready.pop_front();
                waitingBytes_ -= picture.byteCount;
            }
            Trace::addValue("bytes of pictures ready", static_cast<std::int64_t>(waitingBytes_));
            changed_.notify_all();
            return picture;
        }
        current_ = chunk.following;
        changed_.notify_all();
    }
    return std::nullopt;
}

} // namespace twcore
