#include "movie_reader.h"

#include "twcore/media/ff_versions.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/display.h>
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>

namespace testmedia {
namespace {

struct Release {
    void operator()(AVFormatContext* p) const { avformat_close_input(&p); }
    void operator()(AVCodecContext* p) const { avcodec_free_context(&p); }
    void operator()(AVPacket* p) const { av_packet_free(&p); }
    void operator()(AVFrame* p) const { av_frame_free(&p); }
    void operator()(SwsContext* p) const { sws_freeContext(p); }
    void operator()(SwrContext* p) const { swr_free(&p); }
};
template <typename T>
using Owned = std::unique_ptr<T, Release>;

std::string text(const char* name) { return name != nullptr ? name : "unknown"; }

double secondsOf(std::int64_t time, AVRational base)
{
    return time == AV_NOPTS_VALUE ? -std::numeric_limits<double>::infinity() : static_cast<double>(time) * av_q2d(base);
}

// A plane of `bytes` a pixel, turned clockwise in quarter turns.
std::vector<std::uint8_t> turned(const std::vector<std::uint8_t>& from, int widthPx, int heightPx, int bytes,
                                 int degrees)
{
    if (degrees == 0)
        return from;
    std::vector<std::uint8_t> to(from.size());
    const int newWidth = degrees == 180 ? widthPx : heightPx;
    for (int y = 0; y < heightPx; ++y)
        for (int x = 0; x < widthPx; ++x) {
            const int newX = degrees == 90 ? heightPx - 1 - y : degrees == 180 ? widthPx - 1 - x : y;
            const int newY = degrees == 90 ? x : degrees == 180 ? heightPx - 1 - y : widthPx - 1 - x;
            std::copy_n(from.begin() + (static_cast<std::ptrdiff_t>(y) * widthPx + x) * bytes, bytes,
                        to.begin() + (static_cast<std::ptrdiff_t>(newY) * newWidth + newX) * bytes);
        }
    return to;
}

class Reader {
public:
    Reader(const std::filesystem::path& file, const ReadOptions& options) : options_(options)
    {
        AVFormatContext* opened = nullptr;
        // The prefix keeps percent signs and colons in a name from being understood as anything else.
        const std::string address = "file:" + file.string();
        AVDictionary* settings = nullptr;
        av_dict_set(&settings, "pattern_type", "none", 0);
        const int found = avformat_open_input(&opened, address.c_str(), nullptr, &settings);
        av_dict_free(&settings);
        if (found < 0)
            throw std::runtime_error("cannot be opened: " + file.string());
        format_.reset(opened);
        if (avformat_find_stream_info(format_.get(), nullptr) < 0)
            throw std::runtime_error("has no stream information: " + file.string());
        openDecoder(AVMEDIA_TYPE_VIDEO, video_, videoStream_);
        openDecoder(AVMEDIA_TYPE_AUDIO, audio_, audioStream_);
        if (!video_ && !audio_)
            throw std::runtime_error("neither picture nor sound: " + file.string());
        describe();
    }

    Movie read()
    {
        const Owned<AVPacket> packet(av_packet_alloc());
        while (av_read_frame(format_.get(), packet.get()) >= 0) {
            if (videoStream_ != nullptr && packet->stream_index == videoStream_->index)
                decode(*video_, packet.get());
            else if (audioStream_ != nullptr && packet->stream_index == audioStream_->index)
                decode(*audio_, packet.get());
            av_packet_unref(packet.get());
        }
        if (video_)
            decode(*video_, nullptr);
        if (audio_)
            decode(*audio_, nullptr);
        return std::move(movie_);
    }

private:
    void openDecoder(AVMediaType type, Owned<AVCodecContext>& decoder, AVStream*& stream)
    {
        const AVCodec* codec = nullptr;
        const int index = av_find_best_stream(format_.get(), type, -1, -1, &codec, 0);
        if (index < 0 || codec == nullptr)
            return;
        stream = format_->streams[index];
        decoder.reset(avcodec_alloc_context3(codec));
        avcodec_parameters_to_context(decoder.get(), stream->codecpar);
        decoder->pkt_timebase = stream->time_base;
        if (avcodec_open2(decoder.get(), codec, nullptr) < 0)
            decoder.reset();
    }

    void describe()
    {
        movie_.format = format_->iformat->name;
        movie_.durationSeconds = std::max(0.0, secondsOf(format_->duration, {1, AV_TIME_BASE}));
        if (video_) {
            movie_.videoCodec = avcodec_get_name(video_->codec_id);
            movie_.frameRate = videoStream_->avg_frame_rate.den > 0 ? av_q2d(videoStream_->avg_frame_rate) : 0;
            movie_.codedWidthPx = videoStream_->codecpar->width;
            movie_.codedHeightPx = videoStream_->codecpar->height;
            const AVRational aspect = av_guess_sample_aspect_ratio(format_.get(), videoStream_, nullptr);
            if (aspect.num > 0) {
                movie_.aspectNumerator = aspect.num;
                movie_.aspectDenominator = aspect.den;
            }
            if (const auto matrix = twcore::sideDataOf(*videoStream_, AV_PKT_DATA_DISPLAYMATRIX); !matrix.empty()) {
                const double turn = -av_display_rotation_get(reinterpret_cast<const std::int32_t*>(matrix.data()));
                movie_.rotationDegrees = ((static_cast<int>(std::lround(turn / 90)) * 90) % 360 + 360) % 360;
            }
        }
        if (audio_) {
            movie_.soundCodec = avcodec_get_name(audio_->codec_id);
            movie_.rateHz = audio_->sample_rate;
            movie_.channels = audio_->ch_layout.nb_channels;
            movie_.soundBitRate = static_cast<long>(audioStream_->codecpar->bit_rate);
        }
    }

    void decode(AVCodecContext& decoder, const AVPacket* packet)
    {
        const int sent = avcodec_send_packet(&decoder, packet);
        if (sent < 0 && sent != AVERROR_EOF)
            ++movie_.decodeErrors;
        const Owned<AVFrame> frame(av_frame_alloc());
        while (avcodec_receive_frame(&decoder, frame.get()) >= 0) {
            if (frame->decode_error_flags != 0)
                ++movie_.decodeErrors;
            if (decoder.codec_type == AVMEDIA_TYPE_VIDEO)
                takePicture(*frame);
            else
                takeSound(*frame);
            av_frame_unref(frame.get());
        }
    }

    // Luma as it is stored where there is such a plane, otherwise converted.
    std::vector<std::uint8_t> lumaOf(const AVFrame& frame) const
    {
        const auto* shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
        const auto w = static_cast<std::size_t>(frame.width), h = static_cast<std::size_t>(frame.height);
        const bool planarLuma = (shape->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) == 0
                                && shape->comp[0].step == 1 && shape->comp[0].depth == 8;
        if (!planarLuma)
            return converted(frame, AV_PIX_FMT_GRAY8, 1);
        std::vector<std::uint8_t> gray(w * h);
        for (std::size_t y = 0; y < h; ++y)
            std::copy_n(frame.data[0] + static_cast<std::ptrdiff_t>(y) * frame.linesize[0], w,
                        gray.begin() + static_cast<std::ptrdiff_t>(y * w));
        return gray;
    }

    static std::vector<std::uint8_t> converted(const AVFrame& frame, AVPixelFormat to, int bytes)
    {
        const auto* shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
        std::string format = shape->name;
        const bool oldFullRange = format.starts_with("yuvj"); // another name for the same planes
        if (oldFullRange)
            format.erase(3, 1);
        const bool fullRange =
            frame.color_range == AVCOL_RANGE_JPEG || (shape->flags & AV_PIX_FMT_FLAG_RGB) != 0 || oldFullRange;
        const Owned<SwsContext> scaler(sws_getContext(frame.width, frame.height, av_get_pix_fmt(format.c_str()),
                                                      frame.width, frame.height, to, SWS_BILINEAR | SWS_ACCURATE_RND,
                                                      nullptr, nullptr, nullptr));
        if (!scaler)
            throw std::runtime_error("a picture cannot be converted");
        const int space = frame.colorspace == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601;
        sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(space), fullRange ? 1 : 0,
                                 sws_getCoefficients(space), 1, 0, 1 << 16, 1 << 16);
        // Room at the ends of the lines: the converter may write a little past them.
        const int stride = (frame.width * bytes + 63) / 64 * 64 + 64;
        std::vector<std::uint8_t> wide(static_cast<std::size_t>(stride) * static_cast<std::size_t>(frame.height + 1));
        std::uint8_t* planes[] = {wide.data(), nullptr, nullptr, nullptr};
        const int strides[] = {stride, 0, 0, 0};
        sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
        const auto line = static_cast<std::size_t>(frame.width * bytes);
        std::vector<std::uint8_t> picture(line * static_cast<std::size_t>(frame.height));
        for (std::size_t y = 0; y < static_cast<std::size_t>(frame.height); ++y)
            std::copy_n(wide.data() + y * static_cast<std::size_t>(stride), line, picture.data() + y * line);
        return picture;
    }

    void takePicture(const AVFrame& frame)
    {
        if (movie_.frames.empty()) {
            movie_.colourSpace = text(av_color_space_name(frame.colorspace));
            movie_.colourRange = text(av_color_range_name(frame.color_range));
        }
        const bool upright = movie_.rotationDegrees % 180 == 0;
        MovieFrame taken;
        taken.seconds = secondsOf(frame.best_effort_timestamp, videoStream_->time_base);
        if (!std::isfinite(taken.seconds)) // the last ones of a program stream, for one
            taken.seconds = movie_.frames.empty()
                                ? 0
                                : movie_.frames.back().seconds + (movie_.frameRate > 0 ? 1 / movie_.frameRate : 0);
        taken.widthPx = upright ? frame.width : frame.height;
        taken.heightPx = upright ? frame.height : frame.width;
        taken.keyFrame = twcore::isKeyFrame(frame);
        taken.interlaced = twcore::isInterlaced(frame);
        taken.topFieldFirst = twcore::isTopFieldFirst(frame);
        const auto gray = turned(lumaOf(frame), frame.width, frame.height, 1, movie_.rotationDegrees);
        const GrayView view{gray.data(), static_cast<std::size_t>(taken.widthPx), taken.widthPx, taken.heightPx};
        taken.black = isBlack(view);
        taken.number = readBarcode(view);
        if (options_.keepRgb)
            taken.rgb =
                turned(converted(frame, AV_PIX_FMT_RGB24, 3), frame.width, frame.height, 3, movie_.rotationDegrees);
        movie_.frames.push_back(std::move(taken));
    }

    void takeSound(AVFrame& frame)
    {
        if (!resampler_) {
            SwrContext* made = nullptr;
            if (swr_alloc_set_opts2(&made, &frame.ch_layout, AV_SAMPLE_FMT_FLT, frame.sample_rate, &frame.ch_layout,
                                    static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr)
                    < 0
                || swr_init(made) < 0)
                throw std::runtime_error("sound cannot be converted");
            resampler_.reset(made);
            movie_.rateHz = frame.sample_rate;
            movie_.channels = frame.ch_layout.nb_channels;
        }
        const double at = secondsOf(frame.best_effort_timestamp, audioStream_->time_base);
        if (movie_.sound.empty())
            movie_.soundStartSeconds = std::isfinite(at) ? at : 0;
        else if (std::isfinite(at))
            movie_.largestGapSeconds =
                std::max(movie_.largestGapSeconds, std::abs(at - movie_.soundStartSeconds - movie_.soundSeconds()));
        const std::size_t before = movie_.sound.size();
        movie_.sound.resize(before
                            + static_cast<std::size_t>(frame.nb_samples) * static_cast<std::size_t>(movie_.channels));
        auto* target = reinterpret_cast<std::uint8_t*>(movie_.sound.data() + before);
        swr_convert(resampler_.get(), &target, frame.nb_samples, const_cast<const std::uint8_t**>(frame.extended_data),
                    frame.nb_samples);
    }

    ReadOptions options_;
    Owned<AVFormatContext> format_;
    Owned<AVCodecContext> video_, audio_;
    AVStream* videoStream_ = nullptr;
    AVStream* audioStream_ = nullptr;
    Owned<SwrContext> resampler_;
    Movie movie_;
};

} // namespace

std::array<double, 3> MovieFrame::meanColour(const PixelRect& rect) const
{
    std::array<double, 3> sum{};
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            for (std::size_t c = 0; c < 3; ++c)
                sum[c] += rgb.at(
                    (static_cast<std::size_t>(y) * static_cast<std::size_t>(widthPx) + static_cast<std::size_t>(x)) * 3
                    + c);
    const double count = std::max(1, (rect.right - rect.left) * (rect.bottom - rect.top));
    return {sum[0] / count, sum[1] / count, sum[2] / count};
}

SoundView Movie::soundView(int channel, double fromSeconds, double lengthSeconds) const
{
    const auto index = [&](double seconds) {
        return std::clamp<std::int64_t>(std::llround((seconds - soundStartSeconds) * rateHz), 0,
                                        static_cast<std::int64_t>(soundCount()));
    };
    const auto first = index(fromSeconds), last = index(fromSeconds + lengthSeconds);
    const auto stride = static_cast<std::size_t>(channels);
    return {sound.data() + static_cast<std::size_t>(first) * stride + static_cast<std::size_t>(channel),
            static_cast<std::size_t>(std::max<std::int64_t>(0, last - first)), rateHz, stride};
}

std::optional<double> Movie::soundShift(int channel, double atSeconds, double searchSeconds, double lengthSeconds) const
{
    const SoundView view = soundView(channel, atSeconds, lengthSeconds);
    if (view.count < static_cast<std::size_t>(rateHz / 20))
        return std::nullopt;
    const double cutOff = std::max(0.0, soundStartSeconds - atSeconds); // the view begins that much later
    const double rounding =
        cutOff > 0 ? 0
                   : std::round((atSeconds - soundStartSeconds) * rateHz) / rateHz - (atSeconds - soundStartSeconds);
    const double start = atSeconds + cutOff + rounding;
    const SoundMatch match = locate(view, channel, start - searchSeconds, start + searchSeconds);
    if (match.score < 0.7)
        return std::nullopt;
    return match.seconds - start;
}

std::vector<int> Movie::numbers() const
{
    std::vector<int> all;
    all.reserve(frames.size());
    for (const MovieFrame& frame : frames)
        all.push_back(frame.black ? -1 : frame.number.value_or(-2));
    return all;
}

Movie readMovie(const std::filesystem::path& file, const ReadOptions& options) { return Reader(file, options).read(); }

} // namespace testmedia
