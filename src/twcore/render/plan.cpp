#include "twcore/render/plan.h"

#include <algorithm>
#include <set>

namespace twcore {

double PlannedSource::speed() const
{
    const double length = stopMs - startMs;
    return mediaStopMs <= mediaStartMs || length <= 0 ? 0 : (static_cast<double>(mediaStopMs) - mediaStartMs) / length;
}

double PlannedSource::mediaSecondsAt(double timelineMs) const
{
    return (mediaStartMs + (timelineMs - startMs) * speed()) / 1000;
}

const PlannedSource* laterPartBehind(const Plan& plan, const PlannedSource& source)
{
    for (const auto& track : plan.pictureTracks) {
        const auto found = std::ranges::find_if(track, [&](const PlannedSource& s) { return &s == &source; });
        if (found == track.end() || found + 1 == track.end()) {
            continue;
        }
        const PlannedSource& next = found[1];
        const bool isLater = next.media == source.media && next.startMs == source.stopMs
                             && next.mediaStartMs >= source.mediaStopMs && source.speed() > 0 && next.speed() > 0;
        return isLater ? &next : nullptr;
    }
    return nullptr;
}

EffectMoment PlannedEffect::momentAt(double timelineMs) const
{
    EffectMoment moment;
    moment.progress = std::clamp((timelineMs - startMs) / std::max(1, stopMs - startMs), 0.0, 1.0);
    moment.seconds = (timelineMs - startMs) / 1000;
    const auto after = std::ranges::upper_bound(levels, timelineMs, {}, [](const auto& l) { return double(l.first); });
    if (after == levels.begin() || after == levels.end()) {
        moment.level = levels.empty() ? 1 : (after == levels.end() ? levels.back().second : after->second);
        return moment;
    }
    const auto& [fromMs, from] = *(after - 1);
    const auto& [toMs, to] = *after;
    moment.level = from + (to - from) * (timelineMs - fromMs) / (toMs - fromMs);
    return moment;
}

namespace {

std::optional<KeyRgb> keyOf(const TrackSnapshot& track, std::size_t source)
{
    if (source >= track.transitions.size() || track.transitions[source].name != "DxtKey") {
        return std::nullopt;
    }
    const auto& transition = track.transitions[source];
    const auto part = [](std::int16_t value) { return static_cast<std::uint8_t>(std::clamp<int>(value, 0, 255)); };
    return KeyRgb{part(transition.red), part(transition.green), part(transition.blue)};
}

/// Levels of a fade by what stands at its edges and inside it.
std::vector<std::pair<std::int32_t, double>> fadeLevels(const std::vector<PlannedSource>& track, std::int32_t startMs,
                                                        std::int32_t stopMs)
{
    const auto shown = [&](std::int32_t atMs) {
        return std::ranges::any_of(track, [&](const auto& s) { return s.startMs <= atMs && atMs < s.stopMs; });
    };
    // The picture that is inside the stretch, which may begin later or end earlier than the effect.
    std::int32_t firstMs = stopMs;
    std::int32_t lastMs = startMs;
    std::int32_t cutMs = -1;
    for (const auto& source : track) {
        if (source.stopMs > startMs && source.startMs < stopMs) {
            firstMs = std::min(firstMs, std::max(source.startMs, startMs));
            lastMs = std::max(lastMs, std::min(source.stopMs, stopMs));
            if (cutMs < 0 && source.startMs > startMs && shown(source.startMs - 1)) {
                cutMs = source.startMs;
            }
        }
    }
    if (firstMs >= lastMs) {
        return {};
    }
    const bool begins = firstMs == 0 || !shown(firstMs - 1);
    const bool ends = !shown(lastMs);
    const std::int32_t middleMs = cutMs > firstMs && cutMs < lastMs ? cutMs : firstMs + (lastMs - firstMs) / 2;
    if (begins && ends) {
        return {{firstMs, 0}, {firstMs + (lastMs - firstMs) / 2, 1}, {lastMs, 0}};
    }
    if (begins) {
        return {{firstMs, 0}, {lastMs, 1}};
    }
    if (ends) {
        return {{firstMs, 1}, {lastMs, 0}};
    }
    return {{firstMs, 1}, {middleMs, 0}, {lastMs, 1}};
}

std::vector<PlannedEffect> plannedEffects(const TrackSnapshot& track, const std::vector<PlannedSource>& sources)
{
    std::vector<PlannedEffect> effects;
    for (const auto& effect : track.effects) {
        const EffectKind kind = effectKindOf(effect.name);
        if (kind != EffectKind::kNone) {
            effects.push_back({kind, effect.startMs, effect.stopMs,
                               kind == EffectKind::kFade ? fadeLevels(sources, effect.startMs, effect.stopMs)
                                                         : std::vector<std::pair<std::int32_t, double>>{}});
        }
    }
    return effects;
}

std::vector<PlannedSource> plannedTrack(const TrackSnapshot& track,
                                        const std::function<StreamTarget(engine::Handle)>& targetOf)
{
    std::vector<PlannedSource> planned;
    planned.reserve(track.sources.size());
    for (std::size_t i = 0; i < track.sources.size(); ++i) {
        const auto& source = track.sources[i];
        auto target = targetOf(source.stream);
        const bool fits = target.media && target.isPicture == track.isVideo;
        planned.push_back({fits ? target.media : nullptr, source.startMs, source.stopMs, source.mediaStartMs,
                           source.mediaStopMs, source.stretchMode, keyOf(track, i)});
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
    for (const auto& effect : plan.effects) {
        edges.insert({std::min(effect.startMs, plan.durationMs), std::min(effect.stopMs, plan.durationMs)});
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
        const auto effect = std::ranges::find_if(
            plan.effects, [&](const auto& e) { return e.startMs <= stretch.startMs && stretch.startMs < e.stopMs; });
        stretch.effect = effect != plan.effects.end() ? &*effect : nullptr;
        stretches.push_back(std::move(stretch));
    }
    return stretches;
}

} // namespace

PlanPtr compilePlan(const TimelineSnapshot& timeline, const std::vector<engine::Handle>& tracks, bool withEffects,
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
            auto& planned = track.isVideo ? plan->pictureTracks : plan->soundTracks;
            planned.push_back(plannedTrack(track, targetOf));
            if (track.isVideo && planned.size() == 1 && withEffects && timeline.effectsEnabled) {
                plan->effects = plannedEffects(track, planned.back());
            }
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
