#include "twcore/render/tone_map.h"

#include "twcore/render/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
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

/// Light on a display of 1,000 nits.
Rgb displayNits(const Rgb& code, bool isHlg)
{
    Rgb light{};
    if (!isHlg) {
        std::ranges::transform(code, light.begin(), pqNits);
        return light;
    }
    std::ranges::transform(code, light.begin(), hlgScene);
    const double luminance = 0.2627 * light[0] + 0.6780 * light[1] + 0.0593 * light[2];
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
std::array<double, 3> mapped(double y, double cb, double cr, bool isHlg)
{
    const Rgb code{y + 1.4746 * cr, y - 0.16455 * cb - 0.57135 * cr, y + 1.8814 * cb};
    Rgb light = displayNits(code, isHlg);
    for (double& part : light) {
        part /= kDiffuseWhiteNits;
    }
    light = narrowed(light);
    const double most = std::max({light[0], light[1], light[2], 1e-6});
    const double factor = compressed(most) / most;
    for (double& part : light) {
        part = std::pow(std::clamp(part * factor, 0.0, 1.0), 1 / kDisplayGamma);
    }
    const double luma = 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
    return {16 + 219 * luma, 128 + 224 * (light[2] - luma) / 1.8556, 128 + 224 * (light[0] - luma) / 1.5748};
}

/// Results at points of a grid over the source's brightness and colour differences, 6 bits behind the point.
struct Table {
    std::array<std::array<std::uint16_t, 3>, std::size_t(kPoints) * kPoints * kPoints> points{};
};

std::shared_ptr<const Table> tableFor(bool isHlg, bool isFullRange)
{
    static std::mutex mutex;
    static std::map<std::pair<bool, bool>, std::shared_ptr<const Table>> tables;
    const std::lock_guard lock(mutex);
    auto& known = tables[{isHlg, isFullRange}];
    if (known) {
        return known;
    }
    auto table = std::make_shared<Table>();
    const auto code = [](int i) { return i * 256.0 / (kPoints - 1); }; // 0 to 256 on the 8-bit scale
    for (int i = 0; i < kPoints; ++i) {
        for (int j = 0; j < kPoints; ++j) {
            for (int k = 0; k < kPoints; ++k) {
                const double y = isFullRange ? code(i) / 255 : (code(i) - 16) / 219;
                const double chroma = isFullRange ? 255 : 224;
                const auto result = mapped(y, (code(j) - 128) / chroma, (code(k) - 128) / chroma, isHlg);
                auto& point = table->points[(std::size_t(i) * kPoints + std::size_t(j)) * kPoints + std::size_t(k)];
                std::ranges::transform(result, point.begin(), [](double value) {
                    return static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0, 255.0) * 64));
                });
            }
        }
    }
    known = table;
    return known;
}

/// Between the eight points around a source value of 16 bits each.
void lookUp(const Table& table, unsigned y, unsigned cb, unsigned cr, std::uint8_t* const (&target)[3])
{
    constexpr unsigned kStepBits = 11; // 65,536 over 32 steps
    constexpr unsigned kStep = 1u << kStepBits;
    const unsigned value[3] = {y, cb, cr};
    unsigned cell[3];
    unsigned part[3];
    for (int i = 0; i < 3; ++i) {
        cell[i] = value[i] >> kStepBits;
        part[i] = (value[i] & (kStep - 1)) >> 4; // 7 bits
    }
    unsigned sums[3] = {};
    for (unsigned corner = 0; corner < 8; ++corner) {
        unsigned weight = 1;
        unsigned at = 0;
        for (unsigned i = 0; i < 3; ++i) {
            const bool upper = ((corner >> i) & 1) != 0;
            weight *= upper ? part[i] : 128 - part[i];
            at = at * kPoints + cell[i] + (upper ? 1 : 0);
        }
        const auto& point = table.points[at];
        for (int i = 0; i < 3; ++i) {
            sums[i] += (weight >> 7) * point[std::size_t(i)]; // 14 bits of weight, 14 of value
        }
    }
    for (int i = 0; i < 3; ++i) {
        *target[i] = static_cast<std::uint8_t>(std::min(255u, (sums[i] + (1u << 19)) >> 20));
    }
}

FramePtr scaledTo16(const AVFrame& frame, PictureSize size)
{
    auto wide = makeFrame();
    wide->format = AV_PIX_FMT_YUV444P16;
    wide->width = size.width;
    wide->height = size.height;
    SwsContext* const scaler =
        sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), size.width, size.height,
                       AV_PIX_FMT_YUV444P16, SWS_BICUBIC, nullptr, nullptr, nullptr);
    if (scaler == nullptr || av_frame_get_buffer(wide.get(), 0) < 0) {
        sws_freeContext(scaler);
        return nullptr;
    }
    const int lines = sws_scale(scaler, frame.data, frame.linesize, 0, frame.height, wide->data, wide->linesize);
    sws_freeContext(scaler);
    return lines > 0 ? std::move(wide) : nullptr;
}

} // namespace

bool isHighDynamicRange(const AVFrame& frame)
{
    const bool curve = frame.color_trc == AVCOL_TRC_SMPTE2084 || frame.color_trc == AVCOL_TRC_ARIB_STD_B67;
    return curve && colourOf(frame).matrix != Matrix::kRgb;
}

FramePtr toneMapped(const AVFrame& frame, PictureSize size)
{
    const FramePtr wide = scaledTo16(frame, size);
    if (!wide) {
        return nullptr;
    }
    auto result = makeFrame();
    result->format = AV_PIX_FMT_YUV444P;
    result->width = size.width;
    result->height = size.height;
    if (av_frame_get_buffer(result.get(), 0) < 0) {
        return nullptr;
    }
    result->colorspace = AVCOL_SPC_BT709;
    result->color_range = AVCOL_RANGE_MPEG;
    const auto table = tableFor(frame.color_trc == AVCOL_TRC_ARIB_STD_B67, frame.color_range == AVCOL_RANGE_JPEG);
    for (int row = 0; row < size.height; ++row) {
        const std::uint16_t* source[3];
        std::uint8_t* target[3];
        for (int i = 0; i < 3; ++i) {
            source[i] = reinterpret_cast<const std::uint16_t*>(wide->data[i] + std::ptrdiff_t{row} * wide->linesize[i]);
            target[i] = result->data[i] + std::ptrdiff_t{row} * result->linesize[i];
        }
        for (int x = 0; x < size.width; ++x) {
            std::uint8_t* const place[3] = {target[0] + x, target[1] + x, target[2] + x};
            lookUp(*table, source[0][x], source[1][x], source[2][x], place);
        }
    }
    return result;
}

} // namespace twcore
