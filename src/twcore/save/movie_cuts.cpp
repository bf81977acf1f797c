#include "twcore/save/movie_cuts.h"

#include "twcore/media/key_frames.h"

#include <algorithm>
#include <cmath>

namespace twcore {

namespace {

constexpr std::int64_t kMinChunkFrames = 48;
constexpr std::int64_t kMinPartFrames = 6;
// What a frame costs that is decoded on the way from a key frame, of a whole one's cost.
constexpr double kRunUpCost = 0.4;
constexpr double kWorthwhile = 0.85; // of the time without a cut

bool playsOn(const PlannedSource& source, const PlannedSource& next)
{
    constexpr double kSameSeconds = 0.002;
    return &source == &next
           || (source.media == next.media && source.stopMs == next.startMs
               && std::abs(source.mediaSecondsAt(next.startMs) - next.mediaSecondsAt(next.startMs)) < kSameSeconds);
}

} // namespace

MovieCuts::MovieCuts(const Plan& plan, MovieClock clock, Patience patience)
    : plan_(plan), clock_(clock), patience_(patience), scenes_(scenes())
{}

std::vector<MovieCuts::Scene> MovieCuts::scenes() const
{
    std::vector<Scene> scenes;
    for (const auto& stretch : plan_.stretches) {
        const std::int64_t first = clock_.firstFrameAt(stretch.startMs);
        const std::int64_t end = std::min(clock_.frameCount(), clock_.firstFrameAt(stretch.stopMs));
        if (first >= end) {
            continue;
        }
        const PlannedSource* const source = stretch.layers.empty() ? nullptr : stretch.layers.front();
        const PlannedSource* const last =
            scenes.empty() || scenes.back().sources.empty() ? nullptr : scenes.back().sources.back();
        if (source == nullptr || last == nullptr || !playsOn(*last, *source)) {
            scenes.push_back({first, end, {}});
        }
        scenes.back().end = end;
        if (source != nullptr && source != last) {
            scenes.back().sources.push_back(source);
        }
    }
    return scenes;
}

/// Frames of the movie, rising, from which the source is decoded without a run-up; also those that would stand outside
/// of it.
std::vector<std::int64_t> MovieCuts::keyFrames(const PlannedSource& source)
{
    std::vector<std::int64_t> frames;
    if (source.speed() <= 0) {
        return frames;
    }
    const auto [known, isNew] = keyTimes_.try_emplace(source.media.get());
    if (isNew) {
        known->second = keyFrameTimes(source.media, patience_);
    }
    for (const double key : known->second) {
        const double timelineMs = source.startMs + (key * 1000 - source.mediaStartMs) / source.speed();
        const double frame = (timelineMs - clock_.startMs) * clock_.fps.num / (1000.0 * clock_.fps.den);
        frames.push_back(static_cast<std::int64_t>(std::ceil(frame)));
    }
    return frames;
}

std::vector<std::int64_t> MovieCuts::chunkStarts()
{
    const std::lock_guard lock(mutex_);
    const std::int64_t count = clock_.frameCount();
    std::vector<std::int64_t> starts;
    const auto add = [&](std::int64_t frame) {
        if (frame < count && (starts.empty() ? frame >= 0 : frame > starts.back())) {
            starts.push_back(frame);
        }
    };
    for (const Scene& scene : scenes_) {
        add(scene.first);
        if (scene.end - scene.first < 2 * kMinChunkFrames) {
            continue;
        }
        for (const PlannedSource* const source : scene.sources) {
            const std::int64_t last = clock_.firstFrameAt(source->stopMs);
            for (const std::int64_t frame : keyFrames(*source)) {
                if (frame > clock_.firstFrameAt(source->startMs) && frame < last
                    && frame - starts.back() >= kMinChunkFrames && scene.end - frame >= kMinChunkFrames) {
                    add(frame);
                }
            }
        }
    }
    if (starts.empty() || starts.front() != 0) {
        starts.insert(starts.begin(), 0);
    }
    return starts;
}

std::optional<std::int64_t> MovieCuts::cutIn(std::int64_t from, std::int64_t end)
{
    if (end - from < 2 * kMinPartFrames) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex_);
    const auto scene = std::ranges::find_if(scenes_, [&](const Scene& s) { return s.first <= from && from < s.end; });
    if (scene == scenes_.end()) {
        return std::nullopt;
    }
    std::vector<std::int64_t> keys;
    if (!scene->sources.empty()) {
        keys = keyFrames(*scene->sources.front());
        if (keys.empty()) {
            return std::nullopt; // a run-up of any length may be needed
        }
    }
    double best = kWorthwhile * static_cast<double>(end - from);
    std::optional<std::int64_t> cut;
    for (std::int64_t frame = from + kMinPartFrames; frame <= end - kMinPartFrames; ++frame) {
        const auto above = std::ranges::upper_bound(keys, frame);
        const std::int64_t runUp = keys.empty() ? 0 : above == keys.begin() ? end - from : frame - above[-1];
        const double first = static_cast<double>(frame - from);
        const double second = static_cast<double>(end - frame) + kRunUpCost * static_cast<double>(runUp);
        if (std::max(first, second) < best) {
            best = std::max(first, second);
            cut = frame;
        }
    }
    return cut;
}

} // namespace twcore
