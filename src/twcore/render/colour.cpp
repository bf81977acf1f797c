#include "twcore/render/colour.h"

#include "twcore/render/scale_loops.h"
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

Recolouring::Map mapBetween(const Colour& from, const Colour& to)
{
    const Rows decode = toRgb(from.matrix);
    const Rows encode = fromRgb(to.matrix);
    const double lumaIn = from.isFullRange ? 255 : 219;
    const double chromaIn = from.isFullRange ? 255 : 224;
    const double lumaOut = to.isFullRange ? 255 : 219;
    const double chromaOut = to.isFullRange ? 255 : 224;
    const std::array<double, 3> zeroIn{from.isFullRange ? 0.0 : 16.0, 128, 128};
    const std::array<double, 3> zeroOut{to.isFullRange ? 0.0 : 16.0, 128, 128};
    Recolouring::Map map{};
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
        // Of lines, and so that the result is rounded.
        map.offset[row] = static_cast<int>(std::lround((offset + 0.5) * (1 << (kBits + kLineBits))));
    }
    return map;
}

std::uint8_t toByte(int value) { return static_cast<std::uint8_t>(std::clamp(value >> (kBits + kLineBits), 0, 255)); }

TWCORE_WIDE_VECTORS void chromaParts(const std::int16_t* __restrict cb, const std::int16_t* __restrict cr,
                                     int* __restrict parts, int count, int shiftX, const Recolouring::Map& map)
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

TWCORE_WIDE_VECTORS void recolourLuma(const std::int16_t* __restrict line, const int* __restrict parts, int factor,
                                      std::uint8_t* __restrict to, int width)
{
    for (int x = 0; x < width; ++x) {
        to[x] = toByte(factor * line[x] + parts[x]);
    }
}

TWCORE_WIDE_VECTORS void recolourChroma(const std::int16_t* __restrict cb, const std::int16_t* __restrict cr,
                                        std::uint8_t* __restrict blue, std::uint8_t* __restrict red, int width,
                                        const Recolouring::Map& map)
{
    // The brightness has no part in the colour differences: its factor is 0 by construction.
    const Recolouring::Map m = map;
    for (int x = 0; x < width; ++x) {
        blue[x] = toByte(m.factor[1][1] * cb[x] + m.factor[1][2] * cr[x] + m.offset[1]);
        red[x] = toByte(m.factor[2][1] * cb[x] + m.factor[2][2] * cr[x] + m.offset[2]);
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

Recolouring::Recolouring(const Colour& from, const Colour& to) : map_(mapBetween(from, to)) {}

void Recolouring::parts(const ChromaLine& line, int width, int shiftX, int* parts) const
{
    chromaParts(line.blue, line.red, parts, width, shiftX, map_);
}

void Recolouring::chroma(const ChromaLine& line, std::uint8_t* blue, std::uint8_t* red, int width) const
{
    recolourChroma(line.blue, line.red, blue, red, width, map_);
}

void Recolouring::luma(const std::int16_t* line, const int* parts, std::uint8_t* to, int width) const
{
    recolourLuma(line, parts, map_.factor[0][0], to, width);
}

void recolour(const PlanarRect& picture, const Colour& from, const Colour& to)
{
    const Recolouring recolouring(from, to);
    const int chromaWidth = -(-picture.width >> picture.shiftX);
    const int rowsPerChroma = 1 << picture.shiftY;
    const auto samples = static_cast<std::size_t>(chromaWidth) << picture.shiftX;
    std::vector<int> parts(samples);
    std::vector<std::int16_t> lines[3];
    for (auto& line : lines) {
        line.resize(samples);
    }
    const auto rowOf = [&](int plane, int number) {
        return picture.planes[plane] + std::ptrdiff_t{number} * picture.strides[plane];
    };
    for (int y = 0; y < picture.height; ++y) {
        if (y % rowsPerChroma == 0) {
            const int row = y >> picture.shiftY;
            for (const int plane : {1, 2}) {
                bytesToLine(rowOf(plane, row), lines[plane].data(), chromaWidth);
            }
            const Recolouring::ChromaLine chroma{lines[1].data(), lines[2].data()};
            recolouring.parts(chroma, chromaWidth, picture.shiftX, parts.data());
            recolouring.chroma(chroma, rowOf(1, row), rowOf(2, row), chromaWidth);
        }
        bytesToLine(rowOf(0, y), lines[0].data(), picture.width);
        recolouring.luma(lines[0].data(), parts.data(), rowOf(0, y), picture.width);
    }
}

} // namespace twcore
