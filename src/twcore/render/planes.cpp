#include "twcore/render/planes.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace twcore {

Planes planesOf(AVFrame& frame, const Colour& colour)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    Planes planes;
    for (std::size_t i = 0; i < 3; ++i) {
        planes.data[i] = frame.data[i];
        planes.strides[i] = frame.linesize[i];
    }
    planes.width = frame.width;
    planes.height = frame.height;
    planes.shiftX = shape->log2_chroma_w;
    planes.shiftY = shape->log2_chroma_h;
    planes.colour = colour;
    return planes;
}

} // namespace twcore
