#include "patterns.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace testmedia {
namespace {

constexpr double kNoiseHz = 3000; // random values a second; the noise ends a little above half of this
constexpr int kTaps = 16;         // of the windowed sinc between the random values
constexpr int kPhases = 2048;     // steps in its table
constexpr double kNoiseGain = 0.3, kToneGain = 0.08;
constexpr double kCoarseHz = 6000; // enough for the noise

double randomValue(std::int64_t index, int channel)
{
    auto x = static_cast<std::uint64_t>(index) * 0x9E3779B97F4A7C15U
             + static_cast<std::uint64_t>(channel + 1) * 0xD1B54A32D192ED03U;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBU;
    x ^= x >> 31;
    return static_cast<double>(x >> 11) / 4503599627370496.0 - 1.0; // 2^52: -1..1
}

using KernelTable = std::vector<std::array<double, kTaps>>;

const KernelTable& kernelTable()
{
    static const KernelTable table = [] {
        KernelTable rows(kPhases + 1);
        for (int phase = 0; phase <= kPhases; ++phase)
            for (int tap = 0; tap < kTaps; ++tap) {
                const double u = static_cast<double>(phase) / kPhases - (tap - (kTaps / 2 - 1));
                const double window = std::cos(std::numbers::pi * u / kTaps);
                const double sinc = u == 0 ? 1 : std::sin(std::numbers::pi * u) / (std::numbers::pi * u);
                rows[static_cast<std::size_t>(phase)][static_cast<std::size_t>(tap)] = sinc * window * window;
            }
        return rows;
    }();
    return table;
}

double oneChannelNoise(double seconds, int channel)
{
    const KernelTable& table = kernelTable();
    const double position = seconds * kNoiseHz;
    const double whole = std::floor(position);
    const double phase = (position - whole) * kPhases;
    const auto row = std::min(static_cast<std::size_t>(phase), static_cast<std::size_t>(kPhases - 1));
    const double blend = phase - static_cast<double>(row);
    const auto first = static_cast<std::int64_t>(whole) - (kTaps / 2 - 1);
    double sum = 0;
    for (std::size_t tap = 0; tap < kTaps; ++tap) {
        const double weight = table[row][tap] * (1 - blend) + table[row + 1][tap] * blend;
        sum += weight * randomValue(first + static_cast<std::int64_t>(tap), channel);
    }
    return kNoiseGain * sum;
}

double noiseAt(double seconds, int channel)
{
    return channel == kDownmix ? (oneChannelNoise(seconds, 0) + oneChannelNoise(seconds, 1)) / 2
                               : oneChannelNoise(seconds, channel);
}

double correlation(const SoundView& piece, std::size_t count, double start, int channel)
{
    double product = 0, own = 0, reference = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double heard = static_cast<double>(piece.samples[i * piece.stride]);
        const double wanted = soundAtTime(start + static_cast<double>(i) / piece.rateHz, channel);
        product += heard * wanted;
        own += heard * heard;
        reference += wanted * wanted;
    }
    return own > 1e-9 && reference > 0 ? product / std::sqrt(own * reference) : 0;
}

// Top of the parabola through three equally spaced values, in steps from the middle one.
double parabolaTop(double before, double middle, double after)
{
    const double bend = before - 2 * middle + after;
    return bend < 0 ? std::clamp((before - after) / (2 * bend), -1.0, 1.0) : 0;
}

// The best start on a grid of about 6 kHz. `count` samples of the piece are looked at.
double coarseStart(const SoundView& piece, std::size_t count, int channel, double from, double to)
{
    const auto fold = static_cast<std::size_t>(std::max(1, static_cast<int>(piece.rateHz / kCoarseHz)));
    const double coarseHz = static_cast<double>(piece.rateHz) / static_cast<double>(fold);
    std::vector<float> heard(count / fold);
    for (std::size_t i = 0; i < heard.size(); ++i) {
        float sum = 0;
        for (std::size_t k = 0; k < fold; ++k)
            sum += piece.samples[(i * fold + k) * piece.stride];
        heard[i] = sum;
    }
    const double middle = static_cast<double>(fold - 1) / 2 / piece.rateHz; // of the samples folded into one
    const auto starts = static_cast<std::size_t>(std::max(0.0, (to - from) * coarseHz)) + 1;
    std::vector<float> wanted(starts + heard.size());
    for (std::size_t i = 0; i < wanted.size(); ++i)
        wanted[i] = static_cast<float>(noiseAt(from + middle + static_cast<double>(i) / coarseHz, channel));
    std::size_t best = 0;
    float bestProduct = -1;
    for (std::size_t start = 0; start < starts; ++start) {
        float product = 0;
        for (std::size_t i = 0; i < heard.size(); ++i)
            product += heard[i] * wanted[start + i];
        if (product > bestProduct) {
            bestProduct = product;
            best = start;
        }
    }
    return from + static_cast<double>(best) / coarseHz;
}

} // namespace

double toneHz(double seconds, int channel)
{
    const auto step = static_cast<std::int64_t>(std::floor(seconds / kToneStepSeconds + 1e-9)) + 11 * channel;
    const std::int64_t place = ((step % kToneSteps) + kToneSteps) % kToneSteps;
    return 2200 + 20 * static_cast<double>(place); // a whole number of cycles a step: no click at the joints
}

double soundAtTime(double seconds, int channel)
{
    if (channel == kDownmix)
        return (soundAtTime(seconds, 0) + soundAtTime(seconds, 1)) / 2;
    const double intoStep = seconds - std::floor(seconds / kToneStepSeconds) * kToneStepSeconds;
    return oneChannelNoise(seconds, channel)
           + kToneGain * std::sin(2 * std::numbers::pi * toneHz(seconds, channel) * intoStep);
}

float soundAt(std::int64_t sampleIndex, int rateHz, int channel)
{
    return static_cast<float>(soundAtTime(static_cast<double>(sampleIndex) / rateHz, channel));
}

SoundMatch locate(const SoundView& piece, int channel, double fromSeconds, double toSeconds)
{
    const std::size_t count = std::min(piece.count, static_cast<std::size_t>(piece.rateHz / 2));
    const double coarse = coarseStart(piece, count, channel, fromSeconds, toSeconds);
    SoundMatch best{coarse, -1};
    // Two finer grids around it over a shorter piece, then the parabola over the whole.
    const std::size_t enough = std::min(count, static_cast<std::size_t>(piece.rateHz / 10));
    for (const double spacing : {1 / kCoarseHz / 4, 1 / kCoarseHz / 24}) {
        const double centre = best.seconds;
        for (int i = -5; i <= 5; ++i) {
            const double start = centre + i * spacing;
            const double score = correlation(piece, enough, start, channel);
            if (score > best.score)
                best = {start, score};
        }
    }
    best.score = correlation(piece, count, best.seconds, channel);
    const double step = 1 / kCoarseHz / 24;
    best.seconds += step
                    * parabolaTop(correlation(piece, count, best.seconds - step, channel), best.score,
                                  correlation(piece, count, best.seconds + step, channel));
    best.score = std::max(0.0, best.score);
    return best;
}

float loudest(const SoundView& piece)
{
    float most = 0;
    for (std::size_t i = 0; i < piece.count; ++i)
        most = std::max(most, std::abs(piece.samples[i * piece.stride]));
    return most;
}

double dominantFrequency(const SoundView& piece, double lowHz, double highHz)
{
    const auto power = [&](double frequency) {
        std::complex<double> sum = 0, phase = 1;
        const auto turn = std::polar(1.0, -2 * std::numbers::pi * frequency / piece.rateHz);
        for (std::size_t i = 0; i < piece.count; ++i, phase *= turn) {
            const double hann =
                1 - std::cos(2 * std::numbers::pi * (static_cast<double>(i) + 0.5) / static_cast<double>(piece.count));
            sum += phase * (hann * static_cast<double>(piece.samples[i * piece.stride]));
        }
        return std::abs(sum);
    };
    const double step = piece.rateHz / static_cast<double>(std::max<std::size_t>(1, piece.count)) / 2;
    double best = lowHz, bestPower = -1;
    for (double frequency = lowHz; frequency <= highHz; frequency += step)
        if (const double found = power(frequency); found > bestPower) {
            bestPower = found;
            best = frequency;
        }
    return best + step * parabolaTop(power(best - step), bestPower, power(best + step));
}

} // namespace testmedia
