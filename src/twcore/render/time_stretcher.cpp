#include "twcore/render/time_stretcher.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace twcore {

namespace {

constexpr double kHopSeconds = 0.020;
constexpr double kSearchSeconds = 0.010;
constexpr std::int64_t kHopsAhead = 3; // made before a jump's target, so that windows have found their places
constexpr int kCoarse = 4;

} // namespace

TimeStretcher::TimeStretcher(SoundSource& source, int rate, double speed, double firstSample)
    : source_(source), speed_(speed), firstSample_(firstSample), hop_(static_cast<int>(kHopSeconds * rate)),
      search_(static_cast<int>(kSearchSeconds * rate)), fade_(static_cast<std::size_t>(hop_)),
      tail_(static_cast<std::size_t>(hop_) * 2), made_(static_cast<std::size_t>(hop_) * 2)
{
    for (int i = 0; i < hop_; ++i) {
        const double s = std::sin(std::numbers::pi / 2 * (i + 0.5) / hop_);
        fade_[static_cast<std::size_t>(i)] = static_cast<float>(s * s);
    }
}

void TimeStretcher::read(std::int64_t first, std::span<float> out)
{
    auto count = static_cast<std::int64_t>(out.size() / 2);
    auto* target = out.data();
    while (count > 0) {
        const std::int64_t hop = first >= 0 ? first / hop_ : (first - hop_ + 1) / hop_;
        if (nextHop_ != hop + 1) {
            if (nextHop_ != hop) {
                startAt(hop);
            }
            while (nextHop_ <= hop) {
                makeHop();
            }
        }
        const std::int64_t offset = first - madeFirst_;
        const std::int64_t part = std::min(count, hop_ - offset);
        target = std::copy_n(made_.begin() + offset * 2, part * 2, target);
        first += part;
        count -= part;
    }
}

void TimeStretcher::startAt(std::int64_t hop)
{
    nextHop_ = std::max<std::int64_t>(0, hop - kHopsAhead);
    const auto place = std::llround(firstSample_ + static_cast<double>(nextHop_ * hop_) * speed_);
    input_.clear();
    // The window before the first is the media that leads up to it, so that the beginning is as it is in the media.
    need(place, hop_);
    std::copy_n(inputAt(place), hop_ * 2, tail_.begin());
}

void TimeStretcher::makeHop()
{
    const auto nominal = std::llround(firstSample_ + static_cast<double>(nextHop_ * hop_) * speed_);
    need(nominal - search_, 2 * hop_ + 2 * search_);
    const std::int64_t place = bestPlace(nominal);
    const float* const input = inputAt(place);
    for (int i = 0; i < hop_; ++i) {
        const float rising = fade_[static_cast<std::size_t>(i)];
        for (int c = 0; c < 2; ++c) {
            const auto at = static_cast<std::size_t>(i) * 2 + static_cast<std::size_t>(c);
            made_[at] = tail_[at] * (1 - rising) + input[at] * rising;
        }
    }
    std::copy_n(input + hop_ * 2, hop_ * 2, tail_.begin());
    madeFirst_ = nextHop_ * hop_;
    ++nextHop_;
}

double TimeStretcher::similarity(std::int64_t place, int step) const
{
    const float* const input = inputAt(place);
    float product = 0;
    float power = 1e-6f;
    for (int i = 0; i < hop_ * 2; i += 2 * step) {
        const float a = tail_[static_cast<std::size_t>(i)] + tail_[static_cast<std::size_t>(i) + 1];
        const float b = input[i] + input[i + 1];
        product += a * b;
        power += b * b;
    }
    return product / std::sqrt(static_cast<double>(power));
}

std::int64_t TimeStretcher::bestPlace(std::int64_t nominal)
{
    // Coarsely over the whole width, then to the sample around the best.
    std::int64_t best = nominal;
    double score = -std::numeric_limits<double>::infinity();
    const auto consider = [&](std::int64_t place, int step) {
        const double found = similarity(place, step);
        if (found > score) {
            score = found;
            best = place;
        }
    };
    consider(nominal, kCoarse);
    for (std::int64_t place = nominal - search_; place <= nominal + search_; place += kCoarse) {
        consider(place, kCoarse);
    }
    const std::int64_t coarse = best;
    score = -std::numeric_limits<double>::infinity();
    const std::int64_t low = std::max(coarse - kCoarse, nominal - search_);
    const std::int64_t high = std::min(coarse + kCoarse, nominal + search_);
    for (std::int64_t place = low; place <= high; ++place) {
        consider(place, 1);
    }
    return best;
}

void TimeStretcher::need(std::int64_t first, std::int64_t count)
{
    const auto end = [&] { return inputFirst_ + static_cast<std::int64_t>(input_.size() / 2); };
    if (input_.empty() || first < inputFirst_ || first > end()) {
        input_.clear();
        inputFirst_ = first;
    }
    // Windows may step back by the search width; what lies further back is not needed again.
    const std::int64_t keepFrom = first - 2 * search_ - hop_;
    if (keepFrom - inputFirst_ > 8 * hop_) {
        input_.erase(input_.begin(), input_.begin() + (keepFrom - inputFirst_) * 2);
        inputFirst_ = keepFrom;
    }
    const std::int64_t missing = first + count - end();
    if (missing > 0) {
        const auto from = end();
        input_.resize(input_.size() + static_cast<std::size_t>(missing) * 2);
        source_.read(from, std::span(input_).last(static_cast<std::size_t>(missing) * 2));
    }
}

} // namespace twcore
