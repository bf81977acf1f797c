// quillmont-floor-bench COMPRESSOR WIDTHxHEIGHT RATE PIECE...: what a movie of cuts costs the libraries alone. A piece
// is START_MS:LENGTH_MS:PATH; RATE is in bits a second, 0 for none; COMPRESSOR is "wmv" for that of Windows Media.
//
// Decoding alone: of each piece what leads to its pictures, and nothing else, out of memory, by a thread a core, each
// with a decoder of its own; cuts of one group share nothing. Encoding alone: the finished pictures, which lie in
// memory, as the movie's workers do it. Reading, fitting, sound and writing are left out, and so is all waiting. Writes
// "decode_s encode_s wall_s": processor time, and what both would take if every core worked on them without a pause.

#include "twcore/render/picture_renderer.h"
#include "twcore/save/video_encoder.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace twcore;

namespace {

struct Piece {
    MediaFilePtr media;
    int startMs = 0;
    int lengthMs = 0;
};

double threadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

unsigned cores() { return std::max(1U, std::thread::hardware_concurrency()); }

/// `work` on each number below `count`, by so many threads; what it returns are seconds of the processor.
double onThreads(unsigned threads, std::size_t count, const std::function<double(std::size_t)>& work)
{
    std::atomic<std::size_t> next = 0;
    std::vector<std::future<double>> team;
    for (unsigned i = 0; i < threads; ++i) {
        team.push_back(std::async(std::launch::async, [&] {
            double own = 0;
            for (std::size_t k = next++; k < count; k = next++) {
                own += work(k);
            }
            return own;
        }));
    }
    double seconds = 0;
    for (auto& own : team) {
        seconds += own.get();
    }
    return seconds;
}

/// A piece's packets from the key frame ahead of it to the last one that it shows, and a decoder for them.
class PacketRow {
public:
    explicit PacketRow(const Piece& piece)
    {
        if (avformat_open_input(&file_, piece.media->path.c_str(), nullptr, nullptr) < 0
            || avformat_find_stream_info(file_, nullptr) < 0) {
            throw std::runtime_error(piece.media->path + " cannot be opened.");
        }
        const int number = piece.media->picture->streamIndex;
        stream_ = file_->streams[number];
        const auto ticks = [&](double ms) {
            return static_cast<std::int64_t>((piece.media->zeroSeconds + (ms - 0.5) / 1000)
                                             / av_q2d(stream_->time_base));
        };
        start_ = ticks(piece.startMs);
        const std::int64_t end = ticks(piece.startMs + piece.lengthMs);
        av_seek_frame(file_, number, start_, AVSEEK_FLAG_BACKWARD);
        std::size_t needed = 0;
        constexpr std::size_t kMostBehind = 32; // that are stored between two which are shown
        for (auto packet = makePacket();
             packets_.size() < needed + kMostBehind && av_read_frame(file_, packet.get()) >= 0; packet = makePacket()) {
            if (packet->stream_index != number) {
                continue;
            }
            const std::int64_t shown = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
            packets_.push_back(std::move(packet));
            needed = shown < end ? packets_.size() : needed;
        }
        packets_.resize(needed);
    }
    ~PacketRow() { avformat_close_input(&file_); }
    PacketRow(const PacketRow&) = delete;
    PacketRow& operator=(const PacketRow&) = delete;

    double decode()
    {
        const AVCodec* const codec = avcodec_find_decoder(stream_->codecpar->codec_id);
        const CodecContextPtr decoder(avcodec_alloc_context3(codec));
        avcodec_parameters_to_context(decoder.get(), stream_->codecpar);
        decoder->thread_count = 1;
        if (avcodec_open2(decoder.get(), codec, nullptr) < 0) {
            throw std::runtime_error("A decoder does not open.");
        }
        const auto frame = makeFrame();
        const double begin = threadSeconds();
        for (std::size_t i = 0; i <= packets_.size(); ++i) {
            const AVPacket* const packet = i < packets_.size() ? packets_[i].get() : nullptr;
            const bool isOnTheWay = packet != nullptr && packet->pts != AV_NOPTS_VALUE && packet->pts < start_;
            decoder->skip_frame = isOnTheWay ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
            (void)avcodec_send_packet(decoder.get(), packet);
            while (avcodec_receive_frame(decoder.get(), frame.get()) >= 0) {
            }
        }
        return threadSeconds() - begin;
    }

private:
    AVFormatContext* file_ = nullptr;
    const AVStream* stream_ = nullptr;
    std::int64_t start_ = 0;
    std::vector<PacketPtr> packets_;
};

/// The movie's pictures, as a save makes them.
class Pictures {
public:
    Pictures(const std::vector<Piece>& pieces, const VideoEncoding& encoding) : encoding_(encoding)
    {
        plan_->frame = encoding.size;
        plan_->hasPictureTrack = true;
        auto& track = plan_->pictureTracks.emplace_back();
        for (const Piece& piece : pieces) {
            const int end = plan_->durationMs + piece.lengthMs;
            track.push_back(
                {piece.media, plan_->durationMs, end, piece.startMs, piece.startMs + piece.lengthMs, 2, {}});
            plan_->durationMs = end;
        }
        for (const PlannedSource& source : track) {
            plan_->stretches.push_back({source.startMs, source.stopMs, {&source}});
        }
    }

    std::vector<SharedFrame> of(std::size_t piece) const
    {
        const MovieClock clock{encoding_.fps, 0, plan_->durationMs};
        PictureRenderer renderer(plan_, clock, encoding_.pictureFormat(), 1, {}, nullptr, pool_);
        std::vector<SharedFrame> pictures;
        const PictureStretch& stretch = plan_->stretches[piece];
        const std::int64_t end = clock.firstFrameAt(stretch.stopMs);
        for (std::int64_t frame = clock.firstFrameAt(stretch.startMs); frame < end; ++frame) {
            pictures.push_back(renderer.frame(frame));
        }
        return pictures;
    }

private:
    VideoEncoding encoding_;
    std::shared_ptr<Plan> plan_ = std::make_shared<Plan>();
    PicturePoolPtr pool_ = std::make_shared<PicturePool>(encoding_.pictureFormat(), PicturePool::Rows::kOfEncoders);
};

/// Seconds for the pieces [from, to) by one encoder.
double encode(const Pictures& movie, std::size_t from, std::size_t to, const VideoEncoding& encoding)
{
    std::string why;
    const auto encoder = VideoEncoder::open(encoding, 1, why);
    if (!encoder) {
        throw std::runtime_error(why);
    }
    std::vector<PacketPtr> packets;
    double seconds = 0;
    std::int64_t number = 0;
    for (std::size_t i = from; i < to; ++i) {
        const auto pictures = movie.of(i);
        const double begin = threadSeconds();
        const AVFrame* last = nullptr;
        for (const SharedFrame& picture : pictures) {
            // A save has the packet of a picture that stays, where it stands alone.
            if (encoding.unit() != VideoEncoding::Unit::kPicture || picture.get() != last) {
                encoder->encode(picture.get(), number++, packets);
            }
            last = picture.get();
        }
        if (i + 1 == to) {
            encoder->encode(nullptr, 0, packets);
        }
        seconds += threadSeconds() - begin;
    }
    return seconds;
}

VideoEncoding encodingOf(const std::string& compressor, const std::string& size, int rate)
{
    VideoEncoding encoding;
    const int index = videoCompressorIndex(compressor);
    if (index < 0 && compressor != "wmv") {
        throw std::runtime_error("There is no compressor " + compressor + ".");
    }
    encoding.compressor = index < 0 ? windowsMediaVideo() : videoCompressors()[static_cast<std::size_t>(index)];
    encoding.size = {std::atoi(size.c_str()), std::atoi(size.c_str() + size.find('x') + 1)};
    encoding.bitRate = rate;
    if (index < 0) { // as a profile asks
        encoding.quality = 100;
        encoding.keyFrameRate = 200;
        encoding.keepsKeyDistance = true;
    }
    return encoding;
}

} // namespace

int main(int count, char** words)
try {
    if (count < 5) {
        std::fprintf(stderr, "usage: quillmont-floor-bench COMPRESSOR WIDTHxHEIGHT RATE START_MS:LENGTH_MS:PATH...\n");
        return 2;
    }
    const VideoEncoding encoding = encodingOf(words[1], words[2], std::atoi(words[3]));
    std::vector<Piece> pieces;
    for (int i = 4; i < count; ++i) {
        char* at = words[i];
        Piece piece;
        piece.startMs = static_cast<int>(std::strtol(at, &at, 10));
        piece.lengthMs = static_cast<int>(std::strtol(at + 1, &at, 10));
        piece.media = tryMediaFile(at + 1, {}).file;
        if (!piece.media || !piece.media->picture) {
            throw std::runtime_error(std::string(at + 1) + " has no picture.");
        }
        pieces.push_back(std::move(piece));
    }
    double decoding = 0;
    {
        std::vector<std::unique_ptr<PacketRow>> rows;
        rows.reserve(pieces.size());
        for (const Piece& piece : pieces) {
            rows.push_back(std::make_unique<PacketRow>(piece));
        }
        decoding = onThreads(cores(), rows.size(), [&](std::size_t i) { return rows[i]->decode(); });
    }
    const Pictures movie(pieces, encoding);
    const bool isOfOneEncoder = encoding.unit() == VideoEncoding::Unit::kMovie;
    const double compressing =
        isOfOneEncoder
            ? encode(movie, 0, pieces.size(), encoding)
            : onThreads(cores(), pieces.size(), [&](std::size_t i) { return encode(movie, i, i + 1, encoding); });
    const double wall = std::max((decoding + compressing) / cores(), isOfOneEncoder ? compressing : 0.0);
    std::printf("%.3f %.3f %.3f\n", decoding, compressing, wall);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
