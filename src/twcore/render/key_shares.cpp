#include "twcore/render/key_shares.h"

#include "twcore/render/vectors.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace twcore {

namespace {

constexpr int kTolerance = 20; // of the 255 steps of a part of the colour
constexpr int kLines = 2 * KeyShares::kAround + 1;
constexpr int kOpaquePart = 240; // of 256: nearly the farthest colour is the farthest colour
constexpr int kBlock = 32;       // pixels that are judged at once

using Line = const std::uint8_t*;

/// Smallest and largest of each pixel and its neighbours; `from` has a margin.
TWCORE_WIDE_VECTORS void spreadAlong(Line __restrict from, std::uint8_t* __restrict lowest,
                                     std::uint8_t* __restrict highest, int width)
{
    for (int x = 0; x < width; ++x) {
        const std::uint8_t a = from[x - 2];
        const std::uint8_t b = from[x - 1];
        const std::uint8_t c = from[x];
        const std::uint8_t d = from[x + 1];
        const std::uint8_t e = from[x + 2];
        lowest[x] = std::min(std::min(std::min(a, b), std::min(d, e)), c);
        highest[x] = std::max(std::max(std::max(a, b), std::max(d, e)), c);
    }
}

TWCORE_WIDE_VECTORS void judge(Line __restrict distance, const std::array<Line, kLines>& lowest,
                               const std::array<Line, kLines>& highest, std::uint8_t* __restrict farthest,
                               std::uint8_t* __restrict mixed, std::uint8_t* __restrict share, int width)
{
    Line const l0 = lowest[0];
    Line const l1 = lowest[1];
    Line const l2 = lowest[2];
    Line const l3 = lowest[3];
    Line const l4 = lowest[4];
    Line const h0 = highest[0];
    Line const h1 = highest[1];
    Line const h2 = highest[2];
    Line const h3 = highest[3];
    Line const h4 = highest[4];
    for (int x = 0; x < width; ++x) {
        const std::uint8_t low = std::min(std::min(std::min(l0[x], l1[x]), std::min(l2[x], l3[x])), l4[x]);
        farthest[x] = std::max(std::max(std::max(h0[x], h1[x]), std::max(h2[x], h3[x])), h4[x]);
        const std::uint8_t seen = distance[x] > kTolerance ? 255 : 0;
        const std::uint8_t meetsKey = low <= kTolerance ? 255 : 0;
        share[x] = seen;
        mixed[x] = seen & meetsKey;
    }
}

TWCORE_WIDE_VECTORS void mix(Line __restrict distance, Line __restrict farthest, Line __restrict mixed,
                             std::uint8_t* __restrict share, int count)
{
    for (int x = 0; x < count; ++x) {
        const int most = std::max(farthest[x] * kOpaquePart / 256, kTolerance + 1);
        const auto part = static_cast<float>((distance[x] - kTolerance) * 255) / static_cast<float>(most - kTolerance);
        const int whole = std::min(static_cast<int>(part), 255);
        share[x] = mixed[x] != 0 ? static_cast<std::uint8_t>(whole) : share[x];
    }
}

bool isAll(Line values, int count, std::uint8_t value)
{
    std::uint8_t differing = 0;
    for (int i = 0; i < count; ++i) {
        differing |= static_cast<std::uint8_t>(values[i] ^ value);
    }
    return differing == 0;
}

} // namespace

void KeyShares::resize(int width, int height)
{
    width_ = width;
    height_ = height;
    const auto w = static_cast<std::size_t>(width);
    distance_.resize((w + 2 * kAround) * static_cast<std::size_t>(height));
    share_.resize(w * static_cast<std::size_t>(height));
    lowest_.resize(w * kLines);
    highest_.resize(w * kLines);
    farthest_.resize(w);
    mixed_.resize(w);
}

std::uint8_t* KeyShares::distances(int y)
{
    return distance_.data() + std::ptrdiff_t{y} * (width_ + 2 * kAround) + kAround;
}

std::span<const KeyShares::Run> KeyShares::runs(int y) const
{
    const auto line = static_cast<std::size_t>(y);
    return {runs_.data() + firstRun_[line], firstRun_[line + 1] - firstRun_[line]};
}

void KeyShares::find()
{
    runs_.clear();
    firstRun_.clear();
    for (int y = 0; y < std::min(kAround, height_); ++y) {
        spreadLine(y);
    }
    for (int y = 0; y < height_; ++y) {
        if (y + kAround < height_) {
            spreadLine(y + kAround);
        }
        firstRun_.push_back(runs_.size());
        shareLine(y);
    }
    firstRun_.push_back(runs_.size());
}

bool KeyShares::isNearKey(int x, int y)
{
    for (int row = std::max(y - kAround, 0); row <= std::min(y + kAround, height_ - 1); ++row) {
        const auto* const line = distances(row) + x; // with its margin
        if (std::any_of(line - kAround, line + kAround + 1, [](int far) { return far <= kTolerance; })) {
            return true;
        }
    }
    return false;
}

void KeyShares::spreadLine(int y)
{
    auto* const line = distances(y);
    for (int i = 1; i <= kAround; ++i) {
        line[-i] = line[0];
        line[width_ - 1 + i] = line[width_ - 1];
    }
    const std::ptrdiff_t at = std::ptrdiff_t{y % kLines} * width_;
    spreadAlong(line, lowest_.data() + at, highest_.data() + at, width_);
}

void KeyShares::shareLine(int y)
{
    std::array<Line, kLines> lowest{};
    std::array<Line, kLines> highest{};
    for (int i = 0; i < kLines; ++i) {
        const std::ptrdiff_t at = std::ptrdiff_t{std::clamp(y - kAround + i, 0, height_ - 1) % kLines} * width_;
        lowest[static_cast<std::size_t>(i)] = lowest_.data() + at;
        highest[static_cast<std::size_t>(i)] = highest_.data() + at;
    }
    auto* const share = share_.data() + std::ptrdiff_t{y} * width_;
    judge(distances(y), lowest, highest, farthest_.data(), mixed_.data(), share, width_);
    for (int first = 0; first < width_; first += kBlock) {
        const int last = std::min(first + kBlock, width_);
        if (!isAll(mixed_.data() + first, last - first, 0)) {
            mix(distances(y) + first, farthest_.data() + first, mixed_.data() + first, share + first, last - first);
            addRun(first, last, Kind::kMixed);
        } else if (isAll(share + first, last - first, 255)) {
            addRun(first, last, Kind::kOpaque);
        } else if (!isAll(share + first, last - first, 0)) {
            addRun(first, last, Kind::kMixed);
        }
    }
}

void KeyShares::addRun(int first, int last, Kind kind)
{
    const bool goesOn = runs_.size() > firstRun_.back() && runs_.back().last == first && runs_.back().kind == kind;
    if (goesOn) {
        runs_.back().last = last;
    } else {
        runs_.push_back({first, last, kind});
    }
}

} // namespace twcore
