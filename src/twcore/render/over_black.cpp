#include "twcore/render/over_black.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace twcore {

bool isTransparent(const AVFrame& frame)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return shape != nullptr && (shape->flags & (AV_PIX_FMT_FLAG_ALPHA | AV_PIX_FMT_FLAG_PAL)) != 0;
}

FramePtr overBlack(const AVFrame& frame)
{
    auto flat = makeFrame();
    flat->format = AV_PIX_FMT_BGRA;
    flat->width = frame.width;
    flat->height = frame.height;
    SwsContext* const scaler =
        sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), frame.width, frame.height,
                       AV_PIX_FMT_BGRA, SWS_POINT, nullptr, nullptr, nullptr);
    if (scaler == nullptr || av_frame_get_buffer(flat.get(), 0) < 0) {
        sws_freeContext(scaler);
        return nullptr;
    }
    sws_scale(scaler, frame.data, frame.linesize, 0, frame.height, flat->data, flat->linesize);
    sws_freeContext(scaler);
    for (int y = 0; y < flat->height; ++y) {
        auto* pixel = flat->data[0] + std::ptrdiff_t{y} * flat->linesize[0];
        for (int x = 0; x < flat->width; ++x, pixel += 4) {
            const int alpha = pixel[3];
            for (int i = 0; i < 3; ++i) {
                pixel[i] = static_cast<std::uint8_t>((pixel[i] * alpha + 127) / 255);
            }
        }
    }
    flat->format = AV_PIX_FMT_BGR0;
    return flat;
}

} // namespace twcore
