#pragma once

// Where a movie is best cut for several workers: at cuts, where the lowest source jumps in its media, and at key
// frames, so that little is decoded twice. Any thread.

#include "twcore/media/media_file.h"
#include "twcore/render/movie_clock.h"
#include "twcore/render/plan.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace twcore {

class MovieCuts {
public:
    /// The plan outlives it.
    MovieCuts(const Plan& plan, MovieClock clock, Patience patience);

    /// First frames of chunks, rising from 0: at cuts, and in long stretches at key frames, no shorter than told there.
    std::vector<std::int64_t> chunkStarts(std::int64_t minFrames = 48);

    /// Where the frames [from, end), of one chunk, are cut so that another worker, who starts now with the second part,
    /// ends as soon as can be with it; nullopt when nothing is gained.
    std::optional<std::int64_t> cutIn(std::int64_t from, std::int64_t end);

    /// Whether the way to the frames from `first` on, of one chunk, leads past those of the chunk [behind, end) after
    /// it: who makes that one first decodes the way once.
    bool leadsPast(std::int64_t first, std::int64_t behind, std::int64_t end);

private:
    /// Frames, [first, end), over which the lowest source plays on: without a jump in its media, or with jumps ahead
    /// that stay in a group of pictures, where decoding on is less work than beginning anew.
    struct Scene {
        std::int64_t first = 0;
        std::int64_t end = 0;
        std::vector<const PlannedSource*> sources; // one after the other
    };

    std::vector<Scene> scenes();
    bool staysInGroup(const PlannedSource& source, const PlannedSource& next);
    const std::vector<double>& keyTimes(const PlannedSource& source);
    static bool isStanding(const Scene& scene);
    std::vector<std::int64_t> keyFrames(const PlannedSource& source, std::int64_t first, std::int64_t end);

    const Plan& plan_;
    const MovieClock clock_;
    const Patience patience_;
    std::mutex mutex_; // guards what follows
    std::map<const MediaFile*, std::vector<double>> keyTimes_;
    const std::vector<Scene> scenes_;
};

} // namespace twcore
