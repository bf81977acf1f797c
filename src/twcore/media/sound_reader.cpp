#include "twcore/media/sound_reader.h"

#include "twcore/media/stamp_guard.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <array>
#include <cmath>

namespace twcore {

namespace {

// Decoders of compressed sound need a run-up before what they give is right.
constexpr double kRunUpSeconds = 0.4;
// Stamps that wander by less than this are the format's rounding; by more, sound is missing or doubled.
constexpr double kWanderSeconds = 0.06;
// Less silence than this goes through the converter like sound; more is a number.
constexpr double kSilenceSeconds = 2;
// Ahead by less than this it is quicker to decode on than to jump.
constexpr double kDecodeOnSeconds = 3;

} // namespace

SoundReader::SoundReader(MediaFilePtr media, int rate, Patience patience)
    : media_(std::move(media)), rate_(rate), patience_(patience), sourceRate_(media_->sound->rate)
{}

bool SoundReader::openFile()
{
    std::uint32_t error = 0;
    decoder_.reset();
    file_ = InputFile::open(media_->path, patience_, error);
    const int stream = media_->sound->streamIndex;
    if (!file_ || !file_->readStreamInfo() || stream >= static_cast<int>(file_->context()->nb_streams)) {
        return false;
    }
    file_->keepOnly(stream);
    decoder_ = Decoder::open(*file_->stream(stream), 1);
    running_ = RunningStamps(media_->breaks, 1);
    seam_.reset();
    pending_.reset();
    drained_ = false;
    damaged_ = 0;
    return decoder_ != nullptr;
}

void SoundReader::read(std::int64_t first, std::span<float> out)
{
    const auto count = static_cast<std::int64_t>(out.size() / 2);
    std::ranges::fill(out, 0.0f);
    const std::int64_t from = std::max<std::int64_t>(first, 0);
    if (broken_ || first + count <= 0) {
        return;
    }
    const auto ahead = static_cast<std::int64_t>(kDecodeOnSeconds * rate_);
    const std::int64_t reached = std::max(bufferEnd(), holeEnd_.value_or(0));
    if (!decoder_ || from < bufferFirst_ || (from > reached + ahead && !ended_)) {
        jumpTo(from);
    }
    while (!ended_ && !broken_ && !patience_.over()) {
        if (holeEnd_) {
            if (*holeEnd_ >= first + count) {
                break;
            }
            giveOut(first, out);
            buffer_.clear();
            bufferFirst_ = *holeEnd_;
            holeEnd_.reset();
        }
        if (bufferEnd() >= first + count) {
            break;
        }
        decodeMore();
        if (bufferEnd() <= from) { // nothing of it is wanted
            bufferFirst_ = bufferEnd();
            buffer_.clear();
        }
    }
    giveOut(first, out);
}

/// Moves what of the buffer belongs there into `out`, whose first sample is `first`.
void SoundReader::giveOut(std::int64_t first, std::span<float> out)
{
    const std::int64_t begin = std::max({first, bufferFirst_, std::int64_t{0}});
    const std::int64_t end = std::min(first + static_cast<std::int64_t>(out.size() / 2), bufferEnd());
    if (begin < end) {
        std::copy_n(buffer_.begin() + (begin - bufferFirst_) * 2, (end - begin) * 2, out.begin() + (begin - first) * 2);
        buffer_.erase(buffer_.begin(), buffer_.begin() + (end - bufferFirst_) * 2);
        bufferFirst_ = end;
    }
}

/// Where the converter begins so that it gives the samples of the mix from `first` on; answers the first that it gives.
std::int64_t SoundReader::anchorFor(std::int64_t first)
{
    // A change of rate begins on a whole second, where samples of both rates meet, and a little ahead of what is
    // wanted: so a sample is the same wherever the reading began.
    std::int64_t begin = first;
    anchor_ = first;
    if (sourceRate_ != rate_) {
        const std::int64_t second = std::max<std::int64_t>(0, (first - rate_ / 10) / rate_);
        anchor_ = second * sourceRate_;
        begin = second * rate_;
    }
    sourceNext_ = anchor_;
    return begin;
}

void SoundReader::jumpTo(std::int64_t first)
{
    buffer_.clear();
    holeEnd_.reset();
    converter_.reset();
    ended_ = false;
    if (!file_ && !openFile()) {
        broken_ = true;
        return;
    }
    bufferFirst_ = anchorFor(first);
    const double seconds = static_cast<double>(anchor_) / sourceRate_;
    for (const double back : {kRunUpSeconds, 2.0, 10.0, 60.0}) {
        if (landAhead(anchor_, seconds - back)) {
            return;
        }
        if (seconds - back <= 0) {
            break;
        }
    }
    // No place to jump to: from the beginning, which always works.
    broken_ = !openFile();
}

bool SoundReader::landAhead(std::int64_t anchor, double seconds)
{
    if (seconds <= 0) {
        // The skipping of an encoder's delay is told in the first packets only, and only a fresh start obeys it surely.
        broken_ = !openFile();
        return true;
    }
    const AVStream& stream = *file_->stream(media_->sound->streamIndex);
    const double target = seconds + media_->zeroSeconds;
    decoder_->flush();
    drained_ = false;
    seam_.reset();
    pending_.reset();
    const auto stamp = static_cast<std::int64_t>(std::floor(target / av_q2d(stream.time_base)));
    if (!seekTo(stamp)) {
        return false;
    }
    while (!pending_ && !drained_ && !patience_.over()) {
        if ((pending_ = decoder_->receive())) {
            break;
        }
        sendNext();
    }
    return pending_ && pending_->best_effort_timestamp != AV_NOPTS_VALUE && stampedPosition(*pending_) <= anchor;
}

bool SoundReader::seekTo(std::int64_t stamp)
{
    const int stream = media_->sound->streamIndex;
    if (!media_->breaks) {
        return av_seek_frame(file_->context(), stream, stamp, AVSEEK_FLAG_BACKWARD) >= 0;
    }
    const auto& places = media_->breaks->soundPlaces;
    const auto above = std::ranges::upper_bound(places, stamp, {}, &StampBreaks::Place::ticks);
    if (above == places.begin()) {
        return false;
    }
    const std::int64_t position = (above - 1)->position;
    running_.startAt(position);
    return av_seek_frame(file_->context(), stream, position, AVSEEK_FLAG_BYTE) >= 0;
}

void SoundReader::sendNext()
{
    const bool got = file_->read(*packet_);
    drained_ = !got;
    if (!got) {
        decoder_->send(nullptr);
    } else if (packet_->stream_index == media_->sound->streamIndex) {
        if (running_.apply(*packet_)) {
            seam_ = packet_->pts;
        }
        decoder_->send(packet_.get());
    }
}

std::int64_t SoundReader::stampedPosition(const AVFrame& frame) const
{
    const double tick = av_q2d(file_->stream(media_->sound->streamIndex)->time_base);
    const double seconds = static_cast<double>(frame.best_effort_timestamp) * tick - media_->zeroSeconds;
    return std::llround(seconds * sourceRate_);
}

void SoundReader::decodeMore()
{
    FramePtr frame = pending_ ? std::move(pending_) : decoder_->receive();
    if (frame) {
        take(std::move(frame));
    } else if (drained_) {
        finish();
    } else {
        sendNext();
    }
}

void SoundReader::take(FramePtr frame)
{
    if (frame->nb_samples <= 0 || frame->sample_rate <= 0 || !fitConverter(*frame)) {
        return;
    }
    const std::int64_t position = positionOf(*frame);
    const std::int64_t end = position + frame->nb_samples;
    if (end <= sourceNext_ || ended_) {
        return;
    }
    if (position - sourceNext_ > static_cast<std::int64_t>(kSilenceSeconds * sourceRate_)) {
        openHole(position);
        pending_ = std::move(frame);
        return;
    }
    if (position > sourceNext_) {
        feedSilence(position - sourceNext_);
    }
    feed(*frame, static_cast<int>(std::max<std::int64_t>(0, sourceNext_ - position)));
    sourceNext_ = end;
    if (seam_ && frame->best_effort_timestamp >= *seam_) {
        seam_.reset();
    }
}

/// The first frame tells where it is; the ones behind it follow on, whatever their rounded stamps say, and so do the
/// damaged ones, which claim what is not there.
std::int64_t SoundReader::positionOf(const AVFrame& frame)
{
    if (frame.best_effort_timestamp == AV_NOPTS_VALUE) {
        return sourceNext_;
    }
    const std::int64_t stamped = stampedPosition(frame);
    const double jump = static_cast<double>(stamped - sourceNext_) / sourceRate_;
    const double end = media_->sound->durationMs / 1000.0;
    if (jump > kJumpSeconds && static_cast<double>(stamped) / sourceRate_ > end + kJumpSeconds) {
        if (++damaged_ > kDamagedStamps) {
            finish();
        }
        return sourceNext_;
    }
    damaged_ = 0;
    // Parts that were joined overlap a little: the later one keeps its place beside its picture.
    const bool isBehindSeam = seam_ && frame.best_effort_timestamp >= *seam_;
    return isBehindSeam || sourceNext_ == anchor_ || std::abs(jump) > kWanderSeconds ? stamped : sourceNext_;
}

/// Hours without sound are not made: what follows begins behind them, with a converter of its own.
void SoundReader::openHole(std::int64_t position)
{
    if (sourceRate_ != rate_) {
        convert(nullptr, 0);
    }
    converter_.reset();
    holeEnd_ = anchorFor(position * rate_ / sourceRate_);
}

bool SoundReader::fitConverter(const AVFrame& frame)
{
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const int channels = frame.ch_layout.nb_channels;
    if (frame.sample_rate != sourceRate_) {
        return false; // another rate in the middle of a stream is damage
    }
    if (converter_ && format == sourceFormat_ && channels == sourceChannels_) {
        return true;
    }
    AVChannelLayout from{};
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&from, channels);
    } else {
        av_channel_layout_copy(&from, &frame.ch_layout);
    }
    AVChannelLayout to{};
    av_channel_layout_default(&to, channels == 1 ? 1 : 2);
    SwrContext* made = nullptr;
    int result = swr_alloc_set_opts2(&made, &to, AV_SAMPLE_FMT_FLT, rate_, &from, format, sourceRate_, 0, nullptr);
    converter_.reset(made);
    av_channel_layout_uninit(&from);
    if (result >= 0) {
        // Loud everywhere at once, a surround mix must still not clip.
        av_opt_set_double(made, "rematrix_maxval", 1.0, 0);
        result = swr_init(made);
    }
    if (result < 0) {
        converter_.reset();
        return false;
    }
    sourceFormat_ = format;
    sourceChannels_ = channels;
    return true;
}

void SoundReader::feed(const AVFrame& frame, int skip)
{
    constexpr int kMaxPlanes = 64;
    std::array<const std::uint8_t*, kMaxPlanes> planes{};
    const int bytes = av_get_bytes_per_sample(sourceFormat_);
    const bool planar = av_sample_fmt_is_planar(sourceFormat_) != 0;
    const int count = planar ? std::min(sourceChannels_, kMaxPlanes) : 1;
    for (int i = 0; i < count; ++i) {
        planes[static_cast<std::size_t>(i)] =
            frame.extended_data[i] + std::ptrdiff_t{skip} * bytes * (planar ? 1 : sourceChannels_);
    }
    convert(planes.data(), frame.nb_samples - skip);
}

void SoundReader::feedSilence(std::int64_t count)
{
    constexpr std::int64_t kBlock = 4096;
    constexpr int kMaxPlanes = 64;
    std::vector<std::uint8_t> zeros(static_cast<std::size_t>(kBlock) * 8 * static_cast<std::size_t>(sourceChannels_),
                                    av_get_packed_sample_fmt(sourceFormat_) == AV_SAMPLE_FMT_U8 ? 0x80 : 0);
    std::array<const std::uint8_t*, kMaxPlanes> planes{};
    planes.fill(zeros.data());
    for (; count > 0; count -= kBlock) {
        convert(planes.data(), static_cast<int>(std::min(count, kBlock)));
    }
}

void SoundReader::convert(const std::uint8_t** data, int count)
{
    const int room = swr_get_out_samples(converter_.get(), count);
    const std::size_t channels = sourceChannels_ == 1 ? 1 : 2;
    block_.resize(static_cast<std::size_t>(std::max(room, 1)) * channels);
    auto* target = reinterpret_cast<std::uint8_t*>(block_.data());
    const int got = swr_convert(converter_.get(), &target, room, data, count);
    for (std::size_t i = 0; i < static_cast<std::size_t>(std::max(got, 0)); ++i) {
        const float left = block_[i * channels];
        buffer_.push_back(left);
        buffer_.push_back(channels == 1 ? left : block_[i * 2 + 1]);
    }
}

void SoundReader::finish()
{
    ended_ = true;
    if (converter_ && sourceRate_ != rate_) {
        convert(nullptr, 0);
    }
}

} // namespace twcore
