#include "twcore/render/scale_lines.h"

#include <algorithm>

namespace twcore {

namespace {

/// So many that no sum of what is left of the weights, times 255, leaves 16 bits: by a quarter of the taps times
/// 1 << bits it is bounded.
int lowBitsFor(int taps)
{
    int bits = 6;
    while (taps << bits > 512) {
        --bits;
    }
    return bits;
}

std::int16_t pairOf(int first, int second)
{
    return static_cast<std::int16_t>((first & 0xFF) | static_cast<int>(static_cast<unsigned>(second & 0xFF) << 8));
}

} // namespace

RowMixer::RowMixer(int from, int to, int depth, Vectors vectors)
    : vectors_(vectors), from_(from), isSame_(from == to), depth_(depth)
{
    if (isSame_) {
        return;
    }
    lowBits_ = lowBitsFor(tapsBetween(from, to));
    taps_ = scaleTaps(from, to, depth == 8 ? kLineBits + lowBits_ : kWeightBits);
    rows_.resize(static_cast<std::size_t>(taps_.count));
    if (depth == 8) {
        splitWeights();
    }
}

/// Into 64ths, which sum up to 64, and what is left, which sums up to nothing.
void RowMixer::splitWeights()
{
    const auto count = static_cast<std::size_t>(taps_.count);
    const int whole = 1 << lowBits_;
    std::vector<std::size_t> order(count);
    std::vector<int> high(count);
    std::vector<int> low(count);
    for (std::size_t row = 0; row < taps_.first.size(); ++row) {
        const std::int16_t* const weights = &taps_.weights[row * count];
        int missing = 0;
        for (std::size_t k = 0; k < count; ++k) {
            order[k] = k;
            high[k] = weights[k] >> lowBits_;
            low[k] = weights[k] - high[k] * whole;
            missing += low[k];
        }
        std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return low[a] > low[b]; });
        for (std::size_t i = 0; missing > 0; missing -= whole, ++i) {
            ++high[order[i]];
            low[order[i]] -= whole;
        }
        for (std::size_t k = 0; k < count; k += 2) {
            high_.push_back(pairOf(high[k], high[k + 1]));
            low_.push_back(pairOf(low[k], low[k + 1]));
        }
    }
}

void RowMixer::mix(const std::uint8_t* rows, std::ptrdiff_t stride, int number, std::int16_t* line, int width)
{
    if (isSame_) {
        const std::uint8_t* const row = rows + number * stride;
        if (depth_ == 8) {
            bytesToLine(row, line, width);
        } else {
            wordsToLine(reinterpret_cast<const std::uint16_t*>(row), 8 + kLineBits - depth_, line, width);
        }
        return;
    }
    const auto result = static_cast<std::size_t>(number);
    const auto row = [&](std::size_t k) {
        return rows + std::clamp(taps_.first[result] + static_cast<int>(k), 0, from_ - 1) * stride;
    };
    for (std::size_t k = 0; k < rows_.size(); ++k) {
        rows_[k] = row(k);
    }
    const NextRows next{row(rows_.size()), row(rows_.size() + 1)};
    if (depth_ == 8) {
        const std::size_t pairs = rows_.size() / 2;
        mixBytes(vectors_,
                 {rows_.data(), &high_[result * pairs], &low_[result * pairs], taps_.count / 2, lowBits_, next}, line,
                 width);
    } else {
        mixWords(vectors_, {rows_.data(), &taps_.weights[result * rows_.size()], taps_.count, 15 - depth_, next}, line,
                 width);
    }
}

LineScaler::LineScaler(int from, int to, Vectors vectors) : vectors_(vectors), from_(from)
{
    constexpr int kLane = 8; // samples
    const ScaleTaps taps = scaleTaps(from, to, kWeightBits);
    const auto count = static_cast<std::size_t>(taps.count);
    const std::size_t results = (taps.first.size() + kLineGroup - 1) / kLineGroup * kLineGroup;
    first_ = taps.first;
    while (first_.size() < results) {
        first_.push_back(first_.back() + (from == 2 * to ? 2 : 0));
    }
    bool isNear = true;
    for (std::size_t x = 0; x < results; ++x) {
        isNear = isNear && first_[x] - first_[x / 4 * 4] + 2 <= kLane;
    }
    const bool isHalved = from == 2 * to && count == kBesideTaps;
    way_ = isHalved ? LineWay::kBeside : isNear ? LineWay::kShuffled : LineWay::kAlone;
    taps_ = way_ == LineWay::kAlone ? (count + kLineGroup - 1) / kLineGroup * kLineGroup : count;
    margin_ = static_cast<int>(taps_ + 2 * kLineGroup);
    input_.resize(static_cast<std::size_t>(from) + 2 * static_cast<std::size_t>(margin_));
    weights_.resize(results * taps_);
    for (std::size_t x = 0; x < results; ++x) {
        for (std::size_t k = 0; k < count && x < taps.first.size(); ++k) {
            weights_[weightPlace(way_, taps_, x, k)] = taps.weights[x * count + k];
        }
        if (way_ == LineWay::kShuffled) {
            for (int byte = 0; byte < 4; ++byte) {
                shuffles_.push_back(static_cast<std::uint8_t>(2 * (first_[x] - first_[x / 4 * 4]) + byte));
            }
        }
    }
}

void LineScaler::scale(std::int16_t* to)
{
    std::int16_t* const line = input();
    std::fill(input_.begin(), input_.begin() + margin_, line[0]);
    std::fill(input_.end() - margin_, input_.end(), line[from_ - 1]);
    const LineWork work{way_, line, first_.data(), weights_.data(), shuffles_.data(), taps_, first_.size()};
    scaleLine(vectors_, work, to);
}

PlaneScaler::PlaneScaler(PictureSize from, PictureSize to, int depth, Vectors vectors)
    : fromWidth_(from.width), to_(to), isCopy_(from == to && depth == 8), rows_(from.height, to.height, depth, vectors)
{
    if (from.width != to.width) {
        columns_.emplace(from.width, to.width, vectors);
    }
}

void PlaneScaler::line(const std::uint8_t* plane, std::ptrdiff_t stride, int number, std::int16_t* result)
{
    rows_.mix(plane, stride, number, columns_ ? columns_->input() : result, fromWidth_);
    if (columns_) {
        columns_->scale(result);
    }
}

} // namespace twcore
