#pragma once

// Peaks of a sound: the lowest and highest sample of every millisecond, in chunks that are made one at a time.
//
// Millisecond k holds the samples n with k <= n * 1000 / rate < k + 1, so that stretches that begin on whole
// milliseconds have exact peaks at every zoom. Above the milliseconds of a chunk stand those of 16 and of 256. Where a
// stretch begins or ends inside a millisecond, its samples tell.

#include "engine/ITWBarPictures.h"
#include "twcore/media/sound_source.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace twcore {

using engine::Peak;

/// Milliseconds of a chunk; the last one of a sound is shorter.
inline constexpr std::int64_t kChunkMs = 16384;

/// What one of them holds.
inline std::int64_t chunkLength(std::int64_t soundMs, std::int64_t chunk)
{
    return std::min(kChunkMs, soundMs - chunk * kChunkMs);
}

/// Of the samples that are looked at.
int peakRate(const MediaFile& media);
/// The first one of a millisecond; and the millisecond that holds a sample.
inline std::int64_t firstSample(int rate, std::int64_t ms) { return (ms * rate + 999) / 1000; }
inline std::int64_t msOfSample(int rate, std::int64_t sample) { return sample * 1000 / rate; }

/// Makes a peak that of the other's samples, too.
void widen(Peak& peak, const Peak& other);

class PeakChunk {
public:
    /// One peak a millisecond; none: they cannot be had.
    explicit PeakChunk(std::vector<Peak> fine);

    /// The peaks of the milliseconds [begin, end) of the chunk together.
    Peak over(std::int64_t begin, std::int64_t end) const;
    const std::vector<Peak>& fine() const noexcept { return fine_; }
    /// Stretches are rounded outwards to 16 milliseconds from here on.
    void dropFine();
    bool isFine() const noexcept { return !fine_.empty() || middle_.empty(); }
    std::size_t bytes() const noexcept { return (fine_.size() + middle_.size() + coarse_.size()) * sizeof(Peak); }

private:
    std::vector<Peak> fine_;
    std::vector<Peak> middle_;
    std::vector<Peak> coarse_;
};

/// Reads a chunk of a sound of that rate. A source serves one thread.
std::vector<Peak> readPeaks(SoundSource& source, int rate, std::int64_t soundMs, std::int64_t chunk);
/// A peak a sample of one millisecond.
std::vector<Peak> readSamples(SoundSource& source, int rate, std::int64_t ms);

} // namespace twcore
