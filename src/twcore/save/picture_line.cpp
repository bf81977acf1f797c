#include "twcore/save/picture_line.h"

#include "twcore/trace.h"

#include <algorithm>
#include <stdexcept>

namespace twcore {

namespace {

constexpr std::size_t kMaxWaitingBytes = 64u << 20;
constexpr std::size_t kAlwaysReady = 4; // pictures of the chunk that is being written
constexpr int kMaxWorkers = 8;
// Of pictures that are made ahead of their turn, as they are before they are encoded: they may wait beside all others.
constexpr std::int64_t kMaxRawBytesAhead = 128 << 20;

int coreCount() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

/// A packet in the hands of whoever writes it.
MadePicture encoded(PacketPtr packet)
{
    MadePicture made;
    made.byteCount = static_cast<std::size_t>(packet->size);
    made.packet = std::shared_ptr<const AVPacket>(packet.release(), FreeByAddress<av_packet_free>{});
    return made;
}

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
      pool_(std::make_shared<PicturePool>(encoding_.pictureFormat(), PicturePool::Rows::kOfEncoders)),
      cuts_(*plan_, clock_, Patience{.cancelled = &cancelled_, .faults = &faults_})
{
    if (encoding_.copiesUnchanged && encoding_.unit() != VideoEncoding::Unit::kMovie) {
        rules_ = std::make_unique<PacketRules>(encoding_);
    }
    const auto starts = chunkStarts();
    for (std::size_t i = 0; i < starts.size(); ++i) {
        chunks_.push_back({.first = starts[i],
                           .end = i + 1 < starts.size() ? starts[i + 1] : clock_.frameCount(),
                           .toMake = starts[i],
                           .following = i + 1});
    }
    if (encoding_.unit() != VideoEncoding::Unit::kMovie) {
        orderByWay();
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
                                 Patience{.cancelled = &stopping_, .faults = &faults_}, nullptr, pool_);
        const auto encoder = encoding_.unit() == VideoEncoding::Unit::kPicture ? openEncoder() : nullptr;
        std::optional<CopiedPictures> copies;
        if (rules_) {
            copies.emplace(*plan_, clock_, *rules_, lists_, Patience{.cancelled = &stopping_, .faults = &faults_});
        }
        CopiedPictures* const copied = copies ? &*copies : nullptr;
        std::optional<std::size_t> chunk;
        while ((chunk = takeChunk(chunk))) {
            if (encoding_.unit() == VideoEncoding::Unit::kGroup) {
                makeGroups(*chunk, renderer, copied);
            } else {
                makeChunk(*chunk, renderer, encoder.get(), copied);
            }
        }
    } catch (...) {
        const std::lock_guard lock(mutex_);
        failure_ = failure_ ? failure_ : std::current_exception();
        stopping_ = true;
        changed_.notify_all();
    }
}

std::unique_ptr<VideoEncoder> PictureLine::openEncoder() const
{
    std::string why;
    auto encoder = VideoEncoder::open(encoding_, 1, why);
    if (!encoder) {
        throw std::runtime_error(why);
    }
    return encoder;
}

/// A group costs a key frame more: there are no more of them than the compressor makes anyway, but for a short movie,
/// of which each worker is to have its share.
std::vector<std::int64_t> PictureLine::chunkStarts()
{
    if (encoding_.unit() != VideoEncoding::Unit::kGroup) {
        return cuts_.chunkStarts();
    }
    constexpr std::int64_t kShortest = 48;
    constexpr std::int64_t kUsual = 96;
    constexpr std::int64_t kShares = 8;
    return cuts_.chunkStarts(
        std::clamp(clock_.frameCount() / kShares, kShortest, std::max<std::int64_t>(kUsual, encoding_.groupFrames())));
}

void PictureLine::orderByWay()
{
    std::int64_t bytesAhead = 0; // of one chunk behind the other
    for (std::size_t i = 0; i + 1 < chunks_.size(); ++i) {
        Chunk& chunk = chunks_[i];
        const Chunk& next = chunks_[i + 1];
        bytesAhead += (next.end - next.first) * pool_->pictureBytes();
        chunk.isAfterNext = bytesAhead <= kMaxRawBytesAhead && cuts_.leadsPast(chunk.first, next.first, next.end);
        bytesAhead = chunk.isAfterNext ? bytesAhead : 0;
    }
}

/// `made` is the one that the worker has made last.
std::optional<std::size_t> PictureLine::takeChunk(std::optional<std::size_t> made)
{
    {
        const std::lock_guard lock(mutex_);
        if (stopping_) {
            return std::nullopt;
        }
        if (made && isAheadOfTurn(*made)) {
            return *made - 1;
        }
        if (nextChunk_ < chunks_.size()) {
            while (chunks_[nextChunk_].isAfterNext) {
                ++nextChunk_;
            }
            return nextChunk_++;
        }
    }
    return encoding_.unit() == VideoEncoding::Unit::kGroup ? std::nullopt : takeOver();
}

/// Whether the one ahead of it is made after it, by the same worker.
bool PictureLine::isAheadOfTurn(std::size_t chunk) const { return chunk > 0 && chunks_[chunk - 1].isAfterNext; }

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
    renderer.expectUpTo(isAheadOfTurn(number) ? PictureRenderer::kNoEnd : chunk.end);
    return chunk.toMake++;
}

void PictureLine::makeChunk(std::size_t chunk, PictureRenderer& renderer, VideoEncoder* encoder, CopiedPictures* copied)
{
    MadePicture last;
    while (const auto next = nextFrame(chunk, renderer)) {
        const std::int64_t number = *next;
        if (copied != nullptr) {
            if (copied->from(number, number + 1, renderer).isCopied) {
                if (!handCopies(chunk, number, number + 1, *copied)) {
                    return;
                }
                continue;
            }
        }
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
            const SharedFrame frame = made.frame;
            made = encoded(std::move(packets.front()));
            made.frame = frame;
            last = made;
        }
        if (encoder != nullptr) {
            made.frame.reset();
        }
        if (!hand(chunk, std::move(made))) {
            return;
        }
    }
    isMade(chunk);
}

bool PictureLine::handCopies(std::size_t chunk, std::int64_t first, std::int64_t end, CopiedPictures& copied)
{
    return copied.hand(first, end, [&](PacketPtr packet) {
        MadePicture made = encoded(std::move(packet));
        made.isCopied = true;
        return hand(chunk, std::move(made));
    });
}

void PictureLine::makeGroups(std::size_t chunk, PictureRenderer& renderer, CopiedPictures* copied)
{
    std::unique_lock lock(mutex_);
    while (!stopping_ && chunks_[chunk].toMake < chunks_[chunk].end) {
        const std::int64_t first = chunks_[chunk].toMake;
        const std::int64_t end = chunks_[chunk].end;
        const bool goesOn = isAheadOfTurn(chunk);
        lock.unlock();
        const auto span = copied != nullptr ? copied->from(first, end, renderer) : CopiedPictures::Span{end};
        renderer.expectUpTo(goesOn ? PictureRenderer::kNoEnd : span.end);
        if (span.isCopied ? !handCopies(chunk, first, span.end, *copied)
                          : !encodeGroup(chunk, first, span.end, renderer)) {
            return;
        }
        lock.lock();
        chunks_[chunk].toMake = span.end;
    }
    chunks_[chunk].done = !stopping_;
    changed_.notify_all();
}

/// False when nobody wants it any more.
bool PictureLine::encodeGroup(std::size_t chunk, std::int64_t first, std::int64_t end, PictureRenderer& renderer)
{
    const auto encoder = openEncoder();
    std::vector<PacketPtr> packets;
    for (std::int64_t number = first; number <= end; ++number) {
        const SharedFrame frame = number < end ? renderer.frame(number) : nullptr; // then what it holds back
        const TraceSpan span("encode", number);
        encoder->encode(frame.get(), number, packets);
        for (auto& packet : packets) {
            if (!hand(chunk, encoded(std::move(packet)))) {
                return false;
            }
        }
        packets.clear();
        if (stopping_) {
            return false;
        }
    }
    return true;
}

void PictureLine::isMade(std::size_t chunk)
{
    const std::lock_guard lock(mutex_);
    chunks_[chunk].done = true;
    changed_.notify_all();
}

bool PictureLine::hand(std::size_t chunk, MadePicture picture)
{
    std::unique_lock lock(mutex_);
    const TraceSpan span("wait for room");
    changed_.wait(lock, [&] {
        return stopping_ || waitingBytes_ < kMaxWaitingBytes || isAheadOfTurn(chunk)
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
