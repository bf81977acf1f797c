#include "twcore/save/video_encoder.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <cstring>
#include <stdexcept>

namespace twcore {

PictureFormat VideoEncoding::pictureFormat() const
{
    if (!compressor) {
        return {size, AV_PIX_FMT_BGR24, {Matrix::kRgb, true}};
    }
    // AVI tells no colour of its own, and what reads these streams takes them as 601.
    const AVPixelFormat pixels = compressor->pixels == AV_PIX_FMT_YUVJ420P ? AV_PIX_FMT_YUV420P : compressor->pixels;
    return {size, pixels, {Matrix::kBt601, compressor->isFullRange}};
}

namespace {

void setQuality(AVCodecContext& context, const VideoCompressor& compressor, int quality)
{
    const int value = encoderQuality(compressor, quality);
    if (compressor.quality == QualityScale::kQuantizer) {
        context.flags |= AV_CODEC_FLAG_QSCALE;
        context.global_quality = value * FF_QP2LAMBDA;
    } else if (compressor.quality == QualityScale::kRateFactor) {
        av_opt_set_int(context.priv_data, "crf", value, 0);
        av_opt_set(context.priv_data, "preset", "veryfast", 0);
    }
}

} // namespace

std::unique_ptr<VideoEncoder> VideoEncoder::open(const VideoEncoding& encoding, int threads, std::string& why)
{
    std::unique_ptr<VideoEncoder> encoder(new VideoEncoder);
    encoder->encoding_ = encoding;
    if (!encoding.compressor) {
        return encoder;
    }
    const VideoCompressor& compressor = *encoding.compressor;
    const AVCodec* const codec = avcodec_find_encoder_by_name(compressor.encoder);
    CodecContextPtr context(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (!context) {
        why = std::string("This machine has no encoder for ") + compressor.name + ".";
        return nullptr;
    }
    context->width = encoding.size.width;
    context->height = encoding.size.height;
    context->pix_fmt = compressor.pixels;
    context->color_range = compressor.isFullRange ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    context->time_base = av_inv_q(encoding.fps);
    context->framerate = encoding.fps;
    context->sample_aspect_ratio = {1, 1};
    context->max_b_frames = 0; // AVI has no place for the order of showing
    context->thread_count = threads;
    context->flags |= AV_CODEC_FLAG_BITEXACT;
    if (compressor.canSetKeyFrameRate && encoding.keyFrameRate > 0) {
        context->gop_size = encoding.keyFrameRate;
    }
    setQuality(*context, compressor, encoding.quality);
    if (const int error = avcodec_open2(context.get(), codec, nullptr); error < 0) {
        why = std::string(compressor.name) + " cannot encode pictures of " + std::to_string(encoding.size.width) + " x "
              + std::to_string(encoding.size.height) + ": " + ffText(error) + ".";
        return nullptr;
    }
    encoder->context_ = std::move(context);
    return encoder;
}

void VideoEncoder::encode(const AVFrame* picture, std::int64_t number, std::vector<PacketPtr>& packets)
{
    if (!context_) {
        if (picture != nullptr) {
            packets.push_back(packRaw(*picture, number));
        }
        return;
    }
    FramePtr stamped;
    if (picture != nullptr) {
        stamped.reset(av_frame_clone(picture));
        if (!stamped) {
            throw std::bad_alloc();
        }
        // What the decoder noted on the frame must not steer the encoder.
        stamped->format = context_->pix_fmt;
        stamped->pict_type = AV_PICTURE_TYPE_NONE;
        stamped->pts = number;
        stamped->quality = context_->global_quality;
        stamped->interlaced_frame = 0;
    }
    int result = avcodec_send_frame(context_.get(), stamped.get());
    while (result >= 0) {
        auto packet = makePacket();
        result = avcodec_receive_packet(context_.get(), packet.get());
        if (result >= 0) {
            packet->duration = 1;
            packets.push_back(std::move(packet));
        }
    }
    if (result != AVERROR(EAGAIN) && result != AVERROR_EOF) {
        throw std::runtime_error(std::string(encoding_.compressor->name) + " failed: " + ffText(result) + ".");
    }
}

PacketPtr VideoEncoder::packRaw(const AVFrame& picture, std::int64_t number) const
{
    // As bitmaps are stored: the last line first, lines filled up to four bytes.
    const int lineBytes = picture.width * 3;
    const int stride = (lineBytes + 3) & ~3;
    auto packet = makePacket();
    if (av_new_packet(packet.get(), stride * picture.height) < 0) {
        throw std::bad_alloc();
    }
    for (int y = 0; y < picture.height; ++y) {
        auto* const line = packet->data + std::ptrdiff_t{picture.height - 1 - y} * stride;
        std::memcpy(line, picture.data[0] + std::ptrdiff_t{y} * picture.linesize[0],
                    static_cast<std::size_t>(lineBytes));
        std::memset(line + lineBytes, 0, static_cast<std::size_t>(stride - lineBytes));
    }
    packet->pts = packet->dts = number;
    packet->duration = 1;
    packet->flags |= AV_PKT_FLAG_KEY;
    return packet;
}

bool VideoEncoder::describe(AVCodecParameters& parameters) const
{
    if (context_) {
        return avcodec_parameters_from_context(&parameters, context_.get()) >= 0;
    }
    parameters.codec_type = AVMEDIA_TYPE_VIDEO;
    parameters.codec_id = AV_CODEC_ID_RAWVIDEO;
    parameters.format = AV_PIX_FMT_BGR24;
    parameters.bits_per_coded_sample = 24;
    parameters.width = encoding_.size.width;
    parameters.height = encoding_.size.height;
    parameters.sample_aspect_ratio = {1, 1};
    return true;
}

} // namespace twcore
