#pragma once

// The timeline's sound: every source of every sound track at its place, to the sample, mixed.
//
// Sample n of the mix is the one at timeline time n / rate. A source begins and ends at the sample nearest to its
// times. Serves one thread.

#include "twcore/media/sound_source.h"
#include "twcore/render/plan.h"
#include "twcore/render/time_stretcher.h"

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <vector>

namespace twcore {

/// The sample nearest to a time in milliseconds.
constexpr std::int64_t sampleAt(std::int64_t timeMs, int rate)
{
    return (timeMs * rate + (timeMs >= 0 ? 500 : -500)) / 1000;
}

class SoundMixer {
public:
    SoundMixer(PlanPtr plan, int rate, Patience patience);
    ~SoundMixer();

    /// Fills `out`, two floats a sample, from sample `first` on. Full scale is 1; a loud mix may pass it.
    void read(std::int64_t first, std::span<float> out);

    /// Takes over the files that another mixer has open, for another plan: some take long to begin with, as a song that
    /// is played from its start. Both have the same rate and patience; the other one is done with.
    void takeReaders(SoundMixer& other);

private:
    /// One open reader of a track, for one file.
    struct Voice {
        MediaFilePtr media;
        std::unique_ptr<SoundSource> source;
        const PlannedSource* stretched = nullptr; // what the stretcher was made for
        std::unique_ptr<TimeStretcher> stretcher;
        std::uint64_t lastUse = 0;
    };

    Voice& voiceFor(std::vector<Voice>& voices, const PlannedSource& source);
    std::unique_ptr<SoundSource> readerOf(const MediaFilePtr& media);
    bool plays(const MediaFilePtr& media) const;
    void readSource(std::vector<Voice>& voices, const PlannedSource& source, std::int64_t first, std::span<float> out);

    PlanPtr plan_;
    int rate_;
    Patience patience_;
    std::vector<std::vector<Voice>> voices_; // by track
    std::vector<Voice> taken_;               // over from another mixer, not asked for yet
    std::vector<float> block_;
    std::uint64_t uses_ = 0;
};

} // namespace twcore
