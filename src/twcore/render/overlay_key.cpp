#include "twcore/render/overlay_key.h"

#include "twcore/render/vectors.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace twcore {

namespace {

struct Weights {
    int y[3];
    int cb[3];
    int cr[3];
    int yOffset;
};

/// Whole numbers, 14 bits behind the point, from red, green, blue to the target's brightness and colour differences.
Weights weightsOf(const Colour& colour)
{
    const auto [red, blue] = lumaWeightsOf(colour.matrix);
    const double green = 1 - red - blue;
    const double luma = (colour.isFullRange ? 255 : 219) / 255.0 * 16384;
    const double chroma = (colour.isFullRange ? 255 : 224) / 255.0 * 16384;
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    return {{whole(red * luma), whole(green * luma), whole(blue * luma)},
            {whole(-red / (2 * (1 - blue)) * chroma), whole(-green / (2 * (1 - blue)) * chroma), whole(chroma / 2)},
            {whole(chroma / 2), whole(-green / (2 * (1 - red)) * chroma), whole(-blue / (2 * (1 - red)) * chroma)},
            colour.isFullRange ? 0 : 16};
}

TWCORE_WIDE_VECTORS void distances(const std::uint8_t* __restrict green, const std::uint8_t* __restrict blue,
                                   const std::uint8_t* __restrict red, const KeyRgb& key,
                                   std::uint8_t* __restrict target, int width)
{
    const int keyGreen = key.green;
    const int keyBlue = key.blue;
    const int keyRed = key.red;
    for (int x = 0; x < width; ++x) {
        const int g = std::abs(green[x] - keyGreen);
        const int b = std::abs(blue[x] - keyBlue);
        const int r = std::abs(red[x] - keyRed);
        target[x] = static_cast<std::uint8_t>(std::max(r, std::max(g, b)));
    }
}

/// to = below * (1 - share) + above * share, rounded to the nearest.
TWCORE_WIDE_VECTORS void mixLine(std::uint8_t* __restrict to, const std::uint8_t* __restrict above,
                                 const std::uint8_t* __restrict share, int width)
{
    for (int x = 0; x < width; ++x) {
        const auto sum = static_cast<std::uint16_t>(to[x] * (255 - share[x]) + above[x] * share[x] + 128);
        to[x] = static_cast<std::uint8_t>((sum + (sum >> 8)) >> 8); // divided by 255
    }
}

TWCORE_WIDE_VECTORS void lumaLine(const std::uint8_t* __restrict green, const std::uint8_t* __restrict blue,
                                  const std::uint8_t* __restrict red, const int (&w)[3], int offset,
                                  std::uint8_t* __restrict target, int width)
{
    const int wr = w[0];
    const int wg = w[1];
    const int wb = w[2];
    for (int x = 0; x < width; ++x) {
        target[x] = static_cast<std::uint8_t>(((wr * red[x] + wg * green[x] + wb * blue[x] + 8192) >> 14) + offset);
    }
}

TWCORE_WIDE_VECTORS void chromaLine(std::uint8_t* __restrict to, const float* __restrict keep,
                                    const float* __restrict add, int width)
{
    for (int x = 0; x < width; ++x) {
        to[x] = static_cast<std::uint8_t>(std::clamp(static_cast<int>(to[x] * keep[x] + add[x] + 0.5f), 0, 255));
    }
}

} // namespace

void OverlayKey::findShares(const Planes& overlay, const KeyRgb& key)
{
    shares_.resize(overlay.width, overlay.height);
    for (int y = 0; y < overlay.height; ++y) {
        distances(overlay.line(0, y), overlay.line(1, y), overlay.line(2, y), key, shares_.distances(y), overlay.width);
    }
    shares_.find();
    keepFlatColours(overlay);
}

/// A pixel at the key's edge that goes on inside in the same colour is no mixture, however far from the key its other
/// neighbours are: the ground of a title stays whole beside brighter letters.
void OverlayKey::keepFlatColours(const Planes& overlay)
{
    constexpr int kAlike = 2; // of the 255 steps of a part of the colour
    constexpr int kAround = KeyShares::kAround;
    const auto goesOnInside = [&](int x, int y) {
        const auto isAlike = [&](int otherX, int otherY) {
            for (int plane = 0; plane < 3; ++plane) {
                if (std::abs(overlay.line(plane, y)[x] - overlay.line(plane, otherY)[otherX]) > kAlike) {
                    return false;
                }
            }
            return true;
        };
        for (int row = std::max(y - kAround, 0); row <= std::min(y + kAround, overlay.height - 1); ++row) {
            for (int column = std::max(x - kAround, 0); column <= std::min(x + kAround, overlay.width - 1); ++column) {
                if (isAlike(column, row) && !shares_.isNearKey(column, row)) {
                    return true;
                }
            }
        }
        return false;
    };
    for (int y = 0; y < overlay.height; ++y) {
        for (const KeyShares::Run& run : shares_.runs(y)) {
            for (int x = run.first; run.kind == KeyShares::Kind::kMixed && x < run.last; ++x) {
                const int share = shares_.line(y)[x];
                if (share > 0 && share < 255 && goesOnInside(x, y)) {
                    shares_.makeOpaque(x, y);
                }
            }
        }
    }
}

OverlayKey::Span OverlayKey::spanOf(int y) const
{
    const auto runs = shares_.runs(y);
    return runs.empty() ? Span{} : Span{runs.front().first, runs.back().last};
}

void OverlayKey::unmix(const Planes& overlay, const KeyRgb& key)
{
    const int keys[3] = {key.green, key.blue, key.red};
    for (int y = 0; y < overlay.height; ++y) {
        const auto* const shares = shares_.line(y);
        for (const KeyShares::Run& run : shares_.runs(y)) {
            for (int x = run.first; run.kind == KeyShares::Kind::kMixed && x < run.last; ++x) {
                const int share = shares[x];
                for (int plane = 0; plane < 3 && share > 0 && share < 255; ++plane) {
                    std::uint8_t& value = overlay.line(plane, y)[x];
                    value = static_cast<std::uint8_t>(
                        std::clamp((value * 255 - (255 - share) * keys[plane]) / share, 0, 255));
                }
            }
        }
    }
}

void OverlayKey::takePlanes(const Planes& overlay)
{
    for (int plane = 0; plane < 3; ++plane) {
        auto& values = value_[static_cast<std::size_t>(plane)];
        values.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(shares_.height()));
        for (int y = 0; y < shares_.height(); ++y) {
            std::copy_n(overlay.line(plane, y), width_, values.data() + std::ptrdiff_t{y} * width_);
        }
    }
}

void OverlayKey::takeLuma(const Planes& overlay, const Colour& colour)
{
    const Weights weights = weightsOf(colour);
    value_[0].resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(shares_.height()));
    for (int y = 0; y < shares_.height(); ++y) {
        const Span span = spanOf(y);
        lumaLine(overlay.line(0, y) + span.first, overlay.line(1, y) + span.first, overlay.line(2, y) + span.first,
                 weights.y, weights.yOffset, value_[0].data() + std::ptrdiff_t{y} * width_ + span.first,
                 span.last - span.first);
    }
}

/// A pixel of halved colour takes each of its pixels by its share.
void OverlayKey::takeChroma(const Planes& overlay, const Colour& colour)
{
    const Weights weights = weightsOf(colour);
    const int stepX = 1 << shiftX_;
    const int stepY = 1 << shiftY_;
    const int columns = width_ >> shiftX_;
    const int rows = shares_.height() >> shiftY_;
    const auto count = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    keep_.assign(count, 1);
    add_[0].assign(count, 0);
    add_[1].assign(count, 0);
    const float all = static_cast<float>(255 * stepX * stepY);
    for (int row = 0; row < rows; ++row) {
        Span seen{width_, 0};
        for (int y = row * stepY; y < (row + 1) * stepY; ++y) {
            const Span span = spanOf(y);
            seen = span.last > 0 ? Span{std::min(seen.first, span.first), std::max(seen.last, span.last)} : seen;
        }
        for (int column = seen.first >> shiftX_; column < std::min(columns, (seen.last + stepX - 1) >> shiftX_);
             ++column) {
            int shares = 0;
            int red = 0;
            int green = 0;
            int blue = 0;
            for (int y = row * stepY; y < (row + 1) * stepY; ++y) {
                const auto* const share = shares_.line(y);
                for (int x = column * stepX; x < (column + 1) * stepX; ++x) {
                    shares += share[x];
                    green += overlay.line(0, y)[x] * share[x];
                    blue += overlay.line(1, y)[x] * share[x];
                    red += overlay.line(2, y)[x] * share[x];
                }
            }
            if (shares == 0) {
                continue;
            }
            const auto i =
                static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column);
            const float share = static_cast<float>(shares) / all;
            const auto weighed = [&](const int(&w)[3]) {
                return static_cast<float>(std::int64_t{w[0]} * red + std::int64_t{w[1]} * green
                                          + std::int64_t{w[2]} * blue)
                           / (16384.0f * all)
                       + 128 * share;
            };
            keep_[i] = 1 - share;
            add_[0][i] = weighed(weights.cb);
            add_[1][i] = weighed(weights.cr);
        }
    }
}

void OverlayKey::prepare(const Planes& overlay, const KeyRgb& key, const Planes& like)
{
    width_ = overlay.width;
    shiftX_ = like.shiftX;
    shiftY_ = like.shiftY;
    isRgb_ = like.isRgb();
    findShares(overlay, key);
    unmix(overlay, key);
    if (isRgb_) {
        takePlanes(overlay);
        return;
    }
    takeLuma(overlay, like.colour);
    takeChroma(overlay, like.colour);
}

void OverlayKey::lay(const Planes& target, int left, int top) const
{
    const int width = std::min(width_, target.width - left);
    const int height = std::min(shares_.height(), target.height - top);
    for (int plane = 0; plane < (isRgb_ ? 3 : 1); ++plane) {
        for (int y = 0; y < height; ++y) {
            const Span span = spanOf(y);
            const std::ptrdiff_t at = std::ptrdiff_t{y} * width_ + span.first;
            mixLine(target.line(plane, top + y) + left + span.first,
                    value_[static_cast<std::size_t>(plane)].data() + at, shares_.line(y) + span.first,
                    std::min(width, span.last) - span.first);
        }
    }
    if (isRgb_) {
        return;
    }
    const int columns = width >> shiftX_;
    for (int row = 0; row < height >> shiftY_; ++row) {
        const std::ptrdiff_t at = std::ptrdiff_t{row} * (width_ >> shiftX_);
        for (int plane = 1; plane < 3; ++plane) {
            chromaLine(target.line(plane, (top >> shiftY_) + row) + (left >> shiftX_), keep_.data() + at,
                       add_[static_cast<std::size_t>(plane) - 1].data() + at, columns);
        }
    }
}

void OverlayKey::blend(const Planes& overlay, const KeyRgb& key, const Planes& target, int left, int top)
{
    prepare(overlay, key, target);
    lay(target, left, top);
}

} // namespace twcore
