#include "twcore/media/decoder.h"

#include "twcore/media/input_file.h"
#include "twcore/media/jpeg_remarks.h"

#include <algorithm>
#include <new>

namespace twcore {

std::unique_ptr<Decoder> Decoder::open(const AVStream& stream, int threads)
{
    auto context = contextFor(*stream.codecpar, stream.time_base, threads);
    return context ? std::unique_ptr<Decoder>(new Decoder(std::move(context))) : nullptr;
}

CodecContextPtr Decoder::contextFor(const AVCodecParameters& parameters, AVRational timeBase, int threads)
{
    const AVCodec* const codec = avcodec_find_decoder(parameters.codec_id);
    if (codec == nullptr) {
        return nullptr;
    }
    CodecContextPtr context(avcodec_alloc_context3(codec));
    if (!context || avcodec_parameters_to_context(context.get(), &parameters) < 0) {
        return nullptr;
    }
    context->pkt_timebase = timeBase;
    context->thread_count = threads;
    context->max_pixels = kMaxPixels;
    if (parameters.codec_id == AV_CODEC_ID_H264) {
        // Otherwise a picture that is held back at a jump ends the draining of the decoder, and the last ones with it.
        context->flags |= AV_CODEC_FLAG_OUTPUT_CORRUPT;
    }
    if (codec->type == AVMEDIA_TYPE_VIDEO && context->width > 0
        && std::int64_t{context->width} * context->height > kMaxPixels) {
        return nullptr;
    }
    return avcodec_open2(context.get(), codec, nullptr) < 0 ? nullptr : std::move(context);
}

/// What a remark tells the decoder holds for its own picture, but the decoder keeps to it.
void Decoder::noteRemarks(const AVPacket& packet)
{
    const unsigned remarks = remarksOf({packet.data, static_cast<std::size_t>(packet.size)});
    if ((remarks_ & ~remarks) != 0) {
        openAnew();
    }
    remarks_ = remarks;
}

void Decoder::openAnew()
{
    (void)avcodec_send_packet(context_.get(), nullptr);
    for (FramePtr frame = makeFrame(); avcodec_receive_frame(context_.get(), frame.get()) >= 0; frame = makeFrame()) {
        ready_.push_back(std::move(frame));
    }
    const std::unique_ptr<AVCodecParameters, FreeByAddress<avcodec_parameters_free>> told(avcodec_parameters_alloc());
    if (!told || avcodec_parameters_from_context(told.get(), context_.get()) < 0) {
        throw std::bad_alloc();
    }
    auto context = contextFor(*told, context_->pkt_timebase, context_->thread_count);
    if (context) {
        context->skip_frame = context_->skip_frame;
        context_ = std::move(context);
    } else {
        avcodec_flush_buffers(context_.get());
    }
}

void Decoder::send(const AVPacket* packet)
{
    if (packet != nullptr && context_->codec_id == AV_CODEC_ID_MJPEG) {
        noteRemarks(*packet);
    }
    if (packet != nullptr && context_->codec_id == AV_CODEC_ID_TARGA) {
        constexpr int kHeaderBytes = 18;
        constexpr int kAlphaBits = 0x0F; // of the header's last byte
        opaque_ = packet->size >= kHeaderBytes && (packet->data[kHeaderBytes - 1] & kAlphaBits) == 0;
    }
    // What the decoder refuses is lost, as a damaged packet is.
    (void)avcodec_send_packet(context_.get(), packet);
}

FramePtr Decoder::receive()
{
    if (long_) {
        return nextPart();
    }
    if (!ready_.empty()) {
        FramePtr frame = std::move(ready_.front());
        ready_.pop_front();
        return frame;
    }
    if (!spare_) {
        spare_ = makeFrame();
    }
    do {
        if (avcodec_receive_frame(context_.get(), spare_.get()) < 0) {
            return nullptr;
        }
    } while (recovering_ && isToBeDropped(*spare_));
    recovering_ = false;
    if (opaque_ && spare_->format == AV_PIX_FMT_BGRA) {
        spare_->format = AV_PIX_FMT_BGR0;
    }
    if (spare_->sample_rate > 0 && spare_->nb_samples > spare_->sample_rate) {
        long_ = std::move(spare_);
        partStart_ = 0;
        return nextPart();
    }
    return std::move(spare_);
}

/// Behind a jump, pictures come first that lean on others which were never decoded, and a damaged key frame shows grey
/// where whoever came by decoding has the picture before.
bool Decoder::isToBeDropped(const AVFrame& frame)
{
    const bool isMended = afterFlush_ && (frame.decode_error_flags & FF_DECODE_ERROR_CONCEALMENT_ACTIVE) != 0;
    startsDamaged_ = startsDamaged_ || isMended;
    return isMended || (frame.flags & AV_FRAME_FLAG_CORRUPT) != 0;
}

/// At a few samples a second a packet lasts for an hour, which would be taken in memory at the rate of the mix.
FramePtr Decoder::nextPart()
{
    FramePtr part(av_frame_clone(long_.get()));
    if (!part) {
        throw std::bad_alloc();
    }
    const auto format = static_cast<AVSampleFormat>(part->format);
    const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
    const int channels = part->ch_layout.nb_channels;
    const int step = av_get_bytes_per_sample(format) * (isPlanar ? 1 : channels);
    for (int i = 0; i < (isPlanar ? channels : 1); ++i) {
        part->extended_data[i] += std::ptrdiff_t{partStart_} * step;
    }
    if (part->extended_data != part->data) { // the first few stand in both
        std::copy_n(part->extended_data, AV_NUM_DATA_POINTERS, part->data);
    }
    part->nb_samples = std::min(part->sample_rate, long_->nb_samples - partStart_);
    if (part->best_effort_timestamp != AV_NOPTS_VALUE) {
        part->best_effort_timestamp += av_rescale_q(partStart_, {1, part->sample_rate}, context_->pkt_timebase);
    }
    partStart_ += part->nb_samples;
    if (partStart_ >= long_->nb_samples) {
        long_.reset();
    }
    return part;
}

void Decoder::flush() noexcept
{
    avcodec_flush_buffers(context_.get());
    long_.reset();
    ready_.clear();
    recovering_ = afterFlush_ = true;
    startsDamaged_ = false;
}

} // namespace twcore
