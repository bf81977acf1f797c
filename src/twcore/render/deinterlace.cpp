#include "twcore/render/deinterlace.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cstring>

namespace twcore {

namespace {

// A line that lies within this of its neighbours' range belongs to the same moment.
constexpr int kCombThreshold = 10;

void fillLine(std::uint8_t* target, const std::uint8_t* own, const std::uint8_t* above, const std::uint8_t* below,
              int width)
{
    for (int x = 0; x < width; ++x) {
        const int a = above[x];
        const int b = below[x];
        const int low = std::min(a, b) - kCombThreshold;
        const int high = std::max(a, b) + kCombThreshold;
        const int here = own[x];
        target[x] = static_cast<std::uint8_t>(here >= low && here <= high ? here : (a + b + 1) >> 1);
    }
}

} // namespace

FramePtr deinterlaced(const AVFrame& frame)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    if (shape == nullptr || (shape->flags & AV_PIX_FMT_FLAG_PLANAR) == 0 || shape->comp[0].depth != 8
        || shape->nb_components < 3) {
        return nullptr;
    }
    auto whole = makeFrame();
    whole->format = frame.format;
    whole->width = frame.width;
    whole->height = frame.height;
    if (av_frame_get_buffer(whole.get(), 0) < 0 || av_frame_copy_props(whole.get(), &frame) < 0) {
        return nullptr;
    }
    const int firstFilled = frame.top_field_first != 0 ? 1 : 0;
    for (int plane = 0; plane < 3; ++plane) {
        const int width = plane == 0 ? frame.width : -(-frame.width >> shape->log2_chroma_w);
        const int height = plane == 0 ? frame.height : -(-frame.height >> shape->log2_chroma_h);
        const auto line = [&](int y) {
            return frame.data[plane] + std::ptrdiff_t{std::clamp(y, 0, height - 1)} * frame.linesize[plane];
        };
        for (int y = 0; y < height; ++y) {
            auto* const target = whole->data[plane] + std::ptrdiff_t{y} * whole->linesize[plane];
            if (y % 2 != firstFilled) {
                std::memcpy(target, line(y), static_cast<std::size_t>(width));
            } else {
                fillLine(target, line(y), line(y > 0 ? y - 1 : 1), line(y + 1 < height ? y + 1 : y - 1), width);
            }
        }
    }
    whole->interlaced_frame = 0;
    return whole;
}

} // namespace twcore
