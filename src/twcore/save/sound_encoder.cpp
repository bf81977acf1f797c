#include "twcore/save/sound_encoder.h"

#include "twcore/media/ff_versions.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace twcore {

namespace {

constexpr int kAnySizeBlock = 2048;

std::int16_t toInt16(float sample)
{
    return static_cast<std::int16_t>(std::clamp(std::lrint(sample * 32768.0f), -32768L, 32767L));
}

AVSampleFormat pickFormat(const AVCodec& codec)
{
    for (const auto* format = sampleFormatsOf(codec); format != nullptr && *format != AV_SAMPLE_FMT_NONE; ++format) {
        if (*format == AV_SAMPLE_FMT_FLTP || *format == AV_SAMPLE_FMT_S16 || *format == AV_SAMPLE_FMT_S16P) {
            return *format;
        }
    }
    return AV_SAMPLE_FMT_NONE;
}

void fillFrame(AVFrame& frame, std::span<const float> samples)
{
    const int count = frame.nb_samples;
    const int channels = frame.ch_layout.nb_channels;
    for (int c = 0; c < channels; ++c) {
        for (int i = 0; i < count; ++i) {
            const auto at = static_cast<std::size_t>(i) * 2;
            const float sample = channels == 1 ? (samples[at] + samples[at + 1]) / 2 : samples[at + std::size_t(c)];
            if (frame.format == AV_SAMPLE_FMT_FLTP) {
                reinterpret_cast<float*>(frame.data[c])[i] = std::clamp(sample, -1.0f, 1.0f);
            } else if (frame.format == AV_SAMPLE_FMT_S16P) {
                reinterpret_cast<std::int16_t*>(frame.data[c])[i] = toInt16(sample);
            } else {
                reinterpret_cast<std::int16_t*>(frame.data[0])[channels * i + c] = toInt16(sample);
            }
        }
    }
}

} // namespace

std::unique_ptr<SoundEncoder> SoundEncoder::open(const std::optional<AudioCompressor>& compressor, int rate,
                                                 std::string& why)
{
    std::unique_ptr<SoundEncoder> encoder(new SoundEncoder);
    encoder->name_ = compressor ? compressor->name : "PCM";
    const AVCodec* const codec = avcodec_find_encoder_by_name(compressor ? compressor->encoder : "pcm_s16le");
    CodecContextPtr context(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (!context) {
        why = "This machine has no encoder for " + encoder->name_ + ".";
        return nullptr;
    }
    context->sample_rate = rate;
    context->time_base = {1, rate};
    context->sample_fmt = pickFormat(*codec);
    av_channel_layout_default(&context->ch_layout, compressor ? compressor->channels : 2);
    context->bit_rate = compressor ? compressor->bitRate : 0;
    context->flags |= AV_CODEC_FLAG_BITEXACT;
    // A packet may not lean on one that is dropped with the delay.
    av_opt_set_int(context->priv_data, "reservoir", 0, 0);
    if (const int error = avcodec_open2(context.get(), codec, nullptr); error < 0) {
        why = encoder->name_ + " cannot encode " + std::to_string(rate) + " samples a second: " + ffText(error) + ".";
        return nullptr;
    }
    encoder->frameSize_ = (codec->capabilities & AV_CODEC_CAP_VARIABLE_FRAME_SIZE) != 0 ? 0 : context->frame_size;
    if (context->initial_padding > 0 && encoder->frameSize_ > 0) {
        // Silence ahead makes the delay a whole number of packets, which are then left out or skipped by who decodes.
        const int skipped = compressor ? compressor->skippedPackets : 0;
        const int filled =
            std::max(skipped, (context->initial_padding + encoder->frameSize_ - 1) / encoder->frameSize_);
        encoder->packetsToDrop_ = filled - skipped;
        encoder->packetsToSkip_ = skipped;
        encoder->delaySamples_ = std::int64_t{filled} * encoder->frameSize_;
        const auto silence = static_cast<std::size_t>(encoder->delaySamples_ - context->initial_padding);
        encoder->waiting_.assign(silence * 2, 0.0f);
    }
    encoder->context_ = std::move(context);
    return encoder;
}

void SoundEncoder::encode(std::span<const float> samples, std::vector<PacketPtr>& packets)
{
    waiting_.insert(waiting_.end(), samples.begin(), samples.end());
    given_ += static_cast<std::int64_t>(samples.size() / 2);
    const auto block = static_cast<std::size_t>(frameSize_ > 0 ? frameSize_ : kAnySizeBlock) * 2;
    std::size_t taken = 0;
    while (waiting_.size() - taken >= block) {
        sendBlock(std::span(waiting_).subspan(taken, block), packets);
        taken += block;
    }
    waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(taken));
}

void SoundEncoder::finish(std::vector<PacketPtr>& packets)
{
    if (delaySamples_ > 0 && (context_->codec->capabilities & AV_CODEC_CAP_DELAY) == 0) {
        // An encoder that gives nothing back at its end has to be pushed until the last samples have come out.
        waiting_.resize(waiting_.size() + static_cast<std::size_t>(context_->initial_padding) * 2, 0.0f);
        encode({}, packets);
    }
    if (!waiting_.empty()) {
        const bool smallLast = frameSize_ == 0 || (context_->codec->capabilities & AV_CODEC_CAP_SMALL_LAST_FRAME) != 0;
        if (!smallLast) {
            waiting_.resize(static_cast<std::size_t>(frameSize_) * 2, 0.0f);
        }
        sendBlock(waiting_, packets);
        waiting_.clear();
    }
    send(nullptr, packets);
}

void SoundEncoder::sendBlock(std::span<const float> samples, std::vector<PacketPtr>& packets)
{
    auto frame = makeFrame();
    frame->format = context_->sample_fmt;
    frame->nb_samples = static_cast<int>(samples.size() / 2);
    frame->sample_rate = context_->sample_rate;
    av_channel_layout_default(&frame->ch_layout, context_->ch_layout.nb_channels);
    if (av_frame_get_buffer(frame.get(), 0) < 0) {
        throw std::bad_alloc();
    }
    fillFrame(*frame, samples);
    frame->pts = sent_;
    sent_ += frame->nb_samples;
    send(frame.get(), packets);
}

void SoundEncoder::send(const AVFrame* frame, std::vector<PacketPtr>& packets)
{
    int result = avcodec_send_frame(context_.get(), frame);
    while (result >= 0) {
        auto packet = makePacket();
        result = avcodec_receive_packet(context_.get(), packet.get());
        if (result < 0) {
            break;
        }
        if (packetsToDrop_ > 0) {
            --packetsToDrop_;
            continue;
        }
        if (packetsToSkip_ > 0) {
            --packetsToSkip_;
            packet->pts = packet->dts = packet->duration = 0;
            packets.push_back(std::move(packet));
            continue;
        }
        // Counted, since encoders stamp what they still hold at their end as they like.
        const std::int64_t count = frameSize_ > 0 ? frameSize_ : packet->duration;
        if (nextStart_ >= given_) {
            continue; // nothing of the movie is in it
        }
        packet->pts = packet->dts = nextStart_;
        packet->duration = count;
        nextStart_ += count;
        packets.push_back(std::move(packet));
    }
    if (result != AVERROR(EAGAIN) && result != AVERROR_EOF) {
        throw std::runtime_error(name_ + " failed: " + ffText(result) + ".");
    }
}

bool SoundEncoder::describe(AVCodecParameters& parameters) const
{
    if (avcodec_parameters_from_context(&parameters, context_.get()) < 0) {
        return false;
    }
    parameters.initial_padding = 0;
    if (parameters.bit_rate <= 0 && parameters.block_align > 0 && context_->frame_size > 0) {
        // Blocks of one size have this rate; readers tell the time by it.
        parameters.bit_rate =
            av_rescale(std::int64_t{parameters.block_align} * 8, context_->sample_rate, context_->frame_size);
    }
    return true;
}

} // namespace twcore
