#include "twcore/render/plane_key.h"

#include "twcore/render/vectors.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace twcore {

/// Whole numbers of the way from a picture's values to how far its red, green and blue are from the key's.
struct KeyNumbers {
    int luma;      // key
    int lumaExtra; // a step of brightness is 1 + this / 128 steps of red, green and blue
    int cb4;       // key, in quarters
    int cr4;
    int redOfCr; // 12 bits behind the point
    int greenOfCb;
    int greenOfCr;
    int blueOfCb;
    std::int16_t red; // key
    std::int16_t green;
    std::int16_t blue;
};

namespace {

TWCORE_WIDE_VECTORS void sampleParts(const std::uint8_t* __restrict cb, const std::uint8_t* __restrict cr,
                                     const KeyNumbers& numbers, std::int16_t* __restrict red,
                                     std::int16_t* __restrict green, std::int16_t* __restrict blue, int width)
{
    const KeyNumbers n = numbers;
    for (int x = 0; x < width; ++x) {
        const int b = 4 * cb[x] - n.cb4;
        const int r = 4 * cr[x] - n.cr4;
        red[x] = static_cast<std::int16_t>((n.redOfCr * r + 8192) >> 14);
        green[x] = static_cast<std::int16_t>((n.greenOfCb * b + n.greenOfCr * r + 8192) >> 14);
        blue[x] = static_cast<std::int16_t>((n.blueOfCb * b + 8192) >> 14);
    }
}

/// For halved colour. A sample counts for each of its pixels alike, so that the share of a sample and those of its
/// pixels agree: smoothing here would leave a fringe of the key's colour.
TWCORE_WIDE_VECTORS void doubled(const std::int16_t* __restrict from, std::int16_t* __restrict to, int count)
{
    for (int x = 0; x < count; ++x) {
        to[2 * x] = from[x];
        to[2 * x + 1] = from[x];
    }
}

TWCORE_WIDE_VECTORS void distanceLine(const std::uint8_t* __restrict luma, const std::int16_t* __restrict red,
                                      const std::int16_t* __restrict green, const std::int16_t* __restrict blue,
                                      std::int16_t keyLuma, std::int16_t lumaExtra, std::array<std::int16_t, 3> key,
                                      std::uint8_t* __restrict target, int width)
{
    const std::int16_t keyRed = key[0];
    const std::int16_t keyGreen = key[1];
    const std::int16_t keyBlue = key[2];
    const auto whole = [](int value) { return static_cast<std::int16_t>(value); };
    // No colour is darker than 0 or brighter than 255.
    const auto apart = [&](std::int16_t difference, std::int16_t keyPart) {
        const std::int16_t low = std::max(difference, whole(-keyPart));
        const std::int16_t inside = std::min(low, whole(255 - keyPart));
        return std::max(inside, whole(-inside));
    };
    for (int x = 0; x < width; ++x) {
        const std::int16_t y = whole(luma[x] - keyLuma);
        const std::int16_t bright = whole(y + whole(whole(whole(y * lumaExtra) + 64) >> 7));
        const std::int16_t r = apart(whole(bright + red[x]), keyRed);
        const std::int16_t g = apart(whole(bright + green[x]), keyGreen);
        const std::int16_t b = apart(whole(bright + blue[x]), keyBlue);
        target[x] = static_cast<std::uint8_t>(std::max(std::max(r, g), b));
    }
}

/// share is of 255. What is left of the overlay without its key is no brighter or darker than a picture can be.
TWCORE_WIDE_VECTORS void mixedLine(std::uint8_t* __restrict to, const std::uint8_t* __restrict value,
                                   const std::uint8_t* __restrict share, int key, int count)
{
    for (int x = 0; x < count; ++x) {
        const int hidden = 255 - share[x];
        const int own = std::clamp(value[x] * 255 - hidden * key, 0, 255 * share[x]);
        const int sum = own + hidden * to[x] + 128;
        to[x] = static_cast<std::uint8_t>((sum + (sum >> 8)) >> 8); // divided by 255
    }
}

/// For colour halved both ways, which nearly all film has.
TWCORE_WIDE_VECTORS void meanOfFour(const std::uint8_t* __restrict upper, const std::uint8_t* __restrict lower,
                                    std::uint8_t* __restrict mean, int count)
{
    for (int x = 0; x < count; ++x) {
        mean[x] =
            static_cast<std::uint8_t>((upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1] + 2) >> 2);
    }
}

std::array<double, 3> valuesOf(const Colour& colour, const KeyRgb& key)
{
    const auto [redShare, blueShare] = lumaWeightsOf(colour.matrix);
    const double luma = redShare * key.red + (1 - redShare - blueShare) * key.green + blueShare * key.blue;
    const double lumaScale = colour.isFullRange ? 1 : 219.0 / 255;
    const double chromaScale = colour.isFullRange ? 1 : 224.0 / 255;
    return {(colour.isFullRange ? 0 : 16) + luma * lumaScale,
            128 + (key.blue - luma) / (2 * (1 - blueShare)) * chromaScale,
            128 + (key.red - luma) / (2 * (1 - redShare)) * chromaScale};
}

} // namespace

void PlaneKey::prepare(SharedFrame frame, const Colour& colour, const KeyRgb& key)
{
    frame_ = std::move(frame);
    planes_ = planesOf(const_cast<AVFrame&>(*frame_), colour);
    const auto values = valuesOf(colour, key);
    for (std::size_t plane = 0; plane < 3; ++plane) {
        key_[plane] = static_cast<int>(std::lround(values[plane]));
    }
    const auto [redShare, blueShare] = lumaWeightsOf(colour.matrix);
    const double greenShare = 1 - redShare - blueShare;
    const double lumaScale = colour.isFullRange ? 1 : 255.0 / 219;
    const double chromaScale = (colour.isFullRange ? 1 : 255.0 / 224) * 4096;
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    findDistances({.luma = key_[0],
                   .lumaExtra = whole((lumaScale - 1) * 128),
                   .cb4 = whole(values[1] * 4),
                   .cr4 = whole(values[2] * 4),
                   .redOfCr = whole(2 * (1 - redShare) * chromaScale),
                   .greenOfCb = whole(-2 * blueShare * (1 - blueShare) / greenShare * chromaScale),
                   .greenOfCr = whole(-2 * redShare * (1 - redShare) / greenShare * chromaScale),
                   .blueOfCb = whole(2 * (1 - blueShare) * chromaScale),
                   .red = key.red,
                   .green = key.green,
                   .blue = key.blue});
    shares_.find();
}

void PlaneKey::findDistances(const KeyNumbers& numbers)
{
    shares_.resize(planes_.width, planes_.height);
    for (auto* const parts : {&sampled_, &spread_}) {
        for (auto& part : *parts) {
            part.resize(static_cast<std::size_t>(planes_.planeWidth(1)) << planes_.shiftX);
        }
    }
    for (int y = 0; y < planes_.height; ++y) {
        if (y % (1 << planes_.shiftY) == 0) {
            findParts(y >> planes_.shiftY, numbers);
        }
        const auto& parts = planes_.shiftX > 0 ? spread_ : sampled_;
        distanceLine(planes_.line(0, y), parts[0].data(), parts[1].data(), parts[2].data(),
                     static_cast<std::int16_t>(numbers.luma), static_cast<std::int16_t>(numbers.lumaExtra),
                     {numbers.red, numbers.green, numbers.blue}, shares_.distances(y), planes_.width);
    }
}

void PlaneKey::findParts(int row, const KeyNumbers& numbers)
{
    const int samples = planes_.planeWidth(1);
    sampleParts(planes_.line(1, row), planes_.line(2, row), numbers, sampled_[0].data(), sampled_[1].data(),
                sampled_[2].data(), samples);
    for (std::size_t i = 0; i < 3 && planes_.shiftX > 0; ++i) {
        if (planes_.shiftX == 1) {
            doubled(sampled_[i].data(), spread_[i].data(), samples);
            continue;
        }
        for (int x = 0; x < planes_.width; ++x) {
            spread_[i][static_cast<std::size_t>(x)] = sampled_[i][static_cast<std::size_t>(x >> planes_.shiftX)];
        }
    }
}

void PlaneKey::lay(const Planes& target, int left, int top) const
{
    const int width = std::min(planes_.width, target.width - left);
    const int height = std::min(planes_.height, target.height - top);
    layLuma(target, left, top, width, height);
    layChroma(target, left, top, width, height);
}

void PlaneKey::layLuma(const Planes& target, int left, int top, int width, int height) const
{
    for (int y = 0; y < height; ++y) {
        const auto* const from = planes_.line(0, y);
        auto* const to = target.line(0, top + y) + left;
        for (const KeyShares::Run& run : shares_.runs(y)) {
            const int count = std::min(run.last, width) - run.first;
            if (count > 0 && run.kind == KeyShares::Kind::kOpaque) {
                std::memcpy(to + run.first, from + run.first, static_cast<std::size_t>(count));
            } else {
                mixedLine(to + run.first, from + run.first, shares_.line(y) + run.first, key_[0], count);
            }
        }
    }
}

void PlaneKey::meanShares(int row, int first, int count, std::uint8_t* shares) const
{
    const int stepX = 1 << planes_.shiftX;
    const int stepY = 1 << planes_.shiftY;
    if (stepX == 2 && stepY == 2) {
        meanOfFour(shares_.line(2 * row) + 2 * first, shares_.line(2 * row + 1) + 2 * first, shares, count);
        return;
    }
    for (int i = 0; i < count; ++i) {
        int sum = stepX * stepY / 2;
        for (int y = row * stepY; y < (row + 1) * stepY; ++y) {
            for (int x = (first + i) * stepX; x < (first + i + 1) * stepX; ++x) {
                sum += shares_.line(y)[x];
            }
        }
        shares[i] = static_cast<std::uint8_t>(sum / (stepX * stepY));
    }
}

/// A sample of the colour differences is seen as much as its pixels are together.
void PlaneKey::layChroma(const Planes& target, int left, int top, int width, int height) const
{
    const int stepX = 1 << planes_.shiftX;
    const int stepY = 1 << planes_.shiftY;
    const int columns = width >> planes_.shiftX;
    std::vector<std::uint8_t> shares(static_cast<std::size_t>(columns));
    for (int row = 0; row < height >> planes_.shiftY; ++row) {
        int first = width;
        int last = 0;
        bool isOpaque = true;
        for (int y = row * stepY; y < (row + 1) * stepY; ++y) {
            const auto runs = shares_.runs(y);
            isOpaque = isOpaque && runs.size() == 1 && runs.front().kind == KeyShares::Kind::kOpaque
                       && runs.front().first == 0 && runs.front().last == planes_.width;
            if (!runs.empty()) {
                first = std::min(first, runs.front().first);
                last = std::max(last, runs.back().last);
            }
        }
        const int begin = first >> planes_.shiftX;
        const int count = std::min(columns, (last + stepX - 1) >> planes_.shiftX) - begin;
        if (count <= 0) {
            continue;
        }
        if (!isOpaque) {
            meanShares(row, begin, count, shares.data());
        }
        for (int plane = 1; plane < 3; ++plane) {
            const auto* const from = planes_.line(plane, row) + begin;
            auto* const to = target.line(plane, (top >> planes_.shiftY) + row) + (left >> planes_.shiftX) + begin;
            if (isOpaque) {
                std::memcpy(to, from, static_cast<std::size_t>(count));
            } else {
                mixedLine(to, from, shares.data(), key_[static_cast<std::size_t>(plane)], count);
            }
        }
    }
}

} // namespace twcore
