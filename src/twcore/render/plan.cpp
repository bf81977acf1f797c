#include "twcore/render/plan.h"

#include <algorithm>
#include <set>

namespace twcore {

double PlannedSource::speed() const
{
    const double length = stopMs - startMs;
    return mediaStopMs <= mediaStartMs || length <= 0 ? 0 : (mediaStopMs - mediaStartMs) / length;
}

double PlannedSource::mediaSecondsAt(double timelineMs) const
{
    return (mediaStartMs + (timelineMs - startMs) * speed()) / 1000;
}

namespace {

std::vector<PlannedSource> plannedTrack(const TrackSnapshot& track,
                                        const std::function<StreamTarget(engine::Handle)>& targetOf)
{
    std::vector<PlannedSource> planned;
    planned.reserve(track.sources.size());
    for (const auto& source : track.sources) {
        auto target = targetOf(source.stream);
        const bool fits = target.media && target.isPicture == track.isVideo;
        planned.push_back({fits ? target.media : nullptr, source.startMs, source.stopMs, source.mediaStartMs,
                           source.mediaStopMs, source.stretchMode});
    }
    return planned;
}

bool isDrawn(const PlannedSource& source) { return source.media && source.speed() > 0; }

std::vector<PictureStretch> stretchesOf(const Plan& plan)
{
    std::set<std::int32_t> edges{0, plan.durationMs};
    for (const auto& track : plan.pictureTracks) {
        for (const auto& source : track) {
            edges.insert({source.startMs, source.stopMs});
        }
    }
    std::vector<PictureStretch> stretches;
    std::vector<std::size_t> next(plan.pictureTracks.size(), 0);
    for (auto edge = edges.begin(); std::next(edge) != edges.end(); ++edge) {
        PictureStretch stretch{*edge, *std::next(edge), {}};
        for (std::size_t t = 0; t < plan.pictureTracks.size(); ++t) {
            const auto& track = plan.pictureTracks[t];
            while (next[t] < track.size() && track[next[t]].stopMs <= stretch.startMs) {
                ++next[t];
            }
            if (next[t] < track.size() && track[next[t]].startMs <= stretch.startMs && isDrawn(track[next[t]])) {
                stretch.layers.push_back(&track[next[t]]);
            }
        }
        stretches.push_back(std::move(stretch));
    }
    return stretches;
}

} // namespace

PlanPtr compilePlan(const TimelineSnapshot& timeline, const std::vector<engine::Handle>& tracks,
                    const std::function<StreamTarget(engine::Handle)>& targetOf)
{
    auto plan = std::make_shared<Plan>();
    plan->frame = {timeline.frameWidth, timeline.frameHeight};
    for (const auto& track : timeline.tracks) {
        if (std::ranges::find(tracks, track.handle) == tracks.end()) {
            continue;
        }
        if (!track.sources.empty()) {
            plan->durationMs = std::max(plan->durationMs, track.sources.back().stopMs);
        }
        (track.isVideo ? plan->hasPictureTrack : plan->hasSoundTrack) = true;
        if (!track.disabled) {
            (track.isVideo ? plan->pictureTracks : plan->soundTracks).push_back(plannedTrack(track, targetOf));
        }
    }
    for (const auto& track : plan->pictureTracks) {
        const auto moving = std::ranges::find_if(
            track, [](const auto& source) { return source.media && source.media->picture->frameRate.num > 0; });
        if (moving != track.end()) {
            plan->frameRate = moving->media->picture->frameRate;
            break;
        }
    }
    plan->stretches = stretchesOf(*plan);
    return plan;
}

} // namespace twcore
