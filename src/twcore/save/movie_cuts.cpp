#include "twcore/save/movie_cuts.h"

#include "twcore/media/key_frames.h"
#include "twcore/media/picture_index.h"

#include <algorithm>
#include <cmath>

namespace twcore {

namespace {

constexpr std::int64_t kMinPartFrames = 6;
// Of a scene that stands still, which may last for weeks.
constexpr std::int64_t kMostParts = 64;
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

/// Frames from `first` on, and where they can be decoded from.
struct Part {
    std::int64_t first;
    std::vector<std::int64_t> keys;
};

std::optional<std::int64_t> runUpTo(std::int64_t frame, const std::vector<Part>& parts)
{
    auto part = std::ranges::upper_bound(parts, frame, {}, &Part::first);
    part -= part != parts.begin() ? 1 : 0;
    const auto above = std::ranges::upper_bound(part->keys, frame);
    return above == part->keys.begin() ? std::nullopt : std::optional(frame - above[-1]);
}

} // namespace

MovieCuts::MovieCuts(const Plan& plan, MovieClock clock, Patience patience)
    : plan_(plan), clock_(clock), patience_(patience), scenes_(scenes())
{}

std::vector<MovieCuts::Scene> MovieCuts::scenes()
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
        if (source == nullptr || last == nullptr || !(playsOn(*last, *source) || staysInGroup(*last, *source))) {
            scenes.push_back({first, end, {}});
        }
        scenes.back().end = end;
        if (source != nullptr && source != last) {
            scenes.back().sources.push_back(source);
        }
    }
    return scenes;
}

const std::vector<double>& MovieCuts::keyTimes(const PlannedSource& source)
{
    const auto [known, isNew] = keyTimes_.try_emplace(source.media.get());
    if (isNew) {
        known->second = keyFrameTimes(source.media, patience_);
    }
    return known->second;
}

/// Whether the next source begins further on in the same medium, with no key frame on the way there.
bool MovieCuts::staysInGroup(const PlannedSource& source, const PlannedSource& next)
{
    if (laterPartBehind(plan_, source) != &next) {
        return false;
    }
    const std::vector<double>& keys = keyTimes(source);
    const auto above = std::ranges::upper_bound(keys, next.mediaStartMs / 1000.0 + kStampTolerance);
    return above != keys.begin() && above[-1] < source.mediaStopMs / 1000.0;
}

/// Frames of the movie, rising, from which the source is decoded without a run-up: those in [first, end), the one ahead
/// of them and perhaps one behind. They may stand outside of the source.
std::vector<std::int64_t> MovieCuts::keyFrames(const PlannedSource& source, std::int64_t first, std::int64_t end)
{
    std::vector<std::int64_t> frames;
    if (source.speed() <= 0) {
        return frames;
    }
    const std::vector<double>& keys = keyTimes(source);
    const double frameMs = 1000.0 * clock_.fps.den / clock_.fps.num;
    const auto secondsAt = [&](std::int64_t frame) {
        return source.mediaSecondsAt(clock_.startMs + static_cast<double>(frame) * frameMs) + kStampTolerance;
    };
    auto key = std::ranges::upper_bound(keys, secondsAt(first - 1));
    key -= key != keys.begin() ? 1 : 0;
    for (const double last = secondsAt(end); key != keys.end() && *key <= last; ++key) {
        const double keyMs = (*key - kStampTolerance) * 1000; // a picture is shown as much ahead of its stamp
        const double timelineMs = source.startMs + (keyMs - source.mediaStartMs) / source.speed();
        frames.push_back(static_cast<std::int64_t>(std::ceil((timelineMs - clock_.startMs) / frameMs)));
    }
    return frames;
}

/// Nothing is decoded on the way to any of its frames.
bool MovieCuts::isStanding(const Scene& scene)
{
    return std::ranges::all_of(scene.sources, [](const PlannedSource* s) { return s->media->picture->isStill; });
}

std::vector<std::int64_t> MovieCuts::chunkStarts(std::int64_t minFrames)
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
        if (scene.end - scene.first < 2 * minFrames) {
            continue;
        }
        if (isStanding(scene)) {
            const std::int64_t step = std::max(minFrames, (scene.end - scene.first) / kMostParts);
            for (std::int64_t frame = scene.first + step; frame <= scene.end - minFrames; frame += step) {
                add(frame);
            }
            continue;
        }
        for (const PlannedSource* const source : scene.sources) {
            const std::int64_t first = clock_.firstFrameAt(source->startMs);
            const std::int64_t last = clock_.firstFrameAt(source->stopMs);
            for (const std::int64_t frame : keyFrames(*source, first, last)) {
                if (frame > first && frame < last && frame - starts.back() >= minFrames
                    && scene.end - frame >= minFrames) {
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

bool MovieCuts::leadsPast(std::int64_t first, std::int64_t behind, std::int64_t end)
{
    const std::lock_guard lock(mutex_);
    const auto whole = [&](std::int64_t from, std::int64_t to) {
        const auto found = std::ranges::find(scenes_, from, &Scene::first);
        return found != scenes_.end() && found->end == to && !found->sources.empty() ? &*found : nullptr;
    };
    const Scene* const scene = whole(first, behind);
    const Scene* const next = whole(behind, end);
    if (scene == nullptr || next == nullptr || isStanding(*scene)) {
        return false;
    }
    const PlannedSource& later = *scene->sources.front();
    const PlannedSource& earlier = *next->sources.front();
    if (later.media != earlier.media || later.speed() <= 0 || earlier.speed() <= 0
        || next->sources.back()->mediaStopMs > later.mediaStartMs) {
        return false;
    }
    const std::vector<double>& keys = keyTimes(later);
    const auto groupOf = [&](const PlannedSource& source) {
        return std::ranges::upper_bound(keys, source.mediaStartMs / 1000.0 + kStampTolerance);
    };
    return groupOf(earlier) == groupOf(later) && groupOf(later) != keys.begin();
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
    std::vector<Part> parts;
    for (const PlannedSource* const source : scene->sources) {
        const std::int64_t first = std::max(from, clock_.firstFrameAt(source->startMs));
        const std::int64_t last = std::min(end, clock_.firstFrameAt(source->stopMs));
        if (first < last) {
            parts.push_back({first, keyFrames(*source, first, last)});
        }
        if (first < last && parts.back().keys.empty()) {
            return std::nullopt; // a run-up of any length may be needed
        }
    }
    double best = kWorthwhile * static_cast<double>(end - from);
    std::optional<std::int64_t> cut;
    for (std::int64_t frame = from + kMinPartFrames; frame <= end - kMinPartFrames; ++frame) {
        const std::int64_t runUp = parts.empty() ? 0 : runUpTo(frame, parts).value_or(end - from);
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
