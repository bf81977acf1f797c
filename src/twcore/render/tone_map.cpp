#include "twcore/render/tone_map.h"

#include "twcore/render/colour.h"
#include "twcore/render/picture_scaler.h"
#include "twcore/render/vectors.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <compare>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace twcore {

namespace {

constexpr double kDiffuseWhiteNits = 203; // as ITU-R BT.2408 has it
constexpr double kPeakNits = 1000;
constexpr double kKnee = 0.75; // of diffuse white: below it nothing changes
constexpr int kPoints = 33;    // of the table, each way
constexpr double kDisplayGamma = 2.4;

using Rgb = std::array<double, 3>;

/// SMPTE ST 2084, code 0 to 1 to nits.
double pqNits(double code)
{
    constexpr double kM1 = 2610.0 / 16384;
    constexpr double kM2 = 2523.0 / 4096 * 128;
    constexpr double kC1 = 3424.0 / 4096;
    constexpr double kC2 = 2413.0 / 4096 * 32;
    constexpr double kC3 = 2392.0 / 4096 * 32;
    const double power = std::pow(std::clamp(code, 0.0, 1.0), 1 / kM2);
    return 10000 * std::pow(std::max(power - kC1, 0.0) / (kC2 - kC3 * power), 1 / kM1);
}

/// ARIB STD-B67, code 0 to 1 to light of the scene 0 to 1.
double hlgScene(double code)
{
    constexpr double kA = 0.17883277;
    constexpr double kB = 1 - 4 * kA;
    const double c = 0.5 - kA * std::log(4 * kA);
    code = std::clamp(code, 0.0, 1.0);
    return code <= 0.5 ? code * code / 3 : (std::exp((code - c) / kA) + kB) / 12;
}

/// What a picture of high dynamic range says of its numbers.
struct Source {
    bool isHlg = false;
    bool isFullRange = false;
    Matrix matrix = Matrix::kBt2020;
    bool isWide = true; // its primaries are those of BT.2020

    friend auto operator<=>(const Source&, const Source&) = default;
};

/// What it does not say, or says otherwise than as here, is taken for BT.2020's.
Source sourceOf(const AVFrame& frame)
{
    const bool isOlder = frame.colorspace == AVCOL_SPC_BT709 || frame.colorspace == AVCOL_SPC_SMPTE170M
                         || frame.colorspace == AVCOL_SPC_BT470BG;
    return {frame.color_trc == AVCOL_TRC_ARIB_STD_B67, frame.color_range == AVCOL_RANGE_JPEG,
            isOlder ? colourOf(frame).matrix : Matrix::kBt2020, frame.color_primaries != AVCOL_PRI_BT709};
}

/// Light on a display of 1,000 nits.
Rgb displayNits(const Rgb& code, const Source& source)
{
    Rgb light{};
    if (!source.isHlg) {
        std::ranges::transform(code, light.begin(), pqNits);
        return light;
    }
    std::ranges::transform(code, light.begin(), hlgScene);
    const LumaWeights weights = lumaWeightsOf(source.isWide ? Matrix::kBt2020 : Matrix::kBt709);
    const double luminance =
        weights.red * light[0] + (1 - weights.red - weights.blue) * light[1] + weights.blue * light[2];
    const double gain = kPeakNits * std::pow(std::max(luminance, 1e-6), 0.2); // system gamma 1.2
    for (double& part : light) {
        part *= gain;
    }
    return light;
}

double compressed(double value)
{
    if (value <= kKnee) {
        return value;
    }
    // Leaves the knee without a bend and reaches 1 at the peak.
    const double room = 1 - kKnee;
    const double whole = 1 - std::exp(-(kPeakNits / kDiffuseWhiteNits - kKnee) / room);
    return std::min(1.0, kKnee + room * (1 - std::exp(-(value - kKnee) / room)) / whole);
}

/// From BT.2020 to BT.709 primaries.
Rgb narrowed(const Rgb& light)
{
    return {1.6605 * light[0] - 0.5876 * light[1] - 0.0728 * light[2],
            -0.1246 * light[0] + 1.1329 * light[1] - 0.0083 * light[2],
            -0.0182 * light[0] - 0.1006 * light[1] + 1.1187 * light[2]};
}

/// Brightness and colour differences of the source to those of BT.709, limited, 0 to 255.
std::array<double, 3> mapped(double y, double cb, double cr, const Source& source)
{
    const LumaWeights weights = lumaWeightsOf(source.matrix);
    const double red = y + 2 * (1 - weights.red) * cr;
    const double blue = y + 2 * (1 - weights.blue) * cb;
    const double green = (y - weights.red * red - weights.blue * blue) / (1 - weights.red - weights.blue);
    Rgb light = displayNits({red, green, blue}, source);
    for (double& part : light) {
        part /= kDiffuseWhiteNits;
    }
    light = source.isWide ? narrowed(light) : light;
    const double most = std::max({light[0], light[1], light[2], 1e-6});
    const double factor = compressed(most) / most;
    for (double& part : light) {
        part = std::pow(std::clamp(part * factor, 0.0, 1.0), 1 / kDisplayGamma);
    }
    const double luma = 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
    return {16 + 219 * luma, 128 + 224 * (light[2] - luma) / 1.8556, 128 + 224 * (light[0] - luma) / 1.5748};
}

/// Brightness and colour differences beside each other, and a fourth number that nobody reads: what a processor works
/// on at once.
using Point = float __attribute__((vector_size(16)));

constexpr unsigned kStepBits = 11; // source values have 16 bits: 65,536 over 32 steps
constexpr unsigned kStep = 1u << kStepBits;
// From one point to the next, by brightness and by either difference.
constexpr unsigned kLumaStride = unsigned(kPoints) * kPoints;
constexpr unsigned kBlueStride = kPoints;
constexpr unsigned kRedStride = 1;

/// Results at points of a grid over the source's brightness and colour differences, 0 to 255 over `kStep`.
struct Table {
    std::array<Point, std::size_t(kPoints) * kPoints * kPoints> points{};
};

std::shared_ptr<const Table> tableFor(const Source& source)
{
    static std::mutex mutex;
    static std::map<Source, std::shared_ptr<const Table>> tables;
    const std::lock_guard lock(mutex);
    auto& known = tables[source];
    if (known) {
        return known;
    }
    auto table = std::make_shared<Table>();
    const auto code = [](int i) { return i * 256.0 / (kPoints - 1); }; // 0 to 256 on the 8-bit scale
    for (int i = 0; i < kPoints; ++i) {
        for (int j = 0; j < kPoints; ++j) {
            for (int k = 0; k < kPoints; ++k) {
                const double y = source.isFullRange ? code(i) / 255 : (code(i) - 16) / 219;
                const double chroma = source.isFullRange ? 255 : 224;
                const auto result = mapped(y, (code(j) - 128) / chroma, (code(k) - 128) / chroma, source);
                auto& point = table->points[(std::size_t(i) * kPoints + std::size_t(j)) * kPoints + std::size_t(k)];
                for (int part = 0; part < 3; ++part) {
                    point[part] = static_cast<float>(std::clamp(result[std::size_t(part)], 0.0, 255.0) / kStep);
                }
            }
        }
    }
    known = table;
    return known;
}

/// The way from a point to the next in one direction: how much of it, above, and where that point lies, below.
unsigned way(unsigned value, unsigned stride) { return (value & (kStep - 1)) << 16 | stride; }

/// Between the four points of the tetrahedron that holds a colour: from the lowest, the longest way first.
Point lookUp(const Table& table, unsigned luma, unsigned blue, unsigned red)
{
    constexpr unsigned kAll = kLumaStride + kBlueStride + kRedStride;
    constexpr unsigned kStride = 0xFFFF;
    const unsigned own = way(luma, kLumaStride);
    const unsigned longer = std::max(way(blue, kBlueStride), way(red, kRedStride));
    const unsigned shorter = std::min(way(blue, kBlueStride), way(red, kRedStride));
    const unsigned first = std::max(own, longer);
    const unsigned rest = std::min(own, longer);
    const unsigned second = std::max(rest, shorter);
    const unsigned third = std::min(rest, shorter) >> 16;
    const Point* const point = &table.points[(luma >> kStepBits) * kLumaStride + (blue >> kStepBits) * kBlueStride
                                             + (red >> kStepBits) * kRedStride];
    const Point* const next = point + (first & kStride);
    const auto weight = [](unsigned part) { return static_cast<float>(static_cast<int>(part)); };
    return point[0] * weight(kStep - (first >> 16)) + next[0] * weight((first >> 16) - (second >> 16))
           + next[second & kStride] * weight((second >> 16) - third) + point[kAll] * weight(third);
}

std::uint8_t rounded(float value) { return static_cast<std::uint8_t>(value + 0.5F); }

/// Two lines of the picture, whose colour becomes one. The second may be the first once more.
struct LinePair {
    const std::uint16_t* from[2][3]; // 16 bits, colour in every pixel
    std::uint8_t* toLuma[2];
    std::uint8_t* toBlue;
    std::uint8_t* toRed;
};

void mapLines(const Table& table, const LinePair& lines, int width)
{
    for (int x = 0; x < width; x += 2) {
        const int right = std::min(x + 1, width - 1);
        Point sum{};
        for (int line = 0; line < 2; ++line) {
            const auto& from = lines.from[line];
            for (const int at : {x, right}) {
                const Point point = lookUp(table, from[0][at], from[1][at], from[2][at]);
                lines.toLuma[line][at] = rounded(point[0]);
                sum += point;
            }
        }
        lines.toBlue[x / 2] = rounded(sum[1] / 4);
        lines.toRed[x / 2] = rounded(sum[2] / 4);
    }
}

/// A line of scaling with sixteen bits.
TWCORE_WIDE_VECTORS void widen(const std::int16_t* __restrict line, std::uint16_t* __restrict to, std::size_t width)
{
    constexpr int kMissingBits = 8 - kLineBits;
    constexpr std::int16_t kMost = (1 << (8 + kLineBits)) - 1;
    for (std::size_t x = 0; x < width; ++x) {
        const std::int16_t value = std::clamp<std::int16_t>(line[x], 0, kMost);
        to[x] = static_cast<std::uint16_t>(value << kMissingBits);
    }
}

/// A frame of that kind and size to be written over.
bool makeReady(FramePtr& frame, AVPixelFormat pixels, PictureSize size)
{
    if (frame && frame->width == size.width && frame->height == size.height) {
        return true;
    }
    frame = makeFrame();
    frame->format = pixels;
    frame->width = size.width;
    frame->height = size.height;
    return av_frame_get_buffer(frame.get(), 0) >= 0;
}

} // namespace

bool isHighDynamicRange(const AVFrame& frame)
{
    const bool curve = frame.color_trc == AVCOL_TRC_SMPTE2084 || frame.color_trc == AVCOL_TRC_ARIB_STD_B67;
    return curve && colourOf(frame).matrix != Matrix::kRgb;
}

ToneMapper::~ToneMapper() { sws_freeContext(scaler_); }

/// nullptr when the libraries cannot.
const AVFrame* ToneMapper::scaled(const AVFrame& frame, PictureSize size)
{
    scaler_ =
        sws_getCachedContext(scaler_, frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), size.width,
                             size.height, AV_PIX_FMT_YUV444P16, SWS_BICUBIC, nullptr, nullptr, nullptr);
    if (scaler_ == nullptr || !makeReady(scaled_, AV_PIX_FMT_YUV444P16, size)) {
        return nullptr;
    }
    const int lines = sws_scale(scaler_, frame.data, frame.linesize, 0, frame.height, scaled_->data, scaled_->linesize);
    return lines > 0 ? scaled_.get() : nullptr;
}

/// Whether its planes can be scaled line by line.
bool ToneMapper::prepare(const AVFrame& frame, PictureSize size)
{
    const Kind kind{static_cast<AVPixelFormat>(frame.format), {frame.width, frame.height}, size};
    if (kind == kind_) {
        return !planes_.empty();
    }
    kind_ = kind;
    planes_.clear();
    if (!PictureScaler::reads(kind.layout, kind.from, size)) {
        return false;
    }
    const AVPixFmtDescriptor& shape = *av_pix_fmt_desc_get(kind.layout);
    const PictureSize halved{-(-frame.width >> shape.log2_chroma_w), -(-frame.height >> shape.log2_chroma_h)};
    for (const PictureSize& from : {kind.from, halved, halved}) {
        planes_.emplace_back(from, size, shape.comp[0].depth, vectorsHere());
    }
    line_.resize(static_cast<std::size_t>(size.width) + kLineGroup);
    for (auto& line : widened_) {
        for (auto& plane : line) {
            plane.resize(static_cast<std::size_t>(size.width));
        }
    }
    return true;
}

const AVFrame* ToneMapper::map(const AVFrame& frame, PictureSize size)
{
    const bool isByLines = prepare(frame, size);
    const AVFrame* const wide = isByLines ? nullptr : scaled(frame, size);
    if ((!isByLines && wide == nullptr) || !makeReady(mapped_, AV_PIX_FMT_YUV420P, size)) {
        return nullptr;
    }
    mapped_->colorspace = AVCOL_SPC_BT709;
    mapped_->color_range = AVCOL_RANGE_MPEG;
    const auto table = tableFor(sourceOf(frame));
    for (int row = 0; row < size.height; row += 2) {
        LinePair lines{};
        for (int i = 0; i < 2; ++i) {
            const int number = std::min(row + i, size.height - 1);
            for (int plane = 0; plane < 3; ++plane) {
                lines.from[i][plane] = isByLines
                                           ? widened(frame, plane, number, widened_[i][plane])
                                           : reinterpret_cast<const std::uint16_t*>(
                                               wide->data[plane] + std::ptrdiff_t{number} * wide->linesize[plane]);
            }
            lines.toLuma[i] = mapped_->data[0] + std::ptrdiff_t{number} * mapped_->linesize[0];
        }
        lines.toBlue = mapped_->data[1] + std::ptrdiff_t{row / 2} * mapped_->linesize[1];
        lines.toRed = mapped_->data[2] + std::ptrdiff_t{row / 2} * mapped_->linesize[2];
        mapLines(*table, lines, size.width);
    }
    return mapped_.get();
}

const std::uint16_t* ToneMapper::widened(const AVFrame& frame, int plane, int number, std::vector<std::uint16_t>& to)
{
    planes_[static_cast<std::size_t>(plane)].line(frame.data[plane], frame.linesize[plane], number, line_.data());
    widen(line_.data(), to.data(), to.size());
    return to.data();
}

} // namespace twcore
