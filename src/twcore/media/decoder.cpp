#include "twcore/media/decoder.h"

#include "twcore/media/input_file.h"

namespace twcore {

std::unique_ptr<Decoder> Decoder::open(const AVStream& stream, int threads)
{
    const AVCodec* const codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (codec == nullptr) {
        return nullptr;
    }
    CodecContextPtr context(avcodec_alloc_context3(codec));
    if (!context || avcodec_parameters_to_context(context.get(), stream.codecpar) < 0) {
        return nullptr;
    }
    context->pkt_timebase = stream.time_base;
    context->thread_count = threads;
    context->max_pixels = kMaxPixels;
    if (stream.codecpar->codec_id == AV_CODEC_ID_H264) {
        // Otherwise a picture that is held back at a jump ends the draining of the decoder, and the last ones with it.
        context->flags |= AV_CODEC_FLAG_OUTPUT_CORRUPT;
    }
    if (codec->type == AVMEDIA_TYPE_VIDEO && context->width > 0
        && std::int64_t{context->width} * context->height > kMaxPixels) {
        return nullptr;
    }
    if (avcodec_open2(context.get(), codec, nullptr) < 0) {
        return nullptr;
    }
    return std::unique_ptr<Decoder>(new Decoder(std::move(context)));
}

void Decoder::send(const AVPacket* packet) noexcept
{
    // What the decoder refuses is lost, as a damaged packet is.
    (void)avcodec_send_packet(context_.get(), packet);
}

FramePtr Decoder::receive()
{
    if (!spare_) {
        spare_ = makeFrame();
    }
    do {
        if (avcodec_receive_frame(context_.get(), spare_.get()) < 0) {
            return nullptr;
        }
        // Behind a jump, pictures come first that lean on others which were never decoded.
    } while (recovering_ && (spare_->flags & AV_FRAME_FLAG_CORRUPT) != 0);
    recovering_ = false;
    return std::move(spare_);
}

void Decoder::flush() noexcept
{
    avcodec_flush_buffers(context_.get());
    recovering_ = true;
}

} // namespace twcore
