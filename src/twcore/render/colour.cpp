#include "twcore/render/colour.h"

#include "twcore/render/vectors.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace twcore {

// As ITU-R BT.601, BT.709 and BT.2020 give them.
LumaWeights lumaWeightsOf(Matrix matrix)
{
    switch (matrix) {
    case Matrix::kBt709:
        return {0.2126, 0.0722};
    case Matrix::kBt2020:
        return {0.2627, 0.0593};
    default:
        return {0.299, 0.114};
    }
}

namespace {

using Rows = std::array<std::array<double, 3>, 3>;

/// From Y (0 to 1) and colour differences (-0.5 to 0.5) to red, green, blue.
Rows toRgb(Matrix matrix)
{
    const auto [red, blue] = lumaWeightsOf(matrix);
    const double green = 1 - red - blue;
    return {{{1, 0, 2 * (1 - red)},
             {1, -2 * blue * (1 - blue) / green, -2 * red * (1 - red) / green},
             {1, 2 * (1 - blue), 0}}};
}

Rows fromRgb(Matrix matrix)
{
    const auto [red, blue] = lumaWeightsOf(matrix);
    const double green = 1 - red - blue;
    return {{{red, green, blue},
             {-red / (2 * (1 - blue)), -green / (2 * (1 - blue)), 0.5},
             {0.5, -green / (2 * (1 - red)), -blue / (2 * (1 - red))}}};
}

constexpr int kBits = 14;

/// Whole numbers of the map from one colour's 8-bit values to another's.
struct FixedMap {
    std::array<std::array<int, 3>, 3> factor;
    std::array<int, 3> offset;
};

FixedMap mapBetween(const Colour& from, const Colour& to)
{
    const Rows decode = toRgb(from.matrix);
    const Rows encode = fromRgb(to.matrix);
    const double lumaIn = from.isFullRange ? 255 : 219;
    const double chromaIn = from.isFullRange ? 255 : 224;
    const double lumaOut = to.isFullRange ? 255 : 219;
    const double chromaOut = to.isFullRange ? 255 : 224;
    const std::array<double, 3> zeroIn{from.isFullRange ? 0.0 : 16.0, 128, 128};
    const std::array<double, 3> zeroOut{to.isFullRange ? 0.0 : 16.0, 128, 128};
    FixedMap map{};
    for (std::size_t row = 0; row < 3; ++row) {
        double offset = zeroOut[row];
        for (std::size_t column = 0; column < 3; ++column) {
            double factor = 0;
            for (std::size_t i = 0; i < 3; ++i) {
                factor += encode[row][i] * decode[i][column];
            }
            factor *= (row == 0 ? lumaOut : chromaOut) / (column == 0 ? lumaIn : chromaIn);
            map.factor[row][column] = static_cast<int>(std::lround(factor * (1 << kBits)));
            offset -= factor * zeroIn[column];
        }
        map.offset[row] = static_cast<int>(std::lround(offset * (1 << kBits))) + (1 << (kBits - 1));
    }
    return map;
}

std::uint8_t toByte(int value) { return static_cast<std::uint8_t>(std::clamp(value >> kBits, 0, 255)); }

/// What the colour differences add to the brightness of the pixels over them, each for `1 << shiftX` pixels.
TWCORE_WIDE_VECTORS void chromaParts(const std::uint8_t* __restrict cb, const std::uint8_t* __restrict cr,
                                     int* __restrict parts, int count, int shiftX, const FixedMap& map)
{
    const int kb = map.factor[0][1];
    const int kr = map.factor[0][2];
    const int offset = map.offset[0];
    if (shiftX == 1) {
        for (int x = 0; x < count; ++x) {
            const int part = kb * cb[x] + kr * cr[x] + offset;
            parts[2 * x] = part;
            parts[2 * x + 1] = part;
        }
        return;
    }
    for (int x = 0; x < count << shiftX; ++x) {
        parts[x] = kb * cb[x >> shiftX] + kr * cr[x >> shiftX] + offset;
    }
}

TWCORE_WIDE_VECTORS void recolourLuma(std::uint8_t* __restrict luma, const int* __restrict parts, int factor, int width)
{
    for (int x = 0; x < width; ++x) {
        luma[x] = toByte(factor * luma[x] + parts[x]);
    }
}

TWCORE_WIDE_VECTORS void recolourChroma(std::uint8_t* __restrict cb, std::uint8_t* __restrict cr, int width,
                                        const FixedMap& map)
{
    // The brightness has no part in the colour differences: its factor is 0 by construction.
    const FixedMap m = map;
    for (int x = 0; x < width; ++x) {
        const int b = cb[x];
        const int r = cr[x];
        cb[x] = toByte(m.factor[1][1] * b + m.factor[1][2] * r + m.offset[1]);
        cr[x] = toByte(m.factor[2][1] * b + m.factor[2][2] * r + m.offset[2]);
    }
}

} // namespace

Matrix untoldMatrix(int width, int height, bool isFullRange)
{
    const bool isLarge = width > 1024 || height > 576;
    return isLarge && !isFullRange ? Matrix::kBt709 : Matrix::kBt601;
}

Colour colourOf(const AVFrame& frame)
{
    const auto format = static_cast<AVPixelFormat>(frame.format);
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(format);
    if (shape != nullptr && (shape->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) != 0) {
        return {Matrix::kRgb, true};
    }
    Colour colour;
    colour.isFullRange = frame.color_range == AVCOL_RANGE_JPEG || format == AV_PIX_FMT_YUVJ420P
                         || format == AV_PIX_FMT_YUVJ422P || format == AV_PIX_FMT_YUVJ444P
                         || format == AV_PIX_FMT_YUVJ440P || format == AV_PIX_FMT_YUVJ411P
                         || (format == AV_PIX_FMT_GRAY8 && frame.color_range != AVCOL_RANGE_MPEG);
    switch (frame.colorspace) {
    case AVCOL_SPC_BT709:
        colour.matrix = Matrix::kBt709;
        break;
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
    case AVCOL_SPC_FCC:
        colour.matrix = Matrix::kBt601;
        break;
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
        colour.matrix = Matrix::kBt2020;
        break;
    default:
        colour.matrix = untoldMatrix(frame.width, frame.height, colour.isFullRange);
    }
    return colour;
}

void recolour(const PlanarRect& picture, const Colour& from, const Colour& to)
{
    const FixedMap map = mapBetween(from, to);
    const int chromaWidth = -(-picture.width >> picture.shiftX);
    const int rowsPerChroma = 1 << picture.shiftY;
    std::vector<int> parts(static_cast<std::size_t>(chromaWidth) << picture.shiftX);
    for (int y = 0; y < picture.height; ++y) {
        const auto chromaRow = std::ptrdiff_t{y >> picture.shiftY};
        auto* const cb = picture.planes[1] + chromaRow * picture.strides[1];
        auto* const cr = picture.planes[2] + chromaRow * picture.strides[2];
        if (y % rowsPerChroma == 0) {
            chromaParts(cb, cr, parts.data(), chromaWidth, picture.shiftX, map);
            recolourChroma(cb, cr, chromaWidth, map);
        }
        recolourLuma(picture.planes[0] + std::ptrdiff_t{y} * picture.strides[0], parts.data(), map.factor[0][0],
                     picture.width);
    }
}

} // namespace twcore
