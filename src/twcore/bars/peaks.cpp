#include "twcore/bars/peaks.h"

#include "twcore/media/midi_file.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace twcore {

namespace {

constexpr std::int64_t kMiddleMs = 16;
constexpr std::int64_t kCoarseMs = 256;

std::vector<Peak> grouped(const std::vector<Peak>& peaks, std::int64_t by)
{
    const auto size = static_cast<std::size_t>(by);
    std::vector<Peak> groups((peaks.size() + size - 1) / size);
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        widen(groups[i / size], peaks[i]);
    }
    return groups;
}

Peak at(const std::vector<Peak>& peaks, std::int64_t place)
{
    return place >= 0 && place < static_cast<std::int64_t>(peaks.size()) ? peaks[static_cast<std::size_t>(place)]
                                                                         : Peak{};
}

/// Several samples at once: each comparison waits for the one before it.
Peak peakOf(const float* samples, std::size_t count)
{
    using Lanes [[gnu::vector_size(16)]] = float;
    constexpr std::size_t kLanes = 4;
    constexpr std::size_t kStep = 2 * kLanes;
    float least = samples[0];
    float most = samples[0];
    std::size_t i = 0;
    if (count >= kStep) {
        Lanes low[2];
        Lanes high[2];
        std::memcpy(low, samples, sizeof low);
        std::memcpy(high, samples, sizeof high);
        for (i = kStep; i + kStep <= count; i += kStep) {
            Lanes now[2];
            std::memcpy(now, samples + i, sizeof now);
            for (int half = 0; half < 2; ++half) {
                low[half] = now[half] < low[half] ? now[half] : low[half];
                high[half] = now[half] > high[half] ? now[half] : high[half];
            }
        }
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            least = std::min({least, low[0][lane], low[1][lane]});
            most = std::max({most, high[0][lane], high[1][lane]});
        }
    }
    for (; i < count; ++i) {
        least = std::min(least, samples[i]);
        most = std::max(most, samples[i]);
    }
    least = std::clamp(least, -1.0f, 1.0f);
    most = std::clamp(most, -1.0f, 1.0f);
    constexpr float kFull = 127;
    return {static_cast<std::int8_t>(std::floor(least * kFull)), static_cast<std::int8_t>(std::ceil(most * kFull))};
}

} // namespace

int peakRate(const MediaFile& media)
{
    constexpr int kLeast = 8000; // below, whole milliseconds hold no sample
    return media.isMidi || media.sound->rate < kLeast ? kMidiRate : media.sound->rate;
}

void widen(Peak& peak, const Peak& other)
{
    if (!peak.isKnown()) {
        peak = other;
    } else if (other.isKnown()) {
        peak.low = std::min(peak.low, other.low);
        peak.high = std::max(peak.high, other.high);
    }
}

PeakChunk::PeakChunk(std::vector<Peak> fine)
    : fine_(std::move(fine)), middle_(grouped(fine_, kMiddleMs)), coarse_(grouped(middle_, kCoarseMs / kMiddleMs))
{}

void PeakChunk::dropFine() { std::vector<Peak>().swap(fine_); }

Peak PeakChunk::over(std::int64_t begin, std::int64_t end) const
{
    Peak peak;
    if (fine_.empty()) {
        begin -= begin % kMiddleMs;
        end += (kMiddleMs - end % kMiddleMs) % kMiddleMs;
    }
    while (begin < end) {
        if (begin % kCoarseMs == 0 && begin + kCoarseMs <= end) {
            widen(peak, at(coarse_, begin / kCoarseMs));
            begin += kCoarseMs;
        } else if (begin % kMiddleMs == 0 && begin + kMiddleMs <= end) {
            widen(peak, at(middle_, begin / kMiddleMs));
            begin += kMiddleMs;
        } else {
            widen(peak, at(fine_, begin));
            ++begin;
        }
    }
    return peak;
}

std::vector<Peak> readPeaks(SoundSource& source, int rate, std::int64_t soundMs, std::int64_t chunk)
{
    constexpr std::int64_t kSliceMs = 256;
    const auto sampleOf = [rate](std::int64_t ms) { return firstSample(rate, ms); };
    std::vector<Peak> peaks;
    std::vector<float> samples;
    const std::int64_t first = chunk * kChunkMs;
    const std::int64_t end = first + chunkLength(soundMs, chunk);
    peaks.reserve(static_cast<std::size_t>(std::max<std::int64_t>(0, end - first)));
    for (std::int64_t ms = first; ms < end; ms += kSliceMs) {
        const std::int64_t sliceEnd = std::min(ms + kSliceMs, end);
        const std::int64_t from = sampleOf(ms);
        samples.resize(static_cast<std::size_t>(sampleOf(sliceEnd) - from) * 2);
        source.read(from, samples);
        for (std::int64_t k = ms; k < sliceEnd; ++k) {
            const auto begin = static_cast<std::size_t>(sampleOf(k) - from) * 2;
            const auto behind = static_cast<std::size_t>(sampleOf(k + 1) - from) * 2;
            peaks.push_back(peakOf(samples.data() + begin, behind - begin));
        }
    }
    return peaks;
}

std::vector<Peak> readSamples(SoundSource& source, int rate, std::int64_t ms)
{
    const std::int64_t first = firstSample(rate, ms);
    std::vector<float> samples(static_cast<std::size_t>(firstSample(rate, ms + 1) - first) * 2);
    source.read(first, samples);
    std::vector<Peak> peaks;
    for (std::size_t i = 0; i < samples.size(); i += 2) {
        peaks.push_back(peakOf(samples.data() + i, 2));
    }
    return peaks;
}

} // namespace twcore
