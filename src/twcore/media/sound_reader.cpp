#include "twcore/media/sound_reader.h"

#include "twcore/media/midi_reader.h"

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
// Ahead by less than this it is quicker to decode on than to jump.
constexpr double kDecodeOnSeconds = 3;

} // namespace

std::unique_ptr<SoundSource> openSound(MediaFilePtr media, int rate, const Patience& patience)
{
    if (media->isMidi) {
        return std::make_unique<MidiReader>(media->path, rate, patience);
    }
    return std::make_unique<SoundReader>(std::move(media), rate, patience);
}

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
    pending_.reset();
    drained_ = false;
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
    if (!decoder_ || from < bufferFirst_ || (from > bufferEnd() + ahead && !ended_)) {
        jumpTo(from);
    }
    while (!ended_ && !broken_ && bufferEnd() < first + count && !patience_.over()) {
        decodeMore();
        if (bufferEnd() <= from) { // nothing of it is wanted
            bufferFirst_ = bufferEnd();
            buffer_.clear();
        }
    }
    const std::int64_t begin = std::max(from, bufferFirst_);
    const std::int64_t end = std::min(first + count, bufferEnd());
    if (begin < end) {
        std::copy_n(buffer_.begin() + (begin - bufferFirst_) * 2, (end - begin) * 2, out.begin() + (begin - first) * 2);
        buffer_.erase(buffer_.begin(), buffer_.begin() + (end - bufferFirst_) * 2);
        bufferFirst_ = end;
    }
}

void SoundReader::jumpTo(std::int64_t first)
{
    buffer_.clear();
    converter_.reset();
    ended_ = false;
    if (!file_ && !openFile()) {
        broken_ = true;
        return;
    }
    // A change of rate begins on a whole second, where samples of both rates meet, and a little ahead of what is
    // wanted: so a sample is the same wherever the reading began.
    std::int64_t anchorSecond = 0;
    if (sourceRate_ == rate_) {
        anchor_ = first;
        bufferFirst_ = first;
    } else {
        anchorSecond = std::max<std::int64_t>(0, (first - rate_ / 10) / rate_);
        anchor_ = anchorSecond * sourceRate_;
        bufferFirst_ = anchorSecond * rate_;
    }
    sourceNext_ = anchor_;
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
    pending_.reset();
    const auto stamp = static_cast<std::int64_t>(std::floor(target / av_q2d(stream.time_base)));
    if (av_seek_frame(file_->context(), stream.index, stamp, AVSEEK_FLAG_BACKWARD) < 0) {
        return false;
    }
    while (!pending_ && !drained_ && !patience_.over()) {
        if ((pending_ = decoder_->receive())) {
            break;
        }
        const bool got = file_->read(*packet_);
        drained_ = !got;
        if (!got || packet_->stream_index == stream.index) {
            decoder_->send(got ? packet_.get() : nullptr);
        }
    }
    return pending_ && pending_->best_effort_timestamp != AV_NOPTS_VALUE && stampedPosition(*pending_) <= anchor;
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
        take(*frame);
        return;
    }
    if (drained_) {
        finish();
        return;
    }
    const bool got = file_->read(*packet_);
    drained_ = !got;
    if (!got || packet_->stream_index == media_->sound->streamIndex) {
        decoder_->send(got ? packet_.get() : nullptr);
    }
}

void SoundReader::take(const AVFrame& frame)
{
    if (frame.nb_samples <= 0 || frame.sample_rate <= 0 || !fitConverter(frame)) {
        return;
    }
    std::int64_t position = sourceNext_;
    if (frame.best_effort_timestamp != AV_NOPTS_VALUE) {
        const std::int64_t stamped = stampedPosition(frame);
        const auto wander = static_cast<std::int64_t>(kWanderSeconds * sourceRate_);
        // The first frame tells where it is; the ones behind it follow on, whatever their rounded stamps say.
        if (sourceNext_ == anchor_ || std::abs(stamped - sourceNext_) > wander) {
            position = stamped;
        }
    }
    const std::int64_t end = position + frame.nb_samples;
    if (end <= sourceNext_) {
        return;
    }
    if (position > sourceNext_) {
        feedSilence(position - sourceNext_);
    }
    feed(frame, static_cast<int>(std::max<std::int64_t>(0, sourceNext_ - position)));
    sourceNext_ = end;
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
    // A stamp that is far off says that the file is damaged; nothing waits for hours of silence.
    for (count = std::min<std::int64_t>(count, std::int64_t{sourceRate_} * 3600); count > 0; count -= kBlock) {
        convert(planes.data(), static_cast<int>(std::min(count, kBlock)));
    }
}

void SoundReader::convert(const std::uint8_t** data, int count)
{
    const int room = swr_get_out_samples(converter_.get(), count);
    const int channels = sourceChannels_ == 1 ? 1 : 2;
    block_.resize(static_cast<std::size_t>(std::max(room, 1) * channels));
    auto* target = reinterpret_cast<std::uint8_t*>(block_.data());
    const int got = swr_convert(converter_.get(), &target, room, data, count);
    for (int i = 0; i < got; ++i) {
        const float left = block_[static_cast<std::size_t>(i * channels)];
        buffer_.push_back(left);
        buffer_.push_back(channels == 1 ? left : block_[static_cast<std::size_t>(i * 2 + 1)]);
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
