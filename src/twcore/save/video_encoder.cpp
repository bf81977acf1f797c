#include "twcore/save/video_encoder.h"

#include "twcore/media/ff_versions.h"
#include "twcore/save/jpeg_encoder.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <limits>
#include <span>
#include <stdexcept>
#include <string_view>

namespace twcore {

namespace {

constexpr PictureSize kDvPal{720, 576};
constexpr PictureSize kDvNtsc{720, 480};

bool isDv(const VideoCompressor& compressor) { return std::string_view(compressor.encoder) == kDvEncoder; }

AVPixelFormat encoderPixels(const VideoEncoding& encoding)
{
    const bool isNarrow = isDv(*encoding.compressor) && encoding.size.height == kDvNtsc.height;
    return isNarrow ? AV_PIX_FMT_YUV411P : encoding.compressor->pixels;
}

/// Why a compressor does not take what its encoder would not refuse, or not say so clearly; empty when it does.
std::string refusal(const VideoEncoding& encoding)
{
    const auto is = [&](const PictureSize& size, AVRational fps) {
        return encoding.size.width == size.width && encoding.size.height == size.height
               && av_cmp_q(encoding.fps, fps) == 0;
    };
    if (isDv(*encoding.compressor) && !is(kDvPal, {25, 1}) && !is(kDvNtsc, {30000, 1001})) {
        return "DV takes 720 x 576 at 25 frames a second, and 720 x 480 at 30000/1001.";
    }
    return {};
}

} // namespace

PictureFormat VideoEncoding::pictureFormat() const
{
    if (!compressor || compressor->pixels == AV_PIX_FMT_RGB24) {
        return {size, AV_PIX_FMT_BGR24, {Matrix::kRgb, true}};
    }
    // AVI tells no colour of its own: it is the one that is understood of a picture of this size.
    const AVPixelFormat wanted = encoderPixels(*this);
    const AVPixelFormat pixels = wanted == AV_PIX_FMT_YUVJ420P ? AV_PIX_FMT_YUV420P : wanted;
    const bool isFullRange = compressor->isFullRange;
    return {size, pixels, {untoldMatrix(size.width, size.height, isFullRange), isFullRange}};
}

VideoEncoding::Unit VideoEncoding::unit() const
{
    if (!compressor || compressor->isIntraOnly) {
        return Unit::kPicture;
    }
    const bool keepsRate = bitRate > 0 && compressor->quality != QualityScale::kNone;
    return keepsRate || keepsKeyDistance || std::string_view(compressor->encoder) == kXvidEncoder ? Unit::kMovie
                                                                                                  : Unit::kGroup;
}

int VideoEncoding::groupFrames() const
{
    constexpr int kLong = 250; // what encoders take that are not told
    constexpr int kShort = 12;
    if (!compressor || compressor->isIntraOnly) {
        return 1;
    }
    return keyFrameRate > 0 ? keyFrameRate : compressor->quality == QualityScale::kRateFactor ? kLong : kShort;
}

namespace {

PacketPtr keyPacket(std::span<const std::uint8_t> bytes, std::int64_t number)
{
    auto packet = makePacket();
    if (av_new_packet(packet.get(), static_cast<int>(bytes.size())) < 0) {
        throw std::bad_alloc();
    }
    std::ranges::copy(bytes, packet->data);
    packet->pts = packet->dts = number;
    packet->duration = 1;
    packet->flags |= AV_PKT_FLAG_KEY;
    return packet;
}

void describePicture(AVCodecParameters& parameters, AVCodecID codec, AVPixelFormat pixels, PictureSize size)
{
    parameters.codec_type = AVMEDIA_TYPE_VIDEO;
    parameters.codec_id = codec;
    parameters.format = pixels;
    parameters.width = size.width;
    parameters.height = size.height;
    parameters.sample_aspect_ratio = {1, 1};
}

/// Bitmaps as they are stored in files: the last line first, lines filled up to four bytes.
class RawEncoder final : public VideoEncoder {
public:
    explicit RawEncoder(PictureSize size) : size_(size), bytes_(std::size_t(stride()) * std::size_t(size.height)) {}

    void encode(const AVFrame* picture, std::int64_t number, std::vector<PacketPtr>& packets) override
    {
        if (picture == nullptr) {
            return;
        }
        for (int y = 0; y < size_.height; ++y) {
            const auto* const line = picture->data[0] + std::ptrdiff_t{y} * picture->linesize[0];
            std::copy_n(line, size_.width * 3, bytes_.begin() + std::ptrdiff_t{size_.height - 1 - y} * stride());
        }
        packets.push_back(keyPacket(bytes_, number));
    }

    bool describe(AVCodecParameters& parameters) const override
    {
        describePicture(parameters, AV_CODEC_ID_RAWVIDEO, AV_PIX_FMT_BGR24, size_);
        parameters.bits_per_coded_sample = 24;
        return true;
    }

private:
    int stride() const { return (size_.width * 3 + 3) & ~3; }

    PictureSize size_;
    std::vector<std::uint8_t> bytes_;
};

class MotionJpegEncoder final : public VideoEncoder {
public:
    explicit MotionJpegEncoder(const VideoEncoding& encoding)
        : size_(encoding.size), jpeg_(size_.width, size_.height, encoderQuality(*encoding.compressor, encoding.quality))
    {}

    void encode(const AVFrame* picture, std::int64_t number, std::vector<PacketPtr>& packets) override
    {
        if (picture == nullptr) {
            return;
        }
        const JpegPicture planes{{picture->data[0], picture->data[1], picture->data[2]},
                                 {picture->linesize[0], picture->linesize[1], picture->linesize[2]}};
        packets.push_back(keyPacket(jpeg_.encode(planes), number));
    }

    bool describe(AVCodecParameters& parameters) const override
    {
        describePicture(parameters, AV_CODEC_ID_MJPEG, AV_PIX_FMT_YUVJ420P, size_);
        parameters.color_range = AVCOL_RANGE_JPEG;
        return true;
    }

private:
    PictureSize size_;
    JpegEncoder jpeg_;
};

/// An encoder of the media libraries.
class LibraryEncoder final : public VideoEncoder {
public:
    LibraryEncoder(std::string name, CodecContextPtr context) : name_(std::move(name)), context_(std::move(context)) {}

    void encode(const AVFrame* picture, std::int64_t number, std::vector<PacketPtr>& packets) override
    {
        FramePtr stamped;
        if (picture != nullptr) {
            stamped = context_->pix_fmt == AV_PIX_FMT_RGB24 ? swapped(*picture) : FramePtr(av_frame_clone(picture));
            if (!stamped) {
                throw std::bad_alloc();
            }
            // What the decoder noted on the frame must not steer the encoder.
            stamped->format = context_->pix_fmt;
            stamped->pict_type = AV_PICTURE_TYPE_NONE;
            stamped->pts = number;
            stamped->quality = context_->global_quality;
            setFields(*stamped, false, isTopFieldFirst(*stamped));
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
            throw std::runtime_error(name_ + " failed: " + ffText(result) + ".");
        }
    }

    bool describe(AVCodecParameters& parameters) const override
    {
        return avcodec_parameters_from_context(&parameters, context_.get()) >= 0;
    }

private:
    static FramePtr swapped(const AVFrame& picture);

    std::string name_;
    CodecContextPtr context_;
};

/// Blue, green, red turned round.
FramePtr LibraryEncoder::swapped(const AVFrame& picture)
{
    FramePtr turned = makeFrame();
    turned->format = AV_PIX_FMT_RGB24;
    turned->width = picture.width;
    turned->height = picture.height;
    if (av_frame_get_buffer(turned.get(), 0) < 0) {
        throw std::bad_alloc();
    }
    for (int y = 0; y < picture.height; ++y) {
        const auto* const from = picture.data[0] + std::ptrdiff_t{y} * picture.linesize[0];
        auto* const to = turned->data[0] + std::ptrdiff_t{y} * turned->linesize[0];
        for (int x = 0; x < 3 * picture.width; x += 3) {
            to[x] = from[x + 2];
            to[x + 1] = from[x + 1];
            to[x + 2] = from[x];
        }
    }
    return turned;
}

void setQuality(AVCodecContext& context, const VideoEncoding& encoding)
{
    const VideoCompressor& compressor = *encoding.compressor;
    const int value = encoderQuality(compressor, encoding.quality);
    if (compressor.quality == QualityScale::kRateFactor) {
        av_opt_set(context.priv_data, "preset", "veryfast", 0);
    }
    if (encoding.bitRate > 0 && compressor.quality != QualityScale::kNone) {
        constexpr int kBufferSeconds = 3; // what a player on a line of that rate keeps ahead
        context.bit_rate = context.rc_max_rate = encoding.bitRate;
        context.rc_buffer_size = static_cast<int>(
            std::min<std::int64_t>(std::int64_t{encoding.bitRate} * kBufferSeconds, std::numeric_limits<int>::max()));
        context.qmin = encoding.quality >= 0 ? value : context.qmin;
    } else if (compressor.quality == QualityScale::kQuantizer) {
        context.flags |= AV_CODEC_FLAG_QSCALE;
        context.global_quality = value * FF_QP2LAMBDA;
    } else if (compressor.quality == QualityScale::kRateFactor) {
        av_opt_set_int(context.priv_data, "crf", value, 0);
    }
}

/// Told to the encoder, for the streams that can carry it: H.264, and Ut Video by its name.
void setColour(AVCodecContext& context, const Colour& colour)
{
    context.color_range = colour.isFullRange ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    if (colour.matrix == Matrix::kBt709) {
        context.colorspace = AVCOL_SPC_BT709;
        context.color_primaries = AVCOL_PRI_BT709;
        context.color_trc = AVCOL_TRC_BT709;
    } else if (colour.matrix == Matrix::kBt601) {
        context.colorspace = AVCOL_SPC_SMPTE170M;
    }
}

std::unique_ptr<VideoEncoder> openLibraryEncoder(const VideoEncoding& encoding, int threads, std::string& why)
{
    const VideoCompressor& compressor = *encoding.compressor;
    const AVCodec* const codec = avcodec_find_encoder_by_name(compressor.encoder);
    CodecContextPtr context(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (!context) {
        why = std::string("This machine has no encoder for ") + compressor.name + ".";
        return nullptr;
    }
    context->width = encoding.size.width;
    context->height = encoding.size.height;
    context->pix_fmt = encoderPixels(encoding);
    setColour(*context, encoding.pictureFormat().colour);
    context->time_base = av_inv_q(encoding.fps);
    context->framerate = encoding.fps;
    context->sample_aspect_ratio = {1, 1};
    context->max_b_frames = 0; // AVI has no place for the order of showing
    context->thread_count = threads;
    context->flags |= AV_CODEC_FLAG_BITEXACT;
    if (compressor.canSetKeyFrameRate && encoding.keyFrameRate > 0) {
        context->gop_size = encoding.keyFrameRate;
    }
    setQuality(*context, encoding);
    if (const int error = avcodec_open2(context.get(), codec, nullptr); error < 0) {
        why = std::string(compressor.name) + " cannot encode pictures of " + std::to_string(encoding.size.width) + " x "
              + std::to_string(encoding.size.height) + ": " + ffText(error) + ".";
        if ((encoding.size.width | encoding.size.height) % 2 != 0) { // the encoder itself only says "external"
            why += " Try an even width and height.";
        }
        return nullptr;
    }
    return std::make_unique<LibraryEncoder>(compressor.name, std::move(context));
}

} // namespace

std::unique_ptr<VideoEncoder> VideoEncoder::open(const VideoEncoding& encoding, int threads, std::string& why)
{
    const auto [width, height] = encoding.size;
    if (width <= 0 || height <= 0 || av_image_check_size(unsigned(width), unsigned(height), 0, nullptr) < 0) {
        why =
            "Pictures of " + std::to_string(width) + " x " + std::to_string(height) + " are larger than a movie takes.";
        return nullptr;
    }
    if (!encoding.compressor) {
        return std::make_unique<RawEncoder>(encoding.size);
    }
    why = refusal(encoding);
    if (!why.empty()) {
        return nullptr;
    }
    if (std::string_view(encoding.compressor->encoder) == kJpegEncoder) {
        return std::make_unique<MotionJpegEncoder>(encoding);
    }
    return openLibraryEncoder(encoding, threads, why);
}

} // namespace twcore
