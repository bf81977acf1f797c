#pragma once

// Pictures of high dynamic range brought to the standard one: what phones and cameras write as HLG and PQ.
//
// Light is worked out in nits, wide primaries become those of BT.709, and what is brighter than diffuse white is
// compressed smoothly instead of being cut off, all three colours by one factor, so that hues stay. The whole way is
// tabulated once for each kind of source and looked up with interpolation between its points.

#include "twcore/media/orientation.h"
#include "twcore/render/scale_lines.h"

#include <cstdint>
#include <vector>

namespace twcore {

/// Whether a frame says that it is HLG or PQ.
bool isHighDynamicRange(const AVFrame& frame);

/// Serves one thread.
class ToneMapper {
public:
    ToneMapper() = default;
    ~ToneMapper();
    ToneMapper(const ToneMapper&) = delete;
    ToneMapper& operator=(const ToneMapper&) = delete;

    /// The frame in standard dynamic range, scaled to `size`: 8-bit 4:2:0, BT.709, limited range. It is good until the
    /// next one. nullptr when the libraries cannot convert it.
    const AVFrame* map(const AVFrame& frame, PictureSize size);

private:
    struct Kind {
        AVPixelFormat layout = AV_PIX_FMT_NONE;
        PictureSize from;
        PictureSize to;
        friend bool operator==(const Kind&, const Kind&) = default;
    };
    bool prepare(const AVFrame& frame, PictureSize size);
    const std::uint16_t* widened(const AVFrame& frame, int plane, int number, std::vector<std::uint16_t>& to);
    const AVFrame* scaled(const AVFrame& frame, PictureSize size);

    Kind kind_;
    std::vector<PlaneScaler> planes_; // empty where the library scales
    std::vector<std::int16_t> line_;
    std::vector<std::uint16_t> widened_[2][3]; // 16 bits, colour in every pixel
    SwsContext* scaler_ = nullptr;
    FramePtr scaled_; // the same, a whole frame
    FramePtr mapped_;
};

} // namespace twcore
