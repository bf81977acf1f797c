#include "twcore/render/overlay_key.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace twcore {

namespace {

constexpr int kTolerance = 20;   // of the 255 steps of a part of the colour
constexpr int kAround = 2;       // pixels to either side
constexpr int kOpaquePart = 240; // of 256: nearly the farthest colour is the farthest colour

/// Smallest or largest value in a square around each pixel: along lines, then down columns.
template <class Better>
void spread(const std::vector<std::uint8_t>& source, std::vector<std::uint8_t>& scratch,
            std::vector<std::uint8_t>& target, int width, int height, Better better)
{
    for (int y = 0; y < height; ++y) {
        const auto* const from = source.data() + std::ptrdiff_t{y} * width;
        auto* const to = scratch.data() + std::ptrdiff_t{y} * width;
        std::copy_n(from, width, to);
        for (int step = 1; step <= kAround; ++step) {
            for (int x = step; x < width; ++x) {
                to[x] = better(to[x], from[x - step]);
            }
            for (int x = 0; x + step < width; ++x) {
                to[x] = better(to[x], from[x + step]);
            }
        }
    }
    for (int y = 0; y < height; ++y) {
        auto* const to = target.data() + std::ptrdiff_t{y} * width;
        std::copy_n(scratch.data() + std::ptrdiff_t{y} * width, width, to);
        for (int step = -kAround; step <= kAround; ++step) {
            const auto* const from = scratch.data() + std::ptrdiff_t{std::clamp(y + step, 0, height - 1)} * width;
            for (int x = 0; x < width; ++x) {
                to[x] = better(to[x], from[x]);
            }
        }
    }
}

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

int mixed(int below, int above, int share) { return (below * (255 - share) + above * share + 127) / 255; }

} // namespace

void OverlayKey::findShares(const Planes& overlay, const KeyRgb& key)
{
    const int width = overlay.width;
    const int height = overlay.height;
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    width_ = width;
    for (auto* const plane : {&distance_, &nearest_, &farthest_, &share_, &scratch_}) {
        plane->resize(count);
    }
    for (int y = 0; y < height; ++y) {
        const auto* const green = overlay.line(0, y);
        const auto* const blue = overlay.line(1, y);
        const auto* const red = overlay.line(2, y);
        auto* const target = distance_.data() + std::ptrdiff_t{y} * width;
        for (int x = 0; x < width; ++x) {
            const int g = std::abs(green[x] - key.green);
            const int b = std::abs(blue[x] - key.blue);
            const int r = std::abs(red[x] - key.red);
            target[x] = static_cast<std::uint8_t>(std::max(r, std::max(g, b)));
        }
    }
    spread(distance_, scratch_, nearest_, width, height, [](auto a, auto b) { return std::min(a, b); });
    spread(distance_, scratch_, farthest_, width, height, [](auto a, auto b) { return std::max(a, b); });
    for (std::size_t i = 0; i < count; ++i) {
        const int distance = distance_[i];
        int share = 255;
        if (distance <= kTolerance) {
            share = 0;
        } else if (nearest_[i] <= kTolerance) {
            const int most = std::max(farthest_[i] * kOpaquePart / 256, kTolerance + 1);
            share = std::min(255, (distance - kTolerance) * 255 / std::max(1, most - kTolerance));
        }
        share_[i] = static_cast<std::uint8_t>(share);
    }
}

void OverlayKey::unmix(const Planes& overlay, const KeyRgb& key)
{
    const int keys[3] = {key.green, key.blue, key.red};
    for (int plane = 0; plane < 3; ++plane) {
        for (int y = 0; y < overlay.height; ++y) {
            auto* const line = overlay.line(plane, y);
            const auto* const shares = share_.data() + std::ptrdiff_t{y} * width_;
            for (int x = 0; x < overlay.width; ++x) {
                const int share = shares[x];
                if (share > 0 && share < 255) {
                    const int pure = (line[x] * 255 - (255 - share) * keys[plane]) / share;
                    line[x] = static_cast<std::uint8_t>(std::clamp(pure, 0, 255));
                }
            }
        }
    }
}

void OverlayKey::blend(const Planes& overlay, const KeyRgb& key, const Planes& target, int left, int top)
{
    findShares(overlay, key);
    unmix(overlay, key);
    const int width = std::min(overlay.width, target.width - left);
    const int height = std::min(overlay.height, target.height - top);
    const auto shareAt = [&](int x, int y) {
        return int{share_[std::size_t(y) * std::size_t(width_) + std::size_t(x)]};
    };
    if (target.isRgb()) {
        for (int plane = 0; plane < 3; ++plane) {
            for (int y = 0; y < height; ++y) {
                const auto* const from = overlay.line(plane, y);
                auto* const to = target.line(plane, top + y) + left;
                for (int x = 0; x < width; ++x) {
                    to[x] = static_cast<std::uint8_t>(mixed(to[x], from[x], shareAt(x, y)));
                }
            }
        }
        return;
    }
    const Weights weights = weightsOf(target.colour);
    const auto part = [](const int(&w)[3], int r, int g, int b) { return w[0] * r + w[1] * g + w[2] * b; };
    for (int y = 0; y < height; ++y) {
        const auto* const green = overlay.line(0, y);
        const auto* const blue = overlay.line(1, y);
        const auto* const red = overlay.line(2, y);
        auto* const to = target.line(0, top + y) + left;
        for (int x = 0; x < width; ++x) {
            const int luma = ((part(weights.y, red[x], green[x], blue[x]) + 8192) >> 14) + weights.yOffset;
            to[x] = static_cast<std::uint8_t>(mixed(to[x], luma, shareAt(x, y)));
        }
    }
    // A pixel of halved colour takes each of its pixels by its share.
    const int stepX = 1 << target.shiftX;
    const int stepY = 1 << target.shiftY;
    for (int y = 0; y + stepY <= height; y += stepY) {
        auto* const toCb = target.line(1, (top + y) >> target.shiftY) + (left >> target.shiftX);
        auto* const toCr = target.line(2, (top + y) >> target.shiftY) + (left >> target.shiftX);
        for (int x = 0; x + stepX <= width; x += stepX) {
            int shares = 0;
            std::int64_t cb = 0;
            std::int64_t cr = 0;
            for (int dy = 0; dy < stepY; ++dy) {
                for (int dx = 0; dx < stepX; ++dx) {
                    const int share = shareAt(x + dx, y + dy);
                    const int r = overlay.line(2, y + dy)[x + dx];
                    const int g = overlay.line(0, y + dy)[x + dx];
                    const int b = overlay.line(1, y + dy)[x + dx];
                    shares += share;
                    cb += std::int64_t{part(weights.cb, r, g, b)} * share;
                    cr += std::int64_t{part(weights.cr, r, g, b)} * share;
                }
            }
            if (shares == 0) {
                continue;
            }
            const int all = 255 * stepX * stepY;
            const auto blended = [&](int below, std::int64_t above) {
                const std::int64_t sum = std::int64_t{below - 128} * (all - shares) * 16384 + above;
                return static_cast<std::uint8_t>(
                    std::clamp<std::int64_t>(128 + std::llround(static_cast<double>(sum) / (16384.0 * all)), 0, 255));
            };
            toCb[x >> target.shiftX] = blended(toCb[x >> target.shiftX], cb);
            toCr[x >> target.shiftX] = blended(toCr[x >> target.shiftX], cr);
        }
    }
}

} // namespace twcore
