#pragma once

// Sound at another speed with its pitch kept, by overlapping windows that are laid where they continue each other best
// (waveform similarity overlap-add).
//
// Every window's place is worked out from the beginning, never from the window before, so that sound and picture do
// not drift apart however long the source is: at any moment they differ by half the search width at most.

#include "twcore/media/sound_source.h"

#include <cstdint>
#include <span>
#include <vector>

namespace twcore {

class TimeStretcher {
public:
    /// `speed` is media time by timeline time, 0.1 to 10; `firstSample` is the sample of `source` that output sample 0
    /// plays. The source outlives the stretcher.
    TimeStretcher(SoundSource& source, int rate, double speed, double firstSample);

    /// Fills `out`, two floats a sample, from output sample `first` on. Reading on from where the last call ended is
    /// quick; a jump begins anew a little ahead of it.
    void read(std::int64_t first, std::span<float> out);

private:
    void startAt(std::int64_t hop);
    void makeHop();
    std::int64_t bestPlace(std::int64_t nominal);
    double similarity(std::int64_t place, int step) const;
    void need(std::int64_t first, std::int64_t count);
    const float* inputAt(std::int64_t sample) const
    {
        return &input_[static_cast<std::size_t>(sample - inputFirst_) * 2];
    }

    SoundSource& source_;
    double speed_;
    double firstSample_;
    int hop_;    // samples from window to window, half a window
    int search_; // samples that a window may move to either side

    std::vector<float> fade_;  // rising half of the window
    std::vector<float> input_; // what was read of the source, from inputFirst_
    std::int64_t inputFirst_ = 0;
    std::vector<float> tail_; // what would follow the last window naturally, one hop
    std::int64_t nextHop_ = -1;
    std::vector<float> made_; // the hop made last
    std::int64_t madeFirst_ = 0;
};

} // namespace twcore
