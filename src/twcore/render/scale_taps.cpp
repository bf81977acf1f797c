#include "twcore/render/scale_taps.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace twcore {

namespace {

/// Keys' cubic with the sharpness that the field's scalers have settled on.
double bicubic(double distance)
{
    constexpr double kSharpness = -0.6;
    const double x = std::abs(distance);
    if (x < 1) {
        return ((kSharpness + 2) * x - (kSharpness + 3)) * x * x + 1;
    }
    return x < 2 ? kSharpness * (((x - 5) * x + 8) * x - 4) : 0;
}

double reach(int from, int to) { return 2 * std::max(1.0, static_cast<double>(from) / to); }

/// Whole numbers that sum up to what the parts sum up to: those that lose most by rounding down are rounded up.
void roundTogether(const std::vector<double>& parts, int sum, std::int16_t* to)
{
    std::vector<std::size_t> order(parts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    int missing = sum;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        to[i] = static_cast<std::int16_t>(std::floor(parts[i]));
        missing -= to[i];
    }
    std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) {
        return parts[a] - std::floor(parts[a]) > parts[b] - std::floor(parts[b]);
    });
    for (std::size_t i = 0; missing > 0; i = (i + 1) % order.size(), --missing) {
        ++to[order[i]];
    }
}

} // namespace

int tapsBetween(int from, int to) { return (static_cast<int>(std::ceil(2 * reach(from, to))) + 1) / 2 * 2; }

ScaleTaps scaleTaps(int from, int to, int bits)
{
    const double step = static_cast<double>(from) / to;
    const double widening = std::max(1.0, step);
    ScaleTaps taps;
    taps.count = tapsBetween(from, to);
    const auto count = static_cast<std::size_t>(taps.count);
    taps.first.resize(static_cast<std::size_t>(to));
    taps.weights.resize(static_cast<std::size_t>(to) * count);
    std::vector<double> parts(count);
    for (std::size_t i = 0; i < taps.first.size(); ++i) {
        const double centre = (static_cast<double>(i) + 0.5) * step - 0.5;
        const int first = static_cast<int>(std::floor(centre - reach(from, to))) + 1;
        for (std::size_t k = 0; k < count; ++k) {
            parts[k] = bicubic((first + static_cast<double>(k) - centre) / widening);
        }
        const double whole = std::accumulate(parts.begin(), parts.end(), 0.0);
        for (double& part : parts) {
            part *= (1 << bits) / whole;
        }
        taps.first[i] = first;
        roundTogether(parts, 1 << bits, &taps.weights[i * count]);
    }
    return taps;
}

} // namespace twcore
