#include "twcore/render/effects.h"

#include "twcore/render/vectors.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

namespace twcore {

namespace {

constexpr double kLargestBlock = 1.0 / 10; // of the picture's height
constexpr double kBlurRadius = 1.0 / 50;
constexpr double kWaveHeight = 1.0 / 30; // how far lines are shifted
constexpr double kWaveLength = 1.0 / 3;
constexpr double kWavesASecond = 0.75;
constexpr double kReliefReach = 1.0 / 480; // distance of the two pixels that are compared
constexpr int kReliefGain = 2;

/// Rises from 0 to 1 at the beginning of a stretch and falls again at its end, so that nothing jumps.
double eased(double progress) { return std::clamp(std::min(progress, 1 - progress) * 5, 0.0, 1.0); }

std::uint8_t toByte(int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); }

TWCORE_WIDE_VECTORS void fadeLine(std::uint8_t* line, int count, int part, int offset)
{
    for (int x = 0; x < count; ++x) {
        line[x] = static_cast<std::uint8_t>((line[x] * part + offset) >> 8);
    }
}

void fade(const Planes& picture, double level)
{
    const int part = static_cast<int>(std::lround(std::clamp(level, 0.0, 1.0) * 256));
    for (int plane = 0; plane < 3; ++plane) {
        const int black = picture.black(plane);
        const int offset = black * (256 - part) + 128;
        for (int y = 0; y < picture.planeHeight(plane); ++y) {
            fadeLine(picture.line(plane, y), picture.planeWidth(plane), part, offset);
        }
    }
}

void pixelatePlane(const Planes& picture, int plane, int blockWidth, int blockHeight)
{
    const int width = picture.planeWidth(plane);
    const int height = picture.planeHeight(plane);
    for (int top = 0; top < height; top += blockHeight) {
        const int bottom = std::min(top + blockHeight, height);
        for (int left = 0; left < width; left += blockWidth) {
            const int right = std::min(left + blockWidth, width);
            int sum = 0;
            for (int y = top; y < bottom; ++y) {
                const auto* const line = picture.line(plane, y);
                for (int x = left; x < right; ++x) {
                    sum += line[x];
                }
            }
            const int count = (bottom - top) * (right - left);
            const auto mean = static_cast<unsigned char>((sum + count / 2) / count);
            for (int y = top; y < bottom; ++y) {
                std::memset(picture.line(plane, y) + left, mean, static_cast<std::size_t>(right - left));
            }
        }
    }
}

void pixelate(const Planes& picture, double progress)
{
    const int block = pixelateBlock(progress, picture.height);
    for (int plane = 0; plane < 3; ++plane) {
        const int shiftX = plane == 0 ? 0 : picture.shiftX;
        const int shiftY = plane == 0 ? 0 : picture.shiftY;
        pixelatePlane(picture, plane, std::max(1, block >> shiftX), std::max(1, block >> shiftY));
    }
}

/// Running mean of `radius` pixels to either side; edges go on as they are.
void boxLine(const std::uint8_t* source, std::uint8_t* target, int count, int radius)
{
    const int scale = (1 << 16) / (2 * radius + 1);
    const auto at = [&](int i) { return int{source[std::clamp(i, 0, count - 1)]}; };
    int sum = 0;
    for (int i = -radius; i <= radius; ++i) {
        sum += at(i);
    }
    const auto mean = [&] { return static_cast<std::uint8_t>((sum * scale + (1 << 15)) >> 16); };
    int i = 0;
    for (; i < std::min(radius, count); ++i) {
        target[i] = mean();
        sum += at(i + radius + 1) - at(i - radius);
    }
    for (; i < count - radius - 1; ++i) { // nowhere near an edge
        target[i] = mean();
        sum += source[i + radius + 1] - source[i - radius];
    }
    for (; i < count; ++i) {
        target[i] = mean();
        sum += at(i + radius + 1) - at(i - radius);
    }
}

TWCORE_WIDE_VECTORS void boxStep(int* __restrict sums, std::uint8_t* __restrict target,
                                 const std::uint8_t* __restrict entering, const std::uint8_t* __restrict leaving,
                                 int scale, int width)
{
    for (int x = 0; x < width; ++x) {
        target[x] = static_cast<std::uint8_t>((sums[x] * scale + (1 << 15)) >> 16);
        sums[x] += entering[x] - leaving[x];
    }
}

/// The same down all columns at once, line by line, so that the cache is used.
void boxColumns(const std::vector<std::uint8_t>& source, const Planes& picture, int plane, int radius)
{
    const int width = picture.planeWidth(plane);
    const int height = picture.planeHeight(plane);
    const int size = 2 * radius + 1;
    const int scale = (1 << 16) / size;
    const auto line = [&](int y) { return source.data() + std::ptrdiff_t{std::clamp(y, 0, height - 1)} * width; };
    std::vector<int> sums(static_cast<std::size_t>(width), 0);
    for (int y = -radius; y <= radius; ++y) {
        const auto* const from = line(y);
        for (int x = 0; x < width; ++x) {
            sums[static_cast<std::size_t>(x)] += from[x];
        }
    }
    for (int y = 0; y < height; ++y) {
        boxStep(sums.data(), picture.line(plane, y), line(y + radius + 1), line(y - radius), scale, width);
    }
}

void blur(const Planes& picture, double progress)
{
    std::vector<std::uint8_t> between;
    for (int plane = 0; plane < 3; ++plane) {
        const int width = picture.planeWidth(plane);
        const int height = picture.planeHeight(plane);
        const int shift = plane == 0 ? 0 : picture.shiftY;
        const int radius = static_cast<int>(std::lround(kBlurRadius * picture.height * eased(progress))) >> shift;
        if (radius < 1) {
            continue;
        }
        between.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        for (int pass = 0; pass < 2; ++pass) {
            for (int y = 0; y < height; ++y) {
                boxLine(picture.line(plane, y), between.data() + std::ptrdiff_t{y} * width, width, radius);
            }
            boxColumns(between, picture, plane, radius);
        }
    }
}

void wave(const Planes& picture, const EffectMoment& moment)
{
    const double reach = kWaveHeight * picture.height * eased(moment.progress);
    std::vector<std::uint8_t> copy;
    for (int plane = 0; plane < 3; ++plane) {
        const int width = picture.planeWidth(plane);
        const int height = picture.planeHeight(plane);
        copy.resize(static_cast<std::size_t>(width));
        for (int y = 0; y < height; ++y) {
            const double down = static_cast<double>(y) / height;
            const double angle = 2 * std::numbers::pi * (down / kWaveLength - moment.seconds * kWavesASecond);
            const int shift =
                static_cast<int>(std::lround(reach * std::sin(angle))) >> (plane == 0 ? 0 : picture.shiftX);
            if (shift == 0) {
                continue;
            }
            auto* const line = picture.line(plane, y);
            std::copy_n(line, width, copy.begin());
            const int moved = std::min(std::abs(shift), width);
            if (shift > 0) {
                std::copy_n(copy.begin(), width - moved, line + moved);
                std::fill_n(line, moved, copy[0]);
            } else {
                std::copy_n(copy.begin() + moved, width - moved, line);
                std::fill_n(line + width - moved, moved, copy[static_cast<std::size_t>(width - 1)]);
            }
        }
    }
}

TWCORE_WIDE_VECTORS void reliefLine(const std::uint8_t* __restrict above, const std::uint8_t* __restrict below,
                                    std::uint8_t* __restrict target, int gain, int count)
{
    for (int x = 0; x < count; ++x) {
        target[x] = toByte(128 + gain * (above[x] - below[x]));
    }
}

void relief(const Planes& picture, int sign)
{
    const int reach = std::max(1, static_cast<int>(std::lround(kReliefReach * picture.height)));
    const int width = picture.width;
    const int height = picture.height;
    const int gain = sign * kReliefGain;
    std::vector<std::uint8_t> copy(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        std::copy_n(picture.line(0, y), width, copy.begin() + std::ptrdiff_t{y} * width);
    }
    for (int y = 0; y < height; ++y) {
        const auto* const above = copy.data() + std::ptrdiff_t{std::max(y - reach, 0)} * width;
        const auto* const below = copy.data() + std::ptrdiff_t{std::min(y + reach, height - 1)} * width;
        auto* const line = picture.line(0, y);
        for (int x = 0; x < std::min(reach, width); ++x) {
            line[x] = toByte(128 + gain * (above[0] - below[std::min(x + reach, width - 1)]));
        }
        reliefLine(above, below + 2 * reach, line + reach, gain, width - 2 * reach);
        for (int x = std::max(width - reach, reach); x < width; ++x) {
            line[x] = toByte(128 + gain * (above[x - reach] - below[width - 1]));
        }
    }
    for (int plane = 1; plane < 3; ++plane) {
        for (int y = 0; y < picture.planeHeight(plane); ++y) {
            auto* const line = picture.line(plane, y);
            if (picture.isRgb()) {
                std::copy_n(picture.line(0, y), width, line); // grey: all three the same
            } else {
                std::memset(line, 128, static_cast<std::size_t>(picture.planeWidth(plane)));
            }
        }
    }
}

} // namespace

EffectKind effectKindOf(std::string_view name)
{
    constexpr std::pair<std::string_view, EffectKind> kNames[] = {
        {"Fade", EffectKind::kFade}, {"Pixelate", EffectKind::kPixelate}, {"Blur", EffectKind::kBlur},
        {"Wave", EffectKind::kWave}, {"Emboss", EffectKind::kEmboss},     {"Engrave", EffectKind::kEngrave}};
    const auto* const found = std::ranges::find(kNames, name, &std::pair<std::string_view, EffectKind>::first);
    return found != std::end(kNames) ? found->second : EffectKind::kNone;
}

int pixelateBlock(double progress, int pictureHeight)
{
    const double grown = 1 - std::abs(1 - 2 * std::clamp(progress, 0.0, 1.0));
    // Even blocks cover whole pixels of halved colour.
    return std::max(1, static_cast<int>(std::lround(grown * kLargestBlock * pictureHeight / 2)) * 2);
}

void applyEffect(EffectKind kind, const EffectMoment& moment, const Planes& picture)
{
    switch (kind) {
    case EffectKind::kFade:
        fade(picture, moment.level);
        break;
    case EffectKind::kPixelate:
        pixelate(picture, moment.progress);
        break;
    case EffectKind::kBlur:
        blur(picture, moment.progress);
        break;
    case EffectKind::kWave:
        wave(picture, moment);
        break;
    case EffectKind::kEmboss:
        relief(picture, 1);
        break;
    case EffectKind::kEngrave:
        relief(picture, -1);
        break;
    case EffectKind::kNone:
        break;
    }
}

} // namespace twcore
